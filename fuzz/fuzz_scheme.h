#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "scheme/property_set.h"

namespace Fuzz {

// A fuzzer's input: a scheme drawn from its first bytes, and the source that the others are.
struct Input {
    Tessel::PropertySet scheme;
    std::string_view source;
};

Input readInput(const std::uint8_t* data, std::size_t size);

}  // namespace Fuzz
