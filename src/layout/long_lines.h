#pragma once

#include <cstddef>
#include <string_view>

#include "layout/wrap_settings.h"

namespace Tessel {

// The lines of a text that are beyond the right margin; none where no lines are to be wrapped.
class LongLines {
public:
    // Both are borrowed.
    LongLines(std::string_view text, const WrapSettings& settings);

    // The number of the next one, from 1; 0 when there is no more.
    int next();

private:
    bool isLong(std::string_view line) const;

    std::string_view text_;
    const WrapSettings& settings_;
    std::size_t place_ = 0;
    std::size_t nextTab_ = 0;  // none stands between the place and there: most texts hold hardly any
    int line_ = 0;
};

}  // namespace Tessel
