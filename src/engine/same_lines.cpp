#include "engine/same_lines.h"

#include <string_view>
#include <utility>

#include "engine/equal_text.h"
#include "engine/gap.h"

namespace Tessel {

namespace {

// Takes the lines of a text one by one.
class LineReader {
public:
    explicit LineReader(const Zelmor::TextDocument& text) : text_(text), end_(text.offsetOf(2, 0)) {}

    bool atEnd() const { return place_ == text_.size(); }
    std::string_view rest() const { return text_.text().substr(place_); }
    std::size_t lengthOfNext() const { return end_ - place_; }
    std::string_view next() {
        const std::string_view line(text_.text().data() + place_, end_ - place_);
        place_ = std::exchange(end_, text_.offsetOf(++line_ + 1, 0));
        return line;
    }

private:
    const Zelmor::TextDocument& text_;
    int line_ = 1;
    std::size_t place_ = 0;
    std::size_t end_;  // of the next line
};

SameLines::Line lineAt(std::size_t number, std::string_view before, std::string_view after) {
    const auto shift = static_cast<std::ptrdiff_t>(after.size()) - static_cast<std::ptrdiff_t>(before.size());
    return {static_cast<std::uint32_t>(number), static_cast<std::int32_t>(shift)};
}

// How many lines both texts go on with.
std::size_t passEqualLines(LineReader& before, LineReader& after) {
    std::size_t left = equalLength(before.rest(), after.rest(), before.rest().size());
    std::size_t count = 0;
    // The last line of one of them may go on in the other.
    for (; left > 0; ++count) {
        const std::size_t length = before.lengthOfNext();
        if (length > left || length != after.lengthOfNext()) break;
        before.next();
        after.next();
        left -= length;
    }
    return count;
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
        if (ahead == 0) addEqual(passEqualLines(linesBefore, linesAfter));
        const bool takesBefore = !linesBefore.atEnd() && (ahead >= 0 || linesAfter.atEnd());
        const bool takesAfter = !linesAfter.atEnd() && (ahead <= 0 || linesBefore.atEnd());
        const std::string_view lineBefore = takesBefore ? linesBefore.next() : std::string_view();
        const std::string_view lineAfter = takesAfter ? linesAfter.next() : std::string_view();
        const bool areAlike =
            ahead == 0 && takesBefore && takesAfter && trimLeft(lineBefore) == trimLeft(lineAfter);
        if (takesAfter) others_.push_back(others_.back() + 1);
        if (takesBefore) linesAfter_.push_back(areAlike ? lineAt(others_.size() - 1, lineBefore, lineAfter) : Line());
        if (areAlike) continue;
        ahead += static_cast<std::int64_t>(charactersIn(lineAfter));
        ahead -= static_cast<std::int64_t>(charactersIn(lineBefore));
    }
}

void SameLines::addEqual(std::size_t count) {
    for (; count > 0; --count) {
        others_.push_back(others_.back());
        linesAfter_.push_back({static_cast<std::uint32_t>(others_.size() - 1), 0});
    }
}

bool SameLines::contain(Trn::Position start, Trn::Position end) const {
    // That is the place behind a line end.
    const std::uint32_t last = end.column == 0 && end.line > start.line ? end.line - 1 : end.line;
    return start.line > 0 && last < others_.size() && others_[start.line - 1] == others_[last];
}

}  // namespace Tessel
