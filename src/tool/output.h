#pragma once

#include <string>
#include <string_view>

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

}  // namespace Tool
