#include "tool/output.h"

#include "files/descriptor.h"
#include "tool/failure.h"

namespace Tool {

namespace {

constexpr std::size_t pieceSize = 1 << 16;

}  // namespace

void Output::write(std::string_view text) {
    pending_ += text;
    if (pending_.size() >= pieceSize) flush();
}

void Output::flush() {
    const std::string text = std::move(pending_);
    pending_.clear();
    if (const int error = Files::writeAll(descriptor_, text)) {
        throw Failure("standard output cannot be written: " + Files::errorText(error));
    }
}

int say(std::string_view text, const Streams& streams) {
    Output output(streams.output);
    output.write(text);
    output.flush();
    return Fine;
}

}  // namespace Tool
