#pragma once

#include <string>

#include "scheme/property_set.h"

namespace Tessel {

// What blanks that reach a column come to be, and how long lines may get.
struct ColumnLayout {
    int tabSize = 1;
    int tabMode = 0;
    int margin = 0;  // none when 0

    // The margin of the scheme, whether lines are wrapped there or not.
    static ColumnLayout of(const PropertySet& scheme);

    // From a column up to another one, in tabs where the output's are; nothing where that does not lie behind it.
    std::string blanks(int from, int to) const;
};

}  // namespace Tessel
