#include "edits/line_set.h"

#include <algorithm>
#include <utility>

namespace Edits {

LineSet::LineSet(std::vector<Range> ranges) {
    std::sort(ranges.begin(), ranges.end(), [](const Range& a, const Range& b) { return a.first < b.first; });
    for (const Range& range : ranges) {
        if (!ranges_.empty() && range.first <= ranges_.back().last + 1) {
            ranges_.back().last = std::max(ranges_.back().last, range.last);
        } else {
            ranges_.push_back(range);
        }
    }
}

bool LineSet::containsAll(std::size_t first, std::size_t last) const {
    const auto behind = std::upper_bound(ranges_.begin(), ranges_.end(), first,
                                         [](std::size_t line, const Range& range) { return line < range.first; });
    return behind != ranges_.begin() && last <= std::prev(behind)->last;
}

}  // namespace Edits
