#include "engine/element_columns.h"

#include <algorithm>
#include <limits>

namespace Tessel {

namespace {

constexpr std::size_t kMostColumns = 40;
constexpr int kWidestGap = 10;  // in a column: there are fewer where the elements of one differ more

// Where so many columns begin, and the end behind them; nothing where the elements of one differ too much.
std::vector<int> offsetsOf(std::size_t columns, const std::vector<int>& widths) {
    std::vector<int> widest(columns, 0);
    std::vector<int> narrowest(columns, std::numeric_limits<int>::max());
    for (std::size_t index = 0; index < widths.size(); ++index) {
        int& most = widest[index % columns];
        int& least = narrowest[index % columns];
        most = std::max(most, widths[index]);
        least = std::min(least, widths[index]);
    }
    std::vector<int> offsets(1, 0);
    for (std::size_t column = 0; column < columns; ++column) {
        if (column + 1 < columns && widest[column] - narrowest[column] > kWidestGap) return {};
        offsets.push_back(offsets.back() + widest[column] + 1);
    }
    return offsets;
}

}  // namespace

ElementColumns::ElementColumns(const std::vector<int>& widths) : elements_(widths.size()) {
    for (const int width : widths) width_ += width + 1;
    if (!widths.empty()) lastWidth_ = widths.back();
    for (std::size_t columns = 1; columns <= std::min(elements_, kMostColumns); ++columns) {
        offsets_.push_back(offsetsOf(columns, widths));
    }
}

std::size_t ElementColumns::countWithin(int room, int behindLast) const {
    if (width_ <= room) return 0;
    std::size_t best = 1;
    std::size_t fewestLines = elements_;
    for (std::size_t columns = offsets_.size(); columns > 0; --columns) {
        const std::vector<int>& offsets = offsets_[columns - 1];
        if (offsets.empty() || offsets.back() - 1 > room) continue;
        if (offsetOf(elements_ - 1, columns) + lastWidth_ + behindLast > room) continue;
        const std::size_t lines = (elements_ + columns - 1) / columns;
        if (lines > fewestLines) break;
        fewestLines = lines;
        best = columns;
    }
    return best;
}

}  // namespace Tessel
