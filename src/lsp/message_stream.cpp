#include "lsp/message_stream.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cerrno>
#include <charconv>
#include <stdexcept>
#include <string_view>

#include "files/descriptor.h"

namespace Lsp {

namespace {

constexpr std::string_view headEnd = "\r\n\r\n";
constexpr std::string_view lengthName = "content-length:";
constexpr std::size_t longestHead = 4096;
constexpr std::size_t longestMessage = std::size_t{1} << 31;

std::string lowerCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

std::size_t contentLength(const std::string& head) {
    const std::string lower = "\r\n" + lowerCase(head);
    const std::size_t at = lower.find("\r\n" + std::string(lengthName));
    std::size_t length = 0;
    if (at != std::string::npos) {
        const std::size_t digits = lower.find_first_not_of(' ', at + 2 + lengthName.size());
        const auto parsed =
            std::from_chars(lower.data() + std::min(digits, lower.size()), lower.data() + lower.size(), length);
        if (parsed.ec == std::errc() && length <= longestMessage) return length;
    }
    throw std::runtime_error("a message has no Content-Length");
}

}  // namespace

std::optional<std::string> MessageStream::next() {
    std::optional<std::size_t> end;
    while (!(end = frameEnd())) {
        if (fill()) continue;
        if (pending_.empty()) return std::nullopt;
        throw std::runtime_error("the input ends within a message");
    }
    std::string message = pending_.substr(headLength_, *end - headLength_);
    pending_.erase(0, *end);
    headLength_ = 0;
    return message;
}

bool MessageStream::hasMore() {
    while (!frameEnd()) {
        pollfd state{input_, POLLIN, 0};
        if (::poll(&state, 1, 0) <= 0 || !fill()) return false;
    }
    return true;
}

std::optional<std::size_t> MessageStream::frameEnd() {
    const std::size_t end = pending_.find(headEnd);
    if (end == std::string::npos) {
        if (pending_.size() > longestHead) throw std::runtime_error("this is not the language server protocol");
        return std::nullopt;
    }
    headLength_ = end + headEnd.size();
    const std::size_t frame = headLength_ + contentLength(pending_.substr(0, end));
    return frame <= pending_.size() ? std::optional(frame) : std::nullopt;
}

bool MessageStream::fill() {
    std::array<char, 1 << 16> block;
    ssize_t size = 0;
    do {
        size = ::read(input_, block.data(), block.size());
    } while (size < 0 && errno == EINTR);
    if (size < 0) throw std::runtime_error("standard input cannot be read: " + Files::errorText(errno));
    pending_.append(block.data(), static_cast<std::size_t>(size));
    return size > 0;
}

void MessageStream::write(const Json& message) {
    const std::string content = message.dump(-1, ' ', false, Json::error_handler_t::replace);
    const std::string frame = "Content-Length: " + std::to_string(content.size()) + std::string(headEnd) + content;
    if (const int error = Files::writeAll(output_, frame)) {
        throw std::runtime_error("standard output cannot be written: " + Files::errorText(error));
    }
}

}  // namespace Lsp
