#include "cpp/composite_nodes.h"

namespace Cpp {

Trn::Position CtorDeclNode::start() const {
    return head() || !initializers_ ? FunctionDeclNode::start() : initializers_.get()->start();
}

Trn::Position CtorDeclNode::end() const {
    if (body() || !initializers_ || !Trn::isSet(initializers_.get()->end())) return FunctionDeclNode::end();
    return Trn::isSet(storedEnd_) ? storedEnd_ : initializers_.get()->end();
}

void CtorDeclNode::setEnd(Trn::Position position) {
    if (body() || !initializers_) {
        FunctionDeclNode::setEnd(position);
    } else {
        storedEnd_ = position;
    }
}

}  // namespace Cpp
