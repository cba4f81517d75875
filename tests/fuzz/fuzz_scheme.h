#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "promises.h"
#include "scheme/property_set.h"

namespace Fuzz {

// A fuzzer's input: a scheme, and the source that follows. The first byte names a scheme of the program, in
// the order of their names; the second is free for the target. Other first bytes say that more bytes draw
// one.
struct Input {
    Tessel::PropertySet scheme;
    Origin origin = Origin::Drawn;
    std::string_view source;
};

Input readInput(const std::uint8_t* data, std::size_t size);

}  // namespace Fuzz
