#pragma once

#include <cstddef>

#include "cpp/token_kind.h"
#include "cpp/token_sets.h"
#include "engine/expr_tokens.h"

// ! a            !a
// p [i]          p[i]
// return(x);     return (x);
// new(p)T        new (p) T
//
// White space between two tokens that no other key is about.
namespace Tessel {

// Whether there are tokens that are to stand apart from one of this kind in front of them.
constexpr bool mayNeedBlank(int kind) {
    switch (kind) {
        case Cpp::Semicolon:
        case Cpp::CloseParen:
        case Cpp::CloseBracket:
        case Cpp::CloseBrace:
        case Cpp::Greater:
        case Cpp::ShiftRight:
        case Cpp::Ampersand:
        case Cpp::LogicalAnd:
        case Cpp::Dot: return true;
        default: return Cpp::isKeyword(kind);
    }
}

enum class OtherGap { AsItIs, Nothing, Blank };

// What is to stand between the tokens at `before` and `behind`, between which there is nothing now, or blanks.
OtherGap otherGap(const ExprTokens& tokens, std::size_t before, std::size_t behind, bool isEmpty);

}  // namespace Tessel
