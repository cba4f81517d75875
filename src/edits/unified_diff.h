#pragma once

#include <string>
#include <string_view>

#include "edits/replacement.h"

namespace Edits {

// What `git apply` and `patch -p1` take. Empty when nothing is replaced.
//
//     --- a/src/main.cpp
//     +++ b/src/main.cpp
//     @@ -1,2 +1,2 @@
//      int a;
//     -int  b;
//     +int b;
std::string unifiedDiff(const std::string& name, std::string_view before, const Replacements& replacements);

}  // namespace Edits
