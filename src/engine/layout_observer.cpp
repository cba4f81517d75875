#include "engine/layout_observer.h"

#include <algorithm>

#include "engine/columns.h"

namespace Tessel {

std::string valueFound(const DecidedGap& gap, int tabSize) {
    const std::size_t lineFeed = gap.found.rfind('\n');
    if (lineFeed == std::string_view::npos) return std::string(gap.found);
    const auto lineFeeds = static_cast<std::size_t>(std::count(gap.found.begin(), gap.found.end(), '\n'));
    std::string value(lineFeeds, '\n');
    const std::string_view indent = gap.found.substr(lineFeed + 1);
    return value.append(indent.substr(lengthUpTo(gap.baseColumn, indent, tabSize)));
}

}  // namespace Tessel
