#pragma once

#include "tool/options.h"
#include "tool/streams.h"

namespace Tool {

// Tells which keys decide the white space of a file, of a line, or of one place; or how many gaps each key changes in
// files and folders. Returns the exit status. Throws Failure.
int explainCommand(const Options& options, const Streams& streams);

}  // namespace Tool
