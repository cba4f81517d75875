#pragma once

#include "trn/token_buffer.h"

namespace Cpp {

// What begins at a place, as one look ahead tells. Every pair of brackets counts as one piece, and words that
// nobody knows are pieces too, so that only the role of each "( )" and the end of the item need a rule.
struct Item {
    using Index = Trn::TokenBuffer::Index;
    enum class Shape {
        None,             // nothing: the end of the text or of the body around
        Function,         // a head with parameters
        FunctionPointer,  // a declarator in parentheses
        Class,            // a body in braces behind words that have a class key, or should have one
        Enum,
        Data,       // all other declarations
        Statement,  // an expression, outside of functions
        Macro,      // a macro that stands by itself, without a ";"
        MacroHead,  // a macro in front of a block or a statement, as a control statement's head
    };

    Shape shape = Shape::None;
    // The token that told; of a macro, the first one behind it, but its last one where it opens a class.
    Index place = 0;
    Index parameters = 0;  // the "(" of a function's parameters
};

}  // namespace Cpp
