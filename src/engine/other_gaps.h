#pragma once

#include <cstddef>

#include "cpp/token_kind.h"
#include "cpp/token_sets.h"
#include "cpp/words.h"
#include "engine/expr_tokens.h"

// ! a            !a
// p [i]          p[i]
// return(x);     return (x);
// new(p)T        new (p) T
//
// White space between two tokens that no other key is about.
namespace Tessel {

// Whether a token of that kind may have to stand apart from one of the other in front of it.
constexpr bool mayNeedBlank(int before, int kind) {
    switch (before) {
        case Cpp::Semicolon: return true;
        case Cpp::CloseParen:
        case Cpp::CloseBracket:
        case Cpp::CloseBrace:
        case Cpp::Greater:
        case Cpp::ShiftRight:
        case Cpp::Ampersand:
        case Cpp::LogicalAnd:
        case Cpp::Dot: return Cpp::isWord(kind);
        default: return Cpp::isKeyword(before);
    }
}

enum class OtherGap { AsItIs, Nothing, Blank };

// What is to stand between the tokens at `before` and `behind`, between which there is nothing now, or blanks.
OtherGap otherGap(const ExprTokens& tokens, std::size_t before, std::size_t behind, bool isEmpty);

}  // namespace Tessel
