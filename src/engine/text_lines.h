#pragma once

#include <string_view>
#include <vector>

namespace Tessel {

// Views of the lines of a text, without the white space at their ends.
std::vector<std::string_view> linesOf(std::string_view text);

}  // namespace Tessel
