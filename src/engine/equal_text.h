#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string_view>

namespace Tessel {

// How many characters two texts have in common from their starts on. Most of a text is what it was, so that this goes
// by more than one character at a time.
inline std::size_t equalLength(std::string_view left, std::string_view right) {
    constexpr std::size_t step = 8;
    const std::size_t limit = std::min(left.size(), right.size());
    std::size_t length = 0;
    while (length + step <= limit && std::memcmp(left.data() + length, right.data() + length, step) == 0) {
        length += step;
    }
    while (length < limit && left[length] == right[length]) ++length;
    return length;
}

}  // namespace Tessel
