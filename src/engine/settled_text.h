#pragma once

#include <string_view>

#include "engine/expr_settings.h"
#include "engine/expr_tokens.h"

namespace Tessel {

// f(a, b[2]);   size = -1   (1U << SHIFT)
//
// Expressions that show at a glance that they come out as they stand: names, numbers, calls, subscripts and operators
// that no type is taken for, with the white space between them that the scheme wants. Most are like that, and take no
// tokens to write.
class SettledText {
public:
    explicit SettledText(const ExprSettings& settings);

    // Says false of all that would take a closer look.
    bool isOne(std::string_view text, ExprMode mode) const;

private:
    class Reader;

    bool calls_;       // nothing is wanted in front of parentheses and in them
    bool subscripts_;  // nor in brackets
    bool lists_;       // one blank is wanted behind the comma of a call, and none in front of it
    bool operators_;   // one is wanted on either side
};

}  // namespace Tessel
