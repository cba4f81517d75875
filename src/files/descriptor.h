#pragma once

#include <string>
#include <string_view>

// Files as the system sees them. Errors are errno values; 0 means success.

namespace Files {

// Owns an open file descriptor, or none (-1).
class Descriptor {
public:
    explicit Descriptor(int descriptor = -1) : descriptor_(descriptor) {}
    Descriptor(Descriptor&& other) noexcept : descriptor_(other.release()) {}
    Descriptor& operator=(Descriptor&& other) noexcept;
    ~Descriptor() { close(); }

    bool isOpen() const { return descriptor_ >= 0; }
    int get() const { return descriptor_; }
    int release();

    // The error tells of data that could not be written after all.
    int close();

private:
    int descriptor_;
};

// Writes the whole text.
int writeAll(int descriptor, std::string_view text);

// Appends everything up to the end of the file, in big blocks. `expectedSize` is a guess at how much that is.
int readAll(int descriptor, std::string& text, std::size_t expectedSize);

// What the system says about an error: "No space left on device".
std::string errorText(int error);

}  // namespace Files
