#include "engine/moved_positions.h"

#include <algorithm>
#include <iterator>

#include "engine/source_copy.h"

namespace Tessel {

namespace {

// How far it is about, in characters of either text, from a state that is remembered to the next one: there may be much
// white space between two words of the result.
constexpr std::size_t kStride = 2048;
constexpr std::size_t kStep = 512;

bool isFarBehind(const SideBySide& state, const SideBySide& other) {
    return state.sourcePlace() + kStride < other.sourcePlace() || state.resultPlace() + kStride < other.resultPlace();
}

}  // namespace

MovedPositions::MovedPositions(const Zelmor::TextDocument& source, const Zelmor::TextDocument& result)
    : source_(source),
      result_(result),
      sameLines_(source, result),
      sides_(source.text(), result.text()),
      passed_{sides_} {}

Trn::Position MovedPositions::moved(Trn::Position position) {
    if (!Trn::isSet(position)) return position;
    const std::uint32_t beyondLineFeed = position.column == 0 ? 1 : 0;
    const SameLines::Line line = sameLines_.lineAfter(position.line - beyondLineFeed);
    if (line.number > 0 && beyondLineFeed > 0) return {line.number + 1, 0};
    if (line.number > 0) return {line.number, position.column + static_cast<std::uint32_t>(line.shift)};
    const std::size_t offset = movedEndByText(offsetOf(source_, position));
    while (line_ < result_.lineCount() && result_.offsetOf(line_ + 1, 0) <= offset) ++line_;
    while (result_.offsetOf(line_, 0) > offset) --line_;
    const std::size_t column = offset - result_.offsetOf(line_, 0);
    return {static_cast<std::uint32_t>(line_), static_cast<std::uint32_t>(column)};
}

std::size_t MovedPositions::movedEnd(std::size_t end) {
    if (end == 0) return 0;
    // A line end belongs to the line that it ends.
    while (source_.offsetOf(sourceLine_ + 1, 0) < end) ++sourceLine_;
    while (source_.offsetOf(sourceLine_, 0) >= end) --sourceLine_;
    const SameLines::Line line = sameLines_.lineAfter(static_cast<std::uint32_t>(sourceLine_));
    if (line.number == 0) return movedEndByText(end);
    const std::size_t fromEnd = source_.offsetOf(sourceLine_ + 1, 0) - end;
    return result_.offsetOf(static_cast<int>(line.number) + 1, 0) - fromEnd;
}

std::size_t MovedPositions::movedEndByText(std::size_t end) {
    passUpTo(end);
    const std::size_t place = sides_.resultPlace();
    const bool endsLine = end > 0 && source_.text()[end - 1] == '\n';
    return endsLine ? std::min(result_.text().find('\n', place), result_.size() - 1) + 1 : place;
}

// Places are asked for in their order, but for a few: those of the bodies in an argument come behind its end.
void MovedPositions::passUpTo(std::size_t offset) {
    if (offset < sides_.sourcePlace() || passed_.back().sourcePlace() > sides_.sourcePlace()) {
        const auto isBehind = [](std::size_t place, const SideBySide& state) { return place < state.sourcePlace(); };
        const SideBySide& state = *std::prev(std::upper_bound(passed_.begin(), passed_.end(), offset, isBehind));
        if (offset < sides_.sourcePlace() || state.sourcePlace() > sides_.sourcePlace()) sides_ = state;
    }
    while (sides_.sourcePlace() < offset) {
        sides_.passUpTo(std::min(offset, sides_.sourcePlace() + kStep));
        if (isFarBehind(passed_.back(), sides_)) passed_.push_back(sides_);
    }
}

}  // namespace Tessel
