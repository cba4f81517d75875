#pragma once

#include "cpp/leaf_nodes.h"

namespace Tessel {

// Whether an item that no rule recognises, `NAME(a, b)`, reads like a call on one line: what its parentheses hold are
// words, literals, and operators that mean the same in expressions and types.
bool isMacroCall(const Cpp::KeptNode& item);

}  // namespace Tessel
