#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>
#include <vector>

#include "trn/token_buffer.h"
#include "trn/token_list.h"

namespace Cpp {

// For each token of a text the place of the one that it belongs with, found once and asked for often:
//
//  - an opening bracket has the one that closes it. "<" and ">" are tried: where a "<" can begin template arguments
//    and a ">" can end them, they match, else they are operators. A ">>" may close two lists, and is matched with
//    the outer one;
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
    explicit TokenLinks(const Trn::TokenList& tokens);

    // The number of tokens.
    Index size() const { return links_.size(); }
    // The bracket that closes the one at the place; kNone where nothing does, or nothing is open there.
    Index closing(Index open) const {
        if (open >= links_.size()) return kNone;
        const std::uint32_t place = links_[open] & kPlaceMask;
        return place == kNoLink || (links_[open] & kIsTrivia) != 0 ? kNone : place;
    }
    // The first token at or behind the place that is no comment, directive or region.
    Index significant(Index place) const {
        if (place >= links_.size() || (links_[place] & kIsTrivia) == 0) return place;
        return links_[place] & kPlaceMask;
    }
    // The next token that is none of these; behind the closing one when the place's opens a bracket.
    Index behind(Index place) const {
        const Index close = closing(place);
        return significant((close == kNone ? place : close) + 1);
    }
    // Whether an access label stands between the bracket at the place and the closing one, outside of other brackets:
    // these are the braces of a class.
    bool holdsLabels(Index open) const { return std::ranges::binary_search(labelled_, open); }
    // Whether a ";" or the keyword of a statement stands between the bracket at the place and the closing one, outside
    // of other brackets.
    bool holdsStatements(Index open) const {
        return open < links_.size() && (links_[open] & kHoldsStatements) != 0;
    }

    const std::vector<Mismatch>& mismatches() const { return mismatches_; }
    // Whether a "}" stands where no "{" is open.
    bool hasUnopenedBrace() const { return hasUnopenedBrace_; }

private:
    friend class LinkFinder;

    // A link holds a place, or none, and what else is known of its token.
    static constexpr std::uint32_t kPlaceMask = 0x3fffffff;
    static constexpr std::uint32_t kNoLink = kPlaceMask;
    static constexpr std::uint32_t kIsTrivia = 0x80000000;
    static constexpr std::uint32_t kHoldsStatements = 0x40000000;

    std::vector<std::uint32_t> links_;
    std::vector<Mismatch> mismatches_;
    std::vector<Index> labelled_;  // the brackets that hold labels, in order
    bool hasUnopenedBrace_ = false;
};

}  // namespace Cpp
