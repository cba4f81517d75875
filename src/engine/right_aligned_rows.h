#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "engine/expr_tokens.h"

namespace Tessel {

// The column at which the furthest to the left begins of the rows in the braces that open at the place, where their
// first elements end in one column and begin in several:
//
//     {
//           7,   30,    1,
//         120,    2, 4800,
//     }
std::optional<int> columnOfRightAlignedRows(std::string_view text, const ExprTokens& tokens, std::size_t open,
                                            int tabSize);

}  // namespace Tessel
