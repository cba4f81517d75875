#pragma once

#include <list>

#include "trn/diagnostic.h"

namespace Trn {

class Lexer;
class SyntaxNode;

// Turns the tokens of a text into a tree below `root`. Messages are appended to `diagnostics`.
class Parser {
public:
    virtual ~Parser() = default;
    virtual void parse(Lexer& lexer, SyntaxNode& root, std::list<Tessel::Diagnostic>& diagnostics) = 0;
};

}  // namespace Trn
