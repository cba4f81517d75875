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
//
// and the ends of a statement:
//
//     int a
//     #if A
//         = 1;
//     #else
//         = 2;
//     #endif

// Whether the body of the part is the same statement once more, for another choice.
bool repeatsHead(const Cpp::CtrlSubStmtNode& part, const Zelmor::TextDocument& source);

// Goes over the nodes of a block, and tells which are bodies, or ends, for another choice.
class ConditionalBodies {
public:
    // The source is borrowed.
    explicit ConditionalBodies(const Zelmor::TextDocument& source) : source_(source) {}

    // To be told of each node in turn.
    bool isBody(const Cpp::SyntaxNode& node);
    // Whether the body that was told of last is another end of a statement.
    bool isEnd() const { return isEnd_; }

private:
    enum class State { Outside, BehindBody, BehindDirective };

    const Zelmor::TextDocument& source_;
    const Cpp::SyntaxNode* previous_ = nullptr;
    State state_ = State::Outside;
    bool isEnd_ = false;
};

}  // namespace Tessel
