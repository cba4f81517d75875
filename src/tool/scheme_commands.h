#pragma once

#include "tool/options.h"
#include "tool/streams.h"

namespace Tool {

// The commands that tell of schemes and their keys. They return the exit status, and throw Failure.
int listSchemesCommand(const Streams& streams);
int keysCommand(const Options& options, const Streams& streams);
int showSchemeCommand(const Options& options, const Streams& streams);
int checkSchemeCommand(const Options& options, const Streams& streams);
int upgradeSchemeCommand(const Options& options, const Streams& streams);

}  // namespace Tool
