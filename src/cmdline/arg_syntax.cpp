// How the usage and the messages write an argument:
//
//     -s|--scheme schemename      [-v|--verbose]      infile      [-I value|--Include=value ...]

#include <string>

#include "cmdline/cmd_line.h"

namespace {

// The forms to show of an argument that may lack one of them.
CmdLineSyntax availableSyntax(const CmdArg& argument, CmdLineSyntax wanted) {
    if (wanted != CmdLineSyntax::Both) return wanted;
    if (!argument.keyword()) return CmdLineSyntax::OptionsOnly;
    if (argument.optionCharacter() == 0) return CmdLineSyntax::KeywordsOnly;
    return wanted;
}

std::string formatBothSticky(const CmdArg& argument, const std::string& option, const std::string& keyword) {
    const std::string value = argument.valueName();
    if (argument.needsValue()) return option + value + '|' + keyword + '=' + value;
    return option + '[' + value + "]|" + keyword + "[=" + value + ']';
}

std::string formatValue(const CmdArg& argument, CmdLineSyntax syntax) {
    const std::string value = argument.valueName();
    if (syntax == CmdLineSyntax::KeywordsOnly && argument.wantsStickyValue()) {
        return argument.needsValue() ? '=' + value : "[=" + value + ']';
    }
    return argument.needsValue() ? ' ' + value : " [" + value + ']';
}

std::string formatOption(const CmdArg& argument, CmdLineSyntax syntax, const std::string& prefix) {
    const std::string option = std::string("-") + argument.optionCharacter();
    const std::string keyword = prefix + (argument.keyword() ? argument.keyword() : "");
    std::string result;
    if (syntax == CmdLineSyntax::OptionsOnly) {
        result = option;
    } else if (syntax == CmdLineSyntax::KeywordsOnly) {
        result = keyword;
    } else if (argument.takesValue() && argument.wantsStickyValue()) {
        return formatBothSticky(argument, option, keyword);
    } else {
        result = option + '|' + keyword;
    }
    return argument.takesValue() ? result + formatValue(argument, syntax) : result;
}

std::string formatPositional(const CmdArg& argument) {
    return argument.valueName() ? argument.valueName() : "";
}

bool isKnown(CmdLineSyntax syntax) {
    return syntax == CmdLineSyntax::Both || syntax == CmdLineSyntax::OptionsOnly ||
           syntax == CmdLineSyntax::KeywordsOnly;
}

}  // namespace

std::string CmdLine::formatArgSyntax(const CmdArg& argument, int level) const {
    return formatArgSyntax(argument, level, shownSyntax());
}

std::string CmdLine::formatArgSyntax(const CmdArg& argument, int level, CmdLineSyntax syntax) const {
    if (!isKnown(syntax)) {
        endByInternalError("unknown CmdLineSyntax value (" + std::to_string(static_cast<int>(syntax)) + ')');
    }
    const bool isUsageLine = level == VERBOSE_USAGE;
    const bool isBracketed = isUsageLine && !argument.isRequired();
    std::string result;
    if (isBracketed) result += '[';
    result += argument.isPositional()
                  ? formatPositional(argument)
                  : formatOption(argument, availableSyntax(argument, syntax), keywordPrefix());
    if (isUsageLine && argument.isList()) result += " ...";
    if (isBracketed) result += ']';
    return result;
}
