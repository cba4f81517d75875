#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace Edits {

inline std::size_t countLineFeeds(std::string_view text) {
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

}  // namespace Edits
