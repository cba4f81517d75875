#include "engine/opaque_text.h"

#include <algorithm>

#include "engine/columns.h"
#include "engine/gap.h"

namespace Tessel {

namespace {

using Zelmor::IndentScope;
using Zelmor::LeadingSpaceScope;
using Zelmor::OIndentBuf;

std::size_t lineLength(std::string_view text) {
    const std::size_t lineFeed = text.find('\n');
    return lineFeed == std::string_view::npos ? text.size() : lineFeed + 1;
}

void writeRaw(std::string_view text, OIndentBuf& out) {
    RawTabsScope rawTabs(out);
    out.writeVerbatim(text);
}

// The columns of the white space at the start of a line.
int leadingWidth(std::string_view line, int tabSize) {
    int column = 0;
    for (const char c : line) {
        if (c == '\n' || !isWhitespace(c)) break;
        column += charWidth(c, column, tabSize);
    }
    return column;
}

// Writes a line whose text stands `extra` columns, or none, behind the indentation.
void writeFurtherLine(std::string_view line, int extra, OIndentBuf& out) {
    const std::string_view text = trimLeft(line);
    if (text.empty()) {
        out.write(line.ends_with('\n') ? "\n" : "");
        return;
    }
    out.startLine();
    out.write(std::string(static_cast<std::size_t>(extra), ' '));
    writeRaw(text, out);
}

}  // namespace

void writeLiteral(std::string_view text, OIndentBuf& out) {
    out.startLine();
    writeRendered(text, out);
}

void writeRendered(std::string_view text, OIndentBuf& out) {
    IndentScope noIndent(out, {});
    writeRaw(text, out);
}

bool continuesLiteral(std::string_view directive) {
    if (lineLength(directive) == directive.size()) return false;
    char quote = '\0';
    for (std::size_t place = 0; place < directive.size(); ++place) {
        const char c = directive[place];
        if (quote != '\0') {
            if (c == '\n') return place + 1 < directive.size();
            if (c == quote) quote = '\0';
            const bool isEscape = c == '\\' && place + 1 < directive.size() && directive[place + 1] != '\n';
            place += isEscape ? 1 : 0;
        } else if (c == '"' || c == '\'') {
            quote = c;
        } else if (directive.substr(place).starts_with("/*")) {
            place = std::min(directive.find("*/", place + 2), directive.size() - 1);
        }
    }
    return false;
}

void writeLines(std::string_view text, const SourceColumns& source, OIndentBuf& out) {
    const bool isOneLine = lineLength(text) == text.size();
    writeLines(text, isOneLine ? 0 : source.columnOf(text), out);
}

void writeLines(std::string_view text, int inputColumn, OIndentBuf& out) {
    out.startLine();
    std::size_t length = lineLength(text);
    if (length == text.size()) {
        writeRendered(text, out);
        return;
    }
    const int column = out.column();
    if ((column == inputColumn && out.keepLeadingSpace()) || column > kRightmostIndent) {
        writeRendered(text, out);
        return;
    }
    writeRaw(text.substr(0, length), out);
    IndentScope indent(out, indentToColumn(out, column));
    LeadingSpaceScope keepSpace(out, true);
    for (text.remove_prefix(length); !text.empty(); text.remove_prefix(length)) {
        length = lineLength(text);
        const std::string_view line = text.substr(0, length);
        writeFurtherLine(line, columnsBehindStart(line, inputColumn, out.tabSize()), out);
    }
}

int columnsBehindStart(std::string_view line, int inputColumn, int tabSize) {
    return std::max(leadingWidth(line, tabSize) - inputColumn, 0);
}

}  // namespace Tessel
