#pragma once

#include <cstddef>
#include <string_view>

#include "cpp/token_kind.h"

namespace Cpp {

struct Operator {
    int kind = Unknown;
    std::size_t length = 0;
};

// The longest operator at the front of `text`, which is not empty; of length 0 when there is none.
Operator matchOperator(std::string_view text);

}  // namespace Cpp
