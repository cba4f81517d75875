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

// The line without the white space that stands left of `inputColumn`.
std::string_view withoutInputIndent(std::string_view line, int inputColumn, int tabSize) {
    int column = 0;
    while (column < inputColumn && !line.empty() && line.front() != '\n' && isWhitespace(line.front())) {
        column += charWidth(line.front(), column, tabSize);
        line.remove_prefix(1);
    }
    return line;
}

void writeFurtherLine(std::string_view line, OIndentBuf& out) {
    const std::size_t textStart = std::min(line.find_first_not_of(" \t"), line.size());
    if (textStart == line.size() || line[textStart] == '\n') {
        out.write(line.substr(textStart));
        return;
    }
    out.startLine();
    out.write(line.substr(0, textStart));
    writeRaw(line.substr(textStart), out);
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

void writeLines(std::string_view text, const SourceColumns& source, OIndentBuf& out) {
    out.startLine();
    std::size_t length = lineLength(text);
    if (length == text.size()) {
        writeRendered(text, out);
        return;
    }
    const int column = out.column();
    const int inputColumn = source.columnOf(text);
    if (column == inputColumn && out.keepLeadingSpace()) {
        writeRendered(text, out);
        return;
    }
    writeRaw(text.substr(0, length), out);
    IndentScope indent(out, indentToColumn(out, column));
    LeadingSpaceScope keepSpace(out, true);
    for (text.remove_prefix(length); !text.empty(); text.remove_prefix(length)) {
        length = lineLength(text);
        writeFurtherLine(withoutInputIndent(text.substr(0, length), inputColumn, out.tabSize()), out);
    }
}

}  // namespace Tessel
