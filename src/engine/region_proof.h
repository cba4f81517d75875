#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace Tessel {

// A part of a text that is kept as it is: from the first character up to the end, as offsets.
struct KeptRegion {
    std::size_t start = 0;
    std::size_t end = 0;
};

// The proof that a result, which holds the tokens of its source, holds these regions of the source as they
// are: only the white space at the start of their lines may differ. The regions are in order, and begin with
// a token.
//
// Returns the offset in the source of the first line, or part of one, that differs, or nothing when all is
// well.
std::optional<std::size_t> findChangedLine(std::string_view source, const std::vector<KeptRegion>& regions,
                                           std::string_view result);

}  // namespace Tessel
