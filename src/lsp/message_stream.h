#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>

namespace Lsp {

using Json = nlohmann::json;

// The frames of the protocol: a head with the length, an empty line, and so many bytes of JSON.
class MessageStream {
public:
    // The descriptors are borrowed.
    MessageStream(int input, int output) : input_(input), output_(output) {}

    // The next one's text; nothing at the end. Throws std::runtime_error where the frames are broken, or nothing can be
    // read.
    std::optional<std::string> next();
    // Whether one can be had without waiting.
    bool hasMore();

    // Throws std::runtime_error when it cannot be written.
    void write(const Json& message);

private:
    bool fill();
    std::optional<std::size_t> frameEnd();  // of the first frame, when it is complete

    int input_;
    int output_;
    std::string pending_;
    std::size_t headLength_ = 0;  // of the first frame, once it is known
};

}  // namespace Lsp
