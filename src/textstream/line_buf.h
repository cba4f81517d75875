#pragma once

#include <memory>
#include <streambuf>

namespace Zelmor {

// Makes line ends uniform between a raw buffer, borrowed, and the streams of this folder: CR LF and a lone CR
// are read as LF, and LF is written as the line end mode says.
class LineBuf : public std::streambuf {
public:
    enum LineEndMode : int { CarriageReturnLineFeed = 1, LineFeed = 2 };

    // With any other line end mode characters are written as given.
    explicit LineBuf(std::streambuf* raw, int lineEndMode = LineFeed)
        : raw_(raw), lineEndMode_(lineEndMode) {}

protected:
    int_type underflow() override;
    int_type pbackfail(int_type c) override;
    int_type overflow(int_type c) override;
    std::streamsize xsputn(const char* text, std::streamsize size) override;
    int sync() override;

private:
    std::streambuf* raw_;
    int lineEndMode_;
    std::unique_ptr<char[]>
        readArea_;  // the put-back reserve, then what has been read; made by the first read
};

}  // namespace Zelmor
