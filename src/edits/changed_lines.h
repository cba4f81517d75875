#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "edits/replacement.h"

namespace Edits {

// Lines that replacements change, and those that they become. Lines count from 0 here, the last one excluded: a block
// may be empty on one of the sides.
struct ChangedLines {
    std::size_t first = 0;
    std::size_t end = 0;
    std::size_t newFirst = 0;
    std::size_t newEnd = 0;
};

// In the order of the text; no line is in two blocks.
std::vector<ChangedLines> changedLines(std::string_view before, const Replacements& replacements);

}  // namespace Edits
