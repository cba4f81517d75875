#include "layout/long_lines.h"

#include <algorithm>

#include "engine/columns.h"
#include "engine/shown_width.h"

namespace Tessel {

LongLines::LongLines(std::string_view text, const WrapSettings& settings)
    : rest_(settings.wrapsLines() ? text : std::string_view()), settings_(settings) {}

int LongLines::next() {
    while (!rest_.empty()) {
        const std::string_view line = rest_.substr(0, rest_.find('\n'));
        rest_.remove_prefix(std::min(line.size() + 1, rest_.size()));
        ++line_;
        if (isLong(line)) return line_;
    }
    return 0;
}

bool LongLines::isLong(std::string_view line) const {
    if (columnAfter(line, 0, settings_.tabSize) <= settings_.rightMargin) return false;
    return !settings_.weighsBreaks() || shownColumnAfter(line, 0, settings_.tabSize) > settings_.rightMargin;
}

}  // namespace Tessel
