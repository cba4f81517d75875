#include "trn/token_list.h"

namespace Trn {

TokenList::Entry TokenList::packSpecial(const Token& token) {
    Entry entry = packPlain(token);
    entry.isSpecial = true;
    entry.length = static_cast<std::uint32_t>(special_.size());
    special_.push_back({token.end, token.length, token.text});
    return entry;
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
