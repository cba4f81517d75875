#pragma once

#include "tool/options.h"
#include "tool/streams.h"

namespace Tool {

// Makes a scheme of what sources do. Returns the exit status. Throws Failure.
int learnCommand(const Options& options, const Streams& streams);

}  // namespace Tool
