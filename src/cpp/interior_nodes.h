#pragma once

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

#include "cpp/leaf_nodes.h"

// Nodes that hold a list of children in source order.
namespace Cpp {

class InteriorNode : public SyntaxNode {
public:
    using Children = std::vector<std::unique_ptr<SyntaxNode>>;
    using iterator = Children::iterator;
    using const_iterator = Children::const_iterator;

    InteriorNode() = default;
    InteriorNode(const InteriorNode& other);
    InteriorNode& operator=(const InteriorNode& other);

    // The first child's start and the last child's end; (0, 0) without children.
    void setStart(Trn::Position position) override;
    Trn::Position start() const override;
    void setEnd(Trn::Position position) override;
    Trn::Position end() const override;

    void accept(Emitter& emitter) override;
    void move(PositionMap& map) override;

    virtual const_iterator childBegin() const { return children_.begin(); }
    virtual iterator childBegin() { return children_.begin(); }
    virtual const_iterator childEnd() const { return children_.end(); }
    virtual iterator childEnd() { return children_.end(); }
    // Removes the entries; what they still own goes with them. Returns the position behind the range.
    virtual iterator erase(iterator first, iterator last) { return children_.erase(first, last); }
    // Destroys the child there.
    void replace(iterator place, std::unique_ptr<SyntaxNode> child);
    virtual std::size_t size() const { return children_.size(); }
    // Appends a child; a null pointer is ignored. Throws Trn::AlreadyExistsException, and leaves the list as
    // it is, when the same object stands in it already.
    virtual void add(std::unique_ptr<SyntaxNode> child);

    // The children, for walking them: `for (const auto& child : node.children())`.
    Children& children() { return children_; }
    const Children& children() const { return children_; }

    void swap(InteriorNode& other);

private:
    void adopt();

    Children children_;
};

// A list enclosed in brackets, whose positions are its extent.
class BracketedNode : public InteriorNode {
public:
    Trn::Position open() const { return open_; }
    Trn::Position close() const { return close_; }

    void setStart(Trn::Position position) override { open_ = position; }
    Trn::Position start() const override { return open_; }
    void setEnd(Trn::Position position) override { close_ = position; }
    Trn::Position end() const override { return close_; }
    void move(PositionMap& map) override;

    // Whether there are brackets: an empty statement carries the positions of its ";", and a body that begins with a
    // protected region those of its items.
    bool hasBrackets() const;

private:
    Trn::Position open_;
    Trn::Position close_;
};

// A list that may do without brackets; its extent is that of its children then.
class OptionallyBracketedNode : public BracketedNode {
public:
    Trn::Position start() const override;
    Trn::Position end() const override;
};

class RootNode : public VisitableNode<RootNode, InteriorNode> {};
// The parts of one control statement: "if" and "else"; "try" and each "catch"; "do" and "while".
class CtrlStmtNode : public VisitableNode<CtrlStmtNode, InteriorNode> {};
class BaseClauseListNode : public VisitableNode<BaseClauseListNode, InteriorNode> {};
class InitializerListNode : public VisitableNode<InitializerListNode, InteriorNode> {};

class ClassBodyNode : public VisitableNode<ClassBodyNode, BracketedNode> {};
class EnumBodyNode : public VisitableNode<EnumBodyNode, BracketedNode> {};
class NamespaceBodyNode : public VisitableNode<NamespaceBodyNode, BracketedNode> {};
class ParameterListNode : public VisitableNode<ParameterListNode, BracketedNode> {};
class ArgListNode : public VisitableNode<ArgListNode, BracketedNode> {};

class BlockNode : public VisitableNode<BlockNode, OptionallyBracketedNode> {};
class LinkageBlockBodyNode : public VisitableNode<LinkageBlockBodyNode, OptionallyBracketedNode> {};

}  // namespace Cpp
