#pragma once

#include <vector>

#include "trn/position.h"

namespace Cpp {

// A stretch of the source that a parse has kept as it was written.
struct KeptItem {
    Trn::Position start;
    Trn::Position end;
    bool isMacro = false;  // a macro that stands by itself, as opposed to what no rule recognises
};

using KeptItems = std::vector<KeptItem>;

}  // namespace Cpp
