#pragma once

#include <string>
#include <string_view>

#include "engine/expr_tokens.h"
#include "engine/optional_text.h"

namespace Tessel {

// Whether a "*" or "&" stands in front of one of the names behind the first.
bool hasMarkBehindComma(std::string_view declarators);
bool hasMarkBehindComma(const ExprTokens& tokens);
// Of the first "=" outside all brackets; the text's size where there is none.
std::size_t placeOfValue(std::string_view declarators);
// Whether anything stands behind a ";": a lambda among the values has a body.
bool holdsStatements(std::string_view declarators);

// The white space, or the place for it, behind the name that the declarator begins with, where a "[" or nothing
// follows; and that behind the first "]", unless a comment does. Without data elsewhere.
std::string_view gapBehindName(std::string_view declarator);
std::string_view gapBehindBracket(std::string_view declarator);

// Replaces both.
void spaceBrackets(std::string& declarator, const OptionalText& afterName, const OptionalText& afterBracket);

}  // namespace Tessel
