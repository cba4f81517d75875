#pragma once

#include <iosfwd>

#include "trn/token.h"

namespace Trn {

// A source of tokens. After the last token, nextToken returns a token of kEndKind as often as it is asked.
class Lexer {
public:
    virtual ~Lexer() = default;
    virtual Token nextToken() = 0;
    // Writes where the lexer stands, for debugging.
    virtual void printPosition(std::ostream& out) const = 0;
};

}  // namespace Trn
