#pragma once

#include <string_view>
#include <vector>

#include "engine/columns.h"
#include "engine/expr_tokens.h"
#include "engine/gap.h"
#include "engine/layout_log.h"
#include "engine/open_directive.h"
#include "engine/optional_text.h"
#include "textstream/oindent_stream.h"

namespace Tessel {

// One forward sweep over the tokens of a text: each step writes the gap in front of a token, as it stands or
// with its white space replaced, and then the token. A gap counts as written once: writing it again writes
// nothing. What stays as it is goes out in stretches, most of them of several tokens: ask for the output here, where
// all that comes in front is in it.
class TextSweep {
public:
    // With `keepsColumns`, blanks that make a column stay where one blank is wanted. All are borrowed; the log may be
    // null.
    TextSweep(std::string_view text, const ExprTokens& tokens, Zelmor::OIndentBuf& out,
              bool keepsColumns, LayoutLog* log)
        : text_(text), tokens_(tokens), out_(out), keepsColumns_(keepsColumns), log_(log) {}

    bool atEnd() const { return place_ >= tokens_.size(); }
    std::size_t place() const { return place_; }
    const ExprToken& current() const { return tokens_[place_]; }
    int currentKind() const { return atEnd() ? Trn::kEndKind : current().kind; }
    std::string_view currentText() const { return current().text(); }

    // With all that has been written.
    Zelmor::OIndentBuf& out() const {
        if (stretch_.length > 0) flush();
        return out_;
    }
    // Of the output, where the next character will appear.
    int column() const {
        return stretch_.length == 0 ? out_.column() : out_.column() + static_cast<int>(stretch_.length);
    }
    // The same, at the indentation when the line has not begun.
    int columnToIndentFrom() const {
        const int behind = column();
        return behind > 0 && behind <= kRightmostIndent ? behind : Tessel::columnToIndentFrom(out());
    }
    bool lineHasText() const { return stretch_.length > 0 || out_.lineHasText(); }

    // What lies between the text written last and the current token, or the end of the text.
    std::string_view gap() const;
    // The same, taken as written.
    std::string_view takeGap();
    void writeGap() {
        const std::string_view taken = takeGap();
        if (log_) log_->copied(taken);
        if (taken.empty()) return;
        if (taken == " " && stretch_.length > 0) return copyPlain(written_ - taken.size(), taken.size());
        out().write(taken);
    }
    // Writes what follows the last token.
    void writeEnd() {
        writeGap();
        if (stretch_.length > 0) flush();
    }
    // The gap with its trailing white space replaced. The line end of a comment or directive that has just been
    // written stays; `wanted` then only counts as far as it asks for more line feeds. Two tokens that would be
    // read as one stay apart by a blank.
    // Where nothing is wanted, the gap stands as it is.
    void writeGapWith(const WantedText& wanted) {
        if (wanted.present) {
            replaceGap(wanted);
        } else if (log_ && wanted.key) {
            copyGap(wanted);
        } else {
            writeGap();
        }
    }
    // The same where it may be null.
    void writeGapWith(const OptionalText* wanted) {
        if (wanted && (wanted->present || log_)) {
            writeGapWith(WantedText(*wanted));
        } else {
            writeGap();
        }
    }
    // The gap, which has been taken, has been written by others.
    void leave(std::string_view gap, const WantedText& wanted);

    // The white space behind the current token.
    std::string_view blanksBehind() const;
    // Whether nothing follows the current token on its line. A directive comes to begin one of its own. The
    // line wrapper parts no comment that ends its line from what stands in front of it.
    bool endsItsLine() const;

    void writeToken();
    // Moves behind the current token, which has been written.
    void passToken();

private:
    void take(std::string_view gap) {
        directive_.passGap(gap);
        written_ += gap.size();
    }
    void flush() const;
    void copyPlain(std::size_t offset, std::size_t length);
    bool isAsWanted(std::string_view gap, const WantedText& wanted) const;
    void replaceGap(WantedText wanted);
    void copyGap(const WantedText& absent);
    bool joinsTokens() const;
    bool isBeforeDirective() const;

    std::string_view text_;
    const ExprTokens& tokens_;
    Zelmor::OIndentBuf& out_;
    bool keepsColumns_;
    LayoutLog* log_;
    mutable TextExtent stretch_;  // goes behind what stands on the output's line
    std::size_t place_ = 0;
    std::size_t written_ = 0;
    bool endedLine_ = false;  // the token written last ended its line
    OpenDirective directive_;
};

}  // namespace Tessel
