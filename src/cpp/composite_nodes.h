#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <tuple>
#include <utility>

#include "cpp/interior_nodes.h"

// Nodes with a fixed set of children, any of which may be missing.
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

// A node with one child of each of these types, in source order. It starts where the first one that is there does, and
// ends where the last one does. Setting a child destroys the one it replaces.
template <typename Derived, typename Base, typename... Nodes>
class CompositeNode : public VisitableNode<Derived, Base> {
public:
    template <std::size_t Place>
    using ChildType = std::tuple_element_t<Place, std::tuple<Nodes...>>;

    CompositeNode() = default;
    explicit CompositeNode(std::unique_ptr<Nodes>... nodes) : slots_(std::move(nodes)...) {}

    void setStart(Trn::Position position) override {
        if (SyntaxNode* node = firstChild()) node->setStart(position);
    }
    Trn::Position start() const override {
        const SyntaxNode* node = firstChild();
        return node ? node->start() : Trn::Position{};
    }
    void setEnd(Trn::Position position) override {
        if (SyntaxNode* node = lastChild()) node->setEnd(position);
    }
    Trn::Position end() const override {
        const SyntaxNode* node = lastChild();
        return node ? node->end() : Trn::Position{};
    }

    void move(PositionMap& map) override {
        for (SyntaxNode* node : children()) {
            if (node) node->move(map);
        }
    }

    std::array<SyntaxNode*, sizeof...(Nodes)> children() const {
        return std::apply([](const auto&... slot) { return std::array<SyntaxNode*, sizeof...(Nodes)>{slot.get()...}; },
                          slots_);
    }

    // Shows `visit` the slot of each child, in source order; it may take the child out.
    template <typename Visit>
    void forEachSlot(Visit visit) {
        std::apply([&visit](auto&... slot) { (visit(slot), ...); }, slots_);
    }

protected:
    // The child of that type, where there are not several.
    template <typename Node>
    Node* child() const {
        return std::get<ChildSlot<Node>>(slots_).get();
    }
    template <std::size_t Place>
    ChildType<Place>* child() const {
        return std::get<Place>(slots_).get();
    }
    template <typename Node>
    ChildSlot<Node>& slot() {
        return std::get<ChildSlot<Node>>(slots_);
    }
    template <typename Node>
    void setChild(std::unique_ptr<Node> node) {
        slot<Node>() = std::move(node);
    }
    template <std::size_t Place>
    void setChild(std::unique_ptr<ChildType<Place>> node) {
        std::get<Place>(slots_) = std::move(node);
    }

    SyntaxNode* firstChild() const {
        for (SyntaxNode* node : children()) {
            if (node) return node;
        }
        return nullptr;
    }
    SyntaxNode* lastChild() const {
        const auto nodes = children();
        for (auto node = nodes.rbegin(); node != nodes.rend(); ++node) {
            if (*node) return *node;
        }
        return nullptr;
    }

private:
    std::tuple<ChildSlot<Nodes>...> slots_;
};

// A composite that keeps its own end, typically that of a closing ")", ":" or ";" which no child covers.
// While it is not set the last child's end counts.
template <typename Derived, typename Base, typename... Nodes>
class EndedNode : public CompositeNode<Derived, Base, Nodes...> {
public:
    using CompositeNode<Derived, Base, Nodes...>::CompositeNode;

    void setEnd(Trn::Position position) override { storedEnd_ = position; }
    Trn::Position end() const override {
        return Trn::isSet(storedEnd_) ? storedEnd_ : CompositeNode<Derived, Base, Nodes...>::end();
    }
    Trn::Position storedEnd() const { return storedEnd_; }
    void move(PositionMap& map) override {
        CompositeNode<Derived, Base, Nodes...>::move(map);
        storedEnd_ = map.moved(storedEnd_);
    }

private:
    Trn::Position storedEnd_;
};

// A composite whose stored end stands in for its start when it has no child.
template <typename Derived, typename... Nodes>
class MarkedNode : public EndedNode<Derived, SyntaxNode, Nodes...> {
public:
    Trn::Position start() const override {
        return this->firstChild() ? EndedNode<Derived, SyntaxNode, Nodes...>::start() : this->storedEnd();
    }
};

class DeclNode : public SyntaxNode {};

// A composite of a head and a body.
template <typename Composite>
class HeadedNode : public Composite {
public:
    using Head = typename Composite::template ChildType<0>;
    using Body = typename Composite::template ChildType<1>;

    using Composite::Composite;

