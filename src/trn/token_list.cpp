#include "trn/token_list.h"

#include <limits>

namespace Trn {

// The first token of a line tells where the line starts.
bool TokenList::isPlain(const Token& token) {
    constexpr std::uint32_t unknown = std::numeric_limits<std::uint32_t>::max();
    if (token.start.line >= lineStarts_.size()) lineStarts_.resize(std::size_t{token.start.line} + 1, unknown);
    std::uint32_t& lineStart = lineStarts_[token.start.line];
    if (lineStart == unknown) lineStart = token.offset + 1 - token.start.column;
    return token.offset + 1 - token.start.column == lineStart &&
           token.length > 0 && token.length <= std::numeric_limits<std::uint16_t>::max() &&
           token.text.data() == source_.data() + token.offset && token.text.size() == token.length &&
           token.end == endInLine(token.start, token.length);
}

TokenList::Entry TokenList::pack(const Token& token) {
    const auto kind = static_cast<std::int8_t>(token.kind);
    if (isPlain(token)) {
        return {token.start.line, token.offset, static_cast<std::uint16_t>(token.length), kind, token.valueType};
    }
    const auto place = static_cast<std::uint32_t>(special_.size());
    special_.push_back({token.start, token.end, token.length, token.text});
    return {place, token.offset, 0, kind, token.valueType};
}

void TokenList::merge(Index first, Index last, int kind, Index to) {
    Token token = (*this)[first];
    const Token end = (*this)[last - 1];
    token.kind = kind;
    token.end = end.end;
    token.length = end.offset + end.length - token.offset;
    entries_[to] = pack(token);
}

}  // namespace Trn
