#pragma once

#include <string>
#include <string_view>

// How a text is stored in a file, as far as formatting must leave it alone.

namespace Zelmor {

struct TextEncoding {
    bool hasByteOrderMark = false;
    bool hasCarriageReturns = false;  // most lines end in carriage return and line feed
};

TextEncoding detectEncoding(std::string_view text);

// Whether the text comes in units of two bytes: it starts with a mark that says so, or has a NUL in every
// other place.
bool isUtf16(std::string_view text);

// The text with a carriage return before every line feed. It must hold none before.
std::string addCarriageReturns(std::string_view text);

}  // namespace Zelmor
