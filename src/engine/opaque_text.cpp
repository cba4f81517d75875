#include "engine/opaque_text.h"

#include <algorithm>
#include <optional>

#include "cpp/lexer.h"
#include "cpp/token_kind.h"
#include "cpp/token_sets.h"
#include "engine/columns.h"
#include "engine/gap.h"
#include "engine/token_boundary.h"

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

// The column of the line of code that is indented least.
int leastColumn(std::string_view block, int tabSize) {
    int least = kRightmostIndent;
    for (std::size_t length = 0; !block.empty(); block.remove_prefix(length)) {
        length = lineLength(block);
        const std::string_view line = block.substr(0, length);
        const std::string_view text = trimLeft(line);
        if (!text.empty() && !text.starts_with('#')) least = std::min(least, leadingWidth(line, tabSize));
    }
    return least;
}

// A backslash may splice its two characters. What is kept unread may begin with a "/" too.
bool startsComment(std::string_view text) {
    return text.starts_with("/*") || text.starts_with("//") || text.starts_with("/\\");
}

// Tabs are for the indentation of code alone: the lines of a comment that is not moved are drawn by its author.
bool convertsIndentOnly(std::string_view text, const OIndentBuf& out) {
    return out.tabMode() == Zelmor::SpacesToTabsInIndent && startsComment(text);
}

// Whether a text of several lines that begins in its column comes out as it is: nothing in it is converted, and each
// line begins in its column too, or in front of that of the text, where it may.
bool standsInPlace(std::string_view text, int column, const OIndentBuf& out, OuterLines outer) {
    if (out.tabMode() != Zelmor::TabsToSpaces || text.find('\t') != text.npos) return false;
    const auto least = static_cast<std::size_t>(outer == OuterLines::AsTheyWere ? 0 : column);
    for (std::size_t lineFeed = text.find('\n'); lineFeed != text.npos; lineFeed = text.find('\n', lineFeed + 1)) {
        const std::size_t start = lineFeed + 1;
        const std::size_t first = std::min(text.find_first_not_of(' ', start), text.size());
        const bool isEmpty = first == start && (first == text.size() || text[first] == '\n');
        const bool holdsText = first < text.size() && !isWhitespace(text[first]) && first - start >= least;
        if (!isEmpty && !holdsText) return false;
    }
    return true;
}

// Writes a further line of a directive that a splice holds together with what is in front of it, or apart from it: what
// is joined stays so, and what is apart keeps a blank.
bool writeBehindToken(std::string_view line, int column, OpaqueWriter& writer, OIndentBuf& out) {
    const bool isApart = isWhitespace(line.front());
    if (isApart && column > 0) return false;
    IndentScope indent(out, isApart ? " " : "");
    out.startLine();
    writer.write(trimLeft(line));
    return true;
}

// Whether what stands in front of a line reaches as far as it is to be indented.
bool endsInColumn(std::string_view blanks, int extra, const OIndentBuf& out) {
    const int tabSize = out.tabSize();
    return out.column() == 0 && columnAfter(blanks, 0, tabSize) == columnAfter(out.indent(), 0, tabSize) + extra;
}

// Writes a line whose text stands `extra` columns, or none, behind the indentation.
void writeFurtherLine(std::string_view line, int extra, OpaqueWriter& writer, OIndentBuf& out) {
    const std::string_view text = trimLeft(line);
    if (text.empty()) {
        out.write(line.ends_with('\n') ? "\n" : "");
        return;
    }
    const std::string_view blanks = line.substr(0, line.size() - text.size());
    if (out.tabMode() == Zelmor::KeepTabsInIndent && endsInColumn(blanks, extra, out)) {
        IndentScope asItStands(out, std::string(blanks));
        out.startLine();
    } else {
        out.startLine();
        out.write(std::string(static_cast<std::size_t>(extra), ' '));
    }
    writer.write(text);
}

}  // namespace

OpaqueWriter::OpaqueWriter(std::string_view text, InnerBlanks inner, OIndentBuf& out) : out_(out) {
    if (inner == InnerBlanks::Keep || Zelmor::keepsTabs(out.tabMode()) || !mayConvert(text)) return;
    blanks_ = ConvertibleBlanks(text);
    findRun();
}

void OpaqueWriter::write(std::string_view piece) {
    while (!run_.empty() && run_.data() < piece.data() + piece.size()) {
        if (run_.data() >= piece.data()) {
            const auto ahead = static_cast<std::size_t>(run_.data() - piece.data());
            writeRaw(piece.substr(0, ahead), out_);
            piece.remove_prefix(ahead + run_.size());
            out_.writeVerbatim(run_);
        }
        findRun();
    }
    writeRaw(piece, out_);
}

// Most texts show at a glance that there is nothing to convert.
bool OpaqueWriter::mayConvert(std::string_view text) const {
    if (text.starts_with('#')) return isConcerned(text) && !continuesLiteral(text);
    return startsComment(text) && lineLength(text) < text.size() && isConcerned(text);
}

