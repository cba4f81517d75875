#pragma once

#include <string>

#include "files/file_stamp.h"

namespace Files {

// A file's whole content, and the state in which it was read.
struct FileContent {
    std::string text;
    FileStamp stamp;
};

// Thrown when a file cannot be read. `error` is an errno value.
struct ReadFailure {
    enum class Reason { CannotOpen, IsDirectory, CannotRead };
    Reason reason;
    int error = 0;
};

// Pipes and devices are read up to their end. Throws ReadFailure.
FileContent readFile(const std::string& path);

}  // namespace Files
