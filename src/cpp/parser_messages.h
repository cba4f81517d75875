#pragma once

#include <string>

#include "trn/token.h"

namespace Cpp {

// Messages that are given by their code.
enum ErrorCode : int {
    UnexpectedEnd = 1,
    ExpectedFunctionEnd = 2,
    ExpectedDataEnd = 3,
    MissingType = 4,
    UnexpectedSemicolon = 5,
    StraySemicolon = 6,
    CannotParse = 7,
    AccessLabelInBlock = 8,
    TemplateInBlock = 9,
    NamespaceInBlock = 10,
    ExpectedControlKeyword = 11,
    ExpectedCloseParen = 12,
    ExpectedOpenParen = 13,
    ExpectedAccessKeyword = 14,
};

const char* messageText(int code);

// A token's text as a message shows it: its first line.
std::string shown(const Trn::Token& token);

}  // namespace Cpp
