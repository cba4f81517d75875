#pragma once

#include <string>
#include <utility>

namespace Cli {

// The run cannot go on for a reason that the user can mend. Holds the line to print.
class Failure {
public:
    explicit Failure(std::string message) : message_(std::move(message)) {}
    const std::string& message() const { return message_; }

private:
    std::string message_;
};

// The run is over, and everything has been said.
struct EndOfProgram {
    int status = 0;
};

}  // namespace Cli