// Whether it holds what the output converts: a tab, or blanks that may fill a tab stop.
bool OpaqueWriter::isConcerned(std::string_view text) const {
    const bool makesBlanks = out_.tabMode() == Zelmor::TabsToSpaces;
    return (makesBlanks ? text.find('\t') : text.find("  ")) != std::string_view::npos;
}

// Most texts are done with before their end.
void OpaqueWriter::findRun() {
    run_ = {};
    if (!isConcerned(blanks_.rest())) return;
    do {
        run_ = blanks_.next();
    } while (!run_.empty() && !isConcerned(run_));
}

void writeLiteral(std::string_view text, OIndentBuf& out) {
    out.startLine();
    writeRendered(text, out);
}

void writeRendered(std::string_view text, OIndentBuf& out) {
    IndentScope noIndent(out, {});
    writeRaw(text, out);
}

void writeInPlace(std::string_view text, InnerBlanks inner, OIndentBuf& out) {
    out.startLine();
    IndentScope noIndent(out, {});
    OpaqueWriter(text, convertsIndentOnly(text, out) ? InnerBlanks::Keep : inner, out).write(text);
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

bool holdsLinesOfLiteral(std::string_view text) {
    if (lineLength(text) == text.size()) return false;
    return std::ranges::any_of(Cpp::opaqueTokensOf(text), [text](const Cpp::OpaqueToken& token) {
        const std::string_view part = text.substr(token.offset, token.length);
        if (token.kind == Cpp::Directive) return continuesLiteral(part);
        return !Cpp::isTrivia(token.kind) && lineLength(part) < part.size();
    });
}

void writeLines(std::string_view text, const SourceColumns& source, InnerBlanks inner, OIndentBuf& out,
                OuterLines outer) {
    if (lineLength(text) == text.size()) return writeInPlace(text, inner, out);
    writeLines(text, source.columnOf(text), inner, out, outer);
}

void writeLines(std::string_view text, int inputColumn, InnerBlanks inner, OIndentBuf& out, OuterLines outer) {
    out.startLine();
    std::size_t length = lineLength(text);
    const int column = out.column();
    const auto keepsLines = [&] {
        return out.keepLeadingSpace() || convertsIndentOnly(text, out) || standsInPlace(text, column, out, outer);
    };
    if (length == text.size() || column > kRightmostIndent || (column == inputColumn && keepsLines())) {
        writeInPlace(text, inner, out);
        return;
    }
    OpaqueWriter writer(text, inner, out);
    writer.write(text.substr(0, length));
    IndentScope indent(out, indentToColumn(out, column));
    LeadingSpaceScope keepSpace(out, true);
    std::string_view front = text.substr(0, length);
    for (text.remove_prefix(length); !text.empty(); front = text.substr(0, length), text.remove_prefix(length)) {
        length = lineLength(text);
        const std::string_view line = text.substr(0, length);
        const int sourceColumn = leadingWidth(line, out.tabSize());
        const int behind = std::max(sourceColumn - inputColumn, 0);
        const int ahead = outer == OuterLines::AsTheyWere ? inputColumn - sourceColumn : 0;
        const int moved = column + behind - std::max(ahead, 0);
        if (splicesTokens(front, line) && writeBehindToken(line, moved, writer, out)) continue;
        std::optional<IndentScope> inFront;
        if (ahead > 0) inFront.emplace(out, indentToColumn(out, column - ahead));
        writeFurtherLine(line, behind, writer, out);
    }
}

void writeAmongCode(std::string_view block, int inputColumn, int codeColumn, OIndentBuf& out) {
    out.startLine();
    const int column = out.column();
    const int shift = std::max(codeColumn - inputColumn, -leastColumn(block, out.tabSize()));
    OpaqueWriter writer(block, InnerBlanks::Keep, out);
    LeadingSpaceScope keepSpace(out, true);
    std::string_view front;
    for (std::size_t length = 0; !block.empty(); block.remove_prefix(length)) {
        length = lineLength(block);
        const std::string_view line = block.substr(0, length);
        const std::string_view text = trimLeft(line);
        const int moved = text.starts_with('#') ? column + columnsBehindStart(line, inputColumn, out.tabSize())
                                                : leadingWidth(line, out.tabSize()) + shift;
        if (front.empty()) {
            writer.write(line);
        } else if (!splicesTokens(front, line) || !writeBehindToken(line, moved, writer, out)) {
            IndentScope indent(out, indentToColumn(out, moved));
            writeFurtherLine(line, 0, writer, out);
        }
        front = line;
    }
}

int columnsBehindStart(std::string_view line, int inputColumn, int tabSize) {
    return std::max(leadingWidth(line, tabSize) - inputColumn, 0);
}

}  // namespace Tessel
