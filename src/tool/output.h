#pragma once

#include <string>
#include <string_view>

#include "tool/streams.h"

namespace Tool {

// Standard output, in big pieces. Throws Failure when it cannot be written.
class Output {
public:
    explicit Output(int descriptor) : descriptor_(descriptor) {}

    void write(std::string_view text);
    void flush();

private:
    int descriptor_;
    std::string pending_;
};

// Writes a text to standard output; returns the status of a run that did what it was to.
int say(std::string_view text, const Streams& streams);

}  // namespace Tool
