#pragma once

#include <cstddef>
#include <vector>

namespace Tessel {

// A part of a text that is kept as it is: offsets of its first character and of its end.
struct KeptRegion {
    std::size_t start = 0;
    std::size_t end = 0;
};

using KeptRegions = std::vector<KeptRegion>;

}  // namespace Tessel
