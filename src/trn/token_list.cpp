#include "trn/token_list.h"

namespace Trn {

TokenList::Entry TokenList::packSpecial(const Token& token) {
    const auto place = static_cast<std::uint32_t>(special_.size());
    special_.push_back({token.start, token.end, token.length, token.text});
    return {place, token.offset, 0, static_cast<std::int8_t>(token.kind), token.valueType};
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
