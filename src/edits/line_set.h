#pragma once

#include <cstddef>
#include <vector>

namespace Edits {

// Lines of a text, counted from 1.
class LineSet {
public:
    struct Range {
        std::size_t first;
        std::size_t last;
    };

    // The ranges may overlap, and come in any order.
    explicit LineSet(std::vector<Range> ranges);

    bool contains(std::size_t line) const { return containsAll(line, line); }
    bool containsAll(std::size_t first, std::size_t last) const;
    // Those that are in none of the ranges, which come in order and do not overlap.
    LineSet without(const std::vector<Range>& ranges) const;
    const std::vector<Range>& ranges() const { return ranges_; }

private:
    std::vector<Range> ranges_;  // sorted, with lines between them
};

}  // namespace Edits
