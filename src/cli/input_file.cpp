#include "cli/input_file.h"

#include <cerrno>
#include <utility>

#include "cli/failure.h"
#include "cli/product.h"
#include "files/descriptor.h"
#include "files/read_file.h"

namespace Cli {

namespace {

[[noreturn]] void failToOpen(const std::string& name, const std::string& reason = "") {
    throw Failure("Error: could not open \"" + name + "\" for input" + (reason.empty() ? "" : '\n' + reason));
}

[[noreturn]] void failToRead(const std::string& name, int error) {
    throw Failure("Error: could not read \"" + name + "\": " + Files::errorText(error));
}

bool isMissing(int error) {
    return error == ENOENT || error == ENOTDIR;
}

Input readFile(const std::string& name) try {
    Files::FileContent content = Files::readFile(name);
    return {std::move(content.text), content.stamp};
} catch (const Files::ReadFailure& failure) {
    if (failure.reason == Files::ReadFailure::Reason::CannotRead) failToRead(name, failure.error);
    failToOpen(name);
}

Input readStandardInput(int descriptor) {
    Input input;
    if (const int error = Files::readAll(descriptor, input.text, 0)) failToRead(STANDARD_STREAM_NAME, error);
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
