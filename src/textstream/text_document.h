#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "textstream/line_feed_text.h"

namespace Zelmor {

// Lines count from 1, columns from 0 in characters, a tab counting as one.
struct TextPosition {
    int line = 1;
    int column = 0;
};

// One text in one piece of memory, with all line ends line feeds, and a table of where its lines start.
// Views of the text live as long as the document.
class TextDocument {
public:
    explicit TextDocument(LineFeedText text);
    explicit TextDocument(std::string text) : TextDocument(LineFeedText(std::move(text))) {}
    explicit TextDocument(std::istream& in) : TextDocument(LineFeedText(in)) {}
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

    LineFeedText content_;
    std::string_view text_;  // of the content
    std::vector<std::uint32_t> lineStarts_;
};

}  // namespace Zelmor
