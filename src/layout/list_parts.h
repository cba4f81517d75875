#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "engine/expr_tokens.h"
#include "layout/wrap_settings.h"

namespace Tessel {

struct ListPart {
    std::string_view text;   // with the white space in front of it
    bool isElement = false;  // in braces, on lines of its own, with a line among these that is too long
};
using ListParts = std::vector<ListPart>;

// What stands in the brace at the place: the elements whose lines are broken one by one, where all of them together are
// too many to be weighed, and what is between them.
ListParts partsOfList(const ExprTokens& tokens, std::size_t open, const WrapSettings& settings);

}  // namespace Tessel
