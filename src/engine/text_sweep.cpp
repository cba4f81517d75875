#include "engine/text_sweep.h"

#include <limits>
#include <utility>

#include "cpp/opaque_tokens.h"
#include "cpp/token_joining.h"
#include "cpp/token_kind.h"
#include "engine/directive_ahead.h"
#include "engine/gap.h"
#include "engine/opaque_text.h"
#include "scheme/extension_keys.h"

namespace Tessel {

namespace {

// So that the columns in a stretch are those of the output, whatever the length of a line.
constexpr std::size_t kLongestStretch = 64 * 1024;
constexpr int kLastColumnOfStretch = std::numeric_limits<int>::max() / 2;

// Only literals may hold white space that has to stay, and names that a backslash splices.
bool isOpaque(const ExprToken& token) {
    switch (token.kind) {
        case Cpp::Unknown:
        case Cpp::CharLiteral:
        case Cpp::StringLiteral: return true;
        case Cpp::Identifier: return token.text().find('\\') != std::string_view::npos;
        default: return false;
    }
}

}  // namespace

std::string_view TextSweep::gap() const {
    const std::size_t end = atEnd() ? text_.size() : current().offset;
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
    return Cpp::wouldJoin(tokens_[place_ - 1].text(), currentText());
}

void TextSweep::flush() const {
    out_.writePlainly(text_.substr(stretch_.offset, std::exchange(stretch_.length, 0)));
}

// Writes that much of the text, which is plain.
void TextSweep::copyPlain(std::size_t offset, std::size_t length) {
    const bool extends = stretch_.length > 0 && stretch_.length < kLongestStretch &&
                         offset == stretch_.offset + stretch_.length;
    if (extends) {
        stretch_.length += length;
        return;
    }
    const bool starts = out().lineHasText() && out_.keepsBlanks() && out_.column() < kLastColumnOfStretch;
    if (starts) {
        stretch_ = {offset, length};
    } else {
        out_.write(text_.substr(offset, length));
    }
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
        if (whole.empty()) return;
        if (column() == 0) return static_cast<void>(out().writeVerbatim(whole));
        return copyPlain(written_ - whole.size(), whole.size());
    }
    const std::string_view kept = trimRight(whole);
    const bool losesLineEnd = !wanted.hasLineFeed() && isLineBreak(whole.substr(kept.size()));
    if (losesLineEnd && (directive_.isOpen() || isBeforeDirective())) wanted = kLineFeed;
    take(whole);
    if (wanted.text().empty() && kept.empty() && !whole.empty() && joinsTokens()) wanted = kBlank;
    if (keepsColumns_ && wanted.text() == " " && isColumnGap(whole)) wanted = WantedText(whole, Keys::KEEP_COLUMNS);
    if (!kept.empty()) out().write(kept);
    if (endedLine_ && kept.empty()) {
        const std::string_view text = wanted.text();
        const std::size_t lineFeed = text.find('\n');
        wanted = wanted.with(lineFeed == text.npos ? std::string_view() : text.substr(lineFeed + 1));
    }
    if (log_) log_->decided(trailingBlanks(whole), wanted);
    out().writeVerbatim(wanted.text());
}

std::string_view TextSweep::blanksBehind() const {
    const std::size_t start = current().end();
    const std::size_t end = place_ + 1 < tokens_.size() ? tokens_[place_ + 1].offset : text_.size();
    const std::string_view behind = text_.substr(start, end - start);
    return leadingBlanks(behind);
}

// Whether a directive follows, behind the comments that come next.
bool TextSweep::isBeforeDirective() const {
    if (currentKind() != Cpp::BlockComment) return false;
    const auto next = [this, place = place_]() mutable {
        const ExprToken token = place < tokens_.size() ? tokens_[place++] : ExprToken();
        return Cpp::OpaqueToken{token.offset, static_cast<std::uint32_t>(token.text().size()), token.kind};
    };
    return endOfDirectiveAhead(text_, next) > 0;
}

bool TextSweep::endsItsLine() const {
    const bool precedesDirective =
        place_ + 1 < tokens_.size() && tokens_[place_ + 1].kind == Cpp::Directive;
    return precedesDirective || isLineBreak(blanksBehind());
}

void TextSweep::writeToken() {
    const ExprToken& token = current();
    if (token.isPlain) {
        copyPlain(token.offset, token.text().size());
    } else if (isOpaque(token)) {
        writeLiteral(token.text(), out());
    } else {
        out().write(token.text());
    }
    passToken();
}

void TextSweep::passToken() {
    const ExprToken& token = current();
    written_ = token.end();
    endedLine_ = token.text().ends_with('\n');
    directive_.passToken(token.kind, token.text());
    ++place_;
}

}  // namespace Tessel
