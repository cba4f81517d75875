#pragma once

#include "run/failure.h"

namespace Tool {

// The statuses of the program.
enum Status : int {
    Fine = 0,
    WouldChange = 1,   // with --check, --diff and -l
    CannotWork = 2,    // the command line, a scheme, input or output
    WasRefused = 3,
};

using Run::Failure;

}  // namespace Tool
