#include "engine/text_sweep.h"

#include "cpp/token_joining.h"
#include "cpp/token_kind.h"
#include "engine/directive_ahead.h"
#include "engine/gap.h"
#include "engine/opaque_text.h"
#include "scheme/extension_keys.h"

namespace Tessel {

namespace {

// Only literals may hold white space that has to stay, and names that a backslash splices.
bool isOpaque(const Trn::Token& token, std::string_view text) {
    switch (token.kind) {
        case Cpp::Unknown:
        case Cpp::CharLiteral:
        case Cpp::StringLiteral: return true;
        case Cpp::Identifier: return token.start.line != token.end.line && text.find('\\') != std::string_view::npos;
        default: return false;
    }
}

}  // namespace

std::string_view TextSweep::gap() const {
    const std::size_t end = atEnd() ? text_.size() : current().token.offset;
    return text_.substr(written_, end - written_);
}

std::string_view TextSweep::takeGap() {
    const std::string_view taken = gap();
    take(taken);
    return taken;
}

// Whether the tokens on either side of the gap would be read as one.
bool TextSweep::joinsTokens() const {
    if (atEnd() || place_ == 0) return false;
    return Cpp::wouldJoin(textOf(tokens_[place_ - 1].token), currentText());
}

void TextSweep::leave(std::string_view gap, const WantedText& wanted) {
    if (log_) log_->left(trailingBlanks(gap), wanted);
}

void TextSweep::copyGap(const WantedText& absent) {
    const std::string_view copied = gap();
    writeGap();
    leave(copied, absent);
}

// Whether the gap is no more than the one blank that is wanted, or nothing, as most are.
bool TextSweep::isAsWanted(std::string_view gap, const WantedText& wanted) const {
    return gap == wanted.text() && (gap.empty() || gap == " ") && !endedLine_ && !log_;
}

void TextSweep::replaceGap(WantedText wanted) {
    const std::string_view whole = gap();
    if (isAsWanted(whole, wanted)) {
        take(whole);
        out_.writeVerbatim(whole);
        return;
    }
    const bool losesLineEnd = !wanted.hasLineFeed() && isLineBreak(whole);
    if (losesLineEnd && (isInDirective_ || isBeforeDirective())) wanted = kLineFeed;
    take(whole);
    const std::string_view kept = trimRight(whole);
    if (wanted.text().empty() && kept.empty() && !whole.empty() && joinsTokens()) wanted = kBlank;
    if (keepsColumns_ && wanted.text() == " " && isColumnGap(whole)) wanted = WantedText(whole, Keys::KEEP_COLUMNS);
    out_.write(kept);
    if (endedLine_ && kept.empty()) {
        const std::string_view text = wanted.text();
        const std::size_t lineFeed = text.find('\n');
        wanted = wanted.with(lineFeed == text.npos ? std::string_view() : text.substr(lineFeed + 1));
    }
    if (log_) log_->decided(trailingBlanks(whole), wanted);
    out_.writeVerbatim(wanted.text());
}

std::string_view TextSweep::blanksBehind() const {
    const std::size_t start = std::size_t{current().token.offset} + current().token.length;
    const std::size_t end = place_ + 1 < tokens_.size() ? tokens_[place_ + 1].token.offset : text_.size();
    const std::string_view behind = text_.substr(start, end - start);
    return leadingBlanks(behind);
}

// Whether a directive follows, behind the comments that come next.
bool TextSweep::isBeforeDirective() const {
    if (currentKind() != Cpp::BlockComment) return false;
    const auto next = [this, place = place_]() mutable {
        return place < tokens_.size() ? tokens_[place++].token : Trn::Token();
    };
    return endOfDirectiveAhead(text_, next) > 0;
}

bool TextSweep::endsItsLine() const {
    const bool precedesDirective =
        place_ + 1 < tokens_.size() && tokens_[place_ + 1].token.kind == Cpp::Directive;
    return precedesDirective || isLineBreak(blanksBehind());
}

void TextSweep::writeToken() {
    const std::string_view text = currentText();
    if (isOpaque(current().token, text)) {
        writeLiteral(text, out_);
    } else {
        out_.write(text);
    }
    passToken();
}

void TextSweep::passToken() {
    const Trn::Token& token = current().token;
    written_ = token.offset + token.length;
    endedLine_ = token.length > 0 && text_[written_ - 1] == '\n';
    if (token.kind != Cpp::BlockComment) isInDirective_ = token.kind == Cpp::Directive && !endedLine_;
    ++place_;
}

}  // namespace Tessel
