#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "cpp/leaf_text.h"
#include "cpp/syntax_node.h"

// The leaves of the tree: pieces of text with the positions at which they stand.
namespace Cpp {

class LeafNode : public SyntaxNode {
public:
    void setStart(Trn::Position position) override { start_ = position; }
    Trn::Position start() const override { return start_; }
    void setEnd(Trn::Position position) override { end_ = position; }
    Trn::Position end() const override { return end_; }
    void move(PositionMap& map) override {
        moveStart(map);
        moveEnd(map);
    }

protected:
    LeafNode() = default;
    LeafNode(Trn::Position start, Trn::Position end) : start_(start), end_(end) {}

    void moveStart(PositionMap& map) { start_ = map.moved(start_); }
    void moveEnd(PositionMap& map) { end_ = map.moved(end_); }

private:
    Trn::Position start_;
    Trn::Position end_;
};

// A leaf whose only data is a text.
class TextLeaf : public LeafNode {
public:
    explicit TextLeaf(std::string_view text) : text_(text) {}
    TextLeaf(LeafText text, Trn::Position start, Trn::Position end) : LeafNode(start, end), text_(std::move(text)) {}

    void setText(std::string_view text) { text_ = LeafText(text); }
    std::string_view text() const { return text_.view(); }
    // What the text begins with; cheap, while a whole text may have to be made.
    std::string_view firstWord() const { return text_.firstWord(); }
    bool startsWith(char first) const { return text_.startsWith(first); }
    // As cheap.
    bool isEmpty() const { return text_.empty(); }

private:
    LeafText text_;
};

class TextNode : public VisitableNode<TextNode, TextLeaf> {
public:
    using VisitableNode::VisitableNode;
};

// One directive. An empty text marks a whole `#if 0` block, which is kept as source text.
class PreprocDirectiveNode : public VisitableNode<PreprocDirectiveNode, TextNode> {
public:
    using VisitableNode::VisitableNode;
};

// One comment, delimiters included.
class CommentNode : public VisitableNode<CommentNode, TextNode> {
public:
    using VisitableNode::VisitableNode;

    // The comment stands for a region that is kept as source text; its own text is empty.
    bool protectedRegion() const { return protectedRegion_; }
    void setProtectedRegion(bool isProtected) { protectedRegion_ = isProtected; }

    bool isLineComment() const { return isDelimitedBy("//"); }
    bool isBlockComment() const { return isDelimitedBy("/*"); }
    // The text without white space before it and without delimiters.
    std::string body() const;

private:
    bool isDelimitedBy(std::string_view delimiter) const;

    bool protectedRegion_ = false;
};

// A stretch of the source that is kept as it was written, but for the indentation of its lines: a macro that stands by
// itself, or what no rule recognises.
class KeptNode : public VisitableNode<KeptNode, TextLeaf> {
public:
    using VisitableNode::VisitableNode;
};

// A name. Throws InvalidId when it is empty.
class IdNode : public VisitableNode<IdNode, TextNode> {
public:
    explicit IdNode(std::string_view name) : IdNode(LeafText(name), {}, {}) {}
    IdNode(LeafText name, Trn::Position start, Trn::Position end) : VisitableNode(std::move(name), start, end) {
        if (isEmpty()) throw InvalidId();
    }
};

class BlockNode;

// The blocks that stand in an expression, those of lambdas, in source order. Copies are deep.
class ExprBodies {
public:
    ExprBodies() noexcept;
    ExprBodies(const ExprBodies& other);
    ExprBodies(ExprBodies&&) noexcept;
    ExprBodies& operator=(ExprBodies other) noexcept;
    ~ExprBodies();

    void add(std::unique_ptr<BlockNode> block);
    std::span<const std::unique_ptr<BlockNode>> blocks() const;
    bool empty() const { return blocks().empty(); }
    void move(PositionMap& map);

private:
    // Hardly any expression has a body.
    std::unique_ptr<std::vector<std::unique_ptr<BlockNode>>> blocks_;
};

// An expression, an enumerator or an initializer. The condition of a control statement has positions only. The blocks
// that stand in it are its bodies.
class ExprNode : public VisitableNode<ExprNode, TextLeaf> {
public:
    ExprNode() : VisitableNode(std::string_view()) {}
    using VisitableNode::VisitableNode;

