#pragma once

#include "scheme/property_set.h"

namespace Tessel {

// The scheme for what stays on one line: no text of it ends a line, and no switch does.
PropertySet withoutLineEnds(PropertySet scheme);

}  // namespace Tessel
