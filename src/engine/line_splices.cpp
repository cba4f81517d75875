#include "engine/line_splices.h"

#include <algorithm>
#include <vector>

#include "cpp/characters.h"
#include "cpp/lexer.h"
#include "cpp/token_kind.h"
#include "engine/columns.h"
#include "engine/directive_parts.h"
#include "engine/gap.h"
#include "engine/scheme_values.h"
#include "engine/shown_width.h"
#include "engine/token_boundary.h"
#include "scheme/extension_keys.h"
#include "textstream/otext_doc_buf.h"

namespace Tessel {

namespace {

constexpr int kNoColumn = -1;

// A line that goes on in the next: what stands in front of its backslash, and the blanks there.
struct SplicedLine {
    std::string_view text;
    std::string_view blanks;
    bool isFirst = false;
};

// Those of a directive; none where a comment, a literal or another token may go on in the next line.
std::vector<SplicedLine> splicedLinesOf(std::string_view directive) {
    std::vector<SplicedLine> lines;
    if (holdsSplicedToken(directive)) return lines;
    std::size_t start = 0;
    const std::size_t end = directive.ends_with('\n') ? directive.size() - 1 : directive.size();
    for (std::size_t lineFeed = directive.find('\n'); lineFeed < end; lineFeed = directive.find('\n', start)) {
        std::string_view line = directive.substr(start, lineFeed - start);
        if (!line.ends_with('\\')) return {};
        line.remove_suffix(1);
        const std::string_view text = trimRight(line);
        if (text.size() == line.size() && !text.empty() && Cpp::isNamePart(text.back())) return {};
        lines.push_back({text, line.substr(text.size()), start == 0});
        start = lineFeed + 1;
    }
    return lines;
}

bool areSplices(std::string_view directive, std::size_t count) {
    std::size_t splices = 0;
    const std::string text = withoutHashes(directive.substr(1));
    Cpp::Lexer lexer(text);
    for (Trn::Token token = lexer.nextToken(); token.kind != Trn::kEndKind; token = lexer.nextToken()) {
        splices += token.kind == Cpp::LineComment && token.text.starts_with('\\') ? 1U : 0U;
    }
    return splices == count;
}

}  // namespace

LineSplices::LineSplices(const PropertySet& scheme)
    : alignment_(readInt(scheme, Keys::ALIGN_LINE_SPLICES, kAsTheyAre)),
      margin_(readJoiningMargin(scheme)),
      layout_(ColumnLayout::of(scheme)) {}

std::string LineSplices::placed(std::string_view directive, std::string_view text, int firstColumn) const {
    const std::string once = place(directive, text, firstColumn);
    return place(once, once, firstColumn);
}

std::string LineSplices::place(std::string_view directive, std::string_view text, int firstColumn) const {
    const std::vector<SplicedLine> before = splicedLinesOf(directive);
    const std::vector<SplicedLine> lines = splicedLinesOf(text);
    if (lines.empty() || before.size() != lines.size()) return std::string(text);
    const auto endOf = [&](const SplicedLine& line) {
        return shownColumnAfter(line.text, line.isFirst ? firstColumn : 0, layout_.tabSize);
    };
    const auto spliceOf = [&](const SplicedLine& line) {
        return columnAfter(line.blanks, endOf(line), layout_.tabSize);
    };
    int widest = 0;
    int common = spliceOf(before.front());
    bool areBehindText = true;
    const bool keepsTabs = layout_.tabMode != Zelmor::TabsToSpaces;
    bool takesTabs = false;
    for (std::size_t line = 0; line < lines.size(); ++line) {
        widest = std::max(widest, endOf(lines[line]));
        if (spliceOf(before[line]) != common) common = kNoColumn;
        areBehindText = areBehindText && before[line].blanks == " ";
        takesTabs = takesTabs || (keepsTabs && before[line].blanks.find('\t') != std::string_view::npos);
    }
    if (!areAligned() && !areBehindText && common == kNoColumn) return std::string(text);
    const bool isBehindText = areAligned() ? alignment_ == BehindText : areBehindText;
    int column = common;
    if (alignment_ == AtMargin) column = margin_ - 1;
    if (alignment_ == BehindLongest || column <= widest) {
        column = takesTabs ? roundUpToMultiple(widest + 1, layout_.tabSize) : widest + 1;
    }
    std::string result;
    for (std::size_t line = 0; line < lines.size(); ++line) {
        const int end = endOf(lines[line]);
        // Where the output has no tabs of its own, those that reach the column stay behind a text that has moved too.
        const bool staysAsItIs = end == endOf(before[line]) ? keepsTabs || !areAligned() : !keepsTabs && !areAligned();
        const bool stands = staysAsItIs && columnAfter(before[line].blanks, end, layout_.tabSize) == column;
        result.append(lines[line].text);
        if (isBehindText) {
            result.append(" ");
        } else if (stands) {
            result.append(before[line].blanks);
        } else {
            result.append(blanksTo(column, end, takesTabs));
        }
        result.append("\\\n");
    }
    const auto behind = static_cast<std::size_t>(lines.back().text.data() - text.data());
    result.append(text.substr(text.find('\n', behind) + 1));
    // Most stay where they are, which takes no look at the tokens.
    return result == text || areSplices(directive, lines.size()) ? result : std::string(text);
}

std::string LineSplices::blanksTo(int column, int from, bool takesTabs) const {
    if (takesTabs) {
        std::string tabs;
        while (from / layout_.tabSize < column / layout_.tabSize) {
            tabs += '\t';
            from = (from / layout_.tabSize + 1) * layout_.tabSize;
        }
        return tabs + std::string(static_cast<std::size_t>(column - from), ' ');
    }
    return layout_.blanks(from, column);
}

}  // namespace Tessel
