#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace Tessel {

// How many characters are alike in front of the first one in which two steps differ, by the bits in which they do.
inline std::size_t equalInStep(std::uint64_t difference) {
    constexpr std::size_t bitsOfCharacter = 8;
    constexpr bool startsLow = std::endian::native == std::endian::little;
    const int bits = startsLow ? std::countr_zero(difference) : std::countl_zero(difference);
    return static_cast<std::size_t>(bits) / bitsOfCharacter;
}

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
        if (leftStep != rightStep) return std::min(most, length + equalInStep(leftStep ^ rightStep));
        length += sizeof leftStep;
    }
    const std::size_t end = std::min(most, limit);
    while (length < end && left[length] == right[length]) ++length;
    return std::min(length, end);
}

}  // namespace Tessel
