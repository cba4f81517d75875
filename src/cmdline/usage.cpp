// The usage text:
//
//     Usage: VantrelCmd -s|--scheme schemename [-?|--?] [-H|--Help] infile outfile
//     Options/Arguments:
//             -s|--scheme schemename  scheme to use for formatting
//             ...
//
//     Description:
//             ...

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <ostream>
#include <string>
#include <vector>

#include "cmdline/cmd_line.h"
#include "cmdline/paragraph.h"

namespace {

constexpr int lineWidth = 79;
constexpr int paragraphIndent = 8;
constexpr int syntaxGap = 2;
constexpr int widestSyntaxColumn = 45;  // leaves room for the descriptions
constexpr const char* levelVariable = "USAGE_LEVEL";

int levelFromEnvironment() {
    const char* text = std::getenv(levelVariable);
    if (!text) return CmdLine::VERBOSE_USAGE;
    if (!*text) return CmdLine::NO_USAGE;
    char* end = nullptr;
    const long number = std::strtol(text, &end, 10);
    if (end == text || *end) return CmdLine::VERBOSE_USAGE;
    return number == 0 || number == 1 ? static_cast<int>(number) : CmdLine::VERBOSE_USAGE;
}

// The arguments that are shown: first all options, then all positional arguments.
std::vector<const CmdArg*> shownArguments(const CmdLine& commandLine) {
    std::vector<const CmdArg*> shown;
    for (const bool positional : {false, true}) {
        CmdLineCmdArgIter all(commandLine);
        while (const CmdArg* argument = all()) {
            if (!argument->isHidden() && argument->isPositional() == positional) shown.push_back(argument);
        }
    }
    return shown;
}

void printUsageLine(std::ostream& out, const CmdLine& commandLine, const std::vector<const CmdArg*>& shown) {
    const std::string start = std::string("Usage: ") + commandLine.programName();
    const std::string indent(start.size() + 1, ' ');
    std::size_t column = start.size();
    out << start;
    for (const CmdArg* argument : shown) {
        const std::string syntax = commandLine.formatArgSyntax(*argument, CmdLine::VERBOSE_USAGE);
        if (column + 1 + syntax.size() > lineWidth) {
            out << '\n' << indent;
            column = indent.size();
        } else {
            out << ' ';
            ++column;
        }
        out << syntax;
        column += syntax.size();
    }
    out << '\n';
}

void printArgumentList(std::ostream& out, const CmdLine& commandLine,
                       const std::vector<const CmdArg*>& shown) {
    std::vector<std::string> syntaxes;
    std::size_t widest = 0;
    for (const CmdArg* argument : shown) {
        syntaxes.push_back(commandLine.formatArgSyntax(*argument, CmdLine::TERSE_USAGE));
        widest = std::max(widest, syntaxes.back().size());
    }
    const int column = std::min(static_cast<int>(widest) + syntaxGap, widestSyntaxColumn);
    out << "Options/Arguments:\n";
    for (std::size_t index = 0; index < shown.size(); ++index) {
        printParagraph(out, {.indent = paragraphIndent, .titleWidth = column, .lineWidth = lineWidth},
                       syntaxes[index], shown[index]->description());
    }
}

}  // namespace

void CmdLine::printUsage(std::ostream& out, int level) const {
    if (level == USAGE_FROM_ENVIRONMENT) level = levelFromEnvironment();
    if (level == NO_USAGE) return;
    const std::vector<const CmdArg*> shown = shownArguments(*this);
    printUsageLine(out, *this, shown);
    if (level == VERBOSE_USAGE) {
        printArgumentList(out, *this, shown);
        if (!description_.empty()) {
            out << "\nDescription:\n";
            printParagraph(out, {.indent = paragraphIndent, .titleWidth = 0, .lineWidth = lineWidth}, "",
                           description_);
        }
    }
    out.flush();
}
