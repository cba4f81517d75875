#include "textstream/text_document.h"

#include <algorithm>
#include <istream>

#include "textstream/view_stream.h"

namespace Zelmor {

namespace {

constexpr std::size_t kFirstBlock = 64 * 1024;
// Most texts have fewer lines. What is not needed is never touched.
constexpr std::size_t kCharactersToLine = 16;

void normalizeLineEnds(std::string& text) {
    std::size_t carriageReturn = text.find('\r');
    std::size_t kept = carriageReturn;
    while (carriageReturn != std::string::npos) {
        text[kept++] = '\n';
        std::size_t from = carriageReturn + 1;
        if (from < text.size() && text[from] == '\n') ++from;
        carriageReturn = text.find('\r', from);
        const std::size_t to = std::min(carriageReturn, text.size());
        std::copy(text.data() + from, text.data() + to, text.data() + kept);
        kept += to - from;
    }
    if (kept != std::string::npos) text.resize(kept);
}

}  // namespace

TextDocument::TextDocument(std::string text) : own_(std::move(text)) {
    normalizeLineEnds(own_);
    text_ = own_;
    findLineStarts();
}

TextDocument::TextDocument(std::istream& in) {
    auto* const view = dynamic_cast<ViewStream*>(&in);
    if (view) text_ = view->takeRest();
    if (!view || text_.find('\r') != std::string_view::npos) {
        own_ = view ? std::string(text_) : readAll(in);
        normalizeLineEnds(own_);
        text_ = own_;
    }
    findLineStarts();
}

std::string TextDocument::takeText() {
    std::string text = own_.empty() ? std::string(text_) : std::move(own_);
    text_ = {};
    lineStarts_.assign(1, 0);
    return text;
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
    if (own_.empty()) own_ = text_;
    own_[offset] = c;
    text_ = own_;
    if (changesLines) findLineStarts();
}

std::string readAll(std::istream& in) {
    std::string text;
    std::size_t size = 0;
    // A stream over a string knows how much it holds; one character more finds its end.
    const auto known = static_cast<std::size_t>(std::max<std::streamsize>(in.rdbuf()->in_avail(), 0)) + 1;
    while (in.good()) {
        text.resize(size == 0 ? std::max(kFirstBlock, known) : 2 * size);
        in.read(text.data() + size, static_cast<std::streamsize>(text.size() - size));
        size += static_cast<std::size_t>(in.gcount());
    }
    text.resize(size);
    return text;
}

}  // namespace Zelmor
