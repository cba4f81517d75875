#include "engine/macro_blocks.h"

#include <string_view>

#include "engine/columns.h"
#include "engine/gap.h"
#include "engine/source_copy.h"

namespace Tessel {

namespace {

constexpr int kBehindOthers = -1;  // on a line

bool standsByItself(const Cpp::SyntaxNode& node) { return Cpp::as<Cpp::KeptNode>(&node); }

}  // namespace

bool MacroBlocks::isInside(Place node) {
    if (node < blockEnd_) return true;
    if (node >= seen_ && standsByItself(**node)) lookBehind(node);
    return false;
}

// A block ends in front of a macro in the column of the one that it begins behind.
void MacroBlocks::lookBehind(Place opening) {
    const int column = columnOf(**opening);
    Place behindLast = opening;
    Place node = opening + 1;
    for (; column != kBehindOthers && node != end_; ++node) {
        if (Cpp::isTrivia(**node)) continue;
        if (!standsByItself(**node)) break;
        const int here = columnOf(**node);
        if (here == kBehindOthers) continue;
        if (here <= column) {
            if (here == column) blockEnd_ = behindLast;
            break;
        }
        behindLast = node + 1;
    }
    seen_ = node;
}

int MacroBlocks::columnOf(const Cpp::SyntaxNode& node) const {
    const std::size_t lineStart = source_.offsetOf(static_cast<int>(node.start().line), 0);
    const std::size_t start = offsetOf(source_, node.start()) - 1;
    const std::string_view ahead = source_.text().substr(lineStart, start - lineStart);
    return isAllWhitespace(ahead) ? columnAfter(ahead, 0, tabSize_) : kBehindOthers;
}

}  // namespace Tessel
