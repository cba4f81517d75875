#include "run/process.h"

#include <fcntl.h>
#include <pthread.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>

#include "run/heap.h"

namespace Run {

namespace {

// What the deepest source that the parser accepts needs, in builds with sanitizers too.
constexpr rlim_t stackSize = 64 << 20;

// The system looks at the limit whenever the stack of the main thread grows.
void allowDeepStack() {
    rlimit limit{};
    if (::getrlimit(RLIMIT_STACK, &limit) != 0 || limit.rlim_cur >= stackSize) return;
    limit.rlim_cur = std::min(stackSize, limit.rlim_max);
    ::setrlimit(RLIMIT_STACK, &limit);
}

// Opens the lowest free descriptor so that what the stream is for fails on it.
void occupyIfClosed(int descriptor, int mode) {
    if (::fcntl(descriptor, F_GETFD) >= 0) return;
    const int opened = ::open("/dev/null", mode);
    if (opened >= 0 && opened != descriptor) ::close(opened);
}

}  // namespace

void prepareProcess() {
    allowDeepStack();
    prepareHeap(Thread::Main);
    ::signal(SIGPIPE, SIG_IGN);
    ::signal(SIGXFSZ, SIG_IGN);
    occupyIfClosed(STDIN_FILENO, O_WRONLY);
    occupyIfClosed(STDOUT_FILENO, O_RDONLY);
    occupyIfClosed(STDERR_FILENO, O_RDONLY);
}

void prepareThreads() {
    pthread_attr_t attributes;
    if (::pthread_getattr_default_np(&attributes) != 0) return;
    ::pthread_attr_setstacksize(&attributes, stackSize);
    ::pthread_setattr_default_np(&attributes);
    ::pthread_attr_destroy(&attributes);
}

}  // namespace Run
