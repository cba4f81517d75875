// Numbers, strings and characters.

#include "cpp/characters.h"
#include "cpp/lexer.h"
#include "cpp/token_kind.h"

namespace Cpp {

// A literal whose prefix has been read; `quote` is where its opening quote stands.
Trn::Token Lexer::scanPrefixedLiteral(std::size_t quote, bool isRaw) {
    const std::size_t prefixStart = [&] {
        std::size_t start = quote;
        while (start > 0 && isNamePart(text_[start - 1])) --start;
        return start;
    }();
    place_ = prefixStart;
    if (isRaw) return scanRawString(quote);
    return text_[quote] == '"' ? scanString(quote) : scanCharacter(quote);
}

// A number with whatever letters follow its digits: what is no valid number is for the compiler to say.
Trn::Token Lexer::scanNumber() {
    Token token = begin();
    const bool isHexadecimal =
        text_[place_] == '0' && (charAt(place_ + 1) == 'x' || charAt(place_ + 1) == 'X');
    const char exponent = isHexadecimal ? 'p' : 'e';
    place_ += isHexadecimal ? 2 : 1;
    bool sawDot = false;
    bool sawExponent = false;
    while (place_ < text_.size()) {
        const char c = text_[place_];
        const char next = charAt(place_ + 1);
        if (isNamePart(c)) {
            ++place_;
            if (!sawExponent && (c | ' ') == exponent) {
                sawExponent = true;
                if (next == '+' || next == '-') ++place_;
            }
        } else if (c == '.' && !sawDot) {
            sawDot = true;
            ++place_;
        } else if (c == '\'' && isNamePart(next)) {
            place_ += 2;
        } else {
            break;
        }
    }
    finishPlain(token, Number);
    return token;
}

Trn::Token Lexer::scanString(std::size_t quote) {
    const Token token = begin();
    std::size_t place = quote + 1;
    bool isTerminated = false;
    while (place < text_.size() && !isTerminated) {
        const char c = text_[place];
        if (c == '\n' && !isContinued(place, quote)) break;
        isTerminated = c == '"';
        place += c == '\\' && place + 1 < text_.size() && text_[place + 1] != '\n' ? 2 : 1;
    }
    countLines(place_, place);
    place_ = place;
    Token literal = finish(token, isTerminated ? StringLiteral : Unknown);
    if (isTerminated) literal.valueType = Trn::ValueType::String;
    return literal;
}

// R"delimiter( ... )delimiter"
Trn::Token Lexer::scanRawString(std::size_t quote) {
    constexpr std::size_t longestDelimiter = 16;
    const std::string_view delimiter =
        text_.substr(quote + 1, text_.substr(quote + 1, longestDelimiter + 1).find_first_of("( )\\\t\v\f\n"));
    const std::size_t open = quote + 1 + delimiter.size();
    if (delimiter.size() > longestDelimiter || charAt(open) != '(') return scanString(quote);
    const Token token = begin();
    const std::string closing = ')' + std::string(delimiter) + '"';
    const std::size_t close = text_.find(closing, open);
    const std::size_t end = close == std::string_view::npos ? text_.size() : close + closing.size();
    countLines(place_, end);
    place_ = end;
    Token literal = finish(token, close == std::string_view::npos ? Unknown : StringLiteral);
    if (literal.kind == StringLiteral) literal.valueType = Trn::ValueType::String;
    return literal;
}

Trn::Token Lexer::scanCharacter(std::size_t quote) {
    const Token token = begin();
    std::size_t place = quote + 1;
    while (place < text_.size() && text_[place] != '\'' && text_[place] != '\n') {
        place += text_[place] == '\\' && place + 1 < text_.size() && text_[place + 1] != '\n' ? 2 : 1;
    }
    place = std::min(place, text_.size());
    const bool isTerminated = place < text_.size() && text_[place] == '\'';
    const bool isEmpty = place == quote + 1;
    place_ = place + (isTerminated ? 1 : 0);
    Token literal = finish(token, isTerminated && !isEmpty ? CharLiteral : Unknown);
    if (literal.kind == CharLiteral) literal.valueType = Trn::ValueType::Character;
    return literal;
}

}  // namespace Cpp
