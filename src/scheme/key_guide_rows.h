#pragma once

#include <vector>

#include "scheme/key_guide.h"

namespace Tessel {

// The rows of the guide to the keys, in the order of their groups.
std::vector<KeyGuide> keyGuideRows();

}  // namespace Tessel
