#include "engine/source_writer.h"

#include <algorithm>

#include "cpp/token_joining.h"
#include "cpp/token_kind.h"
#include "cpp/token_sets.h"
#include "engine/columns.h"
#include "engine/directive_ahead.h"
#include "engine/gap.h"
#include "engine/opaque_text.h"
#include "engine/source_copy.h"
#include "engine/token_boundary.h"
#include "scheme/extension_keys.h"

namespace Tessel {

namespace {

// Whether what stands on two lines, of which the first ends and the second begins with these, belongs together.
bool isContinued(char last, char first) {
    static constexpr Zelmor::CharSet ends(";:{}\\");
    static constexpr Zelmor::CharSet starts("{}");
    return !ends.holds(last) && !starts.holds(first);
}

}  // namespace

SourceWriter::SourceWriter(const Zelmor::TextDocument& source, const Cpp::OpaqueTokens& opaque,
                           Zelmor::OIndentBuf& out, CppExprFormatterBase& trivia, LayoutLog* log)
    : text_(source.text()), in_(source), out_(&out), opaque_(opaque), trivia_(trivia), log_(log) {}

std::string_view SourceWriter::readGap(Trn::Position start) { return Tessel::readGap(in_, start); }

std::string_view SourceWriter::readThrough(Trn::Position position) { return Tessel::readThrough(in_, position); }

char SourceWriter::peek(std::size_t offset) const {
    const std::size_t place = in_.offset() + offset;
    return place < text_.size() ? text_[place] : '\0';
}

void SourceWriter::skipBlanks() {
    while (isWhitespace(peek())) in_.get();
}

// The first opaque token that ends behind `offset`. The sweep goes forward, so it is close to the last one
// found.
Cpp::OpaqueTokens::const_iterator SourceWriter::firstOpaque(std::size_t offset) const {
    const auto endsBehind = [offset](const Cpp::OpaqueToken& token) {
        return std::size_t{token.offset} + token.length > offset;
    };
    while (opaquePlace_ > 0 && endsBehind(opaque_[opaquePlace_ - 1])) --opaquePlace_;
    while (opaquePlace_ < opaque_.size() && !endsBehind(opaque_[opaquePlace_])) ++opaquePlace_;
    return opaque_.begin() + static_cast<std::ptrdiff_t>(opaquePlace_);
}

template <typename Test>
bool SourceWriter::anyOpaque(std::string_view piece, Test isWanted) const {
    if (piece.empty()) return false;
    const std::size_t end = offsetOf(piece) + piece.size();
    for (auto token = firstOpaque(offsetOf(piece)); token != opaque_.end() && token->offset < end; ++token) {
        if (isWanted(token->kind)) return true;
    }
    return false;
}

bool SourceWriter::holdsOpaque(std::string_view piece) const {
    return anyOpaque(piece, [](int) { return true; });
}

bool SourceWriter::holdsLineComment(std::string_view piece) const {
    return anyOpaque(piece, [](int kind) { return kind == Cpp::LineComment; });
}

bool SourceWriter::holdsOnlyComments(std::string_view piece) const {
    return holdsOpaque(piece) && !anyOpaque(piece, [](int kind) { return !Cpp::isComment(kind); });
}

bool SourceWriter::holdsOnlyBlockComments(std::string_view piece) const {
    return holdsOpaque(piece) && !anyOpaque(piece, [](int kind) { return kind != Cpp::BlockComment; });
}

int SourceWriter::nextColumn() const { return columnToIndentFrom(*out_); }

void SourceWriter::write(std::string_view piece) {
    if (piece.empty()) return;
    std::size_t place = offsetOf(piece);
    const std::size_t end = place + piece.size();
    bool mayOpenRegion = true;
    for (auto token = firstOpaque(place); token != opaque_.end() && token->offset < end; ++token) {
        const std::size_t tokenStart = std::max<std::size_t>(token->offset, place);
        const std::size_t tokenEnd = std::min<std::size_t>(std::size_t{token->offset} + token->length, end);
        const std::string_view before = text_.substr(place, tokenStart - place);
        const std::string_view text = text_.substr(tokenStart, tokenEnd - tokenStart);
        if (mayOpenRegion && tokenStart == token->offset) {
            const std::optional<OpenRegion> region = OpenRegion::openedBy(tokenAt(*token), trivia_.markers());
            const std::size_t regionEnd =
                region ? endOfRegion(*region, token, end) : endOfUnreadBlock(tokenStart, end);
            if (regionEnd > 0) {
                trivia_.writeRegion(before, text_.substr(tokenStart, regionEnd - tokenStart), token->kind, *out_);
                while (token + 1 != opaque_.end() && token[1].offset < regionEnd) ++token;
                place = regionEnd;
                continue;
            }
            mayOpenRegion = !region;  // nor does another end where one does not
        }
        if (token->kind == Cpp::Directive && tokenStart == token->offset) {
            const std::string_view ahead = trimRight(before);
            out_->write(ahead);
            trivia_.writeDirective(before.substr(ahead.size()), text, *out_);
        } else {
            writeText(before);
            if (Cpp::isComment(token->kind) && tokenStart == token->offset) {
                trivia_.writeComment(text, *out_);
            } else {
                writeLiteral(text, *out_);
            }
        }
        place = tokenEnd;
    }
    writeText(text_.substr(place, end - place));
}

// Of the region that the token opens, where another in front of `end` closes it; else 0.
std::size_t SourceWriter::endOfRegion(const OpenRegion& region, Cpp::OpaqueTokens::const_iterator first,
                                      std::size_t end) const {
    int depth = 1;
    for (auto token = first + 1; token != opaque_.end() && token->offset < end; ++token) {
        depth += region.step(tokenAt(*token));
        if (depth == 0) return std::min<std::size_t>(std::size_t{token->offset} + token->length, end);
    }
    return 0;
}

// Of the one that begins there, where it ends no further behind; else 0.
std::size_t SourceWriter::endOfUnreadBlock(std::size_t start, std::size_t end) const {
    if (!unreadBlocks_) return 0;
    const auto block = std::ranges::lower_bound(*unreadBlocks_, start, {}, &KeptRegion::start);
    return block != unreadBlocks_->end() && block->start == start && block->end <= end ? block->end : 0;
}

Trn::Token SourceWriter::tokenAt(const Cpp::OpaqueToken& opaque) const {
    Trn::Token token;
    token.kind = opaque.kind;
    token.text = text_.substr(opaque.offset, opaque.length);
    return token;
}

// A text without opaque tokens. Where lines are kept, a line that goes on with what stands on the one in front of it
// stays as far behind that as it is.
void SourceWriter::writeText(std::string_view text) {
    if (log_) log_->copied(text);
    const bool movesLines = trivia_.keepsLines() && !out_->keepLeadingSpace();
    for (std::size_t start = 0; movesLines && text.size() > 1;) {
        const std::size_t lineFeed = text.find('\n', start);
        if (lineFeed == std::string_view::npos) break;
        const std::size_t next = kWhitespace.skipIn(text, lineFeed);
        if (next == text.size()) break;
        start = next;
        const std::string_view front = trimRight(text.substr(0, lineFeed));
        if (front.empty() || !isContinued(front.back(), text[next])) continue;
        out_->write(front);
        const int step = trivia_.columnOfSourceLine(text.substr(next)) -
                         trivia_.columnOfSourceLine(front.substr(front.size() - 1));
        const int column = std::clamp(textColumnOf(*out_) + step, 0, kRightmostIndent);
        const std::string_view blanks = text.substr(lineFeed, next - lineFeed);
        out_->write(withBlankLines({}, blanks));
        startLineAt(*out_, column);
        text.remove_prefix(next);
        start = 0;
    }
    out_->write(text);
}

void SourceWriter::writeProtected(std::string_view piece) {
    while (!piece.empty()) {
        const std::size_t lineFeed = piece.find('\n');
        const std::size_t length = lineFeed == std::string_view::npos ? piece.size() : lineFeed + 1;
        writeProtectedLine(piece.substr(0, length));
        piece.remove_prefix(length);
    }
}

void SourceWriter::writeProtectedLine(std::string_view line) {
    const std::size_t start = offsetOf(line);
    const auto token = firstOpaque(start);
    const bool startsInToken = token != opaque_.end() && token->offset < start;
    const bool staysInPlace =
        startsInToken &&
        (!Cpp::isTrivia(token->kind) ||
         (token->kind == Cpp::Directive && (splicesTokens(text_.substr(0, start), line) ||
                                            continuesLiteral(text_.substr(token->offset, token->length)))));
    if (!staysInPlace && out_->column() == 0 && !out_->keepLeadingSpace()) {
        const std::string_view text = trimLeft(line);
        line = text.empty() ? line.substr(line.size() - (line.ends_with('\n') ? 1 : 0)) : text;
        if (!text.empty()) out_->startLine();
    }
    writeRendered(line, *out_);
}

// Whether the tokens around the gap would be read as one with nothing between them.
bool SourceWriter::wouldJoin(std::string_view gap) const {
    constexpr std::size_t longestNeighbour = 2;
    const std::size_t start = offsetOf(gap);
    const std::size_t end = start + gap.size();
    if (end >= text_.size()) return false;
    const std::size_t left = std::min(start, longestNeighbour);
    return Cpp::wouldJoin(text_.substr(start - left, left), text_.substr(end, longestNeighbour));
}

// What is written in place of `whitespace`, the start or the end of a gap: a line end, if what stands in
// front of it would go on behind any other white space.
WantedText SourceWriter::asLastNeeds(std::string_view gap, std::string_view whitespace,
                                     const WantedText& wanted) const {
    if (gap.empty() || wanted.hasLineFeed()) return wanted;
    const bool keepsAnyLineEnd = offsetOf(gap) == lineEndPlace_;
    if ((keepsAnyLineEnd ? gap : whitespace).find('\n') == std::string_view::npos) return wanted;
    return keepsAnyLineEnd || isInDirective(offsetOf(whitespace)) ? kLineFeed : wanted;
}

std::string_view SourceWriter::writeDirectiveEnd(std::string_view gap) {
    if (gap.find('\n') == std::string_view::npos || !isInDirective(offsetOf(gap))) return gap;
    std::string_view rest = gap;
    while (!isLineBreak(leadingBlanks(rest))) {
        rest = trimLeft(rest);
        const auto comment = firstOpaque(offsetOf(rest));
        if (rest.empty() || comment == opaque_.end() || comment->offset != offsetOf(rest)) return gap;
        rest.remove_prefix(std::min<std::size_t>(comment->length, rest.size()));
    }
    write(gap.substr(0, gap.size() - rest.size()));
    out_->write("\n");
    return trimLeft(rest);
}

// Whether a directive is still to end behind the comments in front of this place.
bool SourceWriter::isInDirective(std::size_t place) const {
    for (auto token = firstOpaque(place); token != opaque_.begin();) {
        --token;
        const std::size_t end = std::size_t{token->offset} + token->length;
        const std::string_view between = text_.substr(end, place - end);
        if (!isAllWhitespace(between) || between.find('\n') != std::string_view::npos) return false;
        if (token->kind != Cpp::BlockComment) return token->kind == Cpp::Directive && text_[end - 1] != '\n';
        place = token->offset;
    }
    return false;
}

bool SourceWriter::startsDirectiveBehind(std::string_view gap) const {
    return isLineBreak(trailingBlanks(gap)) && isBeforeDirective();
}

// Whether a directive comes next, behind comments on its line or none.
bool SourceWriter::isBeforeDirective() const {
    if (peek() != '#' && peek() != '/') return false;
    auto token = firstOpaque(in_.offset());
    if (token == opaque_.end() || token->offset != in_.offset()) return false;
    return endOfDirectiveAhead(text_,
                               [&] { return token != opaque_.end() ? *token++ : Cpp::OpaqueToken{}; }) > 0;
}

// What is written in place of a gap of white space: two tokens stay apart, and nothing stands in front of a line end
// that a directive needs.
WantedText SourceWriter::asNextNeeds(std::string_view gap, const WantedText& wanted) const {
    if (wanted.text().empty() && !gap.empty() && wouldJoin(gap)) return kBlank;
    const bool losesLineEnd = gap.find('\n') != std::string_view::npos && !wanted.hasLineFeed();
    if (!losesLineEnd || !isBeforeDirective()) return wanted;
    return out_->lineHasText() ? kLineFeed : kNothing;
}

// Where the gap, whose white space has been replaced, ends at a directive that keeps its place: the white space in
// front of that on its line.
void SourceWriter::keepDirectivePlace(std::string_view gap) {
    const std::size_t lineFeed = gap.rfind('\n');
    if (peek() != '#' || lineFeed == std::string_view::npos || !trivia_.keepsDirectivePlaces()) return;
    if (out_->lineHasText()) out_->write("\n");
    if (out_->column() == 0) writeRendered(gap.substr(lineFeed + 1), *out_);
}

bool SourceWriter::followsJoinedLiteral() const {
    const char last = peekBehind();
    const char next = peek();
    return (last == '"' || last == '\'') && !isWhitespace(next) && Cpp::wouldJoin({&last, 1}, {&next, 1});
}

void SourceWriter::leave(std::string_view whitespace, const WantedText& wanted) {
    if (log_) log_->left(whitespace, wanted);
}

void SourceWriter::measure(KeyId key, std::string_view piece, int value) {
    if (log_) log_->measured(key, piece, value);
}

void SourceWriter::replace(std::string_view whitespace, const WantedText& wanted) {
    if (log_) log_->decided(whitespace, wanted);
    out_->writeVerbatim(wanted.present ? wanted.text() : whitespace);
}

void SourceWriter::writeMerged(std::string_view gap, WantedText wanted) {
    if (!wanted.present && !log_) return write(gap);
    // Most gaps are as they are to be.
    if (!log_ && gap == " " && wanted.text() == gap) return static_cast<void>(out_->writeVerbatim(gap));
    const std::string_view blanks = trailingBlanks(gap);
    if (!wanted.present || followsJoinedLiteral()) {
        write(gap);
        leave(blanks, wanted.present ? kAsInInput : wanted);
        return;
    }
    if (trivia_.keepsColumns() && wanted.text() == " " && isColumnGap(blanks)) {
        wanted = WantedText(blanks, Keys::KEEP_COLUMNS);
    }
    wanted = asLastNeeds(gap, blanks, wanted);
    if (isAllWhitespace(gap)) {
        replace(gap, asNextNeeds(gap, wanted));
        keepDirectivePlace(gap);
        return;
    }
    const MergedGap merged = mergedGap(gap, wanted.text());
    write(merged.kept);
    replace(blanks, wanted.with(merged.added));
}

void SourceWriter::writePrepended(std::string_view gap, const WantedText& wanted) {
    leave(leadingBlanks(gap), wanted);
    putPrepended(gap, wanted);
}

void SourceWriter::putPrepended(std::string_view gap, const WantedText& asked) {
    const WantedText wanted = asLastNeeds(gap, leadingBlanks(gap), asked);
    if (isAllWhitespace(gap)) {
        out_->write(asNextNeeds(gap, wanted).text());
        keepDirectivePlace(gap);
        return;
    }
    const PrependedGap prepended = prependedGap(gap);
    write(prepended.ahead);
    out_->write(wanted.text());
    write(prepended.behind);
}

}  // namespace Tessel