    Head* head() const { return this->template child<Head>(); }
    void setHead(std::unique_ptr<Head> head) { this->setChild(std::move(head)); }
    Body* body() const { return this->template child<Body>(); }
    void setBody(std::unique_ptr<Body> body) { this->setChild(std::move(body)); }
};

// Keyword and parenthesised part of a control statement's part.
class CtrlSubStmtHeadNode : public EndedNode<CtrlSubStmtHeadNode, SyntaxNode, KeywordNode, ExprNode> {
public:
    KeywordNode* keyword() const { return child<KeywordNode>(); }
    void setKeyword(std::unique_ptr<KeywordNode> keyword) { setChild(std::move(keyword)); }
    ExprNode* condition() const { return child<ExprNode>(); }
    void setCondition(std::unique_ptr<ExprNode> condition) { setChild(std::move(condition)); }
};

// One part of a control statement: its head and its body, with braces or without around a single statement.
class CtrlSubStmtNode
    : public HeadedNode<CompositeNode<CtrlSubStmtNode, SyntaxNode, CtrlSubStmtHeadNode, BlockNode>> {};

// A case label up to its ":"; no value for "default".
class CaseNode : public MarkedNode<CaseNode, KeywordNode, ExprNode> {
public:
    KeywordNode* keyword() const { return child<KeywordNode>(); }
    void setKeyword(std::unique_ptr<KeywordNode> keyword) { setChild(std::move(keyword)); }
    ExprNode* value() const { return child<ExprNode>(); }
    void setValue(std::unique_ptr<ExprNode> value) { setChild(std::move(value)); }
};

// A label up to its ":".
class LabelNode : public MarkedNode<LabelNode, IdNode> {
public:
    IdNode* name() const { return child<IdNode>(); }
    void setName(std::unique_ptr<IdNode> name) { setChild(std::move(name)); }
};

// A template header; what it is the header of follows as its next sibling.
class TemplateNode : public CompositeNode<TemplateNode, SyntaxNode, KeywordNode, ParameterListNode> {
public:
    using CompositeNode::CompositeNode;

    KeywordNode* keyword() const { return child<KeywordNode>(); }
    ParameterListNode* parameters() const { return child<ParameterListNode>(); }
};

// An assembler statement: its word, and a body that holds the assembler text.
class AsmNode : public CompositeNode<AsmNode, SyntaxNode, TextNode, BlockNode> {
public:
    using CompositeNode::CompositeNode;

    TextNode* keyword() const { return child<TextNode>(); }
    BlockNode* body() const { return child<BlockNode>(); }
};

class ClassHeadNode : public CompositeNode<ClassHeadNode, SyntaxNode, ClassNameNode, BaseClauseListNode> {
public:
    using CompositeNode::CompositeNode;

    ClassNameNode* name() const { return child<ClassNameNode>(); }
    BaseClauseListNode* baseClauses() const { return child<BaseClauseListNode>(); }
};

class ClassDeclNode : public HeadedNode<EndedNode<ClassDeclNode, DeclNode, ClassHeadNode, ClassBodyNode>> {
public:
    using HeadedNode::HeadedNode;
};

class EnumDeclNode : public HeadedNode<EndedNode<EnumDeclNode, DeclNode, EnumHeadNode, EnumBodyNode>> {
public:
    using HeadedNode::HeadedNode;
};

class NamespaceDeclNode
    : public HeadedNode<CompositeNode<NamespaceDeclNode, SyntaxNode, NamespaceHeadNode, NamespaceBodyNode>> {
public:
    using HeadedNode::HeadedNode;
};

// extern "C" { ... }
class LinkageBlockNode : public CompositeNode<LinkageBlockNode, DeclNode, ExprNode, LinkageBlockBodyNode> {
public:
    using CompositeNode::CompositeNode;

    ExprNode* linkage() const { return child<ExprNode>(); }
    LinkageBlockBodyNode* body() const { return child<LinkageBlockBodyNode>(); }
};

