#pragma once

#include <string>
#include <string_view>

#include "cpp/parser.h"

namespace TestSupport {

// How the trees of two texts with the same tokens differ, positions and white space aside; empty when they do
// not. A text that does not parse has its messages in place of a tree.
std::string treeDifference(std::string_view before, std::string_view after, Cpp::Unrecognized unrecognized);

}  // namespace TestSupport
