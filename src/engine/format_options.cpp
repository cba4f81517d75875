#include "engine/format_options.h"

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

}  // namespace Tessel
