#pragma once

#include <string>
#include <string_view>

#include "engine/column_layout.h"
#include "engine/kept_region.h"

namespace Tessel {

// The "=" of lines that follow each other stand in one column, and what hangs from them goes along:
//
//     int a = f(x,          int a   = f(x,
//               y);                     y);
//     int bcd = 2;          int bcd = 2;
//
// `result` is the source with other white space; the regions, those of the source, stay as they are.
std::string withAssignmentColumns(const ColumnLayout& layout, std::string_view source, const KeptRegions& regions,
                                  std::string result);

}  // namespace Tessel
