#include "tool/options.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <map>
#include <ostream>

#include "run/side_threads.h"
#include "scheme/scheme_conversion.h"
#include "tool/failure.h"

namespace Tool {

namespace {

constexpr const char* examples =
    "Examples:\n"
    "  vantrel -i -s knr src              format a tree in place\n"
    "  vantrel --check .                  in continuous integration: status 1 when something would change\n"
    "  vantrel --diff main.cpp            show what would change\n"
    "  vantrel -i --changed               only the lines that differ from the last commit\n"
    "  vantrel -s llvm - < a.cpp          as a filter\n"
    "\n"
    "Scripts written for clang-format find its -style=, -lines=, -offset=, -length=, -cursor= and their like.\n"
    "Without -s, the scheme is the file .vantrel.vts in the nearest folder upwards from each file.\n"
    "Status: 0 fine, 1 something would change, 2 usage, scheme, input or output, 3 something was refused.\n";

constexpr const char* otherGroup = "As other formatters have it";

// Long options that other formatters take with one dash.
constexpr std::string_view singleDashed[] = {"style",  "fallback-style", "assume-filename",         "lines", "offset",
                                             "length", "cursor",         "output-replacements-xml", "sort-includes"};

const std::map<std::string, MessageFormat> formats = {
    {"text", MessageFormat::Text},     {"gcc", MessageFormat::Gcc},     {"json", MessageFormat::Json},
    {"github", MessageFormat::Github}, {"sarif", MessageFormat::Sarif}, {"checkstyle", MessageFormat::Checkstyle}};
const std::map<std::string, OnRefusal> refusals = {
    {"fail", OnRefusal::Fail}, {"skip", OnRefusal::Skip}, {"echo", OnRefusal::Echo}};
const std::map<std::string, Color> colors = {
    {"auto", Color::Auto}, {"always", Color::Always}, {"never", Color::Never}};

template <typename Value>
std::vector<std::string> namesOf(const std::map<std::string, Value>& choices) {
    std::vector<std::string> names;
    for (const auto& [name, value] : choices) names.push_back(name);
    return names;
}

// Puts the number of a choice in the place of its name, as values of enumerations are read.
template <typename Value>
CLI::Validator oneOf(const std::map<std::string, Value>& choices) {
    const auto exchange = [&choices](std::string& input) -> std::string {
        const auto found = choices.find(input);
        if (found != choices.end()) {
            input = std::to_string(static_cast<int>(found->second));
            return {};
        }
        std::string message = '"' + input + "\" is none of";
        for (const std::string& name : namesOf(choices)) message += ' ' + name;
        return message;
    };
    return CLI::Validator(exchange, "");
}

std::size_t number(const std::string& text) {
    if (text.empty() || text.size() > 15 || text.find_first_not_of("0123456789") != std::string::npos) {
        throw Failure("\"" + text + "\" is no number");
    }
    return std::stoul(text);
}

Edits::LineSet::Range lineRange(const std::string& text) {
    const std::size_t colon = text.find(':');
    if (colon == std::string::npos)
        throw Failure("--lines takes two numbers, as in --lines 10:20; not \"" + text + '"');
    const Edits::LineSet::Range range{number(text.substr(0, colon)), number(text.substr(colon + 1))};
    if (range.first == 0 || range.last < range.first) {
        throw Failure("--lines " + text + ": lines count from 1, and the second number is the last line");
    }
    return range;
}

// The command line as its parser wants it.
std::vector<std::string> words(int count, const char* const* arguments) {
    std::vector<std::string> result;
    for (int index = 1; index < count; ++index) {
        std::string word = arguments[index];
        const std::string_view name = std::string_view(word).substr(0, word.find('='));
        const bool isSingleDashed = std::any_of(std::begin(singleDashed), std::end(singleDashed), [&](auto known) {
            return name.size() == known.size() + 1 && name.front() == '-' && name.substr(1) == known;
        });
        if (isSingleDashed) word.insert(0, "-");
        if (word == "--changed") word += "=HEAD";  // what follows is a path
        result.push_back(std::move(word));
    }
    return result;
}

class CommandLine {
public:
    CommandLine() : app_("Lays out C and C++ sources: white space changes, and nothing else.", "vantrel") {
        app_.footer(examples);
        app_.get_formatter()->column_width(34);
        app_.set_version_flag("--version", std::string("vantrel ") + TesselUI::CURRENT_VERSION +
                                               " (schemes of version " + TesselUI::CURRENT_VERSION + ")",
                              "Show the version");
        app_.set_help_flag("-h,--help", "Show this");
        addFiles();
        addModes();
        addReports();
        addOthers();
        addCommands();
    }

