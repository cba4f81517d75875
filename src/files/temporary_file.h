#pragma once

#include <sys/types.h>

#include <optional>
#include <string>

#include "files/descriptor.h"
#include "files/ending_signals.h"

namespace Files {

// A file in the folder of another, its target, which it is to replace once it is complete. Goes away with the
// object, or with a signal that ends the program, unless it has done so. Errors are errno values.
class TemporaryFile {
public:
    TemporaryFile(const std::string& target, mode_t mode);
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    // Why the file could not be created; 0 when it was.
    int error() const { return error_; }
    int descriptor() const { return file_.get(); }

    // Closes the file and puts it in the place of its target.
    int replaceTarget();

private:
    void create(mode_t mode);

    std::string target_;
    std::string path_;
    int error_ = 0;
    Descriptor file_;
    std::optional<RemoveFileOnSignal> removeOnSignal_;
};

}  // namespace Files
