#pragma once

#include <string_view>

namespace Cpp {

// The kind of a word: a keyword's own, or Identifier.
int keywordKind(std::string_view word);

// A word that is cut off a qualified name: `A::operator` is the name "A" and a keyword.
bool isScopedOperatorWord(std::string_view word);

}  // namespace Cpp
