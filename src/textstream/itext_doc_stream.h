#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <istream>
#include <memory>
#include <streambuf>
#include <string>
#include <string_view>

#include "textstream/text_document.h"

namespace Zelmor {

// Reads a text document and knows the line and column of the next character. Lines count from `firstLine`,
// columns from `firstColumn` on the first line and from 0 on the others, a tab counting as one column. The
// tab settings are only kept. Out of range, the tab size and the first line become 1, the first column 0.
class ITextDocBuf : public std::streambuf {
public:
    ITextDocBuf(std::string text, int tabMode, int tabSize, int firstLine, int firstColumn);
    // Borrows the document.
    ITextDocBuf(const TextDocument& document, int tabMode, int tabSize, int firstLine, int firstColumn);

    int line() const { return documentLine() + firstLine_ - 1; }
    int column() const;
    std::size_t offset() const { return offset_; }
    bool atEnd() const { return offset_ == document_->size(); }
    const TextDocument& document() const { return *document_; }

    int tabMode() const { return tabMode_; }
    int tabSize() const { return tabSize_; }
    void setTabMode(int tabMode) { tabMode_ = tabMode; }
    void setTabSize(int tabSize) { tabSize_ = tabSize; }

    bool isBefore(std::uint32_t line, std::uint32_t column) const;
    // Reads while the position is before (line, column).
    std::string_view readTo(std::uint32_t line, std::uint32_t column);
    std::string_view readToOffset(std::size_t end) {
        if (end <= offset_) return document_->text().substr(offset_, 0);  // where it stands
        const std::string_view read = document_->text().substr(offset_, end - offset_);
        offset_ = end;
        putBackRoom_ = std::min(putBackRoom_ + read.size(), kPutBackLimit);
        return read;
    }
    // On from another place of the text, at most its end.
    void moveTo(std::size_t offset);

protected:
    int_type underflow() override;
    int_type uflow() override;
    std::streamsize xsgetn(char* to, std::streamsize size) override;
    // At most 4 characters in a row, and none in front of the first.
    int_type pbackfail(int_type c) override;

private:
    static constexpr std::size_t kPutBackLimit = 4;

    int documentLine() const;
    void putBackDifferent(char c);

    std::unique_ptr<TextDocument> own_;  // the text held, or a borrowed one changed by putting back
    const TextDocument* document_;
    std::size_t offset_ = 0;
    std::size_t putBackRoom_ = 0;
    mutable int documentLine_ = 1;  // where the search for the current line starts; lines are passed in order
    int tabMode_;
    int tabSize_;
    int firstLine_;
    int firstColumn_;
};

// Holds the buffer, so that it exists before the stream part.
class ITextDocStreamBase {
protected:
    template <typename Source>
    ITextDocStreamBase(Source&& source, int tabMode, int tabSize, int firstLine, int firstColumn)
        : buffer_(std::forward<Source>(source), tabMode, tabSize, firstLine, firstColumn) {}

    ITextDocBuf buffer_;
};

// The stream through which source text is read: a standard input stream, which cannot seek, that also hands
// out views of the text it passes over.
class ITextDocStream : private ITextDocStreamBase, public std::istream {
public:
    // Reads all that remains in the buffer of `source`.
    explicit ITextDocStream(std::istream& source, int tabMode = 0, int tabSize = 1, int firstLine = 1,
                            int firstColumn = 0);
    explicit ITextDocStream(std::string text, int tabMode = 0, int tabSize = 1, int firstLine = 1,
                            int firstColumn = 0);
    // Borrows the document.
    explicit ITextDocStream(const TextDocument& document, int tabMode = 0, int tabSize = 1, int firstLine = 1,
                            int firstColumn = 0);
    ITextDocStream(TextDocument&& document, int = 0, int = 1, int = 1, int = 0) = delete;

    // Of the next character.
    int line() const { return buffer_.line(); }
    int column() const { return buffer_.column(); }
    std::size_t offset() const { return buffer_.offset(); }

    int tabMode() const { return buffer_.tabMode(); }
    int tabSize() const { return buffer_.tabSize(); }
    void setTabMode(int tabMode) { buffer_.setTabMode(tabMode); }
    void setTabSize(int tabSize) { buffer_.setTabSize(tabSize); }

    // The text being read. The first put-back of a character that differs from the one read makes it a copy,
    // and so do views stay what they are; further ones change that copy.
    const TextDocument& document() const { return buffer_.document(); }

    // Reads while the position is before (line, column), at a cost that does not depend on how much that is.
    // Where the text ends too early, the stream's state is that after reading at the end by get.
    std::string_view readTo(std::uint32_t line, std::uint32_t column);
    // On from another place of the text, whatever the state.
    void moveTo(std::size_t offset) {
        clear();
        buffer_.moveTo(offset);
    }
    // Reads everything that remains, and on into the end.
    std::string_view rest();
};

// Clears the state of the stream and seeks to its start. Says whether that worked.
bool rewindStream(std::istream& in);

}  // namespace Zelmor
