#pragma once

#include <vector>

#include "engine/expr_tokens.h"

namespace Tessel {

// Finds the role of every token whose brackets are matched, from what stands around it. One pass.
void findRoles(ExprTokens& tokens, ExprMode mode, LambdaParameters parameters);

}  // namespace Tessel
