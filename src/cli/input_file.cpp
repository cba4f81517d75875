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

Input readStandardInput(int descriptor) {
    Input input;
    readText(descriptor, STANDARD_STREAM_NAME, 0, input.text);
    return input;
}

// Whether there is something to read, as far as that shows without reading: pipes and devices have no size.
bool mayHoldText(const std::string& name) {
    struct stat status {};
    if (::stat(name.c_str(), &status) != 0) {
        if (isMissing(errno)) return false;
        failToOpen(name);
    }
    if (S_ISDIR(status.st_mode)) failToOpen(name, "It is a directory: give the name of a file.");
    return !S_ISREG(status.st_mode) || status.st_size > 0;
}

}  // namespace

std::optional<Input> readInput(const std::string& name, int standardInput) {
    const bool isStandardInput = name == STANDARD_STREAM_NAME;
    if (!isStandardInput && !mayHoldText(name)) return std::nullopt;
    Input input = isStandardInput ? readStandardInput(standardInput) : readFile(name);
    if (input.text.empty()) return std::nullopt;
    return input;
}

}  // namespace Cli
