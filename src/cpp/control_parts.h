#pragma once

#include "cpp/composite_nodes.h"

namespace Cpp {

// The part that a statement begins with; null where it has none.
const CtrlSubStmtNode* firstPart(const CtrlStmtNode& statement);

// The keyword of a part, or of its head; kEndKind where there is none.
int keywordOf(const CtrlSubStmtNode* part);
int keywordOf(const CtrlSubStmtHeadNode* head);

// An "else" whose body is an "if" and nothing else.
bool continuesElseIf(const CtrlSubStmtNode& part);

}  // namespace Cpp
