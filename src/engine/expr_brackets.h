#pragma once

#include <vector>

#include "engine/expr_tokens.h"

namespace Tessel {

// Finds the partners of all brackets, "<" among them where it can open template arguments. One pass.
void matchBrackets(ExprTokens& tokens, ExprMode mode, LambdaParameters parameters);

}  // namespace Tessel
