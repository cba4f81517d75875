#pragma once

#include <string>

#include "engine/optional_text.h"

namespace Tessel {

// Replaces the white space in front of a "[" behind the declared name, or of the name's end when there is none, and
// that behind the first "]".
void spaceBrackets(std::string& declarator, const OptionalText& afterName, const OptionalText& afterBracket);

}  // namespace Tessel
