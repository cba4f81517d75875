#pragma once

#include "tool/options.h"
#include "tool/streams.h"

namespace Tool {

// Formats what the options name. Returns the exit status. Throws Failure.
int formatCommand(const Options& options, const Streams& streams);

}  // namespace Tool
