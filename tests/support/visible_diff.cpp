#include "visible_diff.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace TestSupport {

namespace {

constexpr std::size_t CONTEXT = 2;  // lines shown around those that differ

std::vector<std::string_view> linesOf(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size() - 1) + 1;
        lines.push_back(text.substr(0, end));
        text.remove_prefix(end);
    }
    return lines;
}

void show(std::string& out, char mark, std::string_view line) {
    out += mark;
    out += ' ';
    for (const char c : line) {
        if (c == ' ') {
            out += "·";
        } else if (c == '\t') {
            out += "→";
        } else if (c == '\r') {
            out += "↵";
        } else if (c != '\n') {
            out += c;
        }
    }
    if (line.empty() || line.back() != '\n') out += "⊣";
    out += '\n';
}

}  // namespace

std::string visibleDiff(std::string_view expected, std::string_view got) {
    const std::vector<std::string_view> wanted = linesOf(expected);
    const std::vector<std::string_view> had = linesOf(got);
    const std::size_t shorter = std::min(wanted.size(), had.size());
    std::size_t start = 0;
    while (start < shorter && wanted[start] == had[start]) ++start;
    std::size_t tail = 0;
    while (tail < shorter - start && wanted[wanted.size() - 1 - tail] == had[had.size() - 1 - tail]) ++tail;

    std::string out;
    const std::size_t end = wanted.size() - tail;
    for (std::size_t i = start - std::min(start, CONTEXT); i < start; ++i) show(out, ' ', wanted[i]);
    for (std::size_t i = start; i < end; ++i) show(out, '-', wanted[i]);
    for (std::size_t i = start; i < had.size() - tail; ++i) show(out, '+', had[i]);
    for (std::size_t i = end; i < std::min(wanted.size(), end + CONTEXT); ++i) show(out, ' ', wanted[i]);
    return out;
}

}  // namespace TestSupport
