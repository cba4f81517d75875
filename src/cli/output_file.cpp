#include "cli/output_file.h"

#include "cli/failure.h"
#include "cli/product.h"
#include "files/descriptor.h"
#include "files/write_file.h"

namespace Cli {

namespace {

std::string couldNotWrite(const std::string& what, int error) {
    return "Error: could not write " + what + ": " + Files::errorText(error);
}

std::string describe(const Files::WriteFailure& failure, const std::string& fileName) {
    using Reason = Files::WriteFailure::Reason;
    const std::string file = '"' + fileName + '"';
    switch (failure.reason) {
        case Reason::CannotOpen:
            break;
        case Reason::CannotWrite:
            return couldNotWrite(file, failure.error);
        case Reason::ChangedBefore:
            return "Error: " + file +
                   " was changed by another program while it was being formatted; nothing has been written.";
        case Reason::ChangedMeanwhile:
            return "Error: " + file +
                   " was changed by another program while it was being written; it has been left alone.";
    }
    return "Error: could not open output file for writing.";
}

}  // namespace

bool isInput(const OutputTarget& target) {
    struct stat status {};
    return target.input && target.name != STANDARD_STREAM_NAME && ::stat(target.name.c_str(), &status) == 0 &&
           target.input->isUnchanged(status);
}

void writeOutput(const OutputTarget& target, std::string_view text) {
    if (target.name == STANDARD_STREAM_NAME) {
        const int error = Files::writeAll(target.standardOutput, text);
        if (error) throw Failure(couldNotWrite("to standard output", error));
        return;
    }
    try {
        Files::writeFile(target.name, text, target.input);
    } catch (const Files::WriteFailure& failure) {
        throw Failure(describe(failure, target.name));
    }
}

}  // namespace Cli
