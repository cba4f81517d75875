#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Zelmor {
class OIndentBuf;
}

// Column arithmetic: columns count from 0, a tab reaches to the next multiple of the tab size.
namespace Tessel {

// Nothing is indented from a column further to the right: what follows text on a long line would else be indented
// ever further, and the output grow with the square of the input.
inline constexpr int kRightmostIndent = 400;

// The columns that `c` takes up when it starts at `column`.
int charWidth(char c, int column, int tabSize);

// The column reached after writing `text` from `column`; the length of `text` when the tab size is below 1 or
// the column negative.
int columnAfter(std::string_view text, int column, int tabSize);

// As that, behind the last line of `text`.
int columnBehind(std::string_view text, int column, int tabSize);

// How much of `text`, written from the first column, comes in front of `column`; all of it where that is further to the
// right.
std::size_t lengthUpTo(int column, std::string_view text, int tabSize);

// The column from which `text` has to be written to end at `column`; at least 0.
int columnBefore(std::string_view text, int column, int tabSize);

int roundUpToMultiple(int value, int step);
bool isMultipleOf(int value, int step);

// The columns of padding to write at output column `column` so that the next item starts `offset` columns past
// an indentation `indentWidth` wide, rounded to a tab stop.
int alignmentPadding(int offset, int column, int indentWidth, int tabSize);

// Where the next character of `out` will appear, at the indentation when the line has not begun. The indentation
// too where that is too far to the right to indent anything from.
int columnToIndentFrom(const Zelmor::OIndentBuf& out);

// The column of the first text on the line of `out`; where the next character will appear if there is none yet.
int textColumnOf(const Zelmor::OIndentBuf& out);

// The indentation that makes text start at `column` of `out`, built on its current indent.
std::string indentToColumn(const Zelmor::OIndentBuf& out, int column);

// Writes the indentation that makes text start at `column`, when the line has not begun yet.
void startLineAt(Zelmor::OIndentBuf& out, int column);

// Writes `count` columns of padding; with tabs where the stream's tab mode allows them.
void padColumns(Zelmor::OIndentBuf& out, int count);

}  // namespace Tessel
