#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "cpp/emitter.h"
#include "cpp/leaf_nodes.h"
#include "cpp/interior_nodes.h"

namespace Cpp {

// Takes runs of nodes out of a tree and destroys them: of each range its first node and all that a walk of
// the tree, children before their parents, meets behind it, but not its last node. Let the root accept the
// remover; one walk removes all ranges. A remover serves one removal.
//
// Where a range's first node is not in the tree nothing is removed for it; where its last is not met, all
// behind the first goes.
class NodeRangeRemover : public Emitter {
public:
    // The nodes are borrowed. They can be neither base classes nor argument lists and their arguments.
    using Range = std::pair<const SyntaxNode*, const SyntaxNode*>;
    using Ranges = std::vector<Range>;

    // The ranges must be given in the order in which the walk meets them.
    explicit NodeRangeRemover(Ranges ranges) : ranges_(std::move(ranges)) {}

    using Emitter::visit;
    void visit(AsmNode* node) override;
    void visit(LabelNode* node) override;
    void visit(TextNode* node) override;
    void visit(FunctionPtrDeclNode* node) override;
    void visit(LinkageBlockBodyNode* node) override;
    void visit(LinkageBlockNode* node) override;
    void visit(EnumBodyNode* node) override;
    void visit(EnumHeadNode* node) override;
    void visit(EnumDeclNode* node) override;
    void visit(PreprocDirectiveNode* node) override;
    void visit(CommentNode* node) override;
    void visit(TemplateNode* node) override;
    void visit(CaseNode* node) override;
    void visit(KeywordNode* node) override;
    void visit(CtrlSubStmtHeadNode* node) override;
    void visit(CtrlSubStmtNode* node) override;
    void visit(CtrlStmtNode* node) override;
    void visit(KeptNode* node) override;
    void visit(ExprNode* node) override;
    void visit(TypeNode* node) override;
    void visit(InitializerNode* node) override;
    void visit(InitializerListNode* node) override;
    void visit(DataDeclNode* node) override;
    void visit(ParameterListNode* node) override;
    void visit(ParameterNode* node) override;
    void visit(IdNode* node) override;
    void visit(FunctionReturnNode* node) override;
    void visit(BlockNode* node) override;
    void visit(FunctionHeadNode* node) override;
    void visit(FunctionDeclNode* node) override;
    void visit(CtorDeclNode* node) override;
    void visit(NamespaceBodyNode* node) override;
    void visit(NamespaceHeadNode* node) override;
    void visit(NamespaceDeclNode* node) override;
    void visit(AccessSpecNode* node) override;
    void visit(ClassNameNode* node) override;
    void visit(ClassHeadNode* node) override;
    void visit(ClassDeclNode* node) override;
    void visit(ClassBodyNode* node) override;
    void visit(BaseClauseListNode* node) override;
    void visit(RootNode* node) override;

private:
    void mark(const SyntaxNode* node);
    void removeFromList(InteriorNode* list);
    void visitBodies(const ExprBodies& bodies);
    template <typename Node>
    void removeFromSlots(Node* node);

    Ranges ranges_;
    std::size_t current_ = 0;  // the range that the walk is in or will meet next
    bool inRange_ = false;
};

}  // namespace Cpp
