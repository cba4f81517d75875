#include "cpp/interior_nodes.h"

namespace Cpp {

InteriorNode::InteriorNode(const InteriorNode& other) : SyntaxNode(other) {
    children_.reserve(other.children_.size());
    for (const auto& child : other.children_) add(child->clone());
}

InteriorNode& InteriorNode::operator=(const InteriorNode& other) {
    if (this == &other) return *this;
    Children copies;
    copies.reserve(other.children_.size());
    for (const auto& child : other.children_) copies.push_back(child->clone());
    children_.swap(copies);
    adopt();
    return *this;
}

void InteriorNode::swap(InteriorNode& other) {
    children_.swap(other.children_);
    adopt();
    other.adopt();
}

void InteriorNode::adopt() {
    for (const auto& child : children_) child->list_ = this;
}

void InteriorNode::setStart(Trn::Position position) {
    if (!children_.empty()) children_.front()->setStart(position);
}

Trn::Position InteriorNode::start() const {
    return children_.empty() ? Trn::Position{} : children_.front()->start();
}

void InteriorNode::setEnd(Trn::Position position) {
    if (!children_.empty()) children_.back()->setEnd(position);
}

Trn::Position InteriorNode::end() const {
    return children_.empty() ? Trn::Position{} : children_.back()->end();
}

void InteriorNode::accept(Emitter& emitter) {
    emitter.visit(static_cast<SyntaxNode*>(this));
}

void InteriorNode::move(PositionMap& map) {
    for (const auto& child : children_) child->move(map);
}

void InteriorNode::add(std::unique_ptr<SyntaxNode> child) {
    if (!child) return;
    if (child->list_ == this) {
        // The list owns the object already; a second owner must not destroy it.
        static_cast<void>(child.release());
        throw Trn::AlreadyExistsException();
    }
    child->list_ = this;
    // A block of memory for one has room for as many.
    constexpr std::size_t fewChildren = 3;
    if (children_.empty()) children_.reserve(fewChildren);
    children_.push_back(std::move(child));
}

void InteriorNode::replace(iterator place, std::unique_ptr<SyntaxNode> child) {
    child->list_ = this;
    *place = std::move(child);
}

void BracketedNode::move(PositionMap& map) {
    open_ = map.moved(open_);
    InteriorNode::move(map);
    close_ = map.moved(close_);
}

bool BracketedNode::hasBrackets() const {
    if (!Trn::isSet(open_) || open_ == close_) return false;
    return size() == 0 || open_ != children().front()->start();
}

Trn::Position OptionallyBracketedNode::start() const {
    return !Trn::isSet(open()) && size() > 0 ? InteriorNode::start() : open();
}

Trn::Position OptionallyBracketedNode::end() const {
    return !Trn::isSet(close()) && size() > 0 ? InteriorNode::end() : close();
}

}  // namespace Cpp
