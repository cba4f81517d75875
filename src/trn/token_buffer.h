#pragma once

#include <cstddef>
#include <memory>

#include "trn/token_list.h"

namespace Trn {

// The parser's view of a run of tokens: read forward, look ahead any distance, step back.
//
// A slice is a buffer over some of the same tokens, for parsing a stretch that was scanned before; it copies
// nothing, and its places are those of the buffer that it was cut from. Past its last token a buffer gives tokens
// of kEndKind, and stepping back over those is as good as over any other; those of a slice show the position and
// the text of the token behind it.
class TokenBuffer {
public:
    using Index = std::size_t;

    // The last token may be one of kEndKind, which tells where the text ends.
    explicit TokenBuffer(TokenList tokens);

    Token next() { return at(index_++); }
    Token current() const { return at(index_); }
    // The n-th token ahead, n = 1 being the current one.
    Token peek(std::size_t n) const { return at(index_ + n - 1); }
    int peekKind(std::size_t n = 1) const { return kindAt(index_ + n - 1); }

    void stepBack() {
        if (index_ > begin_) --index_;
    }

    // Places are counted from the first token of the text.
    Index place() const { return index_; }
    void moveTo(Index place) { index_ = place; }
    Token at(Index place) const { return place < end_ ? (*tokens_)[place] : endToken(); }
    int kindAt(Index place) const { return place < end_ ? tokens_->kind(place) : kEndKind; }

    // Whether the token's text is all that it covers, and stands in one line.
    bool isPiece(Index place) const { return place < end_ && tokens_->isPiece(place); }
    // Behind the pieces that follow each other from the current token on, up to `end` or to one that is told apart.
    template <typename IsOther>
    Index endOfPieces(Index end, IsOther isOther) const {
        Index place = index_;
        while (place < end && isPiece(place) && !isOther(place)) ++place;
        return place;
    }
    // The token's extent in the source, in characters.
    std::size_t lengthAt(Index place) const { return tokens_->endOffset(place) - tokens_->offset(place); }

    // The tokens in [first, last), from their start.
    TokenBuffer slice(Index first, Index last) const;
    // That all tokens were read from: a token's own text may stand elsewhere.
    std::string_view source() const { return tokens_->source(); }
    // All of them.
    std::shared_ptr<const TokenList> list() const { return tokens_; }
    // The place of this buffer's first token.
    Index begin() const { return begin_; }

private:
    TokenBuffer(std::shared_ptr<const TokenList> tokens, Index first, Index last);
    Token endToken() const;

    std::shared_ptr<const TokenList> tokens_;
    Index begin_ = 0;
    Index end_;  // one past the last token that this buffer may give
    Index index_ = 0;
};

}  // namespace Trn
