#pragma once

#include <string_view>
#include <vector>

#include "engine/expr_tokens.h"
#include "engine/gap.h"
#include "engine/layout_log.h"
#include "engine/optional_text.h"
#include "textstream/oindent_stream.h"

namespace Tessel {

// One forward sweep over the tokens of a text: each step writes the gap in front of a token, as it stands or
// with its white space replaced, and then the token. A gap counts as written once: writing it again writes
// nothing.
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
    int currentKind() const { return atEnd() ? Trn::kEndKind : current().token.kind; }
    std::string_view currentText() const { return textOf(current().token); }

    // What lies between the text written last and the current token, or the end of the text.
    std::string_view gap() const;
    // The same, taken as written.
    std::string_view takeGap();
    void writeGap() {
        const std::string_view taken = takeGap();
        if (log_) log_->copied(taken);
        out_.write(taken);
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
    std::string_view textOf(const Trn::Token& token) const { return text_.substr(token.offset, token.length); }
    void take(std::string_view gap) {
        if (isInDirective_ && isLineBreak(gap)) isInDirective_ = false;
        written_ += gap.size();
    }
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
    std::size_t place_ = 0;
    std::size_t written_ = 0;
    bool endedLine_ = false;  // the token written last ended its line
    // A comment behind a directive was written last, and their line has not ended.
    bool isInDirective_ = false;
};

}  // namespace Tessel
