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

template <typename Node, typename Get, typename Set>
void NodeRangeRemover::removeFromSlot(Node* node, Get get, Set set) {
    auto* child = (node->*get)();
    if (!child) return;
    child->accept(*this);
    if (inRange_) (node->*set)(nullptr);
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
    removeFromSlot(node, &ClassDeclNode::head, &ClassDeclNode::setHead);
    removeFromSlot(node, &ClassDeclNode::body, &ClassDeclNode::setBody);
    mark(node);
}

void NodeRangeRemover::visit(ClassHeadNode* node) {
    removeFromSlot(node, &ClassHeadNode::baseClauses, &ClassHeadNode::setBaseClauses);
    removeFromSlot(node, &ClassHeadNode::name, &ClassHeadNode::setName);
    mark(node);
}

void NodeRangeRemover::visit(NamespaceDeclNode* node) {
    removeFromSlot(node, &NamespaceDeclNode::head, &NamespaceDeclNode::setHead);
    removeFromSlot(node, &NamespaceDeclNode::body, &NamespaceDeclNode::setBody);
    mark(node);
}

void NodeRangeRemover::visit(CtorDeclNode* node) {
    removeFromSlot(node, &CtorDeclNode::head, &CtorDeclNode::setHead);
    removeFromSlot(node, &CtorDeclNode::initializers, &CtorDeclNode::setInitializers);
    removeFromSlot(node, &CtorDeclNode::body, &CtorDeclNode::setBody);
    mark(node);
}

void NodeRangeRemover::visit(FunctionDeclNode* node) {
    removeFromSlot(node, &FunctionDeclNode::head, &FunctionDeclNode::setHead);
    removeFromSlot(node, &FunctionDeclNode::body, &FunctionDeclNode::setBody);
    mark(node);
}

void NodeRangeRemover::visit(FunctionHeadNode* node) {
    removeFromSlot(node, &FunctionHeadNode::returnType, &FunctionHeadNode::setReturnType);
    removeFromSlot(node, &FunctionHeadNode::name, &FunctionHeadNode::setName);
    removeFromSlot(node, &FunctionHeadNode::parameters, &FunctionHeadNode::setParameters);
    removeFromSlot(node, &FunctionHeadNode::pureSpec, &FunctionHeadNode::setPureSpec);
    removeFromSlot(node, &FunctionHeadNode::qualifiers, &FunctionHeadNode::setQualifiers);
    removeFromSlot(node, &FunctionHeadNode::exceptionSpec, &FunctionHeadNode::setExceptionSpec);
    removeFromSlot(node, &FunctionHeadNode::tail, &FunctionHeadNode::setTail);
    removeFromSlot(node, &FunctionHeadNode::oldParameters, &FunctionHeadNode::setOldParameters);
    mark(node);
}

void NodeRangeRemover::visit(FunctionPtrDeclNode* node) {
    removeFromSlot(node, &FunctionPtrDeclNode::returnType, &FunctionPtrDeclNode::setReturnType);
    removeFromSlot(node, &FunctionPtrDeclNode::name, &FunctionPtrDeclNode::setName);
    removeFromSlot(node, &FunctionPtrDeclNode::qualifiers, &FunctionPtrDeclNode::setQualifiers);
    removeFromSlot(node, &FunctionPtrDeclNode::parameters, &FunctionPtrDeclNode::setParameters);
    mark(node);
}

void NodeRangeRemover::visit(DataDeclNode* node) {
    removeFromSlot(node, &DataDeclNode::type, &DataDeclNode::setType);
    removeFromSlot(node, &DataDeclNode::name, &DataDeclNode::setName);
    removeFromSlot(node, &DataDeclNode::tail, &DataDeclNode::setTail);
    mark(node);
}

void NodeRangeRemover::visit(InitializerNode* node) {
    removeFromSlot(node, &InitializerNode::member, &InitializerNode::setMember);
    removeFromSlot(node, &InitializerNode::arguments, &InitializerNode::setArguments);
    visitBodies(node->bodies());
    mark(node);
}

void NodeRangeRemover::visit(CtrlSubStmtHeadNode* node) {
    removeFromSlot(node, &CtrlSubStmtHeadNode::keyword, &CtrlSubStmtHeadNode::setKeyword);
    removeFromSlot(node, &CtrlSubStmtHeadNode::condition, &CtrlSubStmtHeadNode::setCondition);
    mark(node);
}

void NodeRangeRemover::visit(CaseNode* node) {
    removeFromSlot(node, &CaseNode::keyword, &CaseNode::setKeyword);
    removeFromSlot(node, &CaseNode::value, &CaseNode::setValue);
    mark(node);
}

void NodeRangeRemover::visit(TemplateNode* node) {
    removeFromSlot(node, &TemplateNode::keyword, &TemplateNode::setKeyword);
    removeFromSlot(node, &TemplateNode::parameters, &TemplateNode::setParameters);
    mark(node);
}

void NodeRangeRemover::visit(LinkageBlockNode* node) {
    removeFromSlot(node, &LinkageBlockNode::linkage, &LinkageBlockNode::setLinkage);
    removeFromSlot(node, &LinkageBlockNode::body, &LinkageBlockNode::setBody);
    mark(node);
}

void NodeRangeRemover::visit(AsmNode* node) {
    removeFromSlot(node, &AsmNode::keyword, &AsmNode::setKeyword);
    removeFromSlot(node, &AsmNode::body, &AsmNode::setBody);
    mark(node);
}

void NodeRangeRemover::visit(CtrlSubStmtNode* node) {
    removeFromSlot(node, &CtrlSubStmtNode::head, &CtrlSubStmtNode::setHead);
    removeFromSlot(node, &CtrlSubStmtNode::body, &CtrlSubStmtNode::setBody);
    mark(node);
}

void NodeRangeRemover::visit(EnumDeclNode* node) {
    removeFromSlot(node, &EnumDeclNode::head, &EnumDeclNode::setHead);
    removeFromSlot(node, &EnumDeclNode::body, &EnumDeclNode::setBody);
    mark(node);
}

void NodeRangeRemover::visit(LabelNode* node) {
    removeFromSlot(node, &LabelNode::name, &LabelNode::setName);
    mark(node);
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
