#pragma once

#include "run/failure.h"

namespace Cli {

using Run::Failure;

// The run is over, and everything has been said.
struct EndOfProgram {
    int status = 0;
};

}  // namespace Cli
