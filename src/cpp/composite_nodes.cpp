#include "cpp/composite_nodes.h"

namespace Cpp {

Trn::Position CtorDeclNode::start() const {
    return head() || !initializers_ ? FunctionDeclNode::start() : initializers_.get()->start();
}

Trn::Position CtorDeclNode::end() const {
    if (body() || !initializers_ || !Trn::isSet(initializers_.get()->end())) return FunctionDeclNode::end();
    return initializers_.get()->end();
}

}  // namespace Cpp
