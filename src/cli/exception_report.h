#pragma once

#include <iosfwd>
#include <string>

namespace Cli {

// To be called while an exception is being handled: prints what it means to the user, one line on `errors`,
// and returns the exit status.
int reportException(const std::string& schemeDirectory, std::ostream& errors);

}  // namespace Cli
