#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "scheme/property_set.h"

namespace Tessel {

// The comment bodies that open and close protected regions, in order of precedence.
using MarkerPairs = std::vector<std::pair<std::string, std::string>>;

// The marker pairs of the program. Built on first use.
const MarkerPairs& protectedRegionMarkers();

// Whether another formatter's region begins with a comment of that body.
bool isForeignMarker(std::string_view opening);

// What every pass is built from.
struct FormatOptions {
    PropertySet scheme;
    MarkerPairs markers;
};

// With the marker pairs that the scheme asks for beside them: those of the program, and what is given.
const MarkerPairs& markersOfScheme(const PropertySet& scheme);
FormatOptions withMarkersOfScheme(FormatOptions options);

}  // namespace Tessel
