#pragma once

#include <cstddef>
#include <string>

#include "edits/replacement.h"

// What editors' integrations of other formatters read.
namespace Tool {

// <replacement offset='3' length='2'> </replacement>, one a line, in an element "replacements".
std::string replacementXml(const Edits::Replacements& replacements);

// { "Cursor": 5, "IncompleteFormat": false }, with the place that an offset of the source moves to.
std::string cursorLine(std::size_t cursor, const Edits::Replacements& replacements);

}  // namespace Tool
