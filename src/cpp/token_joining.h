#pragma once

#include <string_view>

namespace Cpp {

// Whether two neighbouring tokens would be read as something else with nothing between them: `else return`,
// `a - -b`, `x / *p`, `A< ::B >`, `else ::f()`, `~ a`. Of `right` the first two characters are enough.
bool wouldJoin(std::string_view left, std::string_view right);

}  // namespace Cpp
