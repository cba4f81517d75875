#pragma once

#include <string_view>

// The words in front of a function's name, with a blank between tokens as in the texts of nodes.
namespace Tessel {

// "virtual inline", in front of a constructor, a destructor or a conversion.
bool isSpecifiers(std::string_view type);

// Whether what stands in front of the name is a macro that, in a line of its own, would be an item by itself: one with
// arguments, or one in front of what has no return type. What is extern has a type.
bool isItemByItself(std::string_view type, std::string_view name);

}  // namespace Tessel
