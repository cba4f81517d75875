#include "tool/option_pages.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "tool/options.h"

namespace Tool {

namespace {

std::vector<std::string> namesOf(const OptionEntry& option) {
    std::vector<std::string> names;
    for (std::size_t start = 0; start < option.names.size();) {
        const std::size_t end = std::min(option.names.find(',', start), option.names.size());
        names.push_back(option.names.substr(start, end - start));
        start = end + 1;
    }
    return names;
}

void addWord(std::string& text, std::string_view separator, std::string_view word) {
    if (!text.empty()) text += separator;
    text += word;
}

std::string joined(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) addWord(text, " ", word);
    return text;
}

std::string enclosed(std::string_view text, char mark) {
    std::string result(1, mark);
    result += text;
    return result += mark;
}

bool takesScheme(const OptionEntry& option) {
    return option.names.find("--scheme") != std::string::npos;
}

// An option whose value stands behind a "=", or not at all.
bool hasOptionalValue(const OptionEntry& option) {
    return option.value.starts_with('[');
}

std::string commandNames() {
    std::string text;
    for (const auto& [name, description] : commandTable()) addWord(text, " ", name);
    return text;
}

constexpr const char* schemeNames = "$(vantrel schemes 2>/dev/null | sed -n 's/^\\([^ ]\\{1,\\}\\) .*/\\1/p')";

std::string bashScript() {
    std::string cases;
    std::string options;
    for (const OptionEntry& option : optionTable()) {
        const std::vector<std::string> names = namesOf(option);
        options += joined(names) + ' ';
        if (option.value.empty() || hasOptionalValue(option)) continue;
        std::string patterns;
        for (const std::string& name : names) addWord(patterns, "|", name);
        const std::string words = takesScheme(option) ? schemeNames : joined(option.choices);
        const std::string files = option.choices.empty() ? " -f" : "";
        cases += "        " + patterns + ") COMPREPLY=($(compgen" + files + " -W \"" + words +
                 "\" -- \"$word\")); return ;;\n";
    }
    return "# Completion for bash.\n_vantrel() {\n    local word=${COMP_WORDS[COMP_CWORD]}\n"
           "    case ${COMP_WORDS[COMP_CWORD-1]} in\n" + cases +
           "    esac\n    if [[ $word == -* ]]; then\n        COMPREPLY=($(compgen -W \"" + options +
           "\" -- \"$word\"))\n    elif [ \"$COMP_CWORD\" -eq 1 ]; then\n        COMPREPLY=($(compgen -f -W \"" +
           commandNames() + "\" -- \"$word\"))\n    else\n        COMPREPLY=($(compgen -f -- \"$word\"))\n    fi\n}\n"
           "complete -o filenames -F _vantrel vantrel\n";
}

// In single quotes, for zsh and fish.
std::string inQuotes(std::string_view text) {
    std::string result = "'";
    for (const char c : text) {
        if (c == '\'') result += "'\\'";
        result += c;
    }
    return result + '\'';
}

std::string escapedBrackets(std::string_view text) {
    std::string result;
    for (const char c : text) {
        if (c == '[' || c == ']' || c == ':') result += '\\';
        result += c;
    }
    return result;
}

std::string zshScript() {
    std::string text = "#compdef vantrel\n# Completion for zsh.\n_arguments -s \\\n";
    for (const OptionEntry& option : optionTable()) {
        std::string action;
        if (!option.value.empty() && !hasOptionalValue(option)) {
            action = ':';
            action += escapedBrackets(option.value) + ':';
            const std::string words = takesScheme(option) ? schemeNames : joined(option.choices);
            action += words.empty() ? "_files" : std::string("(").append(words).append(")");
        }
        for (const std::string& name : namesOf(option)) {
            std::string spec = "*";  // may be given again
            spec += name + '[' + escapedBrackets(option.description) + ']' + action;
            // The names of schemes are asked for when they are needed.
            text += "    " + (takesScheme(option) ? enclosed(spec, '"') : inQuotes(spec)) + " \\\n";
        }
    }
    return text + "    '1:command or file:_alternative \"commands:command:(" + commandNames() +
           ")\" \"files:file:_files\"' \\\n    '*:file:_files'\n";
}

std::string fishScript() {
    std::string text = "# Completion for fish.\n";
    for (const OptionEntry& option : optionTable()) {
        text += "complete -c vantrel";
        for (const std::string& name : namesOf(option)) {
            text += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
        }
        if (!option.value.empty() && !hasOptionalValue(option)) text += " -r";
        if (takesScheme(option)) text += " -a \"(vantrel schemes 2>/dev/null | string match -r '^[^ ]+')\"";
        if (!option.choices.empty()) text += " -f -a " + inQuotes(joined(option.choices));
        text += " -d " + inQuotes(option.description) + '\n';
    }
    for (const auto& [name, description] : commandTable()) {
        text += "complete -c vantrel -n __fish_use_subcommand -a " + name + " -d " + inQuotes(description) + '\n';
    }
    return text;
}

// Characters that mean something to scdoc.
std::string plain(std::string_view text) {
    std::string result;
    for (const char c : text) {
        if (std::string_view("*_\\<>[]#").find(c) != std::string_view::npos) result += '\\';
        result += c;
    }
    return result;
}

std::string section(const std::string& title, const std::string& text) {
    return "\n# " + title + "\n\n" + text;
}

std::string optionSection() {
    std::string text;
    for (const OptionEntry& option : optionTable()) {
        std::string names;
        for (const std::string& name : namesOf(option)) addWord(names, ", ", enclosed(name, '*'));
        if (!option.value.empty() && !hasOptionalValue(option)) names += ' ';
        text += names + plain(option.value) + "\n\t" + plain(option.description) + ".\n\n";
    }
    return text;
}

std::string commandSection() {
    std::string text;
    for (const auto& [name, description] : commandTable()) {
        text += "*vantrel " + name + "*\n\t" + plain(description) + ".\n\n";
    }
    return text;
}

}  // namespace

