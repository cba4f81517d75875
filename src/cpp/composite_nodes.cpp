#include "cpp/composite_nodes.h"

namespace Cpp {

Trn::Position CtorDeclNode::start() const {
    return head() || !initializers_ ? FunctionDeclNode::start() : initializers_.get()->start();
}

Trn::Position CtorDeclNode::end() const {
    if (body() || !initializers_ || !Trn::isSet(initializers_.get()->end())) return FunctionDeclNode::end();
    return Trn::isSet(storedEnd_) ? storedEnd_ : initializers_.get()->end();
}

void CtorDeclNode::move(PositionMap& map) {
    if (head()) head()->move(map);
    if (initializers_) initializers_.get()->move(map);
    if (body()) body()->move(map);
    storedEnd_ = map.moved(storedEnd_);
}

void CtorDeclNode::setEnd(Trn::Position position) {
    if (body() || !initializers_) {
        FunctionDeclNode::setEnd(position);
    } else {
        storedEnd_ = position;
    }
}

}  // namespace Cpp
