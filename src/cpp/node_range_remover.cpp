#include "cpp/node_range_remover.h"

#include "cpp/nodes.h"

namespace Cpp {

// Called once the node's own children have been dealt with.
void NodeRangeRemover::mark(const SyntaxNode* node) {
    if (current_ == ranges_.size()) return;
    if (!inRange_) {
        inRange_ = node == ranges_[current_].first;
    } else if (node == ranges_[current_].second) {
        inRange_ = false;
        ++current_;
    }
}

void NodeRangeRemover::removeFromList(InteriorNode* list) {
    for (auto& child : list->children()) {
        child->accept(*this);
        if (inRange_) child.reset();
    }
    std::erase(list->children(), nullptr);
    mark(list);
}

// What lies in a body; the body itself goes with its expression.
void NodeRangeRemover::visitBodies(const ExprBodies& bodies) {
    for (const auto& body : bodies.blocks()) body->accept(*this);
}

template <typename Node>
void NodeRangeRemover::removeFromSlots(Node* node) {
    node->forEachSlot([this](auto& slot) {
        if (!slot) return;
        slot.get()->accept(*this);
        if (inRange_) slot = {};
    });
    mark(node);
}

void NodeRangeRemover::visit(RootNode* node) {
    removeFromList(node);
}
void NodeRangeRemover::visit(NamespaceBodyNode* node) {
    removeFromList(node);
}
void NodeRangeRemover::visit(ClassBodyNode* node) {
    removeFromList(node);
}
void NodeRangeRemover::visit(BaseClauseListNode* node) {
    removeFromList(node);
}
void NodeRangeRemover::visit(BlockNode* node) {
    removeFromList(node);
}
void NodeRangeRemover::visit(ParameterListNode* node) {
    removeFromList(node);
}
void NodeRangeRemover::visit(InitializerListNode* node) {
    removeFromList(node);
}
void NodeRangeRemover::visit(CtrlStmtNode* node) {
    removeFromList(node);
}
void NodeRangeRemover::visit(EnumBodyNode* node) {
    removeFromList(node);
}
void NodeRangeRemover::visit(LinkageBlockBodyNode* node) {
    removeFromList(node);
}
void NodeRangeRemover::visit(ClassDeclNode* node) {
    removeFromSlots(node);
}
void NodeRangeRemover::visit(ClassHeadNode* node) {
    removeFromSlots(node);
}
void NodeRangeRemover::visit(NamespaceDeclNode* node) {
    removeFromSlots(node);
}
void NodeRangeRemover::visit(CtorDeclNode* node) {
    removeFromSlots(node);
}
void NodeRangeRemover::visit(FunctionDeclNode* node) {
    removeFromSlots(node);
}
void NodeRangeRemover::visit(FunctionHeadNode* node) {
    removeFromSlots(node);
}
void NodeRangeRemover::visit(FunctionPtrDeclNode* node) {
    removeFromSlots(node);
}
void NodeRangeRemover::visit(DataDeclNode* node) {
    removeFromSlots(node);
}
void NodeRangeRemover::visit(InitializerNode* node) {
    visitBodies(node->bodies());
    removeFromSlots(node);
}
void NodeRangeRemover::visit(CtrlSubStmtHeadNode* node) {
    removeFromSlots(node);
}
void NodeRangeRemover::visit(CaseNode* node) {
    removeFromSlots(node);
}
void NodeRangeRemover::visit(TemplateNode* node) {
    removeFromSlots(node);
}
void NodeRangeRemover::visit(LinkageBlockNode* node) {
    removeFromSlots(node);
}
void NodeRangeRemover::visit(AsmNode* node) {
    removeFromSlots(node);
}
void NodeRangeRemover::visit(CtrlSubStmtNode* node) {
    removeFromSlots(node);
}
void NodeRangeRemover::visit(EnumDeclNode* node) {
    removeFromSlots(node);
}
void NodeRangeRemover::visit(LabelNode* node) {
    removeFromSlots(node);
}
void NodeRangeRemover::visit(ClassNameNode* node) {
    mark(node);
}
void NodeRangeRemover::visit(AccessSpecNode* node) {
    mark(node);
}
void NodeRangeRemover::visit(NamespaceHeadNode* node) {
    mark(node);
}
void NodeRangeRemover::visit(FunctionReturnNode* node) {
    mark(node);
}
void NodeRangeRemover::visit(IdNode* node) {
    mark(node);
}
void NodeRangeRemover::visit(ParameterNode* node) {
    mark(node);
}
void NodeRangeRemover::visit(TypeNode* node) {
    mark(node);
}
void NodeRangeRemover::visit(KeptNode* node) {
    mark(node);
}
void NodeRangeRemover::visit(ExprNode* node) {
    visitBodies(node->bodies());
    mark(node);
}
void NodeRangeRemover::visit(KeywordNode* node) {
    mark(node);
}
void NodeRangeRemover::visit(CommentNode* node) {
    mark(node);
}
void NodeRangeRemover::visit(PreprocDirectiveNode* node) {
    mark(node);
}
void NodeRangeRemover::visit(EnumHeadNode* node) {
    mark(node);
}
void NodeRangeRemover::visit(TextNode* node) {
    mark(node);
}

}  // namespace Cpp
