#pragma once

#include <string_view>

#include "cpp/nodes.h"
#include "engine/declaration_columns.h"
#include "scheme/property_set.h"
#include "textstream/text_document.h"

namespace Tessel {

// Collects the runs of declarations that are to be aligned:
//
//     int    a;
//     char*  b;   // comments, directives and blank lines do not end a run
//
//     long   c;
//     f();        // statements, and whatever has a body, do
//
// A calculator is accepted once by the root of a tree. What a run is made of, and how it is measured, is the
// business of the derived classes.
class OffsetCalculator : public Cpp::Emitter {
public:
    // Both are borrowed; `source` is the text that the tree's positions are positions in.
    OffsetCalculator(const PropertySet& scheme, const Zelmor::TextDocument& source);

    using Emitter::visit;
    void visit(Cpp::RootNode* root) override;
    void visit(Cpp::ClassBodyNode* body) override;
    void visit(Cpp::NamespaceBodyNode* body) override;
    void visit(Cpp::LinkageBlockBodyNode* body) override;
    void visit(Cpp::CtrlStmtNode* statement) override;
    void visit(Cpp::BlockNode* block) override;
    void visit(Cpp::ClassDeclNode* declaration) override;
    void visit(Cpp::NamespaceDeclNode* declaration) override;
    void visit(Cpp::LinkageBlockNode* declaration) override;
    void visit(Cpp::DataDeclNode*) override { flush(); }
    void visit(Cpp::FunctionDeclNode* declaration) override;
    void visit(Cpp::CtorDeclNode* declaration) override;
    void visit(Cpp::CtrlSubStmtNode* part) override;
    void visit(Cpp::ExprNode*) override { flush(); }
    void visit(Cpp::EnumDeclNode*) override { flush(); }
    void visit(Cpp::AccessSpecNode*) override { flush(); }
    void visit(Cpp::SyntaxNode*) override { flush(); }

    // Closes the current run.
    virtual void flush() = 0;

protected:
    void visitChildren(Cpp::InteriorNode& node);
    // The children of a class body, with inClassBody set.
    void visitMembers(Cpp::ClassBodyNode& body);
    void visitBody(Cpp::SyntaxNode* body);
    // For declarations that cannot join a run because of their body. What is declared there is no class
    // member.
    void flushAndVisitBody(const Cpp::FunctionDeclNode& declaration);

    // The source from the first character of what starts at `start` to the last one of what ends at `end`.
    std::string_view textBetween(Trn::Position start, Trn::Position end) const;
    std::string_view textOf(const Cpp::SyntaxNode& node) const {
        return textBetween(node.start(), node.end());
    }

    // Whether a name may be moved behind the type, and the type's lines be joined: not where a comment, a directive
    // or a literal in it has white space that stays.
    static bool maySpace(std::string_view type);

    int tabSize() const { return tabSize_; }
    bool inClassBody() const { return inClassBody_; }

private:
    const Zelmor::TextDocument& source_;
    int tabSize_;
    bool inClassBody_ = false;
};

}  // namespace Tessel
