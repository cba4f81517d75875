#pragma once

#include <array>
#include <memory>
#include <utility>

#include "cpp/interior_nodes.h"

// Nodes with a fixed set of children, any of which may be missing. Setting a child destroys the one it
// replaces.
namespace Cpp {

// An owning pointer that copies what it points at.
template <typename Node>
class ChildSlot {
public:
    ChildSlot() = default;
    ChildSlot(std::unique_ptr<Node> node) : node_(std::move(node)) {}
    ChildSlot(const ChildSlot& other) : node_(other.node_ ? std::make_unique<Node>(*other.node_) : nullptr) {}
    ChildSlot(ChildSlot&&) noexcept = default;
    ChildSlot& operator=(ChildSlot other) noexcept {
        node_.swap(other.node_);
        return *this;
    }

    Node* get() const { return node_.get(); }
    explicit operator bool() const { return node_ != nullptr; }

private:
    std::unique_ptr<Node> node_;
};

// The positions of a composite, from its children in source order (`Derived::children()`): the start of the
// first one that is there, the end of the last one.
template <typename Derived, typename Base>
class CompositeNode : public VisitableNode<Derived, Base> {
public:
    void setStart(Trn::Position position) override {
        if (SyntaxNode* child = firstChild()) child->setStart(position);
    }
    Trn::Position start() const override {
        const SyntaxNode* child = firstChild();
        return child ? child->start() : Trn::Position{};
    }
    void setEnd(Trn::Position position) override {
        if (SyntaxNode* child = lastChild()) child->setEnd(position);
    }
    Trn::Position end() const override {
        const SyntaxNode* child = lastChild();
        return child ? child->end() : Trn::Position{};
    }

protected:
    SyntaxNode* firstChild() const {
        for (SyntaxNode* child : static_cast<const Derived*>(this)->children()) {
            if (child) return child;
        }
        return nullptr;
    }
    SyntaxNode* lastChild() const {
        const auto children = static_cast<const Derived*>(this)->children();
        for (auto child = children.rbegin(); child != children.rend(); ++child) {
            if (*child) return *child;
        }
        return nullptr;
    }
};

// A composite that keeps its own end, typically that of a closing ")", ":" or ";" which no child covers.
// While it is not set the last child's end counts.
template <typename Derived, typename Base>
class EndedNode : public CompositeNode<Derived, Base> {
public:
    void setEnd(Trn::Position position) override { storedEnd_ = position; }
    Trn::Position end() const override {
        return Trn::isSet(storedEnd_) ? storedEnd_ : CompositeNode<Derived, Base>::end();
    }
    Trn::Position storedEnd() const { return storedEnd_; }

private:
    Trn::Position storedEnd_;
};

// A composite whose stored end stands in for its start when it has no child.
template <typename Derived>
class MarkedNode : public EndedNode<Derived, SyntaxNode> {
public:
    Trn::Position start() const override {
        return this->firstChild() ? EndedNode<Derived, SyntaxNode>::start() : this->storedEnd();
    }
};

class DeclNode : public SyntaxNode {};

// A construct of a head and a body.
template <typename Base, typename Head, typename Body>
class HeadedNode : public Base {
public:
    HeadedNode() = default;
    HeadedNode(std::unique_ptr<Head> head, std::unique_ptr<Body> body)
        : head_(std::move(head)), body_(std::move(body)) {}

    Head* head() const { return head_.get(); }
    void setHead(std::unique_ptr<Head> head) { head_ = std::move(head); }
    Body* body() const { return body_.get(); }
    void setBody(std::unique_ptr<Body> body) { body_ = std::move(body); }

    std::array<SyntaxNode*, 2> children() const { return {head_.get(), body_.get()}; }

private:
    ChildSlot<Head> head_;
    ChildSlot<Body> body_;
};

// Keyword and parenthesised part of a control statement's part.
class CtrlSubStmtHeadNode : public EndedNode<CtrlSubStmtHeadNode, SyntaxNode> {
public:
    KeywordNode* keyword() const { return keyword_.get(); }
    void setKeyword(std::unique_ptr<KeywordNode> keyword) { keyword_ = std::move(keyword); }
    ExprNode* condition() const { return condition_.get(); }
    void setCondition(std::unique_ptr<ExprNode> condition) { condition_ = std::move(condition); }

