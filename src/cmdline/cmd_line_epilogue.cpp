// The end of a parse: what is still missing, asking the user for it, and giving up.

#include <cstdlib>
#include <iostream>

#include "cmdline/cmd_line.h"
#include "cmdline/restore.h"

namespace {

constexpr int syntaxErrorStatus = 2;
constexpr const char* promptVariable = "PROMPT_USER";

}  // namespace

unsigned CmdLine::epilogue() {
    checkState();
    if (state_.awaitsValue) {
        if (state_.awaiting->needsValue()) {
            fail(STATUS_VALUE_MISSING, "value required for " + argumentName(*state_.awaiting) + '.');
            stopAwaiting();
        } else {
            finishWithoutValue();
        }
    }
    reportMissing();
    const bool isMissing = (status_ & STATUS_ARG_MISSING) != 0;
    if (isMissing || (status_ != STATUS_OK && !hasFlag(FLAG_NO_ABORT))) {
        printUsage(*errors_, USAGE_FROM_ENVIRONMENT);
        quit(syntaxErrorStatus);
    }
    return status_;
}

void CmdLine::reportMissing() {
    CmdLineCmdArgIter all(*this);
    while (CmdArg* argument = all()) {
        if (!argument->isRequired() || argument->isGiven() || argument->isDummy()) continue;
        error(formatArgSyntax(*argument, TERSE_USAGE) + " required.");
        if (!wantsPrompt() || !promptFor(*argument)) status_ |= STATUS_ARG_MISSING;
    }
}

bool CmdLine::wantsPrompt() const {
    const char* value = std::getenv(promptVariable);
    return hasFlag(FLAG_PROMPT_USER) || (value && *value);
}

// Asks until a line gives the argument a good value. An empty line or the end of the input gives up.
bool CmdLine::promptFor(CmdArg& argument) {
    if (!argument.takesValue()) return false;
    const Restore keepFlags(flags_);
    setFlags(FLAG_TEMPORARY);
    bool isAnswered = false;
    std::string line;
    while (!isAnswered) {
        *errors_ << "Enter " << argument.valueName() << ": " << std::flush;
        if (!std::getline(std::cin, line) || line.empty()) break;
        match(argument, 0);
        argument.noteValue(CmdArg::VALUE_IN_SEPARATE_STRING);
        const char* text = line.c_str();
        isAnswered = argument.compile(text, *this) == 0;
    }
    if (!isAnswered) argument.resetRunTime();
    return isAnswered;
}
