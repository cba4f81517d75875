#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "engine/kept_region.h"

namespace Tessel {

// The proof that a result, which holds the tokens of its source, holds these regions of the source as they
// are: only the white space at the start of their lines may differ. The regions are in order, and begin with
// a token.
//
// Returns the offset in the source of the first line, or part of one, that differs, or nothing when all is
// well.
std::optional<std::size_t> findChangedLine(std::string_view source, const KeptRegions& regions,
                                           std::string_view result);

}  // namespace Tessel
