#include "trn/token_buffer.h"

#include <limits>
#include <utility>

namespace Trn {

namespace {

constexpr TokenBuffer::Index kUnbounded = std::numeric_limits<TokenBuffer::Index>::max();

// Tokens behind the current place that survive a release.
constexpr TokenBuffer::Index kHistory = 2;

// Released tokens are taken out of the store once there are this many, so that the move of the others is paid
// for by the tokens read since the last one.
constexpr TokenBuffer::Index kReleaseBlock = 1024;

}  // namespace

TokenBuffer::TokenBuffer(Lexer* lexer) : store_(std::make_shared<Store>()), end_(kUnbounded) {
    store_->lexer = lexer;
}

TokenBuffer::TokenBuffer(std::vector<Token> tokens) : store_(std::make_shared<Store>()), end_(tokens.size()) {
    store_->tokens = std::move(tokens);
}

TokenBuffer::TokenBuffer(std::shared_ptr<Store> store, Index first, Index last)
    : store_(std::move(store)), begin_(first), end_(last), index_(first), isSlice_(true) {}

TokenBuffer TokenBuffer::slice(Index first, Index last) const {
    return {store_, first, last < end_ ? last : end_};
}

// The token at a place, or null past the last one. Valid until the next fetch.
const Token* TokenBuffer::fetch(Index place) {
    if (place >= end_) return nullptr;
    Store& store = *store_;
    while (store.firstKept + store.tokens.size() <= place) {
        if (!store.lexer) return nullptr;
        if (!store.tokens.empty() && store.tokens.back().kind == kEndKind) return &store.tokens.back();
        store.tokens.push_back(store.lexer->nextToken());
    }
    return &store.tokens[place - store.firstKept];
}

Token TokenBuffer::at(Index place) {
    const Token* token = fetch(place);
    return token ? *token : endToken();
}

Token TokenBuffer::endToken() const {
    Token end;
    if (isSlice_ && end_ - store_->firstKept < store_->tokens.size()) {
        const Token& behind = store_->tokens[end_ - store_->firstKept];
        end.start = end.end = behind.start;
        end.text = behind.text;
    }
    return end;
}

int TokenBuffer::kindAt(Index place) {
    const Token* token = fetch(place);
    return token ? token->kind : kEndKind;
}

Token TokenBuffer::next() {
    return at(index_++);
}

Token TokenBuffer::current() {
    return at(index_);
}

Token TokenBuffer::peek(std::size_t n) {
    return at(index_ + n - 1);
}

int TokenBuffer::peekKind(std::size_t n) {
    return kindAt(index_ + n - 1);
}

void TokenBuffer::stepBack() {
    if (index_ > begin_) --index_;
}

void TokenBuffer::putBack(const Token& token) {
    if (index_ <= begin_) return;
    --index_;
    if (fetch(index_)) store_->tokens[index_ - store_->firstKept] = token;
}

void TokenBuffer::release() {
    Store& store = *store_;
    if (isSlice_ || !store.lexer || index_ < store.firstKept + kHistory + kReleaseBlock) return;
    const Index released = index_ - kHistory - store.firstKept;
    if (released > store.tokens.size() || released * 2 < store.tokens.size()) return;
    store.tokens.erase(store.tokens.begin(), store.tokens.begin() + static_cast<std::ptrdiff_t>(released));
    store.firstKept += released;
    begin_ = store.firstKept;
}

}  // namespace Trn
