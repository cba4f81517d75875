#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "cpp/opaque_tokens.h"

namespace Tessel {

// The proof that a result holds the tokens of its source, each with the same text, and nothing else: only white
// space may differ. Comments may differ in the white space at the start and the end of their lines, directives
// in that of theirs; both still end their line, and directives begin one. `opaque` are the opaque tokens of the source.
//
// Goes through both texts once, side by side. Returns the offset in the source of the first token that the
// result does not hold, or nothing when all is well.
std::optional<std::size_t> findLostToken(std::string_view source, const Cpp::OpaqueTokens& opaque,
                                         std::string_view result);

}  // namespace Tessel
