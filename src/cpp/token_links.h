#pragma once

#include <cstdint>
#include <limits>
#include <span>
#include <vector>

#include "trn/token.h"
#include "trn/token_buffer.h"

namespace Cpp {

// For each token of a text the place of the one that it belongs with, found once and asked for often:
//
//  - a bracket has the one that it matches. "<" and ">" are tried: where a "<" can begin template arguments and a
//    ">" can end them, they match, else they are operators. A ">>" may close two lists, and is matched with the
//    outer one;
//  - a comment, directive or region has the next token that is none.
//
// Places count from the first token of the text.
class TokenLinks {
public:
    using Index = Trn::TokenBuffer::Index;
    static constexpr Index kNone = std::numeric_limits<Index>::max();

    // A bracket that nothing closes, and the closing one that stood where its own should have; kNone where the text
    // ended.
    struct Mismatch {
        Index open;
        Index where;
    };

    TokenLinks() = default;
    explicit TokenLinks(std::span<const Trn::Token> tokens);

    // The number of tokens.
    Index size() const { return links_.size(); }
    // Of a bracket; kNone where it has none.
    Index partner(Index bracket) const;
    // The first token at or behind the place that is no comment, directive or region.
    Index significant(Index place) const;
    // Whether a ";" or the keyword of a statement stands between the bracket at the place and its partner, outside
    // of other brackets.
    bool holdsStatements(Index open) const;

    const std::vector<Mismatch>& mismatches() const { return mismatches_; }

private:
    friend class LinkFinder;

    std::vector<std::uint32_t> links_;
    std::vector<Mismatch> mismatches_;
};

}  // namespace Cpp
