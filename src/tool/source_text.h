#pragma once

#include <string>

namespace Tool {

// The text of a file. Throws Failure, with a message that names the file, where it cannot be read or is UTF-16.
std::string readSource(const std::string& file);

}  // namespace Tool
