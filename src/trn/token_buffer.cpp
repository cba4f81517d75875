#include "trn/token_buffer.h"

#include <algorithm>
#include <utility>

namespace Trn {

TokenBuffer::TokenBuffer(std::vector<Token> tokens)
    : tokens_(std::make_shared<const std::vector<Token>>(std::move(tokens))), end_(tokens_->size()) {}

TokenBuffer::TokenBuffer(std::shared_ptr<const std::vector<Token>> tokens, Index first, Index last)
    : tokens_(std::move(tokens)), begin_(first), end_(last), index_(first) {}

TokenBuffer TokenBuffer::slice(Index first, Index last) const { return {tokens_, first, std::min(last, end_)}; }

Token TokenBuffer::endToken() const {
    Token end;
    const bool isBehindText = end_ >= tokens_->size();
    if (isBehindText && (tokens_->empty() || tokens_->back().kind != kEndKind)) return end;
    const Token& behind = isBehindText ? tokens_->back() : (*tokens_)[end_];
    end.start = end.end = behind.start;
    end.text = behind.text;
    return end;
}

}  // namespace Trn