    const CLI::App& app() const { return app_; }

    // On one screen: without what scripts ask for rather than people.
    std::string help() {
        for (CLI::Option* option : app_.get_options([](CLI::Option* one) { return one->get_group() == otherGroup; })) {
            option->group("");
        }
        return app_.help();
    }

    Options parse(std::vector<std::string> arguments) {
        std::reverse(arguments.begin(), arguments.end());  // as the parser takes them
        app_.parse(std::move(arguments));
        readModes();
        for (const std::string& range : lines_) options_.lines.push_back(lineRange(range));
        if (!style_.empty() && style_ != "file") options_.scheme = style_;
        return std::move(options_);
    }

private:
    void addFiles() {
        app_.add_option("PATH", options_.paths, "Files and folders; \"-\", or none, is standard input")
            ->type_name("");
        app_.add_option("--files", options_.filesFrom, "Read paths from a file, one a line")->type_name("LIST");
        app_.add_flag("-0,--null", options_.hasNullSeparators, "Paths in that file end in a NUL");
        addEndings(app_);
    }

    void addEndings(CLI::App& app) {
        app.add_option("--ext", options_.endings, "Take files with this ending from folders, too")
            ->type_name("EXT")
            ->delimiter(',')
            ->allow_extra_args(false);
        app.add_option("--exclude", options_.excluded, "Leave these files and folders out")
            ->type_name("GLOB")
            ->allow_extra_args(false);
    }

    void addModes() {
        addScheme(app_);
        app_.add_flag("-i,--in-place", inPlace_, "Write the files that change");
        app_.add_flag("--check", check_, "Write nothing, name what would change");
        app_.add_flag("--diff", diff_, "Write nothing, print a unified diff");
        app_.add_flag("-l,--list", list_, "Write nothing, print only the names of what would change");
        app_.add_option("--lines", lines_, "Only these lines")->type_name("A:B")->allow_extra_args(false);
        app_.add_option("--changed", options_.changedSince, "Only lines that differ from a revision (HEAD)")
            ->type_name("[=REV]");
        app_.add_flag("--staged", options_.onlyStaged, "Only lines that are staged");
        app_.add_option("--stdin-filename,--assume-filename", options_.inputName, "The name of standard input")
            ->type_name("NAME");
    }

    void addReports() {
        app_.add_option("--format", options_.format, "How messages look: text, gcc, json, github, sarif, checkstyle")
            ->type_name("FORMAT")
            ->transform(oneOf(formats));
        app_.add_option("--on-refusal", options_.onRefusal, "What a refused source does: fail, skip, echo")
            ->type_name("WHAT")
            ->transform(oneOf(refusals));
        app_.add_option("--color", options_.color, "auto, always, never")
            ->type_name("WHEN")
            ->transform(oneOf(colors));
        app_.add_flag("-q,--quiet", options_.isQuiet, "Nothing but errors");
        app_.add_flag("-v,--verbose", options_.isVerbose, "Each file, with what became of it");
        addJobs(app_);
    }

    void addOthers() {
        app_.add_option("--style", style_, "file, or a scheme")->type_name("NAME")->group(otherGroup);
        app_.add_option("--offset", options_.offsets, "Where a range begins, in bytes")
            ->type_name("N")
            ->group(otherGroup)
            ->allow_extra_args(false);
        app_.add_option("--length", options_.lengths, "How long it is")
            ->type_name("N")
            ->group(otherGroup)
            ->allow_extra_args(false);
        app_.add_option("--cursor", options_.cursor, "Tell where this offset moves to")
            ->type_name("N")
            ->group(otherGroup);
        app_.add_flag("--output-replacements-xml", options_.printsReplacements, "Print replacements")
            ->group(otherGroup);
        app_.add_option("--fallback-style", ignored_, "")->group("");
        app_.add_option("--sort-includes", ignored_, "")->group("")->expected(0, 1);
    }

