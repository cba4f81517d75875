#pragma once

#include "cpp/token_kind.h"
#include "cpp/token_links.h"
#include "trn/token_buffer.h"

namespace Cpp {

// A walk over tokens by their links: past comments, and from a bracket to the one that closes it.
class TokenView {
public:
    using Index = Trn::TokenBuffer::Index;

    // Both are borrowed.
    TokenView(const Trn::TokenBuffer& tokens, const TokenLinks& links) : tokens_(tokens), links_(links) {}

    Index next(Index place) const { return links_.significant(place + 1); }
    // Behind the token at the place, and behind the closing one when it opens a bracket.
    Index behind(Index place) const { return links_.behind(place); }
    // Behind attributes and annotations with arguments, and behind those of the statement's first keyword.
    Index behindAnnotations(Index place) const;
    // Names with arguments, one behind another. `lastEnd` is where those end that a walk has looked behind last: of
    // these all end there.
    Index behindCalls(Index place, Index& lastEnd) const;
    // `IF_WIDE(long flags[] =) { 1 }`: whether a macro's argument ends with a declarator and the "=" whose value stands
    // behind the macro.
    bool endsWithAssign(Index openParen) const;
    // Whether a "noexcept" stands behind parameters: `f() noexcept`, `f() & noexcept`.
    bool promisesNoThrow(Index place) const;
    // Behind what else stands with parameters in a declarator: `f() const& noexcept(true)`.
    Index behindTailWords(Index place) const;
    // Whether the "<" at the place has a ">".
    bool opensArguments(Index place) const { return kind(place) == Less && links_.closing(place) != kNone; }
    // Whether the "[" is one of "[[", with its "]]".
    bool opensAttribute(Index place) const;

protected:
    static constexpr Index kNone = TokenLinks::kNone;

    int kind(Index place) const { return tokens_.kindAt(place); }
    bool startsLaterLine(Index place, Index than) const;

    const Trn::TokenBuffer& tokens_;
    const TokenLinks& links_;
};

}  // namespace Cpp
