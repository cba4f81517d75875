#include "engine/line_ends.h"

#include <algorithm>

#include "cpp/token_kind.h"
#include "cpp/token_sets.h"
#include "engine/gap.h"

namespace Tessel {

namespace {

std::string_view withoutBlanksAtEnd(std::string_view text) {
    return text.substr(0, kBlanks.skipBackIn(text));
}

bool isSplice(std::string_view comment) { return comment.starts_with('\\'); }

}  // namespace

LineEnds::LineEnds(const ExtensionSettings& settings, const ColumnLayout& columns,
                   std::string_view source, const Cpp::OpaqueTokens& opaque, const KeptRegions& regions,
                   std::string result)
    : settings_(settings),
      source_(source),
      opaque_(opaque),
      given_(std::move(result)),
      result_(given_),
      sides_(source, result_),
      region_(regions.begin()),
      regionsEnd_(regions.end()) {
    if (settings.beforeLineComment.present) comments_.emplace(columns, source, settings);
}

std::string LineEnds::takeText() {
    // Comments may move to the right.
    out_.reserve(result_.size() + result_.size() / 16);
    for (const Cpp::OpaqueToken& token : opaque_) {
        if (isLiteralOnLine(token)) continue;
        passRegions(token.offset);
        if (token.offset >= sides_.sourcePlace()) writeToken(token);
    }
    passRegions(source_.size());
    writeCode(result_.size());
    if (comments_) comments_->finish(out_);
    return std::move(out_);
}

// Most of what is opaque, in which no line ends.
bool LineEnds::isLiteralOnLine(const Cpp::OpaqueToken& token) const {
    const bool isLiteral = token.kind == Cpp::StringLiteral || token.kind == Cpp::CharLiteral;
    return isLiteral && source_.substr(token.offset, token.length).find('\n') == std::string_view::npos;
}

// Copies the regions that begin up to `offset` of the source.
void LineEnds::passRegions(std::size_t offset) {
    for (; region_ != regionsEnd_ && region_->start <= offset; ++region_) {
        if (region_->start < sides_.sourcePlace()) continue;
        sides_.goTo(region_->start);
        writeCode(sides_.resultPlace());
        sides_.passUpTo(region_->end);
        copyTo(kBlanks.skipIn(result_, sides_.resultPlace()));
    }
}

void LineEnds::writeToken(const Cpp::OpaqueToken& token) {
    sides_.goTo(token.offset);
    const std::size_t start = sides_.resultPlace();
    writeCode(start);
    sides_.passUpTo(std::size_t{token.offset} + token.length);
    const std::string_view text = result_.substr(start, sides_.resultPlace() - start);
    if (comments_ && token.kind == Cpp::Directive) addCommentOf(token, start, text);
    if (!Cpp::isComment(token.kind) || isSplice(text)) return copyTo(sides_.resultPlace());
    if (comments_ && token.kind == Cpp::LineComment) comments_->add(out_, token.offset);
    if (comments_ && alignsBlock(text)) comments_->addBlock(out_, token.offset);
    writeComment(text);
    copied_ = sides_.resultPlace();
}

// The comment that ends the directive is part of it, and stays where it is; others may go on with it.
void LineEnds::addCommentOf(const Cpp::OpaqueToken& directive, std::size_t start, std::string_view text) {
    const std::string_view below = source_.substr(std::size_t{directive.offset} + directive.length);
    if (!below.substr(kBlanks.skipIn(below)).starts_with("/*")) return;
    const std::size_t comment = text.find("/*");
    const bool endsDirective = comment != std::string_view::npos && text.find("*/", comment) == text.size() - 2;
    if (!endsDirective || comment == 0 || text.find('\n') != std::string_view::npos) return;
    const std::string_view source = trimRight(source_.substr(directive.offset, directive.length));
    const std::size_t length = text.size() - comment;
    if (!source.ends_with(text.substr(comment))) return;
    copyTo(start + comment);
    comments_->addBlock(out_, directive.offset + source.size() - length);
}

// Whether the comment ends its only line, and may move.
bool LineEnds::alignsBlock(std::string_view comment) const {
    if (!comment.starts_with("/*")) return false;
    const std::size_t end = kBlanks.skipIn(result_, sides_.resultPlace());
    const bool endsLine = end < result_.size() && result_[end] == '\n';
    return endsLine && comment.find('\n') == std::string_view::npos;
}

// What no token is that goes its own way.
void LineEnds::writeCode(std::size_t end) {
    for (std::size_t place = copied_; place < end;) {
        // What stands behind the end is looked at when its time comes: the line may be long.
        const std::size_t lineFeed = result_.substr(0, end).find('\n', place);
        if (lineFeed == std::string_view::npos) break;
        std::size_t gapStart = lineFeed;
        while (gapStart > copied_ && isWhitespace(result_[gapStart - 1])) --gapStart;
        place = lineFeed + 1;
        // Blanks in front of another line end are found from there.
        const bool isInOrder = gapStart == lineFeed && gapStart > 0 && (place >= end || result_[place] != '\n');
        if (isInOrder) continue;
        while (place < end && isWhitespace(result_[place])) ++place;
        copyTo(gapStart);
        writeGap(result_.substr(gapStart, place - gapStart), gapStart > 0 && result_[gapStart - 1] == '\\');
        copied_ = place;
    }
    copyTo(end);
}

// White space that begins lines.
void LineEnds::writeGap(std::string_view gap, bool isSpliced) {
    if (isSpliced) {
        out_ += gap;
        return;
    }
    // The text begins as a line does.
    int lineFeeds = out_.empty() ? 1 : 0;
    for (std::size_t lineFeed = gap.find('\n'); lineFeed != std::string_view::npos; lineFeed = gap.find('\n')) {
        const std::string_view line = gap.substr(0, lineFeed);
        const std::string_view kept = withoutBlanksAtEnd(line);
        gap.remove_prefix(lineFeed + 1);
        // A form feed stands for itself.
        lineFeeds = kept.empty() ? lineFeeds + 1 : 1;
        const bool isTooMany = settings_.mostBlankLines != kAnyNumber && lineFeeds - 1 > settings_.mostBlankLines;
        if (isTooMany) continue;
        out_ += settings_.stripsLineEnds ? kept : line;
        out_ += '\n';
    }
    out_ += gap;
}

void LineEnds::writeComment(std::string_view comment) {
    std::size_t copied = 0;
    for (std::size_t place = 0; settings_.stripsLineEnds; ++place) {
        const std::size_t lineFeed = comment.find('\n', place);
        if (lineFeed == std::string_view::npos) break;
        const std::string_view line = comment.substr(place, lineFeed - place);
        const std::string_view kept = withoutBlanksAtEnd(line);
        if (kept.size() < line.size() && !kept.ends_with('\\')) {
            out_ += comment.substr(copied, place + kept.size() - copied);
            copied = lineFeed;
        }
        place = lineFeed;
    }
    out_ += comment.substr(copied);
}

void LineEnds::copyTo(std::size_t end) {
    if (end <= copied_) return;
    out_ += result_.substr(copied_, end - copied_);
    copied_ = end;
}

}  // namespace Tessel
