// int f(              int f(
//   int a,                int a,
//     int b);             int b);
//
// Line ends of the author's that no other white space takes the place of.
#include <algorithm>
#include <utility>

#include "engine/columns.h"
#include "engine/cpp_formatter.h"
#include "engine/gap.h"
#include "engine/kept_indent.h"
#include "scheme/extension_keys.h"

namespace Tessel {

using Zelmor::IndentScope;

namespace {

std::string lineFeedsOf(std::string_view blanks) {
    return std::string(static_cast<std::size_t>(std::count(blanks.begin(), blanks.end(), '\n')), '\n');
}

}  // namespace

// Whether the white space at the gap's end, for which the scheme wants something else, begins a line that is
// kept.
bool CppFormatter::keepsBreak(std::string_view gap, const WantedText& wanted) const {
    return keepsLines() && !wanted.hasLineFeed() && isLineBreak(trailingBlanks(gap));
}

// What to write for the line end that the white space at the gap's end holds: the line hangs from the
// indentation, or stands where it stood.
OptionalText CppFormatter::keptBreak(std::string_view gap) {
    if (!hangsLines()) return kAsInInput;
    const std::string_view wrapIndent = exprFormatter_.settings().hanging.wrap.text;
    const int width = indentColumn();
    const int hanging = columnAfter(wrapIndent, width, out().tabSize());
    const int column = exprFormatter_.keptIndent().columnFor(lineOf(gap), gap, hanging);
    const bool hangs = column == hanging || column < width;
    std::string text = lineFeedsOf(trailingBlanks(gap));
    if (hangs) {
        text += wrapIndent;
    } else {
        text.append(indentToColumn(out(), column), out().indent().size());
    }
    return {true, madeTexts_.keep(std::move(text)), Keys::KEEP_LINE_BREAKS};
}

// The line of the text in front of a directive.
FirstLine CppFormatter::lineInFront() {
    const std::string_view source = source_.text();
    const std::string_view before = trimRight(source.substr(0, source.size() - writer_.ahead().size()));
    if (!exprFormatter_.keptIndent().isWanted() || before.empty()) return {};
    const std::string_view written = trimRight(out().text());
    const std::string_view indent = leadingBlanks(written.substr(written.rfind('\n') + 1));
    return {exprFormatter_.columnOfSourceLine(before.substr(before.size() - 1)),
            columnAfter(indent, 0, out().tabSize()), -1};
}

// The line that the piece of the source begins on, which is the one that is being written.
FirstLine CppFormatter::lineOf(std::string_view piece) {
    if (!exprFormatter_.keptIndent().isWanted()) return {};
    return {exprFormatter_.columnOfSourceLine(piece), textColumnOf(out()), -1};
}

// The same for a gap that holds a separator, in front of it and behind it; lines stand at the indentation.
void CppFormatter::keepBreaks(std::string_view gap, OptionalText& before, OptionalText& behind) {
    const std::size_t comma = findLeadingComma(gap);
    const KeyId key = Keys::KEEP_LINE_BREAKS;
    const auto kept = [&](std::string lineFeeds) {
        if (!hangsLines()) return kAsInInput;
        // Most lines have no empty ones in front.
        const bool isOne = lineFeeds == kLineFeed.text;
        return OptionalText{true, isOne ? kLineFeed.text : madeTexts_.keep(std::move(lineFeeds)), key};
    };
    if (keepsLines() && comma != gap.npos && !before.hasLineFeed()) {
        before = kept(lineFeedsOf(trailingBlanks(gap.substr(0, comma))));
    }
    // A comma that the scheme puts at the start of the line has the line end behind it in front.
    const bool isMoved = before.hasLineFeed() && before.key != key && trim(gap) == ",";
    if (keepsBreak(gap, behind) && !isMoved) behind = kept(lineFeedsOf(trailingBlanks(gap)));
}

// The line end of a gap that is nothing but white space.
void CppFormatter::writeKeptBreak(std::string_view gap) {
    if (!hangsLines()) return writer_.write(gap);
    writer_.replace(gap, keptBreak(gap));
}

void CppFormatter::writeKeptBreakAt(std::string_view gap, int column) {
    if (!hangsLines()) return writer_.write(gap);
    column = exprFormatter_.keptIndent().columnFor(lineOf(gap), gap, column);
    writer_.leave(gap, WantedText(gap, Keys::KEEP_LINE_BREAKS));
    out().write(lineFeedsOf(gap));
    startLineAt(out(), column);
}

}  // namespace Tessel
