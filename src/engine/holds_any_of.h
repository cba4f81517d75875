#pragma once

#include <algorithm>
#include <string_view>

namespace Tessel {

// Whether one of these characters is in a text, which is short: the library's search is made for long ones.
template <char... kCharacters>
constexpr bool holdsAnyOf(std::string_view text) {
    return std::any_of(text.begin(), text.end(), [](char c) { return ((c == kCharacters) || ...); });
}

}  // namespace Tessel
