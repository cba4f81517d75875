#pragma once

#include <string>
#include <string_view>

#include "files/file_stamp.h"

namespace Files {

// Thrown when a file has not got its new content. It still holds the old one, unless writing it in place
// failed half way.
struct WriteFailure {
    enum class Reason {
        CannotOpen,
        CannotWrite,
        ChangedBefore,     // another program has changed it since `source` was taken
        ChangedMeanwhile,  // another program has changed it since it was opened
    };
    Reason reason;
    int error = 0;  // of CannotWrite: an errno value
};

// A file that the process may not write, or whose owner has taken every write permission from it: the latter
// protects a file from the superuser too, and from being replaced by renaming.
bool isReadOnly(const std::string& path);

// Gives a file a new content so that it always holds either all of the old one or all of the new one: the
// text goes to a file beside it, which then takes its place. Owner, permissions and links stay.
//
// Where that cannot be done (a device or pipe, a file of several names, a folder that takes no new files, an
// owner that cannot be kept), the file is written in place, after making sure that there is room for all of
// it.
//
// `source`, which may be null, is what the text was made from: should that be this file, it must not have
// changed. Throws WriteFailure.
void writeFile(const std::string& path, std::string_view text, const FileStamp* source = nullptr);

}  // namespace Files
