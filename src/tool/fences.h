#pragma once

#include <string>
#include <vector>

#include "edits/line_set.h"
#include "engine/format_options.h"

namespace Tool {

// The lines of a refused source that have to stand between fence comments for the rest to be formatted, found by
// trying; nothing where no fences help. `suspects` are lines where something is wrong.
std::vector<Edits::LineSet::Range> findFences(const Tessel::FormatOptions& options, const std::string& source,
                                              std::vector<std::size_t> suspects);

}  // namespace Tool
