// What the ends of lines end: comments, directives, and the backslashes that splice lines.
#include <cstring>

#include "cpp/characters.h"
#include "cpp/lexer.h"
#include "cpp/token_kind.h"
#include "textstream/char_set.h"

namespace Cpp {

namespace {

// What may end a directive, or decide whether something does.
constexpr Zelmor::CharSet kTelling("\n/\"'\\");

}  // namespace

// Whether only a backslash and blanks stand in front of the line feed, so that the line goes on behind it.
bool Lexer::isContinued(std::size_t lineFeed, std::size_t start) const {
    std::size_t place = lineFeed;
    while (place > start && isSpace(text_[place - 1]) && text_[place - 1] != '\n') --place;
    return place > start && text_[place - 1] == '\\';
}

Trn::Token Lexer::scanLineComment() {
    const Token token = begin();
    std::size_t lineFeed = text_.find('\n', place_);
    while (lineFeed != std::string_view::npos && isContinued(lineFeed, place_)) {
        lineFeed = text_.find('\n', lineFeed + 1);
    }
    const std::size_t end = lineFeed == std::string_view::npos ? text_.size() : lineFeed + 1;
    countLines(place_, end);
    place_ = end;
    return finish(token, LineComment);
}

// The place behind the "*/" of the comment that starts at `start`, or the end of the text.
std::size_t Lexer::blockCommentEnd(std::size_t start) const {
    constexpr std::size_t delimiter = 2;
    const std::size_t close = text_.find("*/", start + delimiter);
    return close == std::string_view::npos ? text_.size() : close + delimiter;
}

// Whether only blanks stand between the backslash and the end of its line.
bool Lexer::startsSplice(std::size_t backslash) const {
    std::size_t place = backslash + 1;
    while (place < text_.size() && isSpace(text_[place]) && text_[place] != '\n') ++place;
    return place < text_.size() && text_[place] == '\n';
}

Trn::Token Lexer::scanSplice() {
    const Token token = begin();
    const std::size_t end = text_.find('\n', place_) + 1;
    countLines(place_, end);
    place_ = end;
    return finish(token, LineComment);
}

Trn::Token Lexer::scanBlockComment() {
    const Token token = begin();
    const std::size_t end = blockCommentEnd(place_);
    countLines(place_, end);
    place_ = end;
    return finish(token, BlockComment);
}

// The quote that closes the literal opened at `quote` on the same line, or npos: text such as an apostrophe
// in #error opens none.
std::size_t Lexer::closingQuote(std::size_t quote) const {
    for (std::size_t place = quote + 1; place < text_.size() && text_[place] != '\n'; ++place) {
        if (text_[place] == '\\') {
            ++place;
        } else if (text_[place] == text_[quote]) {
            return place;
        }
    }
    return std::string_view::npos;
}

// Where the directive goes on behind the comment that starts here; npos when nothing of it follows.
std::size_t Lexer::directiveGoesOn(std::size_t comment) const {
    std::size_t place = blockCommentEnd(comment);
    while (place < text_.size() && text_[place] != '\n') {
        if (text_[place] == '/' && charAt(place + 1) == '/') break;
        if (text_[place] == '/' && charAt(place + 1) == '*') {
            place = blockCommentEnd(place);
        } else if (isSpace(text_[place])) {
            ++place;
        } else {
            return place;
        }
    }
    return std::string_view::npos;
}

// Whether a splice of the directive stands in front of the line: a directive that ended with it would go on behind it.
bool Lexer::startsSplicedLine(std::size_t place, std::size_t directiveStart) const {
    while (place > directiveStart && isSpace(text_[place - 1]) && text_[place - 1] != '\n') --place;
    return place > directiveStart && text_[place - 1] == '\n';
}

Trn::Token Lexer::scanDirective() {
    const Token token = begin();
    const std::size_t start = place_;
    std::size_t place = start + 1;
    std::size_t goesOn = start;  // the directive is known to reach here
    while ((place = kTelling.findIn(text_, place)) < text_.size()) {
        const char c = text_[place];
        if (c == '\n') {
            ++place;
            if (!isContinued(place - 1, start)) break;
        } else if (c == '/' && charAt(place + 1) == '/') {
            break;
        } else if (c == '/' && charAt(place + 1) == '*') {
            const std::size_t end = blockCommentEnd(place);
            const bool isOnOneLine = std::memchr(text_.data() + place, '\n', end - place) == nullptr;
            if (!isOnOneLine && place >= goesOn && !startsSplicedLine(place, start)) {
                goesOn = directiveGoesOn(place);
                if (goesOn == std::string_view::npos) break;
            }
            place = end;
        } else if (c == '"' || c == '\'') {
            const std::size_t close = closingQuote(place);
            place = close == std::string_view::npos ? place + 1 : close + 1;
        } else {
            place += c == '\\' && place + 1 < text_.size() && !isSpace(text_[place + 1]) ? 2 : 1;
        }
    }
    countLines(start, place);
    place_ = place;
    return finish(token, Directive);
}

}  // namespace Cpp
