#pragma once

#include <cstddef>
#include <string_view>

#include "cpp/characters.h"

namespace Tessel {

// A place between two characters that stand together in one text, while another has white space between them.
struct TokenBoundary {
    std::string_view text;         // in which they stand together
    std::size_t place = 0;         // of the second one
    std::size_t codeStart = 0;     // behind the last opaque token
    std::size_t tokenStart = 0;    // of some token in front of the place, but none in front of codeStart
    std::string_view number;       // the last one with a digit separator; empty when there is none
    std::size_t behindNumber = 0;  // the characters between that and the place
};

// Whether the tokens are the same with white space at the place and without. Raw strings are another matter.
bool allowsWhitespace(const TokenBoundary& boundary);

// Whether R"delimiter( stands around the place, so that white space there makes another literal of it.
bool splitsRawString(const TokenBoundary& boundary);
// Whether a quote behind the text would open a raw string.
bool endsWithRawPrefix(std::string_view text);

// Whether a splice stands between what would be one token, but for the white space at the start of the line behind it.
bool splicesTokens(std::string_view front, std::string_view behind);
// Whether a splice parts a token of the directive, which white space there would make two of.
bool holdsSplicedToken(std::string_view directive);

// Of names and numbers.
constexpr bool isWordPart(char c) {
    return Cpp::isNamePart(c) || c == '.';
}

}  // namespace Tessel
