#include "textstream/text_document.h"

#include <algorithm>
#include <utility>

namespace Zelmor {

namespace {

// Most texts have fewer lines. What is not needed is never touched.
constexpr std::size_t kCharactersToLine = 16;

}  // namespace

TextDocument::TextDocument(LineFeedText text) : content_(std::move(text)), text_(content_.text()) { findLineStarts(); }

std::string TextDocument::takeText() {
    text_ = {};
    lineStarts_.assign(1, 0);
    return content_.take();
}

void TextDocument::findLineStarts() {
    lineStarts_.assign(1, 0);
    lineStarts_.reserve(text_.size() / kCharactersToLine + 1);
    for (std::size_t lineFeed = text_.find('\n'); lineFeed != std::string::npos;
         lineFeed = text_.find('\n', lineFeed + 1)) {
        lineStarts_.push_back(static_cast<std::uint32_t>(lineFeed + 1));
    }
}

TextPosition TextDocument::positionOf(std::size_t offset) const {
    const auto next = std::upper_bound(lineStarts_.begin(), lineStarts_.end(), offset);
    return {static_cast<int>(next - lineStarts_.begin()), static_cast<int>(offset - *std::prev(next))};
}

void TextDocument::replaceCharacter(std::size_t offset, char c) {
    const bool changesLines = (text_[offset] == '\n') != (c == '\n');
    content_.replaceCharacter(offset, c);
    text_ = content_.text();
    if (changesLines) findLineStarts();
}

}  // namespace Zelmor
