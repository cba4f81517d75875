#include "textstream/itext_doc_stream.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "textstream/line_buf.h"

namespace Zelmor {

namespace {

int clampToInt(std::uint32_t value) {
    return static_cast<int>(std::min<std::uint32_t>(value, std::numeric_limits<int>::max()));
}

std::string readNormalized(std::istream& in) {
    LineBuf lines(in.rdbuf());
    std::istream normalized(&lines);
    return readAll(normalized);
}

}  // namespace

ITextDocBuf::ITextDocBuf(std::string text, int tabMode, int tabSize, int firstLine, int firstColumn)
    : own_(std::make_unique<TextDocument>(std::move(text))),
      document_(own_.get()),
      tabMode_(tabMode),
      tabSize_(std::max(tabSize, 1)),
      firstLine_(std::max(firstLine, 1)),
      firstColumn_(std::max(firstColumn, 0)) {}

ITextDocBuf::ITextDocBuf(const TextDocument& document, int tabMode, int tabSize, int firstLine,
                         int firstColumn)
    : document_(&document),
      tabMode_(tabMode),
      tabSize_(std::max(tabSize, 1)),
      firstLine_(std::max(firstLine, 1)),
      firstColumn_(std::max(firstColumn, 0)) {}

int ITextDocBuf::column() const {
    const int line = documentLine();
    const auto column = static_cast<int>(offset_ - document_->offsetOf(line, 0));
    return line == 1 ? column + firstColumn_ : column;
}

int ITextDocBuf::documentLine() const {
    const int lastLine = document_->lineCount();
    while (documentLine_ < lastLine && document_->offsetOf(documentLine_ + 1, 0) <= offset_) ++documentLine_;
    while (document_->offsetOf(documentLine_, 0) > offset_) --documentLine_;
    return documentLine_;
}

bool ITextDocBuf::isBefore(std::uint32_t line, std::uint32_t column) const {
    const auto currentLine = static_cast<std::uint32_t>(this->line());
    return currentLine != line ? currentLine < line : static_cast<std::uint32_t>(this->column()) < column;
}

std::string_view ITextDocBuf::readTo(std::uint32_t line, std::uint32_t column) {
    const int target = clampToInt(line) - firstLine_ + 1;
    if (target < 1) return {};
    const int targetColumn = clampToInt(column) - (target == 1 ? firstColumn_ : 0);
    const std::string_view read = readToOffset(document_->offsetOf(target, targetColumn));
    if (!read.empty()) documentLine_ = std::min(target, document_->lineCount());
    return read;
}

void ITextDocBuf::moveTo(std::size_t offset) {
    offset_ = std::min(offset, document_->size());
    documentLine_ = document_->positionOf(offset_).line;
    putBackRoom_ = std::min(offset_, kPutBackLimit);
}

ITextDocBuf::int_type ITextDocBuf::underflow() {
    return atEnd() ? traits_type::eof() : traits_type::to_int_type(document_->text()[offset_]);
}

ITextDocBuf::int_type ITextDocBuf::uflow() {
    const int_type c = underflow();
    readToOffset(std::min(offset_ + 1, document_->size()));
    return c;
}

std::streamsize ITextDocBuf::xsgetn(char* to, std::streamsize size) {
    const std::size_t wanted = std::min(static_cast<std::size_t>(size), document_->size() - offset_);
    return static_cast<std::streamsize>(readToOffset(offset_ + wanted).copy(to, wanted));
}

ITextDocBuf::int_type ITextDocBuf::pbackfail(int_type c) {
    if (putBackRoom_ == 0) return traits_type::eof();
    --putBackRoom_;
    --offset_;
    const bool isDifferent =
        !traits_type::eq_int_type(c, traits_type::eof()) && !traits_type::eq_int_type(c, underflow());
    if (isDifferent) putBackDifferent(traits_type::to_char_type(c));
    return underflow();
}

void ITextDocBuf::putBackDifferent(char c) {
    if (!own_) {
        own_ = std::make_unique<TextDocument>(std::string(document_->text()));
        document_ = own_.get();
    }
    own_->replaceCharacter(offset_, c);
    documentLine_ = std::min(documentLine_, document_->lineCount());
}

ITextDocStream::ITextDocStream(std::istream& source, int tabMode, int tabSize, int firstLine, int firstColumn)
    : ITextDocStream(readNormalized(source), tabMode, tabSize, firstLine, firstColumn) {}

ITextDocStream::ITextDocStream(std::string text, int tabMode, int tabSize, int firstLine, int firstColumn)
    : ITextDocStreamBase(std::move(text), tabMode, tabSize, firstLine, firstColumn), std::istream(&buffer_) {}

ITextDocStream::ITextDocStream(const TextDocument& document, int tabMode, int tabSize, int firstLine,
                               int firstColumn)
    : ITextDocStreamBase(document, tabMode, tabSize, firstLine, firstColumn), std::istream(&buffer_) {}

std::string_view ITextDocStream::readTo(std::uint32_t line, std::uint32_t column) {
    if (!good()) return {};
    const std::string_view read = buffer_.readTo(line, column);
    if (buffer_.atEnd() && buffer_.isBefore(line, column)) setstate(eofbit | failbit);
    return read;
}

std::string_view ITextDocStream::rest() {
    if (!good()) return {};
    const std::string_view read = buffer_.readToOffset(document().size());
    setstate(eofbit | failbit);
    return read;
}

bool rewindStream(std::istream& in) {
    in.clear();
    in.seekg(0);
    return !in.fail();
}

}  // namespace Zelmor
