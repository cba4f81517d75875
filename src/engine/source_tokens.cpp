#include "engine/source_tokens.h"

#include <functional>

#include "cpp/token_sets.h"

namespace Tessel {

namespace {

// Whether the piece is a part of the whole, and not merely the same text.
bool isViewOf(std::string_view piece, std::string_view whole) {
    const std::less_equal<const char*> isUpTo;
    return isUpTo(whole.data(), piece.data()) && isUpTo(piece.data() + piece.size(), whole.data() + whole.size());
}

}  // namespace

bool SourceTokens::add(std::string_view text, std::size_t first, std::size_t last, ExprTokens& tokens) {
    if (!tokens_ || !isViewOf(text, tokens_->source())) return false;
    const Trn::TokenList& source = *tokens_;
    const char* const characters = source.source().data();
    const auto start = static_cast<std::size_t>(text.data() - characters);
    const std::size_t end = start + last;
    const Index begin = firstFrom(start + first);
    if (begin > 0 && source.endOffset(begin - 1) > start + first) return false;
    Index behind = begin;
    for (; source.offset(behind) < end; ++behind) {
        if (Cpp::isRegion(source.kind(behind))) return false;
    }
    if (behind > begin && source.endOffset(behind - 1) > end) return false;
    if (tokens.capacity() == 0) tokens.reserve(behind - begin);
    for (Index place = begin; place < behind; ++place) {
        const std::size_t offset = source.offset(place);
        const std::string_view piece(characters + offset, source.endOffset(place) - offset);
        tokens.emplace_back(source.kind(place), source.start(place), offset - start, piece, source.isPiece(place));
    }
    next_ = behind;
    return true;
}

// The place of the first token at or behind that offset of the source. The last one, at its end, has none behind it.
SourceTokens::Index SourceTokens::firstFrom(std::size_t offset) const {
    const Index end = tokens_->size() - 1;
    const bool isAhead = next_ == 0 || tokens_->offset(next_ - 1) < offset;
    Index low = isAhead ? next_ : 0;
    Index high = isAhead ? end : next_;
    for (Index step = 1; isAhead && low + step < end; step *= 2) {
        if (tokens_->offset(low + step) >= offset) {
            high = low + step;
            break;
        }
        low += step;
    }
    while (low < high) {
        const Index middle = low + (high - low) / 2;
        if (tokens_->offset(middle) < offset) {
            low = middle + 1;
        } else {
            high = middle;
        }
    }
    return low;
}

}  // namespace Tessel
