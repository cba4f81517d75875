#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "trn/position.h"

namespace Tessel {

// The lines of a text that stand as they did in what it was made from, a formatted text with other white space: what
// consists of them need not be formatted again.
class SettledLines {
public:
    // None.
    SettledLines() = default;
    SettledLines(std::string_view formatted, std::string_view text);

    // Whether all lines are, from that of one position to that of the other.
    bool contain(Trn::Position start, Trn::Position end) const;

private:
    std::vector<std::uint32_t> changed_;  // of each line, with the number of changed lines in front of it
};

}  // namespace Tessel
