#pragma once

#include <string_view>

#include "scheme/property_set.h"

namespace Tessel {

// The scheme, its marks anchored to the type or to the name, whichever most marks of the source stand against:
//
//     char *p, &r = *p;
//     int* n;             to the name, as two of these three
//
// A source in which neither are more says nothing, nor does one that is out of the scheme's style otherwise, where the
// scheme has one side for all marks: who wrote that had other sides in mind.
PropertySet withAnchorsOfSource(PropertySet scheme, std::string_view source);

}  // namespace Tessel
