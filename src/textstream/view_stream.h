#pragma once

#include <istream>
#include <streambuf>
#include <string_view>

namespace Zelmor {

// Reads a text where it stands. Who wants all of it can have it without a copy.
class ViewStream : public std::istream {
public:
    // The text is borrowed.
    explicit ViewStream(std::string_view text) : std::istream(nullptr), buffer_(text) { rdbuf(&buffer_); }

    // All that has not been read yet, which is read by that.
    std::string_view takeRest() { return buffer_.takeRest(); }

private:
    class Buffer : public std::streambuf {
    public:
        explicit Buffer(std::string_view text) {
            char* const start = const_cast<char*>(text.data());  // the interface's type; nothing is put back or written
            setg(start, start, start + text.size());
        }
        std::string_view takeRest() {
            const std::string_view rest(gptr(), egptr());
            setg(eback(), egptr(), egptr());
            return rest;
        }
    };

    Buffer buffer_;
};

}  // namespace Zelmor
