#pragma once

#include <string>
#include <string_view>

#include "files/file_stamp.h"

namespace Cli {

// Where the result goes, and what it was made from.
struct OutputTarget {
    std::string name;                         // "-" for standard output
    int standardOutput = 1;                   // a descriptor
    const Files::FileStamp* input = nullptr;  // borrowed; null when the input was no file
};

// Whether the target is the very file that the input was read from, and in the state in which it was read.
bool isInput(const OutputTarget& target);

// Gives the target a new content, as `Files::writeFile` does. Throws Failure when the target cannot be opened
// or written, or when it is the input and has changed meanwhile.
void writeOutput(const OutputTarget& target, std::string_view text);

}  // namespace Cli
