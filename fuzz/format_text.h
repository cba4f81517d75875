#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "scheme/property_set.h"

namespace Fuzz {

// The formatted text, or nothing when the source does not parse. Whatever else goes wrong ends the process.
std::optional<std::string> formatText(const Tessel::PropertySet& scheme, std::string_view source);

}  // namespace Fuzz
