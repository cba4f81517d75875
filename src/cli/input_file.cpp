#include "cli/input_file.h"

#include <fcntl.h>

#include <cerrno>

#include "cli/failure.h"
#include "cli/product.h"
#include "files/descriptor.h"

namespace Cli {

namespace {

[[noreturn]] void failToOpen(const std::string& name, const std::string& reason = "") {
    throw Failure("Error: could not open \"" + name + "\" for input" + (reason.empty() ? "" : '\n' + reason));
}

void readText(int descriptor, const std::string& name, std::size_t expectedSize, std::string& text) {
    const int error = Files::readAll(descriptor, text, expectedSize);
    if (error) throw Failure("Error: could not read \"" + name + "\": " + Files::errorText(error));
}

bool isMissing(int error) {
    return error == ENOENT || error == ENOTDIR;
}

Input readFile(const std::string& name) {
    const Files::Descriptor file(::open(name.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY));
    struct stat status {};
    if (!file.isOpen() || ::fstat(file.get(), &status) != 0) failToOpen(name);
    Input input;
    input.file = Files::FileStamp::of(status);
    readText(file.get(), name, static_cast<std::size_t>(status.st_size), input.text);
    return input;
}

}  // namespace

std::optional<Input> readInput(const std::string& name, int standardInput) {
    if (name == STANDARD_STREAM_NAME) {
        Input input;
        readText(standardInput, name, 0, input.text);
        return input;
    }
    struct stat status {};
    if (::stat(name.c_str(), &status) != 0) {
        if (isMissing(errno)) return std::nullopt;
        failToOpen(name);
    }
    if (S_ISDIR(status.st_mode)) failToOpen(name, "It is a directory: give the name of a file.");
    // Pipes and devices have no size.
    if (S_ISREG(status.st_mode) && status.st_size == 0) return std::nullopt;
    return readFile(name);
}

}  // namespace Cli