    std::array<SyntaxNode*, 2> children() const { return {keyword_.get(), condition_.get()}; }

private:
    ChildSlot<KeywordNode> keyword_;
    ChildSlot<ExprNode> condition_;
};

// One part of a control statement: its head and its body, with braces or without around a single statement.
class CtrlSubStmtNode
    : public HeadedNode<CompositeNode<CtrlSubStmtNode, SyntaxNode>, CtrlSubStmtHeadNode, BlockNode> {
public:
    using HeadedNode::HeadedNode;
};

// A case label up to its ":"; no value for "default".
class CaseNode : public MarkedNode<CaseNode> {
public:
    KeywordNode* keyword() const { return keyword_.get(); }
    void setKeyword(std::unique_ptr<KeywordNode> keyword) { keyword_ = std::move(keyword); }
    ExprNode* value() const { return value_.get(); }
    void setValue(std::unique_ptr<ExprNode> value) { value_ = std::move(value); }

    std::array<SyntaxNode*, 2> children() const { return {keyword_.get(), value_.get()}; }

private:
    ChildSlot<KeywordNode> keyword_;
    ChildSlot<ExprNode> value_;
};

// A label up to its ":".
class LabelNode : public MarkedNode<LabelNode> {
public:
    IdNode* name() const { return name_.get(); }
    void setName(std::unique_ptr<IdNode> name) { name_ = std::move(name); }

    std::array<SyntaxNode*, 1> children() const { return {name_.get()}; }

private:
    ChildSlot<IdNode> name_;
};

// A template header; what it is the header of follows as its next sibling.
class TemplateNode : public CompositeNode<TemplateNode, SyntaxNode> {
public:
    TemplateNode() = default;
    TemplateNode(std::unique_ptr<KeywordNode> keyword, std::unique_ptr<ParameterListNode> parameters)
        : keyword_(std::move(keyword)), parameters_(std::move(parameters)) {}

    KeywordNode* keyword() const { return keyword_.get(); }
    void setKeyword(std::unique_ptr<KeywordNode> keyword) { keyword_ = std::move(keyword); }
    ParameterListNode* parameters() const { return parameters_.get(); }
    void setParameters(std::unique_ptr<ParameterListNode> parameters) { parameters_ = std::move(parameters); }

    std::array<SyntaxNode*, 2> children() const { return {keyword_.get(), parameters_.get()}; }

private:
    ChildSlot<KeywordNode> keyword_;
    ChildSlot<ParameterListNode> parameters_;
};

// An assembler statement: its word, and a body that holds the assembler text.
class AsmNode : public CompositeNode<AsmNode, SyntaxNode> {
public:
    AsmNode() = default;
    AsmNode(std::unique_ptr<TextNode> keyword, std::unique_ptr<BlockNode> body)
        : keyword_(std::move(keyword)), body_(std::move(body)) {}

    TextNode* keyword() const { return keyword_.get(); }
    void setKeyword(std::unique_ptr<TextNode> keyword) { keyword_ = std::move(keyword); }
    BlockNode* body() const { return body_.get(); }
    void setBody(std::unique_ptr<BlockNode> body) { body_ = std::move(body); }

    std::array<SyntaxNode*, 2> children() const { return {keyword_.get(), body_.get()}; }

private:
    ChildSlot<TextNode> keyword_;
    ChildSlot<BlockNode> body_;
};

class ClassHeadNode : public CompositeNode<ClassHeadNode, SyntaxNode> {
public:
    ClassHeadNode() = default;
    ClassHeadNode(std::unique_ptr<ClassNameNode> name, std::unique_ptr<BaseClauseListNode> baseClauses)
        : name_(std::move(name)), baseClauses_(std::move(baseClauses)) {}

    ClassNameNode* name() const { return name_.get(); }
    void setName(std::unique_ptr<ClassNameNode> name) { name_ = std::move(name); }
    BaseClauseListNode* baseClauses() const { return baseClauses_.get(); }
    void setBaseClauses(std::unique_ptr<BaseClauseListNode> clauses) { baseClauses_ = std::move(clauses); }

