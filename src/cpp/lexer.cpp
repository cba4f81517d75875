#include "cpp/lexer.h"

#include <algorithm>
#include <cstring>
#include <istream>
#include <ostream>
#include <utility>

#include "cpp/characters.h"
#include "cpp/keyword_table.h"
#include "cpp/token_kind.h"

namespace Cpp {

namespace {

constexpr std::size_t kScopeLength = 2;  // of "::"

struct Operator {
    int kind = Unknown;
    std::size_t length = 0;
};

// The longest operator at the front of `text`; of length 0 when there is none.
Operator matchOperator(std::string_view text) {
    const char second = text.size() > 1 ? text[1] : '\0';
    const char third = text.size() > 2 ? text[2] : '\0';
    const auto one = [](int kind) { return Operator{kind, 1}; };
    const auto two = [](int kind) { return Operator{kind, 2}; };
    const auto three = [](int kind) { return Operator{kind, 3}; };
    switch (text.front()) {
        case ';':
            return one(Semicolon);
        case ':':
            return one(Colon);
        case ',':
            return one(Comma);
        case '(':
            return one(OpenParen);
        case ')':
            return one(CloseParen);
        case '{':
            return one(OpenBrace);
        case '}':
            return one(CloseBrace);
        case '[':
            return one(OpenBracket);
        case ']':
            return one(CloseBracket);
        case '?':
            return one(Question);
        case '~':
            return one(Tilde);
        case '!':
            return second == '=' ? two(NotEqual) : one(Exclamation);
        case '%':
            return second == '=' ? two(PercentAssign) : one(Percent);
        case '*':
            return second == '=' ? two(AsteriskAssign) : one(Asterisk);
        case '/':
            return second == '=' ? two(SlashAssign) : one(Slash);
        case '=':
            return second == '=' ? two(Equal) : one(Assign);
        case '^':
            return second == '=' ? two(CaretAssign) : one(Caret);
        case '.':
            return second == '*' ? two(DotAsterisk) : one(Dot);
        case '&':
            if (second == '&') return two(LogicalAnd);
            return second == '=' ? two(AmpersandAssign) : one(Ampersand);
        case '|':
            if (second == '|') return two(LogicalOr);
            return second == '=' ? two(BarAssign) : one(Bar);
        case '+':
            if (second == '+') return two(Increment);
            return second == '=' ? two(PlusAssign) : one(Plus);
        case '-':
            if (second == '-') return two(Decrement);
            if (second == '=') return two(MinusAssign);
            if (second == '>') return third == '*' ? three(ArrowAsterisk) : two(Arrow);
            return one(Minus);
        case '<':
            if (second == '<') return third == '=' ? three(ShiftLeftAssign) : two(ShiftLeft);
            if (second == '=' && third == '>') return three(LessEqual);
            return second == '=' ? two(LessEqual) : one(Less);
        case '>':
            if (second == '>') return third == '=' ? three(ShiftRightAssign) : two(ShiftRight);
            return second == '=' ? two(GreaterEqual) : one(Greater);
        default:
            return {};
    }
}

constexpr bool isRawPrefix(std::string_view word) {
    return word == "R" || word == "LR" || word == "uR" || word == "UR" || word == "u8R";
}

constexpr bool isLiteralPrefix(std::string_view word) {
    return word == "L" || word == "u" || word == "U" || word == "u8";
}

}  // namespace

Lexer::Lexer(std::istream& source)
    : ownText_(std::make_unique<Zelmor::TextDocument>(Zelmor::readAll(source))), text_(ownText_->text()) {}

Lexer::Lexer(std::string_view text) : text_(text) {}

Lexer::Lexer(std::string_view text, OpaqueTokens& opaque) : text_(text), opaque_(&opaque) {}

void Lexer::startLine(std::size_t place) {
    ++line_;
    previousLineStart_ = lineStart_;
    lineStart_ = place;
}

// Counts the line feeds of [first, last), which has been taken.
void Lexer::countLines(std::size_t first, std::size_t last) {
    while (first < last) {
        const void* found = std::memchr(text_.data() + first, '\n', last - first);
        if (!found) return;
        first = static_cast<std::size_t>(static_cast<const char*>(found) - text_.data()) + 1;
        startLine(first);
    }
}

Trn::Position Lexer::positionOf(std::size_t place) const {
    return {line_, static_cast<std::uint32_t>(place - lineStart_)};
}

void Lexer::printPosition(std::ostream& out) const {
    const std::size_t lastColumn = line_ > 1 ? lineStart_ - previousLineStart_ - 1 : 0;
    out << "line:\t" << line_ << "\tcol:\t" << place_ - lineStart_ << "\tlastlinecol:\t" << lastColumn
        << '\n';
}

// A token that begins here; its first character is not a line feed.
Trn::Token Lexer::begin() const {
    Token token;
    token.start = positionOf(place_ + 1);
    token.offset = static_cast<std::uint32_t>(place_);
    return token;
}

// Ends the token at the current place. Lines that it runs over are counted here.
Trn::Token Lexer::finish(Token token, int kind) {
    token.kind = kind;
    token.length = static_cast<std::uint32_t>(place_ - token.offset);
    token.text = text_.substr(token.offset, token.length);
    token.end = positionOf(place_);
    if (opaque_) recordOpaque(token);
    return token;
}

void Lexer::recordOpaque(const Token& token) {
    switch (token.kind) {
        case Directive:
        case LineComment:
        case BlockComment:
        case Unknown:
            break;
        case CharLiteral:
        case StringLiteral:
            if (std::none_of(token.text.begin(), token.text.end(), isSpace)) return;
            break;
        case Identifier:
            // White space behind a "::" may change, but not a splice.
            if (token.text.find('\\') == std::string_view::npos) return;
            break;
        default:
            return;
    }
    opaque_->push_back({token.offset, token.length, token.kind});
}

bool Lexer::skipWhitespace() {
    while (place_ < text_.size()) {
        const char c = text_[place_];
        if (!isSpace(c)) return true;
        ++place_;
        if (c == '\n') startLine(place_);
    }
    return false;
}

bool Lexer::startsDestructor(std::size_t place) const {
    return charAt(place) == '~' && isLetter(charAt(place + 1));
}

bool Lexer::startsName() const {
    const char c = text_[place_];
    return isNameStart(c) || (c == ':' && charAt(place_ + 1) == ':') || startsDestructor(place_);
}

Trn::Token Lexer::nextToken() {
    if (pending_.kind != Trn::kEndKind) return std::exchange(pending_, Token{});
    while (skipWhitespace()) {
        const char c = text_[place_];
        if (startsName()) return scanName();
        if (isDigit(c)) return scanNumber();
        if (c == '"') return scanString(place_);
        if (c == '\'') return scanCharacter(place_);
        if (c == '#') return scanDirective();
        if (c == '/' && charAt(place_ + 1) == '/') return scanLineComment();
        if (c == '/' && charAt(place_ + 1) == '*') return scanBlockComment();
        if (c == '\\' && startsSplice(place_)) return scanSplice();
        const Operator found = matchOperator(text_.substr(place_, 3));
        if (found.length > 0) return scanOperator(found.kind, found.length);
        ++place_;
    }
    Token end;
    end.start = end.end = positionOf(place_);
    end.offset = static_cast<std::uint32_t>(place_);
    return end;
}

Trn::Token Lexer::scanOperator(int kind, std::size_t length) {
    const Token token = begin();
    place_ += length;
    return finish(token, kind);
}

// Names, with their qualification where no white space stands in front of a "::".
Trn::Token Lexer::scanName() {
    Token token = begin();
    std::string joined;          // the text, once white space behind a "::" has been dropped from it
    std::size_t taken = place_;  // up to where `joined` holds the text
    std::size_t lastScope = std::string_view::npos;
    if (text_[place_] == '~') ++place_;
    while (place_ < text_.size()) {
        if (isNamePart(text_[place_])) {
            ++place_;
            continue;
        }
        if (text_[place_] == '\\' && charAt(place_ + 1) == '\n' && isNamePart(charAt(place_ + 2))) {
            place_ += 2;
            startLine(place_);
            continue;
        }
        if (text_[place_] != ':' || charAt(place_ + 1) != ':') break;
        lastScope = place_;
        place_ += kScopeLength;
        std::size_t next = place_;
        while (isSpace(charAt(next)) && next < text_.size()) ++next;
        if (!isNameStart(charAt(next)) && charAt(next) != '~') break;
        if (next > place_) {
            joined += text_.substr(taken, place_ - taken);
            taken = next;
            countLines(place_, next);
        }
        place_ = next + (charAt(next) == '~' ? 1 : 0);
    }
    const std::string_view word = text_.substr(token.offset, place_ - token.offset);
    const char next = charAt(place_);
    if (next == '"' && isRawPrefix(word)) return scanPrefixedLiteral(place_, true);
    if ((next == '"' || next == '\'') && isLiteralPrefix(word)) return scanPrefixedLiteral(place_, false);

    token = finish(token, lastScope == std::string_view::npos ? keywordKind(word) : int{Identifier});
    if (lastScope != std::string_view::npos) {
        std::size_t component = lastScope + kScopeLength;
        while (component < place_ && isSpace(text_[component])) ++component;
        if (isScopedOperatorWord(text_.substr(component, place_ - component))) {
            return splitScopedOperator(token, lastScope);
        }
    }
    if (taken != token.offset) {
        joined += text_.substr(taken, place_ - taken);
        token.text = ownTexts_.emplace_back(std::move(joined));
    }
    if (token.kind == Identifier) token.valueType = Trn::ValueType::String;
    return token;
}

// `A::operator` is a name, delivered now, and the keyword with the "::" in front, delivered next.
Trn::Token Lexer::splitScopedOperator(Token name, std::size_t scope) {
    const std::size_t component = text_.find_last_of(": \t\n\v\f\r", place_ - 1) + 1;
    pending_ = name;
    pending_.kind = keywordKind(text_.substr(component, place_ - component));
    pending_.offset = static_cast<std::uint32_t>(scope);
    pending_.length = static_cast<std::uint32_t>(place_ - scope);
    pending_.text = text_.substr(scope, pending_.length);
    if (component != scope + kScopeLength) {
        pending_.text =
            ownTexts_.emplace_back("::" + std::string(text_.substr(component, place_ - component)));
    }
    // The "::" stands on the line of its last component, or on an earlier one when white space follows it.
    const auto breaks = std::count(text_.begin() + static_cast<std::ptrdiff_t>(scope),
                                   text_.begin() + static_cast<std::ptrdiff_t>(component), '\n');
    const std::size_t scopeLine = breaks == 0 ? lineStart_ : text_.substr(0, scope).rfind('\n') + 1;
    const Position beforeScope{line_ - static_cast<std::uint32_t>(breaks),
                               static_cast<std::uint32_t>(scope - scopeLine)};
    pending_.start = {beforeScope.line, beforeScope.column + 1};

    name.kind = Identifier;
    name.end = beforeScope;
    name.length = static_cast<std::uint32_t>(scope) - name.offset;
    name.text = text_.substr(name.offset, name.length);
    if (std::any_of(name.text.begin(), name.text.end(), isSpace)) {
        std::string joined(name.text);
        joined.erase(std::remove_if(joined.begin(), joined.end(), isSpace), joined.end());
        name.text = ownTexts_.emplace_back(std::move(joined));
    }
    name.valueType = Trn::ValueType::String;
    return name;
}

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
    const Token token = begin();
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
    return finish(token, Number);
}

