#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace Zelmor {

// Lines count from 1, columns from 0 in characters, a tab counting as one.
struct TextPosition {
    int line = 1;
    int column = 0;
};

// One text in one piece of memory, with all line ends made line feeds, and a table of where its lines start.
// Views of the text live as long as the document.
class TextDocument {
public:
    // CR LF and a lone CR each become one LF.
    explicit TextDocument(std::string text);
    // All that remains in the stream. The text of a ViewStream is borrowed where it has no CR.
    explicit TextDocument(std::istream& in);
    TextDocument(const TextDocument&) = delete;
    TextDocument& operator=(const TextDocument&) = delete;

    std::string_view text() const { return text_; }
    // The document is no longer of use then, nor are views of it.
    std::string takeText();
    std::size_t size() const { return text_.size(); }

    // At least 1. A text that ends in a line feed has an empty last line.
    int lineCount() const { return static_cast<int>(lineStarts_.size()); }

    // A place beyond the end of its line is the start of the next one, a line beyond the last is the text's
    // end.
    std::size_t offsetOf(int line, int column) const {
        if (line < 1) return 0;
        const auto index = static_cast<std::size_t>(line) - 1;
        if (index >= lineStarts_.size()) return text_.size();
        const std::size_t start = lineStarts_[index];
        const std::size_t end = index + 1 < lineStarts_.size() ? lineStarts_[index + 1] : text_.size();
        return std::min(start + static_cast<std::size_t>(std::max(column, 0)), end);
    }
    // By binary search in the lines. `offset` is at most the text's size.
    TextPosition positionOf(std::size_t offset) const;

    // `c` stands for itself, a CR too.
    void replaceCharacter(std::size_t offset, char c);

private:
    void findLineStarts();

    std::string own_;  // nothing while another's text is borrowed
    std::string_view text_;
    std::vector<std::uint32_t> lineStarts_;
};

// Reads everything that remains, in big blocks. A failure to read sets the stream's badbit.
std::string readAll(std::istream& in);

}  // namespace Zelmor
