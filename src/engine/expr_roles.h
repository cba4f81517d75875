#pragma once

#include <vector>

#include "engine/expr_tokens.h"

namespace Tessel {

// Finds the role of every token whose brackets are matched, from what stands around it. One pass.
void findRoles(std::vector<ExprToken>& tokens, ExprMode mode);

}  // namespace Tessel
