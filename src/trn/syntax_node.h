#pragma once

#include "trn/position.h"

namespace Trn {

// A node of a syntax tree. Its start lies just after its first character, its end just after its last one;
// (0, 0) where the node covers no text.
class SyntaxNode {
public:
    virtual ~SyntaxNode() = default;

    virtual void setStart(Position position) = 0;
    virtual Position start() const = 0;
    virtual void setEnd(Position position) = 0;
    virtual Position end() const = 0;
};

}  // namespace Trn
