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

LineSet LineSet::without(const std::vector<Range>& ranges) const {
    std::vector<Range> rest;
    auto gone = ranges.begin();
    for (Range range : ranges_) {
        while (gone != ranges.end() && gone->last < range.first) ++gone;
        for (; gone != ranges.end() && gone->first <= range.last; ++gone) {
            if (gone->first > range.first) rest.push_back({range.first, gone->first - 1});
            range.first = gone->last + 1;
            if (gone->last >= range.last) break;
        }
        if (range.first <= range.last) rest.push_back(range);
    }
    return LineSet(std::move(rest));
}

}  // namespace Edits
