#pragma once

#include <cstddef>
#include <vector>

namespace Tessel {

// The columns that the elements of a list take which is broken into rows of as many: as few as make as few rows.
//
//     "red",  "orange", "yellow", "green",
//     "blue", "indigo", "violet"
class ElementColumns {
public:
    // Lists of fewer elements have none; more are wanted of one in other brackets.
    static constexpr std::size_t kLeastOutside = 6;
    static constexpr std::size_t kLeastInside = 20;

    // `widths` are those of the elements, each with the comma behind it.
    explicit ElementColumns(const std::vector<int>& widths);

    // 0 where the list fits on one line. `behindLast` columns follow the last element on its line.
    std::size_t countWithin(int room, int behindLast = 0) const;
    // Where the element stands behind the first one, of so many columns.
    int offsetOf(std::size_t index, std::size_t columns) const { return offsets_[columns - 1][index % columns]; }

private:
    std::vector<std::vector<int>> offsets_;  // of one column, of two, ...; behind the last, that of what follows
    std::size_t elements_;
    int lastWidth_ = 0;
    int width_ = 0;  // on one line
};

}  // namespace Tessel