// Whether only a backslash and blanks stand in front of the line feed, so that the line goes on behind it.
bool Lexer::isContinued(std::size_t lineFeed, std::size_t start) const {
    std::size_t place = lineFeed;
    while (place > start && isSpace(text_[place - 1]) && text_[place - 1] != '\n') --place;
    return place > start && text_[place - 1] == '\\';
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

Trn::Token Lexer::scanDirective() {
    const Token token = begin();
    const std::size_t start = place_;
    std::size_t place = start + 1;
    std::size_t goesOn = start;  // the directive is known to reach here
    while (place < text_.size()) {
        const char c = text_[place];
        if (c == '\n') {
            ++place;
            if (!isContinued(place - 1, start)) break;
        } else if (c == '/' && charAt(place + 1) == '/') {
            break;
        } else if (c == '/' && charAt(place + 1) == '*') {
            const std::size_t end = blockCommentEnd(place);
            const bool isOnOneLine = std::memchr(text_.data() + place, '\n', end - place) == nullptr;
            if (!isOnOneLine && place >= goesOn) {
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

OpaqueTokens opaqueTokensOf(std::string_view text) {
    OpaqueTokens opaque;
    Lexer lexer(text, opaque);
    while (lexer.nextToken().kind != Trn::kEndKind) {
    }
    return opaque;
}

}  // namespace Cpp
