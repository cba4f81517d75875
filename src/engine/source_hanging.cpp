#include "engine/source_hanging.h"

#include "engine/shown_width.h"

namespace Tessel {

int SourceHanging::columnFor(std::size_t place) {
    while (place_ < place) pass();
    return hanging_.columnFor(place);
}

void SourceHanging::pass() {
    hanging_.pass(place_, column_, startsLine_);
    const std::size_t start = tokens_[place_].offset;
    ++place_;
    if (place_ >= tokens_.size()) return;
    const std::string_view passed = text_.substr(start, tokens_[place_].offset - start);
    const std::size_t lineFeed = passed.rfind('\n');
    const bool endsLine = lineFeed != std::string_view::npos;
    column_ = endsLine ? shownColumnAfter(passed.substr(lineFeed + 1), 0, tabSize_)
                       : shownColumnAfter(passed, column_, tabSize_);
    startsLine_ = endsLine && passed.find_first_not_of(" \t", lineFeed + 1) == std::string_view::npos;
}

}  // namespace Tessel
