#pragma once

#include <string_view>

#include "scheme/property_set.h"

namespace Tessel {

// The scheme for the text: with DERIVE_ANCHORS, its marks have the side on which most of them stand already, and that
// of the scheme where as many stand on either.
//
//     char *a, *b; char* c;        char *a, *b; char *c;
PropertySet withAnchorsOf(std::string_view text, PropertySet scheme);

}  // namespace Tessel
