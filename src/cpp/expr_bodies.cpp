#include <utility>

#include "cpp/nodes.h"

namespace Cpp {

ExprBodies::ExprBodies() noexcept = default;

ExprBodies::ExprBodies(const ExprBodies& other) {
    for (const auto& block : other.blocks()) add(std::make_unique<BlockNode>(*block));
}

ExprBodies::ExprBodies(ExprBodies&&) noexcept = default;

ExprBodies& ExprBodies::operator=(ExprBodies other) noexcept {
    blocks_.swap(other.blocks_);
    return *this;
}

ExprBodies::~ExprBodies() = default;

void ExprBodies::add(std::unique_ptr<BlockNode> block) {
    if (!blocks_) blocks_ = std::make_unique<std::vector<std::unique_ptr<BlockNode>>>();
    blocks_->push_back(std::move(block));
}

void ExprBodies::move(PositionMap& map) {
    for (const auto& block : blocks()) block->move(map);
}

std::span<const std::unique_ptr<BlockNode>> ExprBodies::blocks() const {
    return blocks_ ? std::span<const std::unique_ptr<BlockNode>>(*blocks_)
                   : std::span<const std::unique_ptr<BlockNode>>();
}

}  // namespace Cpp
