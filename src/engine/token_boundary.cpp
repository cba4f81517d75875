#include "engine/token_boundary.h"

#include <algorithm>
#include <string>
#include <vector>

#include "cpp/lexer.h"
#include "cpp/token_joining.h"
#include "engine/gap.h"

namespace Tessel {

namespace {

// Characters: more than the operators have. What stands behind them joins nothing in front of them.
constexpr std::size_t kMostBehind = 8;

// Of operators that are more than one character long.
constexpr Zelmor::CharSet kOperatorParts("+-*/%&|^<>=!:.~");
constexpr bool isOperatorPart(char c) { return kOperatorParts.holds(c); }

constexpr bool isExponent(char c) {
    return std::string_view("eEpP").find(c) != std::string_view::npos;
}

constexpr bool isSign(char c) {
    return c == '+' || c == '-';
}

// Whether the same token may hold both, one behind the other: an exponent takes a sign in.
constexpr bool belongTogether(char before, char after) {
    return (isWordPart(before) && isWordPart(after)) || (isOperatorPart(before) && isOperatorPart(after)) ||
           (isExponent(before) && isSign(after));
}

// Whether the character in front of `place` belongs to what stands there. The sign of an exponent does.
bool belongsInFront(std::string_view text, std::size_t place) {
    const char before = text[place - 1];
    if (belongTogether(before, text[place])) return true;
    return place > 1 && isSign(before) && isExponent(text[place - 2]) && isWordPart(text[place]);
}

// Whether a word and an operator meet that are never one token, as most do.
bool areApart(const TokenBoundary& boundary) {
    constexpr std::string_view inWords = "~.:";
    const char before = boundary.text[boundary.place - 1];
    const char after = boundary.text[boundary.place];
    if (Cpp::isNamePart(before) && isOperatorPart(after)) {
        return inWords.find(after) == std::string_view::npos && !(isSign(after) && isExponent(before));
    }
    if (!isOperatorPart(before) || !Cpp::isNamePart(after)) return false;
    const char beforeSign = isSign(before) && boundary.place > 1 ? boundary.text[boundary.place - 2] : '\0';
    return inWords.find(before) == std::string_view::npos && !isExponent(beforeSign);
}

// The texts of the tokens of a few characters. The lexer owns some of what it returns.
std::vector<std::string> tokenTexts(std::string_view text) {
    std::vector<std::string> tokens;
    Cpp::Lexer lexer(text);
    for (Trn::Token token = lexer.nextToken(); token.kind != Trn::kEndKind; token = lexer.nextToken()) {
        tokens.emplace_back(token.text);
    }
    return tokens;
}

std::string_view withoutSplices(std::string_view text) {
    while (text.ends_with('\n')) {
        std::string_view line = text.substr(0, text.size() - 1);
        while (!line.empty() && line.back() != '\n' && isWhitespace(line.back())) line.remove_suffix(1);
        if (!line.ends_with('\\')) break;
        text = line.substr(0, line.size() - 1);
    }
    return text;
}

// A comment holds tokens apart, and a splice does not; with literals it depends.
bool allowsBehindOpaque(const TokenBoundary& boundary) {
    const std::string_view before = withoutSplices(boundary.text.substr(0, boundary.place));
    const std::string_view behind = boundary.text.substr(boundary.place);
    const bool startsComment = behind.starts_with("//") || behind.starts_with("/*");
    return before.empty() || before.ends_with('/') || startsComment ||
           !Cpp::wouldJoin(before.substr(before.size() - 1), behind.substr(0, 1));
}

// The word or the operators in front of the place.
std::string leftOf(const TokenBoundary& boundary) {
    const std::string_view text = boundary.text;
    std::size_t first = boundary.place - 1;
    while (first > boundary.tokenStart && belongsInFront(text, first)) --first;
    const std::string_view left = text.substr(first, boundary.place - first);
    if (boundary.number.empty() || boundary.behindNumber > left.size()) return std::string(left);
    return std::string(boundary.number).append(left.substr(left.size() - boundary.behindNumber));
}

// Those behind it, or the start of them. What a literal holds does not matter.
std::string rightOf(const TokenBoundary& boundary) {
    const std::string_view text = boundary.text;
    const char quote = text[boundary.place];
    if (Cpp::isQuote(quote)) return {quote, 'x', quote};
    const std::size_t end = std::min(text.size(), boundary.place + kMostBehind);
    std::size_t last = boundary.place + 1;
    while (last < end && belongTogether(text[last - 1], text[last])) ++last;
    return std::string(text.substr(boundary.place, last - boundary.place));
}

// Lexes both sides with white space in between and without.
bool areSameTokens(const TokenBoundary& boundary) {
    const std::string left = leftOf(boundary);
    const std::string right = rightOf(boundary);
    return tokenTexts(left + right) == tokenTexts(left + ' ' + right);
}

}  // namespace

bool splicesTokens(std::string_view front, std::string_view behind) {
    const std::size_t start = kBlanks.skipIn(behind);
    if (!front.ends_with('\n') || start == behind.size() || behind[start] == '\n') return false;
    const std::string_view line = trimRight(front.substr(0, front.size() - 1));
    if (!line.ends_with('\\') || line.size() < 2) return false;
    const std::string_view before = line.substr(line.size() - 2, 1);
    return belongTogether(before.front(), behind[start]) || Cpp::wouldJoin(before, behind.substr(start));
}

bool holdsSplicedToken(std::string_view directive) {
    for (std::size_t place = directive.find('\n'); place != directive.npos; place = directive.find('\n', place)) {
        ++place;
        const std::string_view behind = directive.substr(place);
        if (!behind.empty() && !isWhitespace(behind.front()) && splicesTokens(directive.substr(0, place), behind)) {
            return true;
        }
    }
    return false;
}

bool allowsWhitespace(const TokenBoundary& boundary) {
    if (boundary.place == 0) return true;
    const char before = boundary.text[boundary.place - 1];
    const char after = boundary.text[boundary.place];
    if (boundary.place == boundary.codeStart && !isWordPart(before)) return allowsBehindOpaque(boundary);
    if (areApart(boundary)) return true;
    const bool isWordEnd = isWordPart(before) && (isOperatorPart(after) || Cpp::isQuote(after));
    const bool isOperatorEnd = isOperatorPart(before) && (isWordPart(after) || isOperatorPart(after));
    if (isWordEnd || isOperatorEnd) return areSameTokens(boundary);
    return !Cpp::wouldJoin({&before, 1}, {&after, 1});
}

namespace {

// Where the prefix of a raw string begins at the end of a text; npos where there is none.
std::size_t rawPrefixStart(std::string_view text) {
    constexpr std::size_t longest = 3;
    if (!text.ends_with('R')) return std::string_view::npos;
    std::size_t start = text.size() - 1;
    while (start > 0 && text.size() - start <= longest && Cpp::isNamePart(text[start - 1])) --start;
    const std::string_view prefix = text.substr(start, text.size() - 1 - start);
    const bool isRaw = prefix.empty() || prefix == "L" || prefix == "u" || prefix == "U" || prefix == "u8";
    return isRaw ? start : std::string_view::npos;
}

}  // namespace

bool splitsRawString(const TokenBoundary& boundary) {
    constexpr std::size_t longest = 20;  // characters on either side
    constexpr std::string_view ends = "() \\\t\v\f\n";
    const std::size_t start = boundary.place - std::min(boundary.place, longest);
    const std::string_view around = boundary.text.substr(start, 2 * longest);
    const std::size_t end = around.find_first_of(ends, boundary.place - start);
    if (end == std::string_view::npos || around[end] != '(') return false;
    const std::string_view inFront = around.substr(0, end);
    for (std::size_t quote = inFront.rfind('"'); quote != std::string_view::npos && quote > 0;
         quote = inFront.rfind('"', quote - 1)) {
        const bool isDelimiter = inFront.find_first_of(ends, quote) == std::string_view::npos;
        // White space in front of the prefix parts nothing.
        const bool startsInFront = rawPrefixStart(inFront.substr(0, quote)) < boundary.place - start;
        if (isDelimiter && startsInFront) return true;
    }
    return false;
}

bool endsWithRawPrefix(std::string_view text) { return rawPrefixStart(text) != std::string_view::npos; }

}  // namespace Tessel
