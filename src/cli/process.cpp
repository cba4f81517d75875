#include "cli/process.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>

namespace Cli {

namespace {

// Opens the lowest free descriptor so that what the stream is for fails on it.
void occupyIfClosed(int descriptor, int mode) {
    if (::fcntl(descriptor, F_GETFD) >= 0) return;
    const int opened = ::open("/dev/null", mode);
    if (opened >= 0 && opened != descriptor) ::close(opened);
}

}  // namespace

void prepareProcess() {
    ::signal(SIGPIPE, SIG_IGN);
    ::signal(SIGXFSZ, SIG_IGN);
    occupyIfClosed(STDIN_FILENO, O_WRONLY);
    occupyIfClosed(STDOUT_FILENO, O_RDONLY);
    occupyIfClosed(STDERR_FILENO, O_RDONLY);
}

}  // namespace Cli
