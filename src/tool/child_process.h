#pragma once

#include <string>
#include <vector>

namespace Tool {

struct ChildResult {
    int status = -1;  // -1 when a signal ended it, or it could not be started
    std::string output;
    std::string errors;
};

// Runs a program, found by PATH, with nothing on its standard input.
ChildResult runChild(std::vector<std::string> arguments);

}  // namespace Tool
