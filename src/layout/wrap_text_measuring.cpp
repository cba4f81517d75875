// How wide pieces of the text are, where their lines begin, and whether they fit.
#include <algorithm>

#include "cpp/token_kind.h"
#include "engine/columns.h"
#include "engine/gap.h"
#include "engine/shown_width.h"
#include "layout/line_text.h"
#include "layout/wrap_text.h"

namespace Tessel {

namespace {

bool isLineEndToken(int kind) {
    return kind == Cpp::LineComment || kind == Cpp::Directive;
}

}  // namespace

void WrapText::startLine(std::size_t place, LineStart start) {
    starts_[place] = start;
    started_.push_back(place);
}

void WrapText::undoLineStarts(std::size_t count) {
    for (; started_.size() > count; started_.pop_back()) starts_[started_.back()].column = kNone;
}

const LineStart* WrapText::lineStart(std::size_t place) const {
    return starts_[place].column == kNone ? nullptr : &starts_[place];
}

const WrapText::Split* WrapText::splitAt(std::size_t place) const {
    const auto name = std::ranges::lower_bound(splits_, place, {}, &Split::place);
    return name != splits_.end() && name->place == place ? &*name : nullptr;
}

int WrapText::columnOf(std::size_t place, int column) const {
    if (const LineStart* start = lineStart(place)) return start->column;
    const std::string_view gap = gaps_[place];
    if (startsOwnLine(place)) {
        const Element* element = elementAt(place);
        const int bracket = element ? bracketColumns_[element->bracket] : kNone;
        return bracket != kNone ? bracket + element->offset : columnAfter(lastLine(gap), 0, tabSize_);
    }
    return has(place, UnevenGap) ? columnAfter(gap, column, tabSize_) : column + lengthOf(gap);
}

bool WrapText::isEven(TokenRange range) const {
    return !has(range.first, UnevenText) && nextUneven_[range.first + 1] >= range.last;
}

Extent WrapText::measure(TokenRange range, int column, Literals literals) {
    if (range.empty()) return {column, true};
    if (!isEven(range)) return walk(range, column, literals, false);
    const std::size_t last = range.last - 1;
    return {column + offsets_[last] - offsets_[range.first] + widthOf(tokenText(last)),
            true};
}

int WrapText::columnBehindText(std::string_view text, int column) const {
    return countsShown_ ? shownColumnAfter(text, column, tabSize_) : columnAfter(text, column, tabSize_);
}

int WrapText::hiddenColumnsOf(std::size_t place) const {
    return countsShown_ ? hiddenColumns(tokenText(place), tabSize_) : 0;
}

// Of what holds neither tabs nor line ends.
int WrapText::widthOf(std::string_view text) const {
    return countsShown_ ? shownColumnAfter(text, 0, tabSize_) : lengthOf(text);
}

// Of a token that starts at `column`.
int WrapText::columnBehind(std::size_t place, int column) const {
    const std::string_view text = tokenText(place);
    if (!holdsLineEnd(text)) return columnBehindText(text, column);
    const auto comment = std::lower_bound(lastLines_.begin(), lastLines_.end(), std::pair(place, 0));
    if (comment == lastLines_.end() || comment->first != place)
        return columnBehindText(lastLine(text), 0);
    return columnBehindText(trimLeft(lastLine(text)), column + comment->second);
}

// Until the end, or until a line turns out to be too long.
Extent WrapText::walk(TokenRange range, int column, Literals literals, bool untilTooLong) {
    Extent extent{column, true};
    int counted = column;  // the end of the line so far, without a comment that ends it
    int literalColumn = column;
    const auto endLine = [&] { extent.fits = extent.fits && isWithinMargin(counted); };
    for (std::size_t place = range.first; place < range.last; ++place) {
        if (place != range.first) {
            const bool stacks = literals == Literals::Stacked && isStacked(place, literalColumn);
            if (stacks || startsOwnLine(place)) endLine();
            extent.column = stacks ? literalColumn : columnOf(place, extent.column);
        }
        if (kindAt(place) == Cpp::StringLiteral && !continuesLiteral(place)) literalColumn = extent.column;
        placeBracket(place, extent.column);
        const std::string_view text = tokenText(place);
        if (isLineEndToken(kindAt(place))) {
            extent.column = columnBehindText(text, extent.column);
            continue;
        }
        if (holdsLineEnd(text)) {
            counted = columnBehindText(firstLine(text), extent.column);
            endLine();
        }
        extent.column = columnBehind(place, extent.column);
        counted = extent.column;
        if (untilTooLong && !(extent.fits && isWithinMargin(counted))) return {counted, false};
    }
    if (isLineEndToken(kindAt(range.last - 1))) extent.column = counted;
    return extent;
}

bool WrapText::fits(TokenRange range, int column, int tail, Literals literals) {
    if (range.empty()) return isWithinMargin(column + tail);
    const Extent extent = isEven(range) ? measure(range, column) : walk(range, column, literals, true);
    return extent.fits && isWithinMargin(extent.column + tail);
}

void WrapText::setLineChances(const std::vector<bool>& mayStartLine) {
    tailWidths_.assign(tokens_.size() + 1, trailingWidth_);
    for (std::size_t place = tokens_.size(); place-- > 0;) {
        const bool endsTail = mayStartLine[place] || startsOwnLine(place) || continuesLiteral(place) ||
                              isLineEndToken(kindAt(place));
        const std::string_view text = tokenText(place);
        const int width = lengthOf(gaps_[place]) + widthOf(firstLine(text));
        if (endsTail) {
            tailWidths_[place] = 0;
        } else {
            tailWidths_[place] = holdsLineEnd(text) ? width : width + tailWidths_[place + 1];
        }
    }
}

}  // namespace Tessel
