#include "cmdline/cmd_line.h"

#include <cstdlib>
#include <iostream>

namespace {

constexpr const char* usageDescription = "; print usage and exit.";
constexpr int internalErrorStatus = 127;

std::string lastPathPart(const char* name) {
    if (!name || !*name) return "<unknown-program>";
    const std::string_view path = name;
    return std::string(path.substr(path.rfind('/') + 1));
}

}  // namespace

const char* CmdLine::version() {
    return "@(#)CmdLine\t1.04";
}

CmdLine::CmdLine(NameOnly name)
    : programName_(lastPathPart(name.programName)),
      errors_(&std::cerr),
      questionMark_('?', "?", usageDescription),
      help_('H', "Help", usageDescription) {
    defaultList_.add(questionMark_);
    defaultList_.add(help_);
    lists_.add(ownList_);
    lists_.add(defaultList_);
}

void CmdLine::error(std::string_view text) const {
    if (hasFlag(FLAG_QUIET)) return;
    *errors_ << programName_ << ": " << text << std::endl;
}

void CmdLine::fail(unsigned status, std::string_view message) {
    status_ |= status;
    error(message);
}

void CmdLine::quit(int status) const {
    if (quitHandler_) {
        quitHandler_(status);
    } else {
        std::exit(status);
    }
}

void CmdLine::endByInternalError(std::string_view text) const {
    *errors_ << "*** Internal error in class CmdLine.\n\t" << text << std::endl;
    quit(internalErrorStatus);
    std::exit(internalErrorStatus);  // there is no going on, whatever the quit handler thinks
}

const char* CmdLine::keywordPrefix() const {
    if (hasFlag(FLAG_KEYWORDS_ONLY)) return "-";
    return hasFlag(FLAG_ALLOW_PLUS) ? "+" : "--";
}

CmdLineSyntax CmdLine::shownSyntax() const {
    if (hasFlag(FLAG_OPTIONS_ONLY)) return CmdLineSyntax::OptionsOnly;
    return hasFlag(FLAG_KEYWORDS_ONLY) ? CmdLineSyntax::KeywordsOnly : CmdLineSyntax::Both;
}

std::string CmdLine::argumentName(const CmdArg& argument) const {
    if (argument.isPositional())
        return std::string(argument.valueName() ? argument.valueName() : "") + " argument";
    const bool hasOption = argument.optionCharacter() != 0;
    const bool byKeyword =
        argument.keyword() && !argument.wasMatchedByOption() &&
        (argument.wasMatchedByKeyword() || !hasOption || shownSyntax() == CmdLineSyntax::KeywordsOnly);
    const std::string form = byKeyword ? keywordPrefix() + std::string(argument.keyword())
                                       : std::string("-") + argument.optionCharacter();
    return form + " option";
}

CmdArg* CmdLineCmdArgIter::operator()() {
    for (;;) {
        if (CmdArg* argument = arguments_()) return argument;
        const CmdArgList* list = lists_();
        if (!list) return nullptr;
        arguments_ = CmdArgListIter(*list);
    }
}