    std::array<SyntaxNode*, 2> children() const { return {name_.get(), baseClauses_.get()}; }

private:
    ChildSlot<ClassNameNode> name_;
    ChildSlot<BaseClauseListNode> baseClauses_;
};

class ClassDeclNode : public HeadedNode<EndedNode<ClassDeclNode, DeclNode>, ClassHeadNode, ClassBodyNode> {
public:
    using HeadedNode::HeadedNode;
};

class EnumDeclNode : public HeadedNode<EndedNode<EnumDeclNode, DeclNode>, EnumHeadNode, EnumBodyNode> {
public:
    using HeadedNode::HeadedNode;
};

class NamespaceDeclNode
    : public HeadedNode<CompositeNode<NamespaceDeclNode, SyntaxNode>, NamespaceHeadNode, NamespaceBodyNode> {
public:
    using HeadedNode::HeadedNode;
};

// extern "C" { ... }
class LinkageBlockNode : public CompositeNode<LinkageBlockNode, DeclNode> {
public:
    LinkageBlockNode() = default;
    LinkageBlockNode(std::unique_ptr<ExprNode> linkage, std::unique_ptr<LinkageBlockBodyNode> body)
        : linkage_(std::move(linkage)), body_(std::move(body)) {}

    ExprNode* linkage() const { return linkage_.get(); }
    void setLinkage(std::unique_ptr<ExprNode> linkage) { linkage_ = std::move(linkage); }
    LinkageBlockBodyNode* body() const { return body_.get(); }
    void setBody(std::unique_ptr<LinkageBlockBodyNode> body) { body_ = std::move(body); }

    std::array<SyntaxNode*, 2> children() const { return {linkage_.get(), body_.get()}; }

private:
    ChildSlot<ExprNode> linkage_;
    ChildSlot<LinkageBlockBodyNode> body_;
};

class FunctionHeadNode : public EndedNode<FunctionHeadNode, SyntaxNode> {
public:
    FunctionReturnNode* returnType() const { return returnType_.get(); }
    void setReturnType(std::unique_ptr<FunctionReturnNode> returnType) {
        returnType_ = std::move(returnType);
    }
    IdNode* name() const { return name_.get(); }
    void setName(std::unique_ptr<IdNode> name) { name_ = std::move(name); }
    ParameterListNode* parameters() const { return parameters_.get(); }
    void setParameters(std::unique_ptr<ParameterListNode> parameters) { parameters_ = std::move(parameters); }
    TextNode* qualifiers() const { return qualifiers_.get(); }
    void setQualifiers(std::unique_ptr<TextNode> qualifiers) { qualifiers_ = std::move(qualifiers); }
    ExprNode* exceptionSpec() const { return exceptionSpec_.get(); }
    void setExceptionSpec(std::unique_ptr<ExprNode> clause) { exceptionSpec_ = std::move(clause); }
    ExprNode* pureSpec() const { return pureSpec_.get(); }
    void setPureSpec(std::unique_ptr<ExprNode> clause) { pureSpec_ = std::move(clause); }
    // All else behind the parameters: attributes, "noexcept", "override", macros, a trailing return type, …
    ExprNode* tail() const { return tail_.get(); }
    void setTail(std::unique_ptr<ExprNode> tail) { tail_ = std::move(tail); }
    // The declarations of parameters in the old style.
    KeptNode* oldParameters() const { return oldParameters_.get(); }
    void setOldParameters(std::unique_ptr<KeptNode> declarations) { oldParameters_ = std::move(declarations); }

    std::array<SyntaxNode*, 8> children() const {
        return {returnType_.get(),    name_.get(), parameters_.get(), qualifiers_.get(),
                exceptionSpec_.get(), tail_.get(), pureSpec_.get(),   oldParameters_.get()};
    }

private:
    ChildSlot<FunctionReturnNode> returnType_;
    ChildSlot<IdNode> name_;
    ChildSlot<ParameterListNode> parameters_;
    ChildSlot<TextNode> qualifiers_;
    ChildSlot<ExprNode> exceptionSpec_;
    ChildSlot<ExprNode> tail_;
    ChildSlot<ExprNode> pureSpec_;
    ChildSlot<KeptNode> oldParameters_;
};

// A function with its body, or a prototype without one.
class FunctionDeclNode : public HeadedNode<CompositeNode<FunctionDeclNode, DeclNode>, FunctionHeadNode, BlockNode> {
public:
    using HeadedNode::HeadedNode;
};

// A constructor with member initializers.
class CtorDeclNode : public VisitableNode<CtorDeclNode, FunctionDeclNode> {
public:
    CtorDeclNode() = default;
    CtorDeclNode(std::unique_ptr<FunctionHeadNode> head, std::unique_ptr<BlockNode> body,
                 std::unique_ptr<InitializerListNode> initializers)
        : VisitableNode(std::move(head), std::move(body)), initializers_(std::move(initializers)) {}

