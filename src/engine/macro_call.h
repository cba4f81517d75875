#pragma once

#include "cpp/leaf_nodes.h"

namespace Tessel {

// Whether an item that no rule recognises, `NAME(a, b)`, reads like a call: what its parentheses hold are words,
// literals, and operators that mean the same in expressions and types. It stands on one line, or its lines are kept.
bool isMacroCall(const Cpp::KeptNode& item, bool keepsLines = false);

}  // namespace Tessel
