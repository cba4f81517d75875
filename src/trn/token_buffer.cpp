#include "trn/token_buffer.h"

#include <algorithm>
#include <utility>

namespace Trn {

TokenBuffer::TokenBuffer(TokenList tokens)
    : tokens_(std::make_shared<const TokenList>(std::move(tokens))), end_(tokens_->size()) {}

TokenBuffer::TokenBuffer(std::shared_ptr<const TokenList> tokens, Index first, Index last)
    : tokens_(std::move(tokens)), begin_(first), end_(last), index_(first) {}

TokenBuffer TokenBuffer::slice(Index first, Index last) const { return {tokens_, first, std::min(last, end_)}; }

Token TokenBuffer::endToken() const {
    Token end;
    const bool isBehindText = end_ >= tokens_->size();
    const Index last = tokens_->size() - 1;
    if (isBehindText && (tokens_->size() == 0 || tokens_->kind(last) != kEndKind)) return end;
    const Token behind = (*tokens_)[isBehindText ? last : end_];
    end.start = end.end = behind.start;
    end.text = behind.text;
    return end;
}

}  // namespace Trn
