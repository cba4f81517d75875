#include "textstream/line_buf.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace Zelmor {

namespace {

constexpr std::streamsize kReserve = 4;
constexpr std::streamsize kBlock = 16380;

// Returns the new end of the characters.
char* normalizeLineEnds(char* first, char* last) {
    char* to = std::find(first, last, '\r');
    for (char* from = to; from != last; ++from) {
        const bool isCarriageReturn = *from == '\r';
        *to++ = isCarriageReturn ? '\n' : *from;
        if (isCarriageReturn && from + 1 != last && from[1] == '\n') ++from;
    }
    return to;
}

}  // namespace

LineBuf::int_type LineBuf::underflow() {
    if (gptr() < egptr()) return traits_type::to_int_type(*gptr());
    if (!readArea_) readArea_ = std::make_unique<char[]>(kReserve + kBlock);
    char* const start = readArea_.get() + kReserve;
    const std::ptrdiff_t kept = std::min<std::ptrdiff_t>(gptr() - eback(), kReserve);
    std::copy(gptr() - kept, gptr(), start - kept);

    const std::streamsize size = raw_ ? raw_->sgetn(start, kBlock) : 0;
    const bool endsInCarriageReturn = size > 0 && start[size - 1] == '\r';
    if (endsInCarriageReturn && raw_->sgetc() == traits_type::to_int_type('\n')) raw_->sbumpc();
    setg(start - kept, start, normalizeLineEnds(start, start + size));
    return size > 0 ? traits_type::to_int_type(*gptr()) : traits_type::eof();
}

LineBuf::int_type LineBuf::pbackfail(int_type c) {
    if (gptr() == eback()) return traits_type::eof();
    gbump(-1);
    if (!traits_type::eq_int_type(c, traits_type::eof())) *gptr() = traits_type::to_char_type(c);
    return traits_type::not_eof(c);
}

LineBuf::int_type LineBuf::overflow(int_type c) {
    if (traits_type::eq_int_type(c, traits_type::eof())) return traits_type::not_eof(c);
    const char character = traits_type::to_char_type(c);
    return xsputn(&character, 1) == 1 ? c : traits_type::eof();
}

std::streamsize LineBuf::xsputn(const char* text, std::streamsize size) {
    if (!raw_) return 0;
    if (lineEndMode_ != CarriageReturnLineFeed) return raw_->sputn(text, size);
    const std::string_view all(text, static_cast<std::size_t>(size));
    std::size_t written = 0;
    while (written < all.size()) {
        const std::size_t lineFeed = std::min(all.find('\n', written), all.size());
        const auto length = static_cast<std::streamsize>(lineFeed - written);
        const std::streamsize sent = raw_->sputn(all.data() + written, length);
        written += static_cast<std::size_t>(std::max<std::streamsize>(sent, 0));
        if (sent != length) break;
        if (written == all.size()) break;
        if (raw_->sputn("\r\n", 2) != 2) break;
        ++written;
    }
    return static_cast<std::streamsize>(written);
}

int LineBuf::sync() {
    return raw_ ? raw_->pubsync() : -1;
}

}  // namespace Zelmor
