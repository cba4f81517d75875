#pragma once

#include <list>
#include <string>
#include <vector>

#include "edits/line_set.h"
#include "engine/format_options.h"
#include "trn/diagnostic.h"

namespace Tool {

// The lines of a refused source that have to stand between fence comments for the rest to be formatted, found by trying;
// nothing where no fences help.
std::vector<Edits::LineSet::Range> findFences(const Tessel::FormatOptions& options, const std::string& source,
                                              std::list<Tessel::Diagnostic> messages);

}  // namespace Tool
