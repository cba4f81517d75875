#pragma once

#include <string_view>

#include "engine/expr_tokens.h"

namespace Tessel {

// What of a directive is laid out as code is. An extent of no characters stands for nothing.
//
//     #if ( A||B ) && C(1,2)                   the condition
//     #define size(a,b) ( sizeof( a )*b )      the parameters, and what a macro stands for
//
// The white space in front of these stays, as it tells what has parameters.
struct DirectiveParts {
    TextExtent parameters;
    TextExtent expression;  // one that nothing but an expression can be

    bool areNone() const { return parameters.length == 0 && expression.length == 0; }
};

// Of the text of one directive.
DirectiveParts partsOf(std::string_view directive);

}  // namespace Tessel
