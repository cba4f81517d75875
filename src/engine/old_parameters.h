#pragma once

#include "cpp/leaf_nodes.h"

namespace Tessel {

// Whether the declarations between an old-style head and its body are types and names, and nothing that has rules of
// its own: these are laid out, the others kept.
bool areTypesAndNames(const Cpp::KeptNode& declarations);

}  // namespace Tessel
