#pragma once

#include <cstddef>

#include "engine/expr_tokens.h"

// ! a            !a
// p [i]          p[i]
// return(x);     return (x);
//
// White space between two tokens that no other key is about.
namespace Tessel {

enum class OtherGap { AsItIs, Nothing, Blank };

// What is to stand between the tokens at `before` and `behind`, between which there is nothing now, or blanks.
OtherGap otherGap(const ExprTokens& tokens, std::size_t before, std::size_t behind, bool isEmpty);

}  // namespace Tessel
