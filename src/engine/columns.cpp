#include "engine/columns.h"

#include <algorithm>
#include <array>

#include "textstream/oindent_stream.h"

namespace Tessel {

namespace {

using Zelmor::KeepTabs;
using Zelmor::KeepTabsInIndent;
using Zelmor::SpacesToTabs;
using Zelmor::SpacesToTabsInIndent;

constexpr auto kWidestIndent = [] {
    std::array<char, kRightmostIndent> blanks{};
    blanks.fill(' ');
    return blanks;
}();
constexpr std::string_view kIndentBlanks(kWidestIndent.data(), kWidestIndent.size());

std::string blanks(int count) { return std::string(static_cast<std::size_t>(std::max(count, 0)), ' '); }

std::string tabs(int count) { return std::string(static_cast<std::size_t>(std::max(count, 0)), '\t'); }

// `count` columns as tabs and blanks, from a tab stop on.
std::string tabsAndBlanks(int count, int tabSize) { return tabs(count / tabSize) + blanks(count % tabSize); }

// As much of an indentation as ends in front of `column`, and blanks from there on.
std::string indentUpTo(int column, const std::string& indent, int tabSize) {
    std::string front = indent.substr(0, lengthUpTo(column, indent, tabSize));
    if (columnAfter(front, 0, tabSize) > column) front.pop_back();
    return front + blanks(column - columnAfter(front, 0, tabSize));
}

}  // namespace

int charWidth(char c, int column, int tabSize) {
    if (c != '\t' || tabSize < 1 || column < 0) return 1;
    return tabSize - column % tabSize;
}

int columnAfter(std::string_view text, int column, int tabSize) {
    if (tabSize < 1 || column < 0) return static_cast<int>(text.size());
    for (std::size_t tab = text.find('\t'); tab != text.npos; tab = text.find('\t')) {
        column += static_cast<int>(tab);
        column += charWidth('\t', column, tabSize);
        text.remove_prefix(tab + 1);
    }
    return column + static_cast<int>(text.size());
}

int columnBehind(std::string_view text, int column, int tabSize) {
    const std::size_t lineFeed = text.rfind('\n');
    if (lineFeed == std::string_view::npos) return columnAfter(text, column, tabSize);
    return columnAfter(text.substr(lineFeed + 1), 0, tabSize);
}

std::size_t lengthUpTo(int column, std::string_view text, int tabSize) {
    std::size_t length = 0;
    for (int reached = 0; length < text.size() && reached < column; ++length) {
        reached += charWidth(text[length], reached, tabSize);
    }
    return length;
}

int columnBefore(std::string_view text, int column, int tabSize) {
    if (tabSize < 1 || column <= 0) return 0;
    for (std::size_t i = text.size(); i-- > 0 && column > 0;) column -= charWidth(text[i], column, tabSize);
    return std::max(column, 0);
}

int roundUpToMultiple(int value, int step) {
    if (value == 0 || step < 1) return value;
    return (value / step + (value % step != 0)) * step;
}

bool isMultipleOf(int value, int step) { return value == 0 || step < 1 || value % step == 0; }

int alignmentPadding(int offset, int column, int indentWidth, int tabSize) {
    if (offset < 0 || column < 0 || indentWidth < 0) return 1;
    const int target = offset + indentWidth;
    int stop = roundUpToMultiple(target, tabSize);
    if (column < 1) {
        if (stop >= indentWidth) stop -= indentWidth;
        return stop < 0 ? 1 : stop;
    }
    if (column > target && stop <= column) stop = roundUpToMultiple(column, tabSize);
    return stop < column ? 1 : stop - column;
}

int columnToIndentFrom(const Zelmor::OIndentBuf& out) {
    const bool hasBegun = out.column() > 0 && out.column() <= kRightmostIndent;
    return hasBegun ? out.column() : columnAfter(out.indent(), 0, out.tabSize());
}

int textColumnOf(const Zelmor::OIndentBuf& out) {
    return out.column() > 0 ? out.textColumn() : columnToIndentFrom(out);
}

std::string indentToColumn(const Zelmor::OIndentBuf& out, int column) {
    if (column < 1) return {};
    const int mode = out.tabMode();
    const int tabSize = out.tabSize();
    const bool usesTabs = (mode == SpacesToTabs || mode == SpacesToTabsInIndent) && tabSize >= 1;
    if (mode < KeepTabs || mode > KeepTabsInIndent) return {};
    const int width = columnAfter(out.indent(), 0, tabSize);
    if (column == width) return out.indent();
    if (column < width && mode == KeepTabsInIndent) return indentUpTo(column, out.indent(), tabSize);
    if (column < width) return usesTabs ? tabsAndBlanks(column, tabSize) : blanks(column);
    int extra = column - width;
    if (!usesTabs) return out.indent() + blanks(extra);
    const int toStop = std::min(extra, (tabSize - width % tabSize) % tabSize);
    extra -= toStop;
    return out.indent() + blanks(toStop) + tabsAndBlanks(extra, tabSize);
}

void startLineAt(Zelmor::OIndentBuf& out, int column) {
    if (out.column() > 0) return;
    int extra = column - columnAfter(out.indent(), 0, out.tabSize());
    if (extra < 0 || !out.keepsBlanks()) {
        const Zelmor::IndentScope indent(out, indentToColumn(out, column));
        return out.startLine();
    }
    out.startLine();
    for (; extra > 0; extra -= kRightmostIndent) {
        out.writeVerbatim(kIndentBlanks.substr(0, static_cast<std::size_t>(extra)));
    }
}

void padColumns(Zelmor::OIndentBuf& out, int count) {
    count = std::max(count, 0);
    const int tabSize = out.tabSize();
    if ((out.tabMode() != KeepTabs && out.tabMode() != SpacesToTabs) || tabSize < 1) {
        out.write(blanks(count));
        return;
    }
    // The indent will be written in front of whatever comes first on a line.
    int column = out.column() != 0 ? out.column() : columnAfter(out.indent(), 0, tabSize);
    int stop = roundUpToMultiple(column + 1, tabSize);
    while (count > 0 && stop - column <= count) {
        count -= stop - column;
        out.write("\t");
        column = out.column();
        stop = roundUpToMultiple(column + 1, tabSize);
    }
    if (count <= 0) return;
    const bool endsOnStop = !isMultipleOf(column + 1, tabSize) && isMultipleOf(column + count, tabSize);
    out.write(endsOnStop ? "\t" : blanks(count));
}

}  // namespace Tessel
