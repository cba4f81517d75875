#include "engine/moved_positions.h"

#include <algorithm>

#include "engine/source_copy.h"

namespace Tessel {

namespace {

// How far it is, in characters, from a state that is remembered to the next one.
constexpr std::size_t kStride = 2048;

}  // namespace

MovedPositions::MovedPositions(const Zelmor::TextDocument& source, const Zelmor::TextDocument& result)
    : source_(source),
      result_(result),
      sameLines_(source.text(), result.text()),
      sides_(source.text(), result.text()),
      passed_{sides_} {}

Trn::Position MovedPositions::moved(Trn::Position position) {
    if (!Trn::isSet(position)) return position;
    const std::uint32_t beyondLineFeed = position.column == 0 ? 1 : 0;
    const std::uint32_t line = sameLines_.lineAfter(position.line - beyondLineFeed);
    if (line > 0) return {line + beyondLineFeed, position.column};
    const std::size_t offset = movedEnd(offsetOf(source_, position));
    while (line_ < result_.lineCount() && result_.offsetOf(line_ + 1, 0) <= offset) ++line_;
    while (result_.offsetOf(line_, 0) > offset) --line_;
    const std::size_t column = offset - result_.offsetOf(line_, 0);
    return {static_cast<std::uint32_t>(line_), static_cast<std::uint32_t>(column)};
}

std::size_t MovedPositions::movedEnd(std::size_t end) {
    goBackFor(end);
    sides_.passUpTo(end);
    const std::size_t place = sides_.resultPlace();
    const bool endsLine = end > 0 && source_.text()[end - 1] == '\n';
    return endsLine ? std::min(result_.text().find('\n', place), result_.size() - 1) + 1 : place;
}

// Places are asked for in their order, but for a few.
void MovedPositions::goBackFor(std::size_t offset) {
    if (offset < sides_.sourcePlace()) {
        while (passed_.size() > 1 && passed_.back().sourcePlace() > offset) passed_.pop_back();
        sides_ = passed_.back();
    } else if (sides_.sourcePlace() >= passed_.back().sourcePlace() + kStride) {
        passed_.push_back(sides_);
    }
}

}  // namespace Tessel
