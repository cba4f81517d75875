#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace Tessel {

// How many characters two texts have in common from their starts on, up to `most` of them. Most of a text is what it
// was, so that this goes by more than one character at a time.
inline std::size_t equalLength(std::string_view left, std::string_view right, std::size_t most) {
    const std::size_t limit = std::min(left.size(), right.size());
    std::uint64_t leftStep = 0;
    std::uint64_t rightStep = 0;
    std::size_t length = 0;
    while (length < most && length + sizeof leftStep <= limit) {
        std::memcpy(&leftStep, left.data() + length, sizeof leftStep);
        std::memcpy(&rightStep, right.data() + length, sizeof rightStep);
        if (leftStep != rightStep) break;
        length += sizeof leftStep;
    }
    const std::size_t end = std::min(most, limit);
    while (length < end && left[length] == right[length]) ++length;
    return std::min(length, end);
}

}  // namespace Tessel
