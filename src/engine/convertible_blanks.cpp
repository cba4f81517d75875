#include "engine/convertible_blanks.h"

#include <algorithm>

#include "cpp/characters.h"
#include "engine/gap.h"

namespace Tessel {

namespace {

constexpr std::size_t kCommentDelimiter = 2;

// White space, and the start of what has to be looked at. Most of a text is neither.
constexpr Zelmor::CharSet kTelling(" \t\n\v\f\r/\"'<");

bool isLiteralPrefix(std::string_view word) {
    return word.empty() || word == "L" || word == "u" || word == "U" || word == "u8";
}

bool takesHeaderName(std::string_view word) {
    return word == "include" || word == "include_next" || word == "import" || word == "embed" ||
           word.starts_with("__has_");
}

}  // namespace

std::string_view ConvertibleBlanks::next() {
    while (place_ < text_.size()) {
        const bool startsLine = place_ > 0 && text_[place_ - 1] == '\n';
        const bool isInComment = place_ < commentEnd_;
        if (startsLine || !isInComment) {
            const std::string_view run = takeRun();
            if (!run.empty()) return run;
        }
        if (place_ < commentEnd_) {
            place_ = std::min(endBehind("\n", place_), commentEnd_);
        } else if (place_ < text_.size()) {
            skipFixedText();
        }
    }
    return {};
}

std::string_view ConvertibleBlanks::takeRun() {
    const std::size_t start = place_;
    std::size_t end = start;
    while (end < text_.size() && isWhitespace(text_[end]) && text_[end] != '\n') ++end;
    place_ = end;
    return text_.substr(start, end - start);
}

// A literal, a header name, or text up to where another may start; or the delimiter that opens a comment.
void ConvertibleBlanks::skipFixedText() {
    const std::string_view rest = text_.substr(place_);
    if (!kTelling.holds(rest.front())) {
        place_ += kTelling.findIn(rest);
    } else if (rest.starts_with("/*")) {
        commentEnd_ = endBehind("*/", place_ + kCommentDelimiter);
        place_ += kCommentDelimiter;
    } else if (rest.starts_with("//")) {
        commentEnd_ = text_.size();
        place_ += kCommentDelimiter;
    } else if (rest.front() == '"' || rest.front() == '\'') {
        place_ = literalEnd();
    } else if (rest.front() == '<' && startsHeaderName()) {
        place_ = endBehind(">", place_);
    } else {
        ++place_;
    }
}

// The place behind the literal whose quote stands here.
std::size_t ConvertibleBlanks::literalEnd() const {
    const char quote = text_[place_];
    const std::string_view word = wordBefore(place_);
    const bool isDoubtful = quote == '"' ? word.ends_with('R') : !isLiteralPrefix(word);
    if (isDoubtful) return text_.size();
    std::size_t end = place_ + 1;
    while (end < text_.size() && text_[end] != quote) end += text_[end] == '\\' ? 2 : 1;
    return std::min(end + 1, text_.size());
}

std::string_view ConvertibleBlanks::wordBefore(std::size_t place) const {
    std::size_t start = place;
    while (start > 0 && Cpp::isNamePart(text_[start - 1])) --start;
    return text_.substr(start, place - start);
}

bool ConvertibleBlanks::startsHeaderName() const {
    const std::string_view before = text_.substr(0, place_);
    const std::size_t last = before.find_last_not_of(" \t(");
    return last != std::string_view::npos && takesHeaderName(wordBefore(last + 1));
}

std::size_t ConvertibleBlanks::endBehind(std::string_view closing, std::size_t from) const {
    const std::size_t found = text_.find(closing, from);
    return found == std::string_view::npos ? text_.size() : found + closing.size();
}

}  // namespace Tessel