class FunctionHeadNode : public EndedNode<FunctionHeadNode, SyntaxNode, FunctionReturnNode, IdNode, ParameterListNode,
                                          TextNode, ExprNode, ExprNode, ExprNode, KeptNode> {
public:
    FunctionReturnNode* returnType() const { return child<FunctionReturnNode>(); }
    void setReturnType(std::unique_ptr<FunctionReturnNode> returnType) { setChild(std::move(returnType)); }
    IdNode* name() const { return child<IdNode>(); }
    void setName(std::unique_ptr<IdNode> name) { setChild(std::move(name)); }
    ParameterListNode* parameters() const { return child<ParameterListNode>(); }
    void setParameters(std::unique_ptr<ParameterListNode> parameters) { setChild(std::move(parameters)); }
    TextNode* qualifiers() const { return child<TextNode>(); }
    void setQualifiers(std::unique_ptr<TextNode> qualifiers) { setChild(std::move(qualifiers)); }
    ExprNode* exceptionSpec() const { return child<kExceptionSpec>(); }
    void setExceptionSpec(std::unique_ptr<ExprNode> clause) { setChild<kExceptionSpec>(std::move(clause)); }
    // All else behind the parameters: attributes, "noexcept", "override", macros, a trailing return type, …
    ExprNode* tail() const { return child<kTail>(); }
    void setTail(std::unique_ptr<ExprNode> tail) { setChild<kTail>(std::move(tail)); }
    ExprNode* pureSpec() const { return child<kPureSpec>(); }
    void setPureSpec(std::unique_ptr<ExprNode> clause) { setChild<kPureSpec>(std::move(clause)); }
    // The declarations of parameters in the old style.
    KeptNode* oldParameters() const { return child<KeptNode>(); }
    void setOldParameters(std::unique_ptr<KeptNode> declarations) { setChild(std::move(declarations)); }

private:
    // The places of the expressions among the children.
    static constexpr std::size_t kExceptionSpec = 4;
    static constexpr std::size_t kTail = 5;
    static constexpr std::size_t kPureSpec = 6;
};

// A function with its body, or a prototype without one.
class FunctionDeclNode : public HeadedNode<CompositeNode<FunctionDeclNode, DeclNode, FunctionHeadNode, BlockNode>> {
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
    void move(PositionMap& map) override;

    InitializerListNode* initializers() const { return initializers_.get(); }

    template <typename Visit>
    void forEachSlot(Visit visit) {
        visit(slot<FunctionHeadNode>());
        visit(initializers_);
        visit(slot<BlockNode>());
    }

private:
    ChildSlot<InitializerListNode> initializers_;
    Trn::Position storedEnd_;
};

// One member initializer.
class InitializerNode : public CompositeNode<InitializerNode, SyntaxNode, IdNode, ArgListNode> {
public:
    using CompositeNode::CompositeNode;

    IdNode* member() const { return child<IdNode>(); }
    ArgListNode* arguments() const { return child<ArgListNode>(); }
    // The blocks of lambdas among the arguments.
    const ExprBodies& bodies() const { return bodies_; }
    void setBodies(ExprBodies bodies) { bodies_ = std::move(bodies); }
    void move(PositionMap& map) override {
        CompositeNode::move(map);
        bodies_.move(map);
    }

private:
    ExprBodies bodies_;
};

// int (*name)(int) const;
class FunctionPtrDeclNode
    : public EndedNode<FunctionPtrDeclNode, DeclNode, TypeNode, IdNode, ParameterListNode, TextNode> {
public:
    TypeNode* returnType() const { return child<TypeNode>(); }
    void setReturnType(std::unique_ptr<TypeNode> returnType) { setChild(std::move(returnType)); }
    IdNode* name() const { return child<IdNode>(); }
    void setName(std::unique_ptr<IdNode> name) { setChild(std::move(name)); }
    ParameterListNode* parameters() const { return child<ParameterListNode>(); }
    void setParameters(std::unique_ptr<ParameterListNode> parameters) { setChild(std::move(parameters)); }
    TextNode* qualifiers() const { return child<TextNode>(); }
    void setQualifiers(std::unique_ptr<TextNode> qualifiers) { setChild(std::move(qualifiers)); }
};

// A data declaration: its type, its first name with what follows that in the declarator (array bounds,
// further declarators), and the initializer or bit-field width with what introduces it.
class DataDeclNode : public EndedNode<DataDeclNode, DeclNode, TypeNode, IdNode, ExprNode> {
public:
    DataDeclNode() = default;
    DataDeclNode(std::unique_ptr<TypeNode> type, std::unique_ptr<IdNode> name)
        : EndedNode(std::move(type), std::move(name), nullptr) {}

    TypeNode* type() const { return child<TypeNode>(); }
    IdNode* name() const { return child<IdNode>(); }
    ExprNode* tail() const { return child<ExprNode>(); }
    void setTail(std::unique_ptr<ExprNode> tail) { setChild(std::move(tail)); }
};

}  // namespace Cpp
