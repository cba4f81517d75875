#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "engine/expr_tokens.h"
#include "engine/format_options.h"
#include "trn/token.h"

namespace Tessel {

// A region that has been opened: an `#if 0` up to its `#endif`, or what stands between two marker comments.
class OpenRegion {
public:
    // By that comment or directive, if it does. The markers are borrowed.
    static std::optional<OpenRegion> openedBy(const Trn::Lexeme& token, const MarkerPairs& markers);

    // How the token changes the number of regions that are open.
    int step(const Trn::Lexeme& token) const;
    bool isUnread() const { return closing_.empty(); }

private:
    explicit OpenRegion(std::string_view closing) : closing_(closing) {}

    std::string_view closing_;  // of an `#if 0` nothing
};

// Makes one token of each region among the tokens that is to be kept as it is, a comment or a directive by its kind: of
// an `#if 0` up to its `#endif`, and of what stands between two marker comments. One that is not closed is none, nor is
// one around a block that somebody else lays out. One with the markers of another formatter, which is not closed in the
// text, holds what follows between the same brackets.
void mergeRegions(const MarkerPairs& markers, ExprTokens& tokens);

}  // namespace Tessel