    void addCommands() {
        app_.require_subcommand(0, 1);
        addCommand(app_, "schemes", "List the schemes", Command::Schemes)
            ->footer(
                "Example: vantrel schemes\nThe user's own, in the folder VANTREL_SCHEMES, come before shipped ones.");
        CLI::App* const keys =
            addCommand(app_, "keys", "Tell of the keys of schemes, or of one, with an example", Command::Keys);
        keys->footer("Examples:\n  vantrel keys                    all keys, by group\n"
                     "  vantrel keys WS_AFTER_FN_NAME   one of them, with an example\n");
        keys->add_option("KEY", options_.argument, "A key")->type_name("");
        keys->add_flag_callback("--markdown", [this] { options_.keyPage = KeyPage::Markdown; }, "All, as Markdown");
        keys->add_flag_callback("--html", [this] { options_.keyPage = KeyPage::Html; }, "All, as a page of HTML");
        CLI::App* const scheme = app_.add_subcommand("scheme", "Show, check or upgrade a scheme");
        scheme->require_subcommand(1);
        scheme->footer("Examples:\n  vantrel scheme show knr > .vantrel.vts   starts with a shipped one\n"
                       "  vantrel scheme check .vantrel.vts     status 2 when a line does nothing\n"
                       "  vantrel scheme upgrade .vantrel.vts   writes the file\n");
        addCommand(*scheme, "show", "Print the text of a scheme, to start another one with", Command::SchemeShow)
            ->add_option("NAME", options_.argument, "The scheme: a name, or a file")
            ->required()
            ->type_name("");
        addFile(addCommand(*scheme, "check", "Name the lines that do not do what they seem to", Command::SchemeCheck));
        addFile(addCommand(*scheme, "upgrade", "Bring an old scheme to the current keys", Command::SchemeUpgrade));
        CLI::App* const why =
            addCommand(app_, "why", "Tell why a file is refused, or what is kept of it", Command::Why);
        why->footer("Example: vantrel why -s knr main.cpp\nStatus 3 when the file is refused.");
        addFile(why);
        addScheme(*why);
        CLI::App* const explain =
            addCommand(app_, "explain", "Tell which key decides each gap that changes", Command::Explain);
        explain->footer("Examples:\n  vantrel explain main.cpp                 each gap that changes\n"
                        "  vantrel explain -s knr main.cpp:12       all gaps of a line\n"
                        "  vantrel explain main.cpp:12:8            the gap at a column\n"
                        "  vantrel explain --summary src            the keys, by the gaps that they change\n");
        explain->add_option("FILE[:LINE[:COLUMN]]", options_.paths, "The place; files and folders for --summary")
            ->required()
            ->type_name("");
        explain->add_flag("--summary", options_.isSummary, "Count the gaps that each key changes");
        addPass(*explain);
        addScheme(*explain);
        explain->add_option("--format", options_.format, "text, json")->type_name("FORMAT")->transform(oneOf(formats));
        addLearn();
        addCommand(app_, "lsp", "Run as a language server over standard input and output", Command::Lsp)
            ->add_option("-s,--scheme", options_.scheme, "The scheme of files without one: a name, or a file")
            ->type_name("NAME|FILE");
        addCommand(app_, "completion", "Print the completion of a shell: bash, zsh, fish", Command::Completion)
            ->add_option("SHELL", options_.argument, "bash, zsh or fish")
            ->required()
            ->type_name("")
            ->check(CLI::IsMember({"bash", "zsh", "fish"}));
        addCommand(app_, "manual", "Print the source of the manual page", Command::Manual)->group("");
    }

