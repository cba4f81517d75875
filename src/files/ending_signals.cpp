#include "files/ending_signals.h"

#include <unistd.h>

#include <array>
#include <atomic>
#include <utility>

namespace Files {

namespace {

constexpr std::array endingSignals = {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGXCPU};

std::atomic<const char*> fileToRemove{nullptr};
static_assert(std::atomic<const char*>::is_always_lock_free, "a signal handler reads it");

// The signal, raised again, is held back until the handler returns, and then ends the program.
void removeFileAndEnd(int signal) {
    if (const char* path = fileToRemove.load()) ::unlink(path);
    ::signal(signal, SIG_DFL);
    ::raise(signal);
}

// Without a file, the signals do what they would do anyway, so that the handler stays: many files take turns. Signals
// that the caller has the program ignore stay ignored.
bool handleEndingSignals() {
    for (const int signal : endingSignals) {
        struct sigaction action {};
        if (::sigaction(signal, nullptr, &action) != 0 || action.sa_handler != SIG_DFL) continue;
        action.sa_handler = removeFileAndEnd;
        action.sa_flags = 0;
        ::sigaction(signal, &action, nullptr);
    }
    return true;
}

}  // namespace

HoldEndingSignals::HoldEndingSignals() {
    sigset_t signals;
    ::sigemptyset(&signals);
    for (const int signal : endingSignals) ::sigaddset(&signals, signal);
    ::sigprocmask(SIG_BLOCK, &signals, &former_);
}

HoldEndingSignals::~HoldEndingSignals() {
    ::sigprocmask(SIG_SETMASK, &former_, nullptr);
}

RemoveFileOnSignal::RemoveFileOnSignal(std::string path) : path_(std::move(path)) {
    [[maybe_unused]] static const bool areHandled = handleEndingSignals();
    fileToRemove = path_.c_str();
}

RemoveFileOnSignal::~RemoveFileOnSignal() {
    fileToRemove = nullptr;
}

}  // namespace Files
