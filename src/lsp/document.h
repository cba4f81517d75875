#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Lsp {

// Lines and columns count from 0, columns in UTF-16 code units.
struct Position {
    std::size_t line = 0;
    std::size_t character = 0;
};

// The offset of a place in a text in UTF-8. A place beyond the end of its line is that end, as the protocol has it.
std::size_t offsetOf(std::string_view text, Position position);

// Tells the positions of offsets that come in order, in one walk.
class PositionWalk {
public:
    explicit PositionWalk(std::string_view text) : text_(text) {}

    Position positionOf(std::size_t offset);

private:
    std::string_view text_;
    std::size_t place_ = 0;
    Position position_;
};

}  // namespace Lsp
