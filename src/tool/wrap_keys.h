#pragma once

#include <string_view>

#include "scheme/key_id.h"

// Which key says how lines are broken at gaps of one kind, which are known by the key of their white space.
namespace Tool {

// Where a line begins that the wrapping of lines has made. `before` and `behind` are the text around the gap. None
// where nothing but the margin tells.
Tessel::KeyId wrapKeyOf(Tessel::KeyId gapKey, std::string_view before, std::string_view behind);

// Whether it is one of these keys, or the margin itself.
bool isOfWrapping(Tessel::KeyId key);

}  // namespace Tool
