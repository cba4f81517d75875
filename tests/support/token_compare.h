#pragma once

#include <string>
#include <string_view>

namespace TestSupport {

// What keeps `after` from having the tokens of `before`, for a person to read; empty when nothing does. Texts
// are compared character by character, comments and directives without the white space at the starts and the
// ends of their lines. So are the characters that belong to no token, where they stand. A directive that has
// its line to itself must keep it.
std::string tokenDifference(std::string_view before, std::string_view after);

}  // namespace TestSupport
