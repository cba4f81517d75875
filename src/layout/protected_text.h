#pragma once

#include <string_view>

#include "engine/format_options.h"

namespace Tessel {

// Whether a region that is kept as it is begins inside the text: a marker comment, or an `#if 0`.
bool holdsProtectedText(std::string_view text, const MarkerPairs& markers);

}  // namespace Tessel
