#include "engine/same_lines.h"

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

// Without a branch, so that many are counted at once.
int charactersIn(std::string_view line) {
    int count = 0;
    for (const char c : line) count += isWhitespace(c) ? 0 : 1;
    return count;
}

}  // namespace

SameLines::SameLines(std::string_view before, std::string_view after) : linesAfter_{0}, others_{0} {
    LineReader linesBefore(before);
    LineReader linesAfter(after);
    std::int64_t ahead = 0;  // the characters that have been taken of the second text, and not of the first
    while (!linesBefore.atEnd() || !linesAfter.atEnd()) {
        const bool takesBefore = !linesBefore.atEnd() && (ahead >= 0 || linesAfter.atEnd());
        const bool takesAfter = !linesAfter.atEnd() && (ahead <= 0 || linesBefore.atEnd());
        const std::string_view lineBefore = takesBefore ? linesBefore.next() : std::string_view();
        const std::string_view lineAfter = takesAfter ? linesAfter.next() : std::string_view();
        const bool isSame = ahead == 0 && takesBefore && takesAfter && lineBefore == lineAfter;
        if (takesAfter) others_.push_back(others_.back() + (isSame ? 0 : 1));
        if (takesBefore) linesAfter_.push_back(isSame ? static_cast<std::uint32_t>(others_.size() - 1) : 0);
        if (!isSame) ahead += charactersIn(lineAfter) - charactersIn(lineBefore);
    }
}

bool SameLines::contain(Trn::Position start, Trn::Position end) const {
    return start.line > 0 && end.line < others_.size() && others_[start.line - 1] == others_[end.line];
}

}  // namespace Tessel