    // Head, initializers, body.
    Trn::Position start() const override;
    // Body, what ends the declaration without one, initializers, head.
    Trn::Position end() const override;
    void setEnd(Trn::Position position) override;

    InitializerListNode* initializers() const { return initializers_.get(); }
    void setInitializers(std::unique_ptr<InitializerListNode> list) { initializers_ = std::move(list); }

private:
    ChildSlot<InitializerListNode> initializers_;
    Trn::Position storedEnd_;
};

// One member initializer.
class InitializerNode : public CompositeNode<InitializerNode, SyntaxNode> {
public:
    InitializerNode() = default;
    InitializerNode(std::unique_ptr<IdNode> member, std::unique_ptr<ArgListNode> arguments)
        : member_(std::move(member)), arguments_(std::move(arguments)) {}

    IdNode* member() const { return member_.get(); }
    void setMember(std::unique_ptr<IdNode> member) { member_ = std::move(member); }
    ArgListNode* arguments() const { return arguments_.get(); }
    void setArguments(std::unique_ptr<ArgListNode> arguments) { arguments_ = std::move(arguments); }
    // The blocks of lambdas among the arguments.
    const ExprBodies& bodies() const { return bodies_; }
    void setBodies(ExprBodies bodies) { bodies_ = std::move(bodies); }

    std::array<SyntaxNode*, 2> children() const { return {member_.get(), arguments_.get()}; }

private:
    ChildSlot<IdNode> member_;
    ChildSlot<ArgListNode> arguments_;
    ExprBodies bodies_;
};

// int (*name)(int) const;
class FunctionPtrDeclNode : public EndedNode<FunctionPtrDeclNode, DeclNode> {
public:
    TypeNode* returnType() const { return returnType_.get(); }
    void setReturnType(std::unique_ptr<TypeNode> returnType) { returnType_ = std::move(returnType); }
    IdNode* name() const { return name_.get(); }
    void setName(std::unique_ptr<IdNode> name) { name_ = std::move(name); }
    ParameterListNode* parameters() const { return parameters_.get(); }
    void setParameters(std::unique_ptr<ParameterListNode> parameters) { parameters_ = std::move(parameters); }
    TextNode* qualifiers() const { return qualifiers_.get(); }
    void setQualifiers(std::unique_ptr<TextNode> qualifiers) { qualifiers_ = std::move(qualifiers); }

    std::array<SyntaxNode*, 4> children() const {
        return {returnType_.get(), name_.get(), parameters_.get(), qualifiers_.get()};
    }

private:
    ChildSlot<TypeNode> returnType_;
    ChildSlot<IdNode> name_;
    ChildSlot<ParameterListNode> parameters_;
    ChildSlot<TextNode> qualifiers_;
};

// A data declaration: its type, its first name with what follows that in the declarator (array bounds,
// further declarators), and the initializer or bit-field width with what introduces it.
class DataDeclNode : public EndedNode<DataDeclNode, DeclNode> {
public:
    DataDeclNode() = default;
    DataDeclNode(std::unique_ptr<TypeNode> type, std::unique_ptr<IdNode> name)
        : type_(std::move(type)), name_(std::move(name)) {}

    TypeNode* type() const { return type_.get(); }
    void setType(std::unique_ptr<TypeNode> type) { type_ = std::move(type); }
    IdNode* name() const { return name_.get(); }
    void setName(std::unique_ptr<IdNode> name) { name_ = std::move(name); }
    ExprNode* tail() const { return tail_.get(); }
    void setTail(std::unique_ptr<ExprNode> tail) { tail_ = std::move(tail); }

    std::array<SyntaxNode*, 3> children() const { return {type_.get(), name_.get(), tail_.get()}; }

private:
    ChildSlot<TypeNode> type_;
    ChildSlot<IdNode> name_;
    ChildSlot<ExprNode> tail_;
};

}  // namespace Cpp