    void addLearn() {
        CLI::App* const learn =
            addCommand(app_, "learn", "Make a scheme of what sources do already", Command::Learn);
        learn->footer("Examples:\n  vantrel learn -o .vantrel.vts src        a scheme for a project\n"
                      "  vantrel learn --html style.html src      a page to look at\n");
        learn->add_option("PATH", options_.paths, "Files and folders")->required()->type_name("");
        learn->add_option("-o,--output", options_.outputFile, "Where the scheme goes; else standard output")
            ->type_name("FILE");
        learn->add_option("--html", options_.htmlFile, "Write a page that shows what was found")->type_name("FILE");
        learn->add_option("--min-agreement", options_.minAgreement, "The share of places that have to agree (0.8)")
            ->type_name("SHARE");
        learn->add_option("--from", options_.from, "A scheme that tells what the sources do not")
            ->type_name("NAME|FILE");
        addPass(*learn);
    }

    // What those commands take that read many files.
    void addPass(CLI::App& command) {
        addEndings(command);
        addJobs(command);
        command.add_flag("-q,--quiet", options_.isQuiet, "Nothing but errors");
    }

    void addJobs(CLI::App& app) {
        app.add_option("-j,--jobs", options_.jobs, "How many processors to use")
            ->type_name("N")
            ->check(CLI::Range(1, 1024).description(""));
    }

    CLI::App* addCommand(CLI::App& parent, const std::string& name, const std::string& description, Command command) {
        CLI::App* const added = parent.add_subcommand(name, description);
        added->callback([this, command] { options_.command = command; });
        return added;
    }

    void addScheme(CLI::App& command) {
        command.add_option("-s,--scheme", options_.scheme, "The scheme: a name, or a file")->type_name("NAME|FILE");
    }

    void addFile(CLI::App* command) {
        command->add_option("FILE", options_.argument, "The file")->required()->type_name("");
    }

    void readModes() {
        const std::pair<bool, Mode> modes[] = {
            {inPlace_, Mode::InPlace}, {check_, Mode::Check}, {diff_, Mode::Diff}, {list_, Mode::List}};
        int count = 0;
        for (const auto& [isOn, mode] : modes) {
            if (!isOn) continue;
            options_.mode = mode;
            ++count;
        }
        if (count > 1) throw Failure("-i, --check, --diff and -l exclude each other");
    }

    CLI::App app_;
    Options options_;
    std::vector<std::string> lines_;
    std::string style_;
    std::string ignored_;
    bool inPlace_ = false;
    bool check_ = false;
    bool diff_ = false;
    bool list_ = false;
};

}  // namespace

std::optional<Options> parseOptions(int count, const char* const* arguments, std::ostream& out) {
    CommandLine commandLine;
    try {
        return commandLine.parse(words(count, arguments));
    } catch (const CLI::CallForVersion& version) {
        out << version.what() << '\n';
    } catch (const CLI::CallForHelp&) {
        out << commandLine.help();
    } catch (const CLI::ParseError& error) {
        std::string message = error.what();
        while (message.ends_with('\n')) message.pop_back();
        throw Failure(message + "\n\"vantrel --help\" shows all options.");
    }
    return std::nullopt;
}

std::size_t threadsFor(const Options& options) {
    if (options.jobs > 0) return static_cast<std::size_t>(options.jobs);
    return Run::threadsOfMachine();
}

std::vector<OptionEntry> optionTable() {
    CommandLine commandLine;
    const std::map<std::string, std::vector<std::string>> choices = {
        {"format", namesOf(formats)}, {"on-refusal", namesOf(refusals)}, {"color", namesOf(colors)}};
    std::vector<OptionEntry> table;
    for (const CLI::Option* option : commandLine.app().get_options()) {
        if (option->get_positional() || option->get_group().empty()) continue;
        const auto found = choices.find(option->get_lnames().empty() ? "" : option->get_lnames().front());
        table.push_back({option->get_name(false, true), option->get_type_size() == 0 ? "" : option->get_type_name(),
                         option->get_description(),
                         found == choices.end() ? std::vector<std::string>() : found->second});
    }
    return table;
}

std::vector<std::pair<std::string, std::string>> commandTable() {
    CommandLine commandLine;
    std::vector<std::pair<std::string, std::string>> table;
    for (const CLI::App* command : commandLine.app().get_subcommands({})) {
        if (!command->get_group().empty()) table.emplace_back(command->get_name(), command->get_description());
    }
    return table;
}

}  // namespace Tool
