#pragma once

#include <string>
#include <utility>

namespace Trn {

// Base of every failure inside the engine. Holds one message for the user or for support.
class Exception {
public:
    explicit Exception(std::string message) : message_(std::move(message)) {}
    virtual ~Exception() = default;

    Exception(const Exception&) = default;
    Exception& operator=(const Exception&) = default;

    virtual std::string message() const { return message_; }

private:
    std::string message_;
};

// A node was added to a list that already holds it.
class AlreadyExistsException : public Exception {
public:
    AlreadyExistsException()
        : Exception("Attempt to add an object to a collection that already exists in that collection.") {}
};

// A token's value was read as a type that it does not have.
class InvalidValueType : public Exception {
public:
    InvalidValueType() : Exception("Invalid value() function called for Token object.") {}
};

class InvalidParameterException : public Exception {
public:
    InvalidParameterException() : Exception("InvalidParameterExecption") {}
};

}  // namespace Trn
