#pragma once

namespace Cpp {

class SyntaxNode;
class AccessSpecNode;
class AsmNode;
class BaseClauseListNode;
class BaseClauseNode;
class BlockNode;
class CaseNode;
class ClassBodyNode;
class ClassDeclNode;
class ClassHeadNode;
class ClassNameNode;
class CommentNode;
class CtorDeclNode;
class CtrlStmtNode;
class CtrlSubStmtHeadNode;
class CtrlSubStmtNode;
class DataDeclNode;
class EnumBodyNode;
class EnumDeclNode;
class EnumHeadNode;
class ExprNode;
class FunctionDeclNode;
class FunctionHeadNode;
class FunctionPtrDeclNode;
class FunctionReturnNode;
class IdNode;
class InitializerListNode;
class InitializerNode;
class KeptNode;
class KeywordNode;
class LabelNode;
class LinkageBlockBodyNode;
class LinkageBlockNode;
class NamespaceBodyNode;
class NamespaceDeclNode;
class NamespaceHeadNode;
class ParameterListNode;
class ParameterNode;
class PreprocDirectiveNode;
class RootNode;
class TemplateNode;
class TextNode;
class TypeNode;

// The visitor that every pass derives from. Visits do nothing here, and nothing is descended into: a pass
// sees the nodes whose visits it overrides, and lets their children accept it where it wants them.
class Emitter {
public:
    virtual ~Emitter() = default;

    virtual void visit(AsmNode*) {}
    virtual void visit(LabelNode*) {}
    virtual void visit(TextNode*) {}
    virtual void visit(FunctionPtrDeclNode*) {}
    virtual void visit(LinkageBlockBodyNode*) {}
    virtual void visit(LinkageBlockNode*) {}
    virtual void visit(EnumBodyNode*) {}
    virtual void visit(EnumHeadNode*) {}
    virtual void visit(EnumDeclNode*) {}
    virtual void visit(PreprocDirectiveNode*) {}
    virtual void visit(CommentNode*) {}
    virtual void visit(TemplateNode*) {}
    virtual void visit(CaseNode*) {}
    virtual void visit(KeptNode*) {}
    virtual void visit(KeywordNode*) {}
    virtual void visit(CtrlSubStmtHeadNode*) {}
    virtual void visit(CtrlSubStmtNode*) {}
    virtual void visit(CtrlStmtNode*) {}
    virtual void visit(ExprNode*) {}
    virtual void visit(TypeNode*) {}
    virtual void visit(InitializerNode*) {}
    virtual void visit(InitializerListNode*) {}
    virtual void visit(DataDeclNode*) {}
    virtual void visit(ParameterListNode*) {}
    virtual void visit(ParameterNode*) {}
    virtual void visit(IdNode*) {}
    virtual void visit(FunctionReturnNode*) {}
    virtual void visit(BlockNode*) {}
    virtual void visit(FunctionHeadNode*) {}
    virtual void visit(FunctionDeclNode*) {}
    virtual void visit(CtorDeclNode*) {}
    virtual void visit(NamespaceBodyNode*) {}
    virtual void visit(NamespaceHeadNode*) {}
    virtual void visit(NamespaceDeclNode*) {}
    virtual void visit(AccessSpecNode*) {}
    virtual void visit(ClassNameNode*) {}
    virtual void visit(ClassHeadNode*) {}
    virtual void visit(ClassDeclNode*) {}
    virtual void visit(ClassBodyNode*) {}
    virtual void visit(BaseClauseListNode*) {}
    virtual void visit(BaseClauseNode*) {}
    virtual void visit(RootNode*) {}
    // Interior nodes without a visit of their own, and the arguments of member initializers.
    virtual void visit(SyntaxNode*) {}
};

}  // namespace Cpp
