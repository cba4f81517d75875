#pragma once

#include <string_view>

#include "cpp/token_kind.h"

namespace Tessel {

// A directive that a block comment stands behind goes on up to the end of the line that the comment ends on. Tokens and
// the gaps between them are passed in their order.
class OpenDirective {
public:
    // Whether one has begun, and goes on.
    bool isOpen() const { return isOpen_; }

    void passToken(int kind, std::string_view text) {
        if (kind != Cpp::BlockComment) isOpen_ = kind == Cpp::Directive && !text.ends_with('\n');
    }

    // Says whether it ends there.
    bool passGap(std::string_view gap) {
        const bool ends = isOpen_ && gap.find('\n') != std::string_view::npos;
        if (ends) isOpen_ = false;
        return ends;
    }

private:
    bool isOpen_ = false;
};

}  // namespace Tessel
