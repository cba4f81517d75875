#pragma once

#include <string>
#include <string_view>

#include "scheme/property_set.h"

namespace TesselUI {

// The text of a scheme file, as the file was, brought to the content of `scheme`. Comments, blank lines, and
// the lines of properties that have not changed stay as they are; those of erased properties go. A new
// property follows the last one that would be written before it, so that a file in order stays in order.
//
// Where the file has another scheme, or none, the text is what the scheme writes.
std::string updatedSchemeText(std::string_view text, const Tessel::PropertySet& scheme);

}  // namespace TesselUI
