#pragma once

#include <csignal>
#include <string>

// The signals by which users and systems end a program: interrupt, terminate, hang up, quit, no more time.

namespace Files {

// Holds them back until the end of the scope.
class HoldEndingSignals {
public:
    HoldEndingSignals();
    ~HoldEndingSignals();
    HoldEndingSignals(const HoldEndingSignals&) = delete;
    HoldEndingSignals& operator=(const HoldEndingSignals&) = delete;

private:
    sigset_t former_;
};

// Removes a file when one of them ends the program within the scope. One scope at a time.
class RemoveFileOnSignal {
public:
    explicit RemoveFileOnSignal(std::string path);
    ~RemoveFileOnSignal();
    RemoveFileOnSignal(const RemoveFileOnSignal&) = delete;
    RemoveFileOnSignal& operator=(const RemoveFileOnSignal&) = delete;

private:
    std::string path_;
};

}  // namespace Files
