#include "cmdline/cmd_arg.h"

#include <iostream>

#include "cmdline/cmd_arg_declaration.h"

namespace {

std::string orEmpty(const char* text) {
    return text ? text : "";
}

}  // namespace

CmdArg::CmdArg(char optionCharacter, const char* keyword, const char* valueName, const char* description,
               unsigned syntaxFlags)
    : optionCharacter_(optionCharacter),
      keyword_(orEmpty(keyword)),
      valueName_(orEmpty(valueName)),
      description_(orEmpty(description)),
      syntax_(syntaxFlags) {
    normalise();
}

CmdArg::CmdArg(char optionCharacter, const char* keyword, const char* description, unsigned syntaxFlags)
    : CmdArg(optionCharacter, keyword, nullptr, description, syntaxFlags) {}

CmdArg::CmdArg(const char* valueName, const char* description, unsigned syntaxFlags)
    : CmdArg(0, nullptr, valueName, description, syntaxFlags) {}

CmdArg::CmdArg(const char* declaration) {
    CmdArgDeclaration read = readDeclaration(declaration);
    for (const std::string& error : read.errors) {
        std::cerr << error << "\t(error occurred in CmdArg constructor)" << std::endl;
    }
    optionCharacter_ = read.optionCharacter;
    keyword_ = std::move(read.keyword);
    valueName_ = std::move(read.valueName);
    description_ = std::move(read.description);
    syntax_ = read.syntaxFlags;
    normalise();
}

// The order matters: each step sees what the former ones made of the flags.
void CmdArg::normalise() {
    constexpr unsigned bothPlaces = SYNTAX_VALUE_STICKY | SYNTAX_VALUE_SEPARATE;
    if (needsValue()) syntax_ &= ~SYNTAX_VALUE_OPTIONAL;
    if ((syntax_ & bothPlaces) == bothPlaces) syntax_ &= ~bothPlaces;
    if (!valueName_.empty() && !takesValue()) syntax_ |= SYNTAX_VALUE_REQUIRED;
    if (isPositional() && takesValue()) {
        syntax_ &= ~SYNTAX_REQUIRED;
        if (needsValue()) syntax_ |= SYNTAX_REQUIRED;
    }
    if (takesValue() && valueName_.empty()) valueName_ = "value";

    if (optionCharacter_ != 0 || !keyword_.empty() || isPositional()) return;
    if (takesValue()) {
        syntax_ |= SYNTAX_POSITIONAL;
    } else {
        std::cerr << "*** Error: non-positional CmdArg has no character or keyword name!\n"
                  << "\t(error occurred in CmdArg constructor)" << std::endl;
    }
}

void CmdArg::resetRunTime() {
    runTime_ = 0;
    sequence_ = 0;
}

void CmdArg::noteMatch(unsigned howMatched, unsigned sequence) {
    runTime_ = GIVEN | howMatched;
    sequence_ = sequence;
}
