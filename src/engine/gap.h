#pragma once

#include <algorithm>
#include <string>
#include <string_view>

#include "textstream/char_set.h"

// The text between two tokens: white space, comments and directives. A gap is lexed only when it holds anything
// but white space. The edits never take away the line end that a line comment or a directive needs.
namespace Tessel {

// What is white space within a line.
inline constexpr Zelmor::CharSet kBlanks(" \t");

// What isspace accepts in the C locale.
constexpr bool isWhitespace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
inline constexpr Zelmor::CharSet kWhitespace(" \t\n\v\f\r");
bool isAllWhitespace(std::string_view text);
// White space within a line, or nothing.
inline bool isBlanks(std::string_view text) {
    return kBlanks.skipIn(text) == text.size();
}

// White space with a line end in it, and nothing else.
bool isLineBreak(std::string_view text);

// Where the comma stands with which a line begins, in the white space and comments between two elements; npos where
// none does.
std::size_t findLeadingComma(std::string_view gap);

inline std::string_view trimLeft(std::string_view text) {
    std::size_t first = 0;
    while (first < text.size() && isWhitespace(text[first])) ++first;
    return text.substr(first);
}
// A line end behind a backslash splices the lines, and stays.
inline std::string_view trimRight(std::string_view text) {
    std::size_t size = text.size();
    while (size > 0 && isWhitespace(text[size - 1])) --size;
    if (size > 0 && text[size - 1] == '\\') size = std::max(size, text.find('\n', size) + 1);
    return text.substr(0, size);
}
// Of the line of that place.
std::size_t lineStartOf(std::string_view text, std::size_t place);
// Those that are no white space. Counted without a branch, so that many are at once.
std::size_t charactersIn(std::string_view text);
inline std::string_view trim(std::string_view text) { return trimLeft(trimRight(text)); }

// The white space at the start of a text, and that at its end.
inline std::string_view leadingBlanks(std::string_view text) {
    return text.substr(0, text.size() - trimLeft(text).size());
}
inline std::string_view trailingBlanks(std::string_view text) { return text.substr(trimRight(text).size()); }

// White space with line feeds, and more of them where the blanks, which it takes the place of, have more.
std::string withBlankLines(std::string_view wanted, std::string_view blanks);

// The text with blanks for its line ends.
std::string onOneLine(std::string_view text);

// Whether a tab, or blanks that follow each other, stand anywhere in the text.
bool holdsColumnGap(std::string_view text);
// Nothing but blanks that bring what follows into a column: a tab, or several.
bool isColumnGap(std::string_view text);

// The first, or the last, token is a directive or a line comment. Comments in front of a directive on its
// line go with it.
bool startsWithLineEndToken(std::string_view text);
bool endsWithLineEndToken(std::string_view text);
// The place in a gap behind its last token, and behind the line end that the token needs; what follows is
// white space.
std::size_t lineEndBehind(std::string_view gap);

// A gap whose trailing white space is replaced: what stays of it, its front, and what is added. Nothing is added
// where the line end of a comment or directive stays instead.
struct MergedGap {
    std::string_view kept;
    std::string_view added;
};
MergedGap mergedGap(std::string_view gap, std::string_view wanted);

// A gap whose leading white space is replaced: what stays in front of that, a comment or directive with its line
// end, and what follows it.
struct PrependedGap {
    std::string_view ahead;
    std::string_view behind;
};
PrependedGap prependedGap(std::string_view gap);

// A gap without white space at its ends, unless a directive or a line comment stands there.
std::string_view strippedGap(std::string_view gap);

// Replaces the trailing white space of a gap by the one wanted.
void mergeWhitespace(std::string& gap, std::string_view wanted);

// Nothing where the gap begins or ends with a directive or a line comment.
void replaceCharOutsideComments(std::string& gap, char from, char to);

}  // namespace Tessel
