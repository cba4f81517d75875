#pragma once

#include <cstddef>
#include <string_view>

#include "cpp/token_kind.h"
#include "engine/gap.h"

namespace Tessel {

// The place behind the directive that comes first, whatever comments stand in front of it on its line; 0
// where something else does. `next` gives the text's tokens, one with each call, and one of another kind at
// the end.
template <class Next>
std::size_t endOfDirectiveAhead(std::string_view text, Next next) {
    for (std::size_t end = 0;;) {
        const auto token = next();
        if (token.kind != Cpp::Directive && token.kind != Cpp::BlockComment) return 0;
        const std::size_t start = token.offset;
        const std::string_view between = text.substr(end, start - end);
        const bool isOnLine = isAllWhitespace(between) && between.find('\n') == std::string_view::npos;
        if (end > 0 && !isOnLine) return 0;
        end = start + token.length;
        if (token.kind == Cpp::Directive) return end;
    }
}

}  // namespace Tessel
