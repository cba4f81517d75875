#include "files/descriptor.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

namespace Files {

namespace {

constexpr std::size_t smallestBlock = 64 * 1024;
constexpr std::size_t largestTransfer = std::size_t{1} << 30;  // what one call may move on every system

// Whether a failed call is worth repeating; waits until it is when the other end of a pipe is slow.
bool mayRepeat(int descriptor, short events) {
    if (errno == EINTR) return true;
    if (errno != EAGAIN && errno != EWOULDBLOCK) return false;
    pollfd waiting{descriptor, events, 0};
    return ::poll(&waiting, 1, -1) >= 0 || errno == EINTR;
}

}  // namespace

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
    if (this != &other) {
        close();
        descriptor_ = other.release();
    }
    return *this;
}

int Descriptor::release() {
    const int descriptor = descriptor_;
    descriptor_ = -1;
    return descriptor;
}

int Descriptor::close() {
    if (!isOpen()) return 0;
    return ::close(release()) == 0 || errno == EINTR ? 0 : errno;
}

int writeAll(int descriptor, std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = ::write(descriptor, text.data(), std::min(text.size(), largestTransfer));
        if (written >= 0) {
            text.remove_prefix(static_cast<std::size_t>(written));
        } else if (!mayRepeat(descriptor, POLLOUT)) {
            return errno;
        }
    }
    return 0;
}

int readAll(int descriptor, std::string& text, std::size_t expectedSize) {
    std::size_t used = text.size();
    // One byte more than expected, so that the end shows without another block. What is not used is filled in vain.
    text.resize(used + (expectedSize > 0 ? expectedSize + 1 : smallestBlock));
    for (;;) {
        if (used == text.size()) text.resize(std::max(text.size() * 2, smallestBlock));
        const std::size_t room = std::min(text.size() - used, largestTransfer);
        const ssize_t count = ::read(descriptor, text.data() + used, room);
        if (count > 0) {
            used += static_cast<std::size_t>(count);
        } else if (count == 0 || !mayRepeat(descriptor, POLLIN)) {
            const int error = count == 0 ? 0 : errno;
            text.resize(used);
            return error;
        }
    }
}

std::string errorText(int error) {
    return std::generic_category().message(error);
}

}  // namespace Files
