#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "edits/line_set.h"

// What a formatter changed, told as pieces of white space. Two texts with the same characters but for white space
// differ in the gaps between these alone, so that one walk over both finds all that differs.
namespace Edits {

// A piece of the text before, and what stands in its place after; it holds white space only.
struct Replacement {
    std::size_t offset = 0;  // in bytes
    std::size_t length = 0;
    std::string text;

    std::size_t end() const { return offset + length; }
    bool operator==(const Replacement&) const = default;
};

using Replacements = std::vector<Replacement>;  // in the order of the text, no two of them touching the same byte

// The smallest pieces: what stands behind the last word of a line, empty lines, and the indentation of a line are
// replaced each by itself. Throws std::invalid_argument when the texts differ in more than white space.
Replacements replacementsBetween(std::string_view before, std::string_view after);

// Only those that leave the other lines as they are, byte for byte: a line is split when it is one of `lines`, joined
// with another when both are, and an empty one goes when it is.
Replacements replacementsInLines(std::string_view before, std::string_view after, const LineSet& lines);

std::string replaced(std::string_view before, const Replacements& replacements);

}  // namespace Edits
