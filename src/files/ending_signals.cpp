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

// Signals that the caller has the program ignore stay ignored.
void exchangeAction(int signal, void (*from)(int), void (*to)(int)) {
    struct sigaction action {};
    if (::sigaction(signal, nullptr, &action) != 0 || action.sa_handler != from) return;
    action.sa_handler = to;
    action.sa_flags = 0;
    ::sigaction(signal, &action, nullptr);
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
    fileToRemove = path_.c_str();
    for (const int signal : endingSignals) exchangeAction(signal, SIG_DFL, removeFileAndEnd);
}

RemoveFileOnSignal::~RemoveFileOnSignal() {
    for (const int signal : endingSignals) exchangeAction(signal, removeFileAndEnd, SIG_DFL);
    fileToRemove = nullptr;
}

}  // namespace Files
