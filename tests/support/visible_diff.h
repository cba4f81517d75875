#pragma once

#include <string>
#include <string_view>

namespace TestSupport {

// The lines of both texts, those that differ marked "-" (expected) and "+" (got), with a dot for every blank
// and an arrow for every tab of theirs.
std::string visibleDiff(std::string_view expected, std::string_view got);

}  // namespace TestSupport
