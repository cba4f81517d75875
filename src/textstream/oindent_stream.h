#pragma once

#include <ostream>
#include <string>
#include <string_view>
#include <utility>

#include "textstream/oindent_buf.h"

namespace Zelmor {

// Holds the buffer, so that it exists before the stream part.
class OIndentStreamBase {
protected:
    explicit OIndentStreamBase(IndentState state) : buffer_(std::move(state)) {}
    OIndentStreamBase(std::streambuf* target, std::string indent, bool keepLeadingSpace, TextLayout layout)
        : buffer_(target, std::move(indent), keepLeadingSpace, layout) {}

    OIndentBuf buffer_;
};

// An OIndentBuf as a standard output stream.
class OIndentStream : private OIndentStreamBase, public std::ostream {
public:
    // Writes into the buffer of `target`, which is borrowed.
    OIndentStream(std::ostream& target, std::string indent, bool keepLeadingSpace, int tabMode, int tabSize,
                  int firstLine, int firstColumn);
    // Collects text from the state's position on.
    explicit OIndentStream(IndentState state);

    OIndentBuf& buffer() { return buffer_; }
    const OIndentBuf& buffer() const { return buffer_; }

    int line() const { return buffer_.line(); }
    int column() const { return buffer_.column(); }
    int tabMode() const { return buffer_.tabMode(); }
    int tabSize() const { return buffer_.tabSize(); }
    const std::string& indent() const { return buffer_.indent(); }
    bool keepLeadingSpace() const { return buffer_.keepLeadingSpace(); }

    void setTabMode(int tabMode) { buffer_.setTabMode(tabMode); }
    void setTabSize(int tabSize) { buffer_.setTabSize(tabSize); }
    void setIndent(std::string indent) { buffer_.setIndent(std::move(indent)); }
    void setKeepLeadingSpace(bool keepLeadingSpace) { buffer_.setKeepLeadingSpace(keepLeadingSpace); }

    // Flushes; everything written so far.
    const std::string& text();
};

// out << verbatim(text) writes the text with leading white space kept.
struct Verbatim {
    std::string_view text;
};
inline Verbatim verbatim(std::string_view text) {
    return {text};
}
std::ostream& operator<<(std::ostream& out, Verbatim verbatim);

}  // namespace Zelmor
