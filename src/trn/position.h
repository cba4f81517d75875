#pragma once

#include <compare>
#include <cstdint>

namespace Trn {

// A place in a text: lines count from 1, columns from 0 in characters, a tab counting as one column.
// (0, 0) means "no position".
struct Position {
    std::uint32_t line = 0;
    std::uint32_t column = 0;

    friend constexpr bool operator==(const Position&, const Position&) = default;
    friend constexpr auto operator<=>(const Position&, const Position&) = default;
};

constexpr bool isSet(Position position) {
    return position != Position{};
}

}  // namespace Trn
