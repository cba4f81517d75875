#pragma once

#include <cstddef>
#include <memory>
#include <streambuf>
#include <string>
#include <string_view>

#include "textstream/char_set.h"
#include "textstream/line_buf.h"

namespace Zelmor {

enum TabMode : int {
    KeepTabs = 0,
    TabsToSpaces = 1,
    SpacesToTabs = 2,
    SpacesToTabsInIndent = 3,  // in front of the first text of a line only
    KeepTabsInIndent = 4,      // kept as well, and columns behind them are reached by blanks
};

constexpr bool keepsTabs(int tabMode) { return tabMode == KeepTabs || tabMode == KeepTabsInIndent; }

// Where text is to be written and how tabs are treated. Out of range, the tab size and the first line become
// 1, the first column 0.
struct TextLayout {
    int tabMode = KeepTabs;
    int tabSize = 1;
    int firstLine = 1;
    int firstColumn = 0;
};

// Collects text in a string of its own, or passes it on to a borrowed buffer; counts the lines (from 1) and
// columns (from 0, a tab reaching to the next multiple of the tab size) of the text as its reader will see
// it; and turns tabs into spaces or runs of spaces into tabs, outside of literals. Text that starts at a column other
// than 0 stands behind other text of its line.
class OTextDocBuf : public std::streambuf {
public:
    explicit OTextDocBuf(TextLayout layout);
    OTextDocBuf(std::streambuf* target, TextLayout layout);
    // Flushes.
    ~OTextDocBuf() override;

    // Where the next character will appear.
    int line() const { return line_; }
    int column() const { return column_; }
    int tabMode() const { return tabMode_; }
    int tabSize() const { return tabSize_; }
    // Whether no tab comes to stand for blanks.
    bool keepsBlanks() const { return keepsTabs(tabMode_) || tabMode_ == TabsToSpaces; }
    // Spaces held back are written before the change. A tab size below 1 makes a tab one column wide.
    void setTabMode(int tabMode) {
        flushSpaces();
        tabMode_ = tabMode;
    }
    void setTabSize(int tabSize);

    // Some write has failed: the target refused it, or the tab mode is none of TabMode.
    bool failed() const { return failed_; }

    // Writes spaces held back. The target is not synchronised.
    bool flushSpaces() { return pendingSpaces_ == 0 || writePendingSpaces(); }

    // Makes room for a text of that many characters.
    void reserve(std::size_t size) { text_.reserve(size); }

    // All that has been written, except to a target.
    const std::string& text();
    std::string takeText();

protected:
    // Writes the characters with nothing but their tabs and spaces converted. Says how many have been taken.
    std::size_t put(std::string_view text);

    int_type overflow(int_type c) override;
    std::streamsize xsputn(const char* text, std::streamsize size) override;
    int sync() override;
    // Where a piece of a line that is written next would end.
    int columnBehind(std::string_view piece) const;
    // Whether the text is written as it is, each character a column wide: most are.
    bool isPlain(std::string_view text) const {
        return keepsBlanks() && kNeedsCare.findIn(text) == text.size();
    }
    std::size_t putPlain(std::string_view text);
    // What has been written to the line so far is its indentation.
    void startIndent() { isInIndent_ = true; }

    int column_;

private:
    // Characters that end lines, are several columns wide, or delimit literals.
    static constexpr CharSet kNeedsCare{"\n\t\"'"};

    std::size_t putAsGiven(std::string_view text);
    std::size_t putPlainLine(std::string_view text);
    std::size_t putTabsAsSpaces(std::string_view text);
    std::size_t putSpacesAsTabs(std::string_view text);
    bool putConvertibleSpace();
    bool writePendingSpaces();
    bool putSpaces(int count);
    std::size_t send(std::string_view text) {
        if (sink_) return sendOn(text);
        text_ += text;
        return text.size();
    }
    std::size_t sendOn(std::string_view text);
    void advance(std::string_view text);
    void trackLiteral(char c);
    bool insideLiteral() const { return openQuote_ != traits_type::eof(); }
    int columnsToTabStop() const;

    int line_;
    int tabMode_;
    int tabSize_;
    bool isInIndent_;        // nothing but white space stands on the line
    int pendingSpaces_ = 0;  // counted already, written when no tab can stand for them
    int_type previousChar_ = traits_type::eof();
    int_type openQuote_ = traits_type::eof();
    bool failed_ = false;
    std::unique_ptr<LineBuf> sink_;
    std::string text_;
};

}  // namespace Zelmor
