#include "edits/unified_diff.h"

#include <algorithm>
#include <cstdio>
#include <vector>

#include "edits/changed_lines.h"

namespace Edits {

namespace {

constexpr std::size_t contextLines = 3;

using Lines = std::vector<std::string_view>;  // with their line ends

Lines linesOf(std::string_view text) {
    Lines lines;
    while (!text.empty()) {
        const std::size_t length = std::min(text.find('\n'), text.size() - 1) + 1;
        lines.push_back(text.substr(0, length));
        text.remove_prefix(length);
    }
    return lines;
}

// Names with quotes, backslashes or control characters are written as C literals; one with blanks ends in a tab.
std::string fileName(const std::string& prefix, const std::string& name) {
    std::string escaped;
    for (const char c : prefix + name) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') escaped += '\\';
        if (byte >= ' ' && byte != 0x7F) {
            escaped += c;
        } else {
            char octal[5];
            std::snprintf(octal, sizeof octal, "\\%03o", byte);
            escaped += octal;
        }
    }
    if (escaped != prefix + name) return '"' + escaped + '"';
    return escaped.find(' ') == std::string::npos ? escaped : escaped + '\t';
}

std::string range(std::size_t first, std::size_t count) {
    const std::size_t shown = count == 0 ? first : first + 1;  // no lines stand behind the one before them
    return std::to_string(shown) + (count == 1 ? "" : ',' + std::to_string(count));
}

class DiffText {
public:
    DiffText(const Lines& before, const Lines& after) : before_(before), after_(after) {}

    using Block = std::vector<ChangedLines>::const_iterator;

    void addHunk(Block first, Block end) {
        const ChangedLines& last = *std::prev(end);
        const std::size_t ahead = std::min(first->first, contextLines);
        const std::size_t behind = std::min(before_.size() - std::min(last.end, before_.size()), contextLines);
        const std::size_t start = first->first - ahead;
        const std::size_t newStart = first->newFirst - ahead;
        text_ += "@@ -" + range(start, last.end + behind - start) + " +" +
                 range(newStart, last.newEnd + behind - newStart) + " @@\n";
        std::size_t place = start;
        for (Block block = first; block != end; ++block) {
            add(' ', before_, place, block->first);
            add('-', before_, block->first, block->end);
            add('+', after_, block->newFirst, block->newEnd);
            place = block->end;
        }
        add(' ', before_, place, place + behind);
    }

    std::string text() && { return std::move(text_); }

private:
    void add(char mark, const Lines& lines, std::size_t first, std::size_t end) {
        for (std::size_t line = first; line < end; ++line) {
            text_ += mark;
            text_ += lines[line];
            if (!lines[line].ends_with('\n')) text_ += "\n\\ No newline at end of file\n";
        }
    }

    const Lines& before_;
    const Lines& after_;
    std::string text_;
};

}  // namespace

std::string unifiedDiff(const std::string& name, std::string_view before, const Replacements& replacements) {
    if (replacements.empty()) return {};
    const std::string result = replaced(before, replacements);
    const Lines lines = linesOf(before);
    const Lines newLines = linesOf(result);
    std::vector<ChangedLines> blocks = changedLines(before, replacements);
    // A line that is only begun, behind the last line end, is none.
    for (ChangedLines& block : blocks) {
        block.end = std::min(block.end, lines.size());
        block.newEnd = std::min(block.newEnd, newLines.size());
    }
    DiffText diff(lines, newLines);
    for (auto first = blocks.cbegin(); first != blocks.cend();) {
        auto end = std::next(first);
        while (end != blocks.cend() && end->first - std::prev(end)->end <= 2 * contextLines) ++end;
        diff.addHunk(first, end);
        first = end;
    }
    return "--- " + fileName("a/", name) + "\n+++ " + fileName("b/", name) + '\n' + std::move(diff).text();
}

}  // namespace Edits
