#pragma once

#include "tool/options.h"
#include "tool/streams.h"

namespace Tool {

// Tells why a file is refused, and how to get it through; or what of it is kept as it was written. Returns the exit
// status. Throws Failure.
int whyCommand(const Options& options, const Streams& streams);

}  // namespace Tool
