#include "engine/format_options.h"

#include <algorithm>

#include "engine/scheme_values.h"
#include "scheme/extension_keys.h"

namespace Tessel {

const MarkerPairs& protectedRegionMarkers() {
    static const MarkerPairs markers{
        {"VT-FORMAT-OFF", "VT-FORMAT-ON"},
        {"{{AFX_DATA", "AFX_DATA}}"},
        {"{{AFX_MSG", "AFX_MSG}}"},
        {"{{AFX_MSG_MAP", "AFX_MSG_MAP}}"},
        {"{{AFX_VIRTUAL", "AFX_VIRTUAL}}"},
        {"{{AFX_DATA_INIT", "AFX_DATA_INIT}}"},
        {"{{AFX_DATA_MAP", "AFX_DATA_MAP}}"},
        {"{{AFX_FIELD", "AFX_FIELD}}"},
        {"{{AFX_FIELD_INIT", "AFX_FIELD_INIT}}"},
        {"{{AFX_EVENT", "AFX_EVENT}}"},
        {"{{AFX_EVENT_MAP", "AFX_EVENT_MAP}}"},
        {"{{{AFX_DISP", "AFX_DISP}}}"},
        {"{{{AFX_DISP_MAP", "AFX_DISP_MAP}}}"},
    };
    return markers;
}

namespace {

const MarkerPairs& foreignMarkers() {
    static const MarkerPairs markers{
        {"clang-format off", "clang-format on"},
        {"*INDENT-OFF*", "*INDENT-ON*"},
    };
    return markers;
}

MarkerPairs withForeign(MarkerPairs markers) {
    const MarkerPairs& foreign = foreignMarkers();
    markers.insert(markers.end(), foreign.begin(), foreign.end());
    return markers;
}

}  // namespace

bool isForeignMarker(std::string_view opening) {
    return std::ranges::any_of(foreignMarkers(), [opening](const auto& pair) { return pair.first == opening; });
}

const MarkerPairs& markersOfScheme(const PropertySet& scheme) {
    static const MarkerPairs all = withForeign(protectedRegionMarkers());
    return readSwitch(scheme, Keys::KEEP_FOREIGN_REGIONS) ? all : protectedRegionMarkers();
}

FormatOptions withMarkersOfScheme(FormatOptions options) {
    const bool isWanted = readSwitch(options.scheme, Keys::KEEP_FOREIGN_REGIONS);
    if (isWanted) options.markers = withForeign(std::move(options.markers));
    return options;
}

}  // namespace Tessel
