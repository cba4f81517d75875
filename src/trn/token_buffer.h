#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "trn/lexer.h"
#include "trn/token.h"

namespace Trn {

// The parser's view of a run of tokens: read forward, look ahead any distance, step back.
//
// A buffer built over a lexer fetches tokens as they are asked for and keeps them until release() says that
// nobody will step back to them. A slice is a buffer over some of those tokens again, for parsing a stretch
// that was scanned before; it copies nothing and must not outlive the buffer that it was cut from. Past its
// last token a buffer gives tokens of kEndKind, and stepping back over those is as good as over any other;
// those of a slice show the position and the text of the token behind it.
class TokenBuffer {
public:
    using Index = std::size_t;

    explicit TokenBuffer(Lexer* lexer);
    explicit TokenBuffer(std::vector<Token> tokens);

    Token next();
    Token current();
    // The n-th token ahead, n = 1 being the current one.
    Token peek(std::size_t n);
    int peekKind(std::size_t n = 1);

    void stepBack();
    // Steps back one place and stores the token there.
    void putBack(const Token& token);

    // Places are counted from the first token of the text and stay valid until they are released.
    Index place() const { return index_; }
    void moveTo(Index place) { index_ = place; }
    Token at(Index place);
    int kindAt(Index place);

    // The tokens in [first, last), from their start.
    TokenBuffer slice(Index first, Index last) const;
    // The place at which this buffer's tokens begin.
    Index begin() const { return begin_; }

    // Forgets the tokens before the current place, but for the history that stepBack needs. No slice may be
    // in use. Does nothing on a slice.
    void release();

private:
    struct Store {
        Lexer* lexer = nullptr;
        Index firstKept = 0;
        std::vector<Token> tokens;
    };

    TokenBuffer(std::shared_ptr<Store> store, Index first, Index last);
    const Token* fetch(Index place);
    Token endToken() const;

    std::shared_ptr<Store> store_;
    Index begin_ = 0;
    Index end_;  // one past the last token that this buffer may give
    Index index_ = 0;
    bool isSlice_ = false;
};

}  // namespace Trn
