#include "engine/settled_lines.h"

#include <algorithm>

#include "engine/gap.h"

namespace Tessel {

namespace {

// Takes the lines of a text one by one.
class LineReader {
public:
    explicit LineReader(std::string_view text) : rest_(text) {}

    bool atEnd() const { return rest_.empty(); }
    std::string_view next() {
        const std::size_t end = std::min(rest_.find('\n'), rest_.size() - 1) + 1;
        const std::string_view line = rest_.substr(0, end);
        rest_.remove_prefix(end);
        return line;
    }

private:
    std::string_view rest_;
};

std::ptrdiff_t charactersIn(std::string_view line) {
    return std::count_if(line.begin(), line.end(), [](char c) { return !isWhitespace(c); });
}

}  // namespace

SettledLines::SettledLines(std::string_view formatted, std::string_view text) {
    LineReader before(formatted);
    LineReader after(text);
    std::uint32_t changed = 0;
    std::ptrdiff_t ahead = 0;  // characters that have been taken of the text, and not of what it was made from
    while (!after.atEnd()) {
        if (ahead > 0 && !before.atEnd()) {
            ahead -= charactersIn(before.next());
            continue;
        }
        const std::string_view line = after.next();
        const bool isInStep = ahead == 0 && !before.atEnd();
        const std::string_view former = isInStep ? before.next() : std::string_view();
        changed_.push_back(changed);
        if (isInStep && line == former) continue;
        ++changed;
        ahead += charactersIn(line) - charactersIn(former);
    }
    changed_.push_back(changed);
}

bool SettledLines::contain(Trn::Position start, Trn::Position end) const {
    return start.line > 0 && end.line < changed_.size() && changed_[start.line - 1] == changed_[end.line];
}

}  // namespace Tessel
