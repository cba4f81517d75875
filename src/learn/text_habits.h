#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace Learn {

// What is told by the lines of texts alone, whatever stands in them.
struct TextHabits {
    static constexpr std::size_t kWidest = 400;
    static constexpr std::size_t kMostEmpty = 8;

    std::size_t lines = 0;
    std::array<std::size_t, kWidest + 1> widths{};            // lines by the columns that they take
    std::array<std::size_t, kMostEmpty + 1> emptyRuns{};      // how many empty lines follow each other
    std::size_t withTabs = 0;                                 // lines that have any
    std::size_t withTrailingBlanks = 0;

    void add(const TextHabits& other);
};

TextHabits habitsOf(std::string_view text, int tabSize);

}  // namespace Learn
