#pragma once

#include "cpp/nodes.h"
#include "textstream/text_document.h"

namespace Tessel {

// What directives choose between where a control statement, or its body, is written once for each choice:
//
//     #if A                  else
//     if (a)                 #if A
//     #else                      a();
//     if (b)                 #else
//     #endif                     b();
//         c();               #endif

// Whether the body of the part is the same statement once more, for another choice.
bool repeatsHead(const Cpp::CtrlSubStmtNode& part, const Zelmor::TextDocument& source);

// Goes over the nodes of a block, and tells which are bodies for another choice.
class ConditionalBodies {
public:
    // The source is borrowed.
    explicit ConditionalBodies(const Zelmor::TextDocument& source) : source_(source) {}

    // To be told of each node in turn.
    bool isBody(const Cpp::SyntaxNode& node);

private:
    enum class State { Outside, BehindBody, BehindDirective };

    const Zelmor::TextDocument& source_;
    State state_ = State::Outside;
};

}  // namespace Tessel
