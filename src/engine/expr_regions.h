#pragma once

#include <vector>

#include "engine/expr_tokens.h"
#include "engine/format_options.h"

namespace Tessel {

// Makes one token of each region among the tokens that is to be kept as it is, a comment or a directive by its kind: of
// an `#if 0` up to its `#endif`, and of what stands between two marker comments. One that is not closed is none, nor is
// one around a block that somebody else lays out.
void mergeRegions(const MarkerPairs& markers, std::vector<ExprToken>& tokens);

}  // namespace Tessel
