#pragma once

#include <string>
#include <string_view>

// The text between two tokens: white space, comments and directives. The tests lex a gap only when it holds
// anything but white space. The edits never take away the line end that a line comment or a directive needs.
namespace Tessel {

// What isspace accepts in the C locale.
constexpr bool isWhitespace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
bool isAllWhitespace(std::string_view text);

// White space with a line end in it, and nothing else.
bool isLineBreak(std::string_view text);

std::string_view trimLeft(std::string_view text);
std::string_view trimRight(std::string_view text);
std::string_view trim(std::string_view text);

// The first, or the last, token is a directive or a line comment.
bool startsWithLineEndToken(std::string_view text);
bool endsWithLineEndToken(std::string_view text);
bool containsLineComment(std::string_view text);
bool containsCommentOrDirective(std::string_view text);
// The first character that is not white space is "#".
bool isDirectiveText(std::string_view text);

// Replaces the trailing, the leading, or both white spaces of a gap by the ones wanted.
void mergeWhitespace(std::string& gap, std::string_view wanted);
void prependWhitespace(std::string& gap, std::string_view wanted);
void surroundWithWhitespace(std::string& gap, std::string_view before, std::string_view after);

void stripLeadingSpace(std::string& gap);
void stripTrailingSpace(std::string& gap);
// Nothing where the gap begins or ends with a directive or a line comment.
void stripSurroundingSpace(std::string& gap);

// Nothing where the gap begins or ends with a directive or a line comment.
void replaceCharOutsideComments(std::string& gap, char from, char to);

}  // namespace Tessel
