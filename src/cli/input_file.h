#pragma once

#include <optional>
#include <string>

#include "files/file_stamp.h"

namespace Cli {

struct Input {
    std::string text;
    std::optional<Files::FileStamp> file;  // none for standard input
};

// The whole text of a file, or of `standardInput` (a descriptor) when the name is "-". Nothing at all when
// there is no such file, or when it is empty: a pipe too, so that a command that failed at its other end
// empties no file. Throws Failure when it cannot be read.
std::optional<Input> readInput(const std::string& name, int standardInput);

}  // namespace Cli
