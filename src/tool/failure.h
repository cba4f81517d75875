#pragma once

#include <string>
#include <utility>

namespace Tool {

// The statuses of the program.
enum Status : int {
    Fine = 0,
    WouldChange = 1,   // with --check, --diff and -l
    CannotWork = 2,    // the command line, a scheme, input or output
    WasRefused = 3,
};

// The run cannot go on, for a reason that the user can mend.
class Failure {
public:
    explicit Failure(std::string message) : message_(std::move(message)) {}
    const std::string& message() const { return message_; }

private:
    std::string message_;
};

}  // namespace Tool
