#include "textstream/line_feed_text.h"

#include <algorithm>
#include <istream>
#include <utility>

#include "textstream/view_stream.h"

namespace Zelmor {

namespace {

constexpr std::size_t kFirstBlock = 64 * 1024;

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

LineFeedText::LineFeedText(std::string text) : own_(std::move(text)) { normalizeLineEnds(own_); }

LineFeedText::LineFeedText(std::istream& in) {
    auto* const view = dynamic_cast<ViewStream*>(&in);
    if (view) borrowed_ = view->takeRest();
    if (view && borrowed_.find('\r') == std::string_view::npos) return;
    own_ = view ? std::string(borrowed_) : readAll(in);
    normalizeLineEnds(own_);
}

std::string LineFeedText::take() {
    if (own_.empty()) own_ = borrowed_;
    borrowed_ = {};
    return std::exchange(own_, {});
}

void LineFeedText::replaceCharacter(std::size_t offset, char c) {
    if (own_.empty()) own_ = borrowed_;
    own_[offset] = c;
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
