#pragma once

#include "tool/streams.h"

namespace Tool {

// The program `vantrel`. Returns the exit status.
int run(int count, const char* const* arguments, const Streams& streams);

}  // namespace Tool
