#pragma once

#include <string_view>

namespace Tessel {

// Whether the source's directive is one that is laid out, and both hold the same tokens, with white space behind the
// name of a macro in both or in neither.
bool holdSameDirective(std::string_view source, std::string_view result);

}  // namespace Tessel
