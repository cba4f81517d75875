#pragma once

#include <cstdint>
#include <vector>

namespace Cpp {

// A token with white space inside that is not the formatter's to change: a comment, a directive, or a
// literal.
struct OpaqueToken {
    std::uint32_t offset = 0;  // in characters from the start of the text
    std::uint32_t length = 0;
    int kind = 0;
};

// Those of one text, in its order.
using OpaqueTokens = std::vector<OpaqueToken>;

}  // namespace Cpp
