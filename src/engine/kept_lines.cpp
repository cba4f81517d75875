// int f(              int f(
//   int a,                int a,
//     int b);             int b);
//
// Line ends of the author's that no other white space takes the place of.
#include <algorithm>

#include "engine/columns.h"
#include "engine/cpp_formatter.h"
#include "engine/gap.h"

namespace Tessel {

using Zelmor::IndentScope;

namespace {

std::string lineFeedsOf(std::string_view blanks) {
    return std::string(static_cast<std::size_t>(std::count(blanks.begin(), blanks.end(), '\n')), '\n');
}

}  // namespace

// Whether the white space at the gap's end, for which the scheme wants something else, begins a line that is
// kept.
bool CppFormatter::keepsBreak(std::string_view gap, const OptionalText& wanted) const {
    return keepsLines() && !wanted.hasLineFeed() && isLineBreak(trailingBlanks(gap));
}

// What to write for the line end that the white space at the gap's end holds: the line hangs from the
// indentation, or stands where it stood.
OptionalText CppFormatter::keptBreak(std::string_view gap) {
    if (!hangsLines()) return kAsInInput;
    return {true, lineFeedsOf(trailingBlanks(gap)) + exprFormatter_.settings().hanging.wrap.text};
}

// The same for a gap that holds a separator, in front of it and behind it; lines stand at the indentation.
void CppFormatter::keepBreaks(std::string_view gap, OptionalText& before, OptionalText& behind) {
    const bool leadsLine = isLineBreak(leadingBlanks(gap)) && trimLeft(gap).starts_with(',');
    if (keepsLines() && leadsLine && !before.hasLineFeed()) before = hangsLines() ? kLineFeed : kAsInInput;
    if (!keepsBreak(gap, behind)) return;
    behind = hangsLines() ? OptionalText{true, lineFeedsOf(trailingBlanks(gap))} : kAsInInput;
}

// The line end of a gap that is nothing but white space.
void CppFormatter::writeKeptBreak(std::string_view gap) {
    if (!hangsLines()) return writer_.write(gap);
    out().writeVerbatim(keptBreak(gap).text);
}

void CppFormatter::writeKeptBreakAt(std::string_view gap, int column) {
    if (!hangsLines()) return writer_.write(gap);
    IndentScope indent(out(), indentToColumn(out(), column));
    out().write(lineFeedsOf(gap));
    out().startLine();
}

}  // namespace Tessel
