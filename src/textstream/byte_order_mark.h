#pragma once

#include <string_view>

namespace Zelmor {

// What some editors put in front of a text in UTF-8.
inline constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";

}  // namespace Zelmor
