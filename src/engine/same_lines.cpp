#include "engine/same_lines.h"

#include <string_view>
#include <utility>

#include "engine/gap.h"

namespace Tessel {

namespace {

// Takes the lines of a text one by one.
class LineReader {
public:
    explicit LineReader(const Zelmor::TextDocument& text) : text_(text) {}

    bool atEnd() const { return place_ == text_.size(); }
    std::string_view next() {
        const std::size_t start = std::exchange(place_, text_.offsetOf(++line_, 0));
        return {text_.text().data() + start, place_ - start};
    }

private:
    const Zelmor::TextDocument& text_;
    int line_ = 1;
    std::size_t place_ = 0;
};

SameLines::Line lineAt(std::size_t number, std::string_view before, std::string_view after) {
    const auto shift = static_cast<std::ptrdiff_t>(after.size()) - static_cast<std::ptrdiff_t>(before.size());
    return {static_cast<std::uint32_t>(number), static_cast<std::int32_t>(shift)};
}

}  // namespace

SameLines::SameLines(const Zelmor::TextDocument& before, const Zelmor::TextDocument& after)
    : linesAfter_(1), others_{0} {
    linesAfter_.reserve(static_cast<std::size_t>(before.lineCount()) + 1);
    others_.reserve(static_cast<std::size_t>(after.lineCount()) + 1);
    LineReader linesBefore(before);
    LineReader linesAfter(after);
    std::int64_t ahead = 0;  // the characters that have been taken of the second text, and not of the first
    while (!linesBefore.atEnd() || !linesAfter.atEnd()) {
        const bool takesBefore = !linesBefore.atEnd() && (ahead >= 0 || linesAfter.atEnd());
        const bool takesAfter = !linesAfter.atEnd() && (ahead <= 0 || linesBefore.atEnd());
        const std::string_view lineBefore = takesBefore ? linesBefore.next() : std::string_view();
        const std::string_view lineAfter = takesAfter ? linesAfter.next() : std::string_view();
        const bool areBeside = ahead == 0 && takesBefore && takesAfter;
        const bool isSame = areBeside && lineBefore == lineAfter;
        const bool areAlike = isSame || (areBeside && trimLeft(lineBefore) == trimLeft(lineAfter));
        if (takesAfter) others_.push_back(others_.back() + (isSame ? 0 : 1));
        if (takesBefore) linesAfter_.push_back(areAlike ? lineAt(others_.size() - 1, lineBefore, lineAfter) : Line());
        if (areAlike) continue;
        ahead += static_cast<std::int64_t>(charactersIn(lineAfter));
        ahead -= static_cast<std::int64_t>(charactersIn(lineBefore));
    }
}

bool SameLines::contain(Trn::Position start, Trn::Position end) const {
    // That is the place behind a line end.
    const std::uint32_t last = end.column == 0 && end.line > start.line ? end.line - 1 : end.line;
    return start.line > 0 && last < others_.size() && others_[start.line - 1] == others_[last];
}

}  // namespace Tessel
