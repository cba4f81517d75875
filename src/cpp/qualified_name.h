#pragma once

#include <cstddef>

#include "trn/token_buffer.h"

namespace Cpp {

// Given the distance (as for TokenBuffer::peek) of the last token of a name, the distance of its first: for
// `A<B>::C` the name that ends in "::C" starts at "A". Never below 1.
std::size_t findQualifiedNameStart(Trn::TokenBuffer& tokens, std::size_t distance);

}  // namespace Cpp
