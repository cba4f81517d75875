#include "textstream/otext_doc_buf.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <utility>

namespace Zelmor {

namespace {

// Columns beyond what an int holds stay at its maximum.
int clampToInt(std::int64_t column) {
    return static_cast<int>(std::min<std::int64_t>(column, std::numeric_limits<int>::max()));
}

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\n'; }

bool isBlank(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return isBlank(c); });
}

// The columns of a character that stands in that column.
std::int64_t widthAt(std::int64_t column, char c, std::int64_t tabSize) {
    return c == '\t' ? tabSize - column % tabSize : 1;
}

}  // namespace

OTextDocBuf::OTextDocBuf(TextLayout layout)
    : column_(std::max(layout.firstColumn, 0)),
      line_(std::max(layout.firstLine, 1)),
      tabMode_(layout.tabMode),
      tabSize_(std::max(layout.tabSize, 1)),
      isInIndent_(column_ == 0) {}

OTextDocBuf::OTextDocBuf(std::streambuf* target, TextLayout layout) : OTextDocBuf(layout) {
    sink_ = std::make_unique<LineBuf>(target, LineBuf::LineFeed);
}

OTextDocBuf::~OTextDocBuf() {
    if (!sink_) return;
    try {
        flushSpaces();
        sink_->pubsync();
    } catch (...) {
        // A target that throws has failed; whoever owns it has been told by its state.
    }
}

void OTextDocBuf::setTabSize(int tabSize) {
    flushSpaces();
    tabSize_ = tabSize;
}

const std::string& OTextDocBuf::text() {
    flushSpaces();
    return text_;
}

std::string OTextDocBuf::takeText() {
    flushSpaces();
    return std::exchange(text_, {});
}

bool OTextDocBuf::writePendingSpaces() {
    const std::string spaces(static_cast<std::size_t>(std::exchange(pendingSpaces_, 0)), ' ');
    return send(spaces) == spaces.size();
}

std::size_t OTextDocBuf::put(std::string_view text) {
    const bool endsLine = text.ends_with('\n');
    if (endsLine && isPlain(text.substr(0, text.size() - 1))) return putPlainLine(text);
    if (keepsTabs(tabMode_)) return putAsGiven(text);
    switch (tabMode_) {
        case TabsToSpaces:
            return putTabsAsSpaces(text);
        case SpacesToTabs:
        case SpacesToTabsInIndent:
            return putSpacesAsTabs(text);
        default:
            failed_ = true;
            return 0;
    }
}

std::size_t OTextDocBuf::putAsGiven(std::string_view text) {
    const std::size_t sent = send(text);
    advance(text.substr(0, sent));
    return sent;
}

std::size_t OTextDocBuf::putPlain(std::string_view text) {
    if (text.empty()) return 0;
    const std::size_t sent = send(text);
    column_ = clampToInt(std::int64_t{column_} + static_cast<std::int64_t>(sent));
    if (isInIndent_) isInIndent_ = isBlank(text);
    if (tabMode_ == TabsToSpaces) previousChar_ = traits_type::to_int_type(text.back());
    return sent;
}

// Of the text, the last character alone ends a line.
std::size_t OTextDocBuf::putPlainLine(std::string_view text) {
    const std::size_t sent = send(text);
    if (sent < text.size()) {
        advance(text.substr(0, sent));
        return sent;
    }
    ++line_;
    column_ = 0;
    isInIndent_ = true;
    if (tabMode_ == TabsToSpaces) {
        openQuote_ = traits_type::eof();
        previousChar_ = traits_type::to_int_type('\n');
    }
    return sent;
}

std::size_t OTextDocBuf::putTabsAsSpaces(std::string_view text) {
    std::size_t i = kNeedsCare.findIn(text);
    if (i == text.size()) return putPlain(text);
    std::size_t taken = 0;
    for (; i < text.size(); i = kNeedsCare.findIn(text, i + 1)) {
        if (i > 0) previousChar_ = traits_type::to_int_type(text[i - 1]);
        trackLiteral(text[i]);
        if (text[i] != '\t' || insideLiteral()) continue;
        taken += putAsGiven(text.substr(taken, i - taken));
        if (taken < i || !putSpaces(columnsToTabStop())) return taken;
        taken = i + 1;
    }
    previousChar_ = traits_type::to_int_type(text.back());
    return taken + putAsGiven(text.substr(taken));
}

