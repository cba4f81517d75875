#include "layout/long_lines.h"

#include <algorithm>

#include "engine/columns.h"
#include "engine/shown_width.h"

namespace Tessel {

LongLines::LongLines(std::string_view text, const WrapSettings& settings)
    : text_(settings.wrapsLines() ? text : std::string_view()), settings_(settings) {}

int LongLines::next() {
    while (place_ < text_.size()) {
        const std::size_t start = place_;
        const std::size_t end = std::min(text_.find('\n', start), text_.size());
        if (nextTab_ <= start) nextTab_ = std::min(text_.find('\t', start), text_.size());
        place_ = end + 1;
        ++line_;
        const bool fits = nextTab_ >= end && end - start <= static_cast<std::size_t>(settings_.rightMargin);
        if (!fits && isLong(text_.substr(start, end - start))) return line_;
    }
    return 0;
}

bool LongLines::isLong(std::string_view line) const {
    if (columnAfter(line, 0, settings_.tabSize) <= settings_.rightMargin) return false;
    return !settings_.weighsBreaks() || shownColumnAfter(line, 0, settings_.tabSize) > settings_.rightMargin;
}

}  // namespace Tessel
