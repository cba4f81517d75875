#include "cpp/control_parts.h"

#include "cpp/nodes.h"
#include "cpp/token_kind.h"

namespace Cpp {

const CtrlSubStmtNode* firstPart(const CtrlStmtNode& statement) {
    return statement.size() == 0 ? nullptr : as<CtrlSubStmtNode>(statement.childBegin()->get());
}

int keywordOf(const CtrlSubStmtHeadNode* head) {
    return head && head->keyword() ? head->keyword()->keyword() : Trn::kEndKind;
}

int keywordOf(const CtrlSubStmtNode* part) { return part ? keywordOf(part->head()) : Trn::kEndKind; }

bool continuesElseIf(const CtrlSubStmtNode& part) {
    if (keywordOf(&part) != KeywordElse || !part.body() || part.body()->size() != 1) return false;
    const auto* statement = as<CtrlStmtNode>(part.body()->childBegin()->get());
    const CtrlSubStmtNode* first = statement ? firstPart(*statement) : nullptr;
    return keywordOf(first) == KeywordIf && first->start() == part.body()->start();
}

}  // namespace Cpp