    const ExprBodies& bodies() const { return bodies_; }
    void setBodies(ExprBodies bodies) { bodies_ = std::move(bodies); }
    void move(PositionMap& map) override {
        moveStart(map);
        bodies_.move(map);
        moveEnd(map);
    }

private:
    ExprBodies bodies_;
};

class TypeNode : public VisitableNode<TypeNode, TextLeaf> {
public:
    using VisitableNode::VisitableNode;
};

class FunctionReturnNode : public VisitableNode<FunctionReturnNode, TypeNode> {
public:
    using VisitableNode::VisitableNode;
};

// One parameter of a function or a template.
class ParameterNode : public VisitableNode<ParameterNode, TextLeaf> {
public:
    using VisitableNode::VisitableNode;
};

// One argument of a member initializer.
class ArgNode : public VisitableNode<ArgNode, TextLeaf> {
public:
    using VisitableNode::VisitableNode;
};

// A leaf whose only data is a name.
class NamedLeaf : public LeafNode {
public:
    explicit NamedLeaf(std::string_view name) : name_(name) {}
    NamedLeaf(LeafText name, Trn::Position start, Trn::Position end) : LeafNode(start, end), name_(std::move(name)) {}

    std::string_view name() const { return name_.view(); }
    void setName(std::string_view name) { name_ = LeafText(name); }

private:
    LeafText name_;
};

// The words of an enum's head, "enum" included.
class EnumHeadNode : public VisitableNode<EnumHeadNode, NamedLeaf> {
public:
    using VisitableNode::VisitableNode;
};

// The name of a namespace; empty for an unnamed one.
class NamespaceHeadNode : public VisitableNode<NamespaceHeadNode, NamedLeaf> {
public:
    using VisitableNode::VisitableNode;
};

// The words of a class head in front of its base clauses, the class key included.
class ClassNameNode : public VisitableNode<ClassNameNode, NamedLeaf> {
public:
    static constexpr int kClass = 0;  // the key: 1 is "struct"
    static constexpr int kUnion = 2;

    ClassNameNode(int classKey, LeafText name, Trn::Position start = {}, Trn::Position end = {})
        : VisitableNode(std::move(name), start, end), classKey_(classKey) {}

    // 0 class, 1 struct, 2 union.
    int classKey() const { return classKey_; }
    void setClassKey(int classKey) { classKey_ = classKey; }

private:
    int classKey_;
};

// One base class.
class BaseClauseNode : public VisitableNode<BaseClauseNode, NamedLeaf> {
public:
    BaseClauseNode(int access, bool isVirtual, LeafText name, Trn::Position start = {}, Trn::Position end = {})
        : VisitableNode(std::move(name), start, end), access_(access), isVirtual_(isVirtual) {}

    // 0 none given, 1 public, 2 protected, 3 private.
    int access() const { return access_; }
    void setAccess(int access) { access_ = access; }
    bool isVirtual() const { return isVirtual_; }
    void setIsVirtual(bool isVirtual) { isVirtual_ = isVirtual; }

private:
    int access_;
    bool isVirtual_;
};

// "class" to "default": the keywords that the tree keeps; or the name of a macro in the place of a control
// statement's keyword, of kind Identifier. Throws InvalidKeyword for another kind.
class KeywordNode : public VisitableNode<KeywordNode, LeafNode> {
public:
    explicit KeywordNode(int keyword) : KeywordNode(keyword, {}, {}) {}
    KeywordNode(int keyword, Trn::Position start, Trn::Position end)
        : VisitableNode(start, end), keyword_(checked(keyword)) {}

    int keyword() const { return keyword_; }
    void setKeyword(int keyword) { keyword_ = checked(keyword); }

private:
    static int checked(int keyword);

    int keyword_;
};

// An access label with its colon: 1 public, 2 protected, 3 private, 4 another name used as a label.
class AccessSpecNode : public VisitableNode<AccessSpecNode, LeafNode> {
public:
    explicit AccessSpecNode(int access = 0, Trn::Position start = {}, Trn::Position end = {})
        : VisitableNode(start, end), access_(access) {}

    int access() const { return access_; }
    void setAccess(int access) { access_ = access; }

private:
    int access_;
};

inline bool isDirective(const SyntaxNode& node) { return as<PreprocDirectiveNode>(&node) != nullptr; }
inline bool isTrivia(const SyntaxNode& node) { return as<CommentNode>(&node) || isDirective(node); }

}  // namespace Cpp
