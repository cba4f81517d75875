#pragma once

#include "tool/options.h"
#include "tool/streams.h"

namespace Tool {

// Runs a language server up to the end of its session. Returns the exit status.
int lspCommand(const Options& options, const Streams& streams);

}  // namespace Tool
