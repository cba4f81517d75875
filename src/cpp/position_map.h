#pragma once

#include "trn/position.h"

namespace Cpp {

// Where the positions of a text are in another that has the same tokens. Asked in source order, it is quick.
class PositionMap {
public:
    virtual ~PositionMap() = default;
    virtual Trn::Position moved(Trn::Position position) = 0;
};

}  // namespace Cpp