std::size_t OTextDocBuf::putSpacesAsTabs(std::string_view text) {
    std::size_t taken = 0;
    bool isInIndent = isInIndent_;
    for (std::size_t i = 0; i < text.size(); ++i) {
        trackLiteral(text[i]);
        isInIndent = text[i] == '\n' || (isInIndent && isBlank(text[i]));
        const bool mayConvert = tabMode_ == SpacesToTabs || isInIndent;
        if (text[i] != ' ' || insideLiteral() || !mayConvert) {
            if (!flushSpaces()) return taken;
            continue;
        }
        taken += putAsGiven(text.substr(taken, i - taken));
        if (taken < i || !putConvertibleSpace()) return taken;
        taken = i + 1;
    }
    return taken + putAsGiven(text.substr(taken));
}

// A run of spaces that covers a whole tab cell, from one tab stop to the next, becomes a tab.
bool OTextDocBuf::putConvertibleSpace() {
    if (pendingSpaces_ == 0 && column_ % std::max(tabSize_, 1) != 0) return putSpaces(1);
    advance(" ");
    if (++pendingSpaces_ != tabSize_ || pendingSpaces_ == 1) return true;
    pendingSpaces_ = 0;
    return send("\t") == 1;
}

bool OTextDocBuf::putSpaces(int count) {
    constexpr std::string_view most = "                ";
    for (auto left = static_cast<std::size_t>(count); left > 0;) {
        const std::string_view spaces = most.substr(0, left);
        if (putPlain(spaces) < spaces.size()) return false;
        left -= spaces.size();
    }
    return true;
}

std::size_t OTextDocBuf::sendOn(std::string_view text) {
    const auto size = static_cast<std::streamsize>(text.size());
    const std::streamsize sent = std::max<std::streamsize>(sink_->sputn(text.data(), size), 0);
    if (sent != size) failed_ = true;
    return static_cast<std::size_t>(sent);
}

void OTextDocBuf::advance(std::string_view text) {
    for (auto lineFeed = text.find('\n'); lineFeed != text.npos; lineFeed = text.find('\n')) {
        ++line_;
        column_ = 0;
        isInIndent_ = true;
        text.remove_prefix(lineFeed + 1);
    }
    if (text.empty()) return;
    column_ = columnBehind(text);
    isInIndent_ = isInIndent_ && isBlank(text);
}

int OTextDocBuf::columnBehind(std::string_view piece) const {
    std::int64_t column = column_;
    if (piece.find('\t') == piece.npos) return clampToInt(column + static_cast<std::int64_t>(piece.size()));
    const std::int64_t tabSize = std::max(tabSize_, 1);
    for (const char c : piece) column += widthAt(column, c, tabSize);
    return clampToInt(column);
}

int OTextDocBuf::columnsToTabStop() const {
    const int tabSize = std::max(tabSize_, 1);
    return tabSize - column_ % tabSize;
}

void OTextDocBuf::trackLiteral(char c) {
    const int_type character = traits_type::to_int_type(c);
    const bool isEscaped = previousChar_ == traits_type::to_int_type('\\');
    if (insideLiteral()) {
        if ((character == openQuote_ && !isEscaped) || c == '\n') openQuote_ = traits_type::eof();
    } else if ((c == '\'' || c == '"') && !isEscaped) {
        openQuote_ = character;
    }
    previousChar_ = character;
}

OTextDocBuf::int_type OTextDocBuf::overflow(int_type c) {
    if (traits_type::eq_int_type(c, traits_type::eof())) return traits_type::not_eof(c);
    const char character = traits_type::to_char_type(c);
    return xsputn(&character, 1) == 1 ? c : traits_type::eof();
}

std::streamsize OTextDocBuf::xsputn(const char* text, std::streamsize size) {
    return static_cast<std::streamsize>(put({text, static_cast<std::size_t>(size)}));
}

int OTextDocBuf::sync() {
    if (!flushSpaces()) return -1;
    return sink_ ? sink_->pubsync() : 0;
}

}  // namespace Zelmor
