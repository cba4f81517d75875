#include "engine/column_layout.h"

#include <algorithm>
#include <cstddef>

#include "engine/scheme_values.h"
#include "scheme/property_keys.h"
#include "textstream/otext_doc_buf.h"

namespace Tessel {

// No tab size counts as one, as in all that is written.
ColumnLayout ColumnLayout::of(const PropertySet& scheme) {
    return {std::max(readTabSize(scheme), 1), readTabMode(scheme), readInt(scheme, Keys::RIGHT_MARGIN, 0).value};
}

std::string ColumnLayout::blanks(int from, int to) const {
    Zelmor::OTextDocBuf out({tabMode, tabSize, 1, from});
    const std::string spaces(static_cast<std::size_t>(std::max(to - from, 0)), ' ');
    out.sputn(spaces.data(), static_cast<std::streamsize>(spaces.size()));
    return out.takeText();
}

}  // namespace Tessel
