#pragma once

#include <string>
#include <string_view>

#include "engine/expr_tokens.h"

namespace Tessel {

// What of a directive is laid out as code is. An extent of no characters stands for nothing.
//
//     #if ( A||B ) && C(1,2)                   the condition
//     #define size(a,b) ( sizeof( a )*b )      the parameters, and what a macro stands for
//     #define stop(a) { flag=a; halt(); }      statements, which are laid out elsewhere
//
// The white space in front of these stays, as it tells what has parameters.
struct DirectiveParts {
    TextExtent parameters;
    TextExtent expression;  // one that nothing but an expression can be
    // What a macro stands for else, with the white space in front: statements, or an expression that begins in the
    // next line.
    TextExtent body;
    bool isCondition = false;

    bool areNone() const { return parameters.length == 0 && expression.length == 0 && body.length == 0; }
};

// The text behind the "#" of a directive with a letter's stand-in for each further one, which would begin a directive
// for the lexer; and for the blanks around those that join names.
std::string withoutHashes(std::string_view text);

// Whether a "##" stands in what a macro stands for; elsewhere it joins nothing.
bool joinsNames(std::string_view directive);

// The directive with that gap on both sides of each "##" that joins names, but at the ends of its lines.
std::string withPasteGaps(std::string_view directive, std::string_view gap);

// Of the text of one directive.
DirectiveParts partsOf(std::string_view directive);

}  // namespace Tessel
