#pragma once

#include <string>
#include <utility>

namespace Run {

// The run of a program cannot go on, for a reason that the user can mend. Holds what is to be said.
class Failure {
public:
    explicit Failure(std::string message) : message_(std::move(message)) {}
    const std::string& message() const { return message_; }

private:
    std::string message_;
};

}  // namespace Run
