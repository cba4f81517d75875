#include "token_compare.h"

#include <algorithm>
#include <cctype>

#include "cpp/lexer.h"
#include "cpp/token_kind.h"

namespace TestSupport {

namespace {

bool isWhite(char c) {
    return std::isspace(static_cast<unsigned char>(c)) != 0;
}

std::string withoutWhite(std::string_view text) {
    std::string kept;
    for (const char c : text) {
        if (!isWhite(c)) kept += c;
    }
    return kept;
}

// The place behind the last character that is not white space.
std::size_t lastStray(std::string_view text) {
    std::size_t place = text.size();
    while (place > 0 && isWhite(text[place - 1])) --place;
    return place;
}

// Takes the white space off the starts and the ends of the lines.
std::string withTrimmedLines(std::string_view text) {
    std::string kept;
    std::string white;
    for (const char c : text) {
        if (c == '\n') {
            kept += '\n';
            white.clear();
        } else if (isWhite(c)) {
            white += c;
        } else {
            const bool startsLine = kept.empty() || kept.back() == '\n';
            if (!startsLine) kept += white;
            white.clear();
            kept += c;
        }
    }
    while (!kept.empty() && kept.back() == '\n') kept.pop_back();
    return kept;
}

// Whether one token may hold both, one behind the other.
bool mayJoin(char before, char after) {
    const auto isAmong = [](std::string_view set, char c) { return set.find(c) != set.npos; };
    const auto isWord = [&](char c) {
        return std::isalnum(static_cast<unsigned char>(c)) != 0 || c < 0 || isAmong("_$.", c);
    };
    const auto isOperator = [&](char c) { return isAmong("+-*/%&|^<>=!:.~", c); };
    const auto isQuote = [&](char c) { return isAmong("\"'", c); };
    if (before == '#') return after == '#';
    if (isWord(before)) return isWord(after) || isQuote(after) || (isAmong("eEpP", before) && isAmong("+-", after));
    return (isOperator(before) && isOperator(after)) || (isQuote(before) && isWord(after));
}

// Parts the tokens around a splice in front of it where they are parted behind it, or are two whatever stands there.
// Blanks may stand in a splice.
std::string partedBeforeSplices(std::string_view text) {
    std::string parted;
    const std::size_t end = lastStray(text);
    for (std::size_t place = 0; place < text.size(); ++place) {
        const std::size_t lineFeed = text[place] == '\\' ? text.find_first_not_of(" \t", place + 1) : text.npos;
        const bool isSplice = lineFeed < text.size() && text[lineFeed] == '\n';
        const std::size_t next = isSplice ? lineFeed + 1 : end;
        if (next < end && place > 0 && (isWhite(text[next]) || !mayJoin(text[place - 1], text[next]))) parted += ' ';
        parted += text[place];
    }
    return parted;
}

// Makes each run of blanks and tabs one blank.
std::string withSingleBlanks(std::string_view text) {
    std::string kept;
    for (const char c : text) {
        const bool isBlank = c == ' ' || c == '\t';
        if (!isBlank || !kept.ends_with(' ')) kept += isBlank ? ' ' : c;
    }
    return kept;
}

// The tokens behind the "#" with a blank in front of each, but for the "(" of a macro that takes parameters. A further
// "#" begins no directive there.
std::string withBlanksBetweenTokens(std::string_view directive) {
    constexpr int behindMacroName = 2;
    std::string kept;
    std::string text(directive.substr(1));
    std::ranges::replace(text, '#', '?');
    Cpp::Lexer lexer(text);
    std::size_t end = 0;
    int place = 0;
    for (Trn::Token token = lexer.nextToken(); token.kind != Cpp::End; token = lexer.nextToken()) {
        const bool opensParameters = place++ == behindMacroName && kept.starts_with(" define") &&
                                     token.kind == Cpp::OpenParen && token.offset == end;
        const bool endsPaste = token.offset == end && directive.substr(end, 2) == "##";
        if (!opensParameters && !endsPaste) kept += ' ';
        kept += directive.substr(token.offset + 1, token.length);
        end = token.offset + token.length;
    }
    return kept;
}

bool holdsCode(std::string_view directive) {
    const std::string text = withoutWhite(directive);
    return text.starts_with("#if") || text.starts_with("#elif") || text.starts_with("#define");
}

bool mayMoveItsLines(const Trn::Token& token) {
    return token.kind == Cpp::Directive || token.kind == Cpp::LineComment || token.kind == Cpp::BlockComment;
}

// A text token by token, with what stands between them.
class Reader {
public:
    explicit Reader(std::string_view text) : text_(text), lexer_(text) {}

    void next() {
        const std::size_t gapStart = token_.offset + token_.length;
        const bool staysFirst = token_.kind == Cpp::BlockComment && isFirst_;
        const bool endedLine = gapStart == 0 || text_[gapStart - 1] == '\n';
        token_ = lexer_.nextToken();
        const std::size_t gapEnd = atEnd() ? text_.size() : token_.offset;
        const std::string_view gap = text_.substr(gapStart, gapEnd - gapStart);
        stray_ = withoutWhite(gap);
        const std::string_view behind = gap.substr(lastStray(gap));
        isFirst_ = (stray_.empty() && (staysFirst || endedLine)) || behind.find('\n') != std::string_view::npos;
        content_ = mayMoveItsLines(token_) ? withTrimmedLines(token_.text) : std::string(token_.text);
        if (token_.kind == Cpp::Directive) {
            content_ = withTrimmedLines(partedBeforeSplices(token_.text));
            content_ = withSingleBlanks(holdsCode(content_) ? withBlanksBetweenTokens(content_) : content_);
        }
    }

    bool atEnd() const { return token_.kind == Cpp::End; }
    bool equals(const Reader& other) const {
        return token_.kind == other.token_.kind && content_ == other.content_ && stray_ == other.stray_;
    }
    // Whether a directive stands first on its line, but for comments; true for other tokens.
    bool startsLine() const { return token_.kind != Cpp::Directive || isFirst_; }
    std::string describe() const {
        if (!stray_.empty()) return "\"" + stray_ + "\" outside of tokens, then \"" + content_ + '"';
        if (atEnd()) return "the end";
        return "\"" + content_ + "\" on line " + std::to_string(token_.start.line);
    }

private:
    std::string_view text_;
    Cpp::Lexer lexer_;
    Trn::Token token_;
    bool isFirst_ = true;
    std::string content_;
    std::string stray_;
};

}  // namespace

std::string tokenDifference(std::string_view before, std::string_view after) {
    Reader expected(before);
    Reader got(after);
    do {
        expected.next();
        got.next();
        if (!expected.equals(got)) return expected.describe() + " became " + got.describe();
        if (expected.startsLine() && !got.startsLine()) return got.describe() + " does not start its line";
    } while (!expected.atEnd());
    return {};
}

}  // namespace TestSupport
