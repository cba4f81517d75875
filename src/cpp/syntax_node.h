#pragma once

#include <cstddef>
#include <memory>

#include "cpp/emitter.h"
#include "cpp/node_pool.h"
#include "cpp/position_map.h"
#include "trn/exception.h"
#include "trn/syntax_node.h"

namespace Cpp {

class InteriorNode;

class InvalidKeyword : public Trn::Exception {
public:
    InvalidKeyword() : Exception("Not a keyword") {}
};

class InvalidId : public Trn::Exception {
public:
    InvalidId() : Exception("Invalid name for an Identifier") {}
};

// A node of the tree of C++ source. Nodes own their children; copies are deep.
class SyntaxNode : public Trn::SyntaxNode {
public:
    // Calls the emitter's visit for the node's class.
    virtual void accept(Emitter& emitter) = 0;
    virtual std::unique_ptr<SyntaxNode> clone() const = 0;
    // Gives the node, and all below it, the positions that the map says.
    virtual void move(PositionMap& map) = 0;
    // Whether the node is of that class or of one that derives from it.
    virtual bool isOfClass(const void*) const { return false; }

    static void* operator new(std::size_t size) { return NodePool::ofThread().allocate(size); }
    static void operator delete(void* node, std::size_t size) { NodePool::ofThread().release(node, size); }

protected:
    SyntaxNode() = default;
    // A copy stands in no list yet.
    SyntaxNode(const SyntaxNode&) {}
    SyntaxNode& operator=(const SyntaxNode&) { return *this; }

private:
    friend class InteriorNode;
    const InteriorNode* list_ = nullptr;  // that the node is a child of
};

// Gives a concrete node class its accept and clone, and an address to tell it by.
template <typename Derived, typename Base>
class VisitableNode : public Base {
public:
    using Base::Base;

    void accept(Emitter& emitter) override { emitter.visit(static_cast<Derived*>(this)); }
    std::unique_ptr<SyntaxNode> clone() const override {
        return std::make_unique<Derived>(static_cast<const Derived&>(*this));
    }

    static const void* classId() {
        static constexpr char place = 0;
        return &place;
    }
    bool isOfClass(const void* id) const override { return id == classId() || Base::isOfClass(id); }
};

// What dynamic_cast gives, in a fraction of its time.
template <typename Node>
const Node* as(const SyntaxNode* node) {
    return node && node->isOfClass(Node::classId()) ? static_cast<const Node*>(node) : nullptr;
}
template <typename Node>
Node* as(SyntaxNode* node) {
    return const_cast<Node*>(as<Node>(static_cast<const SyntaxNode*>(node)));
}

}  // namespace Cpp