std::string completionScript(const std::string& shell) {
    if (shell == "zsh") return zshScript();
    return shell == "fish" ? fishScript() : bashScript();
}

std::string manualSource() {
    return "vantrel(1)\n\n# NAME\n\nvantrel, VantrelCmd - lay out C and C++ sources\n" +
           section("SYNOPSIS",
                   "*vantrel* \\[-i | --check | --diff | -l\\] \\[-s _scheme_\\] \\[_path_...\\]\n\n"
                   "*vantrel* _command_ \\[_argument_\\]\n\n"
                   "*VantrelCmd* -s _scheme_ _infile_ _outfile_\n") +
           section(
               "DESCRIPTION",
               "Changes the white space of C and C++ sources as a scheme says, and nothing else: every run proves that "
               "the tokens, comments and directives are those of the source.\n\n"
               "Paths are files and folders. Folders are walked, without what .gitignore and .vantrelignore leave out. "
               "Without a path, standard input is formatted to standard output.\n\n"
               "The scheme is the one that *-s* names, or the file .vantrel.vts in the nearest folder upwards from "
               "each "
               "file.\n\n"
               "*VantrelCmd* formats one file into another, which it overwrites; \"-\" stands for standard input and "
               "output. *VantrelCmd -?* shows its usage.\n") +
           section("OPTIONS", optionSection()) + section("COMMANDS", commandSection()) +
           section("EXIT STATUS",
                   "*0*\n\tAll is fine.\n\n*1*\n\tSomething would change, with *--check*, *--diff* and *-l*.\n\n"
                   "*2*\n\tThe command line, a scheme, input or output.\n\n*3*\n\tA source was refused.\n") +
           section("FILES",
                   "_.vantrel.vts_\n\tThe scheme of a project.\n\n_.vantrelignore_\n\tFiles and folders to leave "
                   "out, in the form of .gitignore.\n") +
           section("ENVIRONMENT",
                   "*VANTREL_SCHEMES*\n\tA folder with schemes of your own.\n\n*NO_COLOR*\n\tMessages have "
                   "no colors.\n") +
           section("EXAMPLES",
                   "Format a tree in place:\n\n\tvantrel -i -s knr src\n\nOnly the lines that differ from the "
                   "last commit:\n\n\tvantrel -i --changed\n") +
           section("SEE ALSO", "*git*(1), *patch*(1)\n");
}

}  // namespace Tool
