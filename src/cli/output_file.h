#pragma once

#include <string>
#include <string_view>

#include "cli/file_stamp.h"

namespace Cli {

// Where the result goes, and what it was made from.
struct OutputTarget {
    std::string name;                  // "-" for standard output
    int standardOutput = 1;            // a descriptor
    const FileStamp* input = nullptr;  // borrowed; null when the input was no file
};

// Gives the target a new content so that it always holds either all of the old one or all of the new one: the
// text goes to a file beside it, which then takes its place. Owner, permissions and links stay.
//
// Where that cannot be done (a device or pipe, a file of several names, a folder that takes no new files, an
// owner that cannot be kept), the file is written in place, after making sure that there is room for all of
// it.
//
// Throws Failure when the target cannot be opened or written, or when it is the input and has changed
// meanwhile.
void writeOutput(const OutputTarget& target, std::string_view text);

}  // namespace Cli
