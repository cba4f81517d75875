#pragma once

#include "cpp/nodes.h"
#include "textstream/text_document.h"

namespace Tessel {

// Goes over the nodes of a list, and tells which stand in a block that macros begin and end, which its author has
// indented:
//
//     BEGIN_MAP(A)
//         ENTRY(b)
//     END_MAP()
class MacroBlocks {
public:
    using Place = Cpp::InteriorNode::iterator;

    // The source is borrowed.
    MacroBlocks(const Zelmor::TextDocument& source, Place first, Place end, int tabSize)
        : source_(source), end_(end), blockEnd_(first), seen_(first), tabSize_(tabSize) {}

    // To be asked of each node in turn.
    bool isInside(Place node);

private:
    void lookBehind(Place opening);
    int columnOf(const Cpp::SyntaxNode& node) const;

    const Zelmor::TextDocument& source_;
    Place end_;
    Place blockEnd_;  // behind the last macro of the block that is being passed
    Place seen_;      // no block begins in front of it
    int tabSize_;
};

}  // namespace Tessel
