#pragma once

#include <iosfwd>

namespace Tool {

// What a run reads and writes besides files. The descriptors are borrowed.
struct Streams {
    int input;
    int output;
    std::ostream& errors;
    bool errorsAreTerminal = false;
};

}  // namespace Tool
