#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "textstream/otext_doc_buf.h"

namespace Zelmor {

class OIndentBuf;
class OIndentStream;

// All that it takes to continue writing exactly where a stream stands.
struct IndentState {
    IndentState() = default;
    explicit IndentState(const OIndentBuf& out);
    explicit IndentState(const OIndentStream& out);

    std::string indent;
    bool keepLeadingSpace = false;
    int tabMode = KeepTabs;
    int tabSize = 1;
    int line = 1;
    int column = 0;
    int textColumn = -1;  // of the first character on the line that is no white space; none yet when negative
};

// Writes the current indentation in front of the first character of every line; a line that is only a line
// feed gets none. White space offered at the start of a line is dropped unless it is to be kept, behind the
// indentation. Text that starts at a column other than 0 has no line start on its first line.
class OIndentBuf : public OTextDocBuf {
public:
    // Collects text from the state's position on.
    explicit OIndentBuf(IndentState state);
    // Passes text on to `target`, which is borrowed.
    OIndentBuf(std::streambuf* target, std::string indent, bool keepLeadingSpace, TextLayout layout);

    const std::string& indent() const { return indent_; }
    bool keepLeadingSpace() const { return keepLeadingSpace_; }
    // Count from the next character on.
    void setIndent(std::string indent) { indent_ = std::move(indent); }
    void setKeepLeadingSpace(bool keepLeadingSpace) { keepLeadingSpace_ = keepLeadingSpace; }

    // The result is that of writing the characters one at a time. Says how many have been taken: all of them
    // unless the write has failed.
    std::size_t write(std::string_view text);
    // With leading white space kept.
    std::size_t writeVerbatim(std::string_view text);
    // Of text that goes behind what stands on the line, each character a column wide.
    std::size_t writePlainly(std::string_view text);
    // Whether anything but white space stands on the current line.
    bool lineHasText() const { return lineHasText_; }
    // The column of the first character on the current line that is no white space; where the next one will stand
    // when there is none.
    int textColumn() const { return textColumn_ < 0 ? column() : textColumn_; }
    // Writes the indentation when the line has not begun yet.
    void startLine() {
        if (column_ == 0 && !indent_.empty()) put(indent_);
    }

protected:
    int_type overflow(int_type c) override;
    std::streamsize xsputn(const char* text, std::streamsize size) override;

private:
    friend class IndentScope;
    friend struct IndentState;

    // Whether it goes behind what stands on the line, and stays there as it is.
    bool goesOnPlainly(std::string_view text) const { return column_ > 0 && text.back() != '\n' && isPlain(text); }
    // Whether it begins a line, behind the indentation, and stays there as it is.
    bool startsPlainly(std::string_view text) const {
        return column_ == 0 && text.front() > ' ' && text.back() != '\n' && isPlain(text);
    }
    std::size_t writeLines(std::string_view text);
    std::size_t putLines(std::string_view lines);
    // What a piece of a line that is written next tells of it.
    void noteText(std::string_view line);
    void findTextColumn(std::string_view line);

    std::string indent_;
    bool keepLeadingSpace_;
    bool lineHasText_ = false;
    int textColumn_ = -1;
};

// Another indentation for the time of a scope.
class IndentScope {
public:
    IndentScope(OIndentBuf& out, std::string indent) : out_(out), saved_(std::move(indent)) {
        out_.indent_.swap(saved_);
    }
    IndentScope(OIndentStream& out, std::string indent);
    IndentScope(const IndentScope&) = delete;
    IndentScope& operator=(const IndentScope&) = delete;
    ~IndentScope() { out_.indent_.swap(saved_); }

private:
    OIndentBuf& out_;
    std::string saved_;
};

// Leading white space kept, or dropped, for the time of a scope.
class LeadingSpaceScope {
public:
    LeadingSpaceScope(OIndentBuf& out, bool keepLeadingSpace) : out_(out), saved_(out.keepLeadingSpace()) {
        out_.setKeepLeadingSpace(keepLeadingSpace);
    }
    LeadingSpaceScope(OIndentStream& out, bool keepLeadingSpace);
    LeadingSpaceScope(const LeadingSpaceScope&) = delete;
    LeadingSpaceScope& operator=(const LeadingSpaceScope&) = delete;
    ~LeadingSpaceScope() { out_.setKeepLeadingSpace(saved_); }

private:
    OIndentBuf& out_;
    bool saved_;
};

// Another tab size, for the time of a scope.
class TabSizeScope {
public:
    TabSizeScope(OIndentBuf& out, int tabSize) : out_(out), saved_(out.tabSize()) { out_.setTabSize(tabSize); }
    TabSizeScope(const TabSizeScope&) = delete;
    TabSizeScope& operator=(const TabSizeScope&) = delete;
    ~TabSizeScope() { out_.setTabSize(saved_); }

private:
    OIndentBuf& out_;
    int saved_;
};

}  // namespace Zelmor
