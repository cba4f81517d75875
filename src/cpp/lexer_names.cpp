// Names, with their qualification, and the prefixes of literals.
#include <algorithm>

#include "cpp/characters.h"
#include "cpp/keyword_table.h"
#include "cpp/lexer.h"
#include "cpp/token_kind.h"

namespace Cpp {

namespace {

constexpr std::size_t kScopeLength = 2;  // of "::"

constexpr bool isRawPrefix(std::string_view word) {
    return word == "R" || word == "LR" || word == "uR" || word == "UR" || word == "u8R";
}

constexpr bool isLiteralPrefix(std::string_view word) {
    return word == "L" || word == "u" || word == "U" || word == "u8";
}

// Whether what looks like a name may be more than the word in front of that character.
constexpr bool mayGoOn(char c) { return c == ':' || c == '\\' || c == '"' || c == '\''; }

}  // namespace

std::size_t Lexer::behindWord(std::size_t place) const {
    while (place < text_.size() && isNamePart(text_[place])) ++place;
    return place;
}

// Most names are one word.
Trn::Token Lexer::scanName() {
    const std::size_t end = behindWord(place_);
    return end < text_.size() && mayGoOn(text_[end]) ? scanQualifiedName() : scanWord(end);
}

Trn::Token Lexer::scanWord(std::size_t end) {
    Token token = begin();
    place_ = end;
    finishPlain(token, keywordKind({text_.data() + token.offset, end - token.offset}));
    if (token.kind == Identifier) token.valueType = Trn::ValueType::String;
    return token;
}

// Names, with their qualification where no white space stands in front of a "::".
Trn::Token Lexer::scanQualifiedName() {
    Token token = begin();
    std::string joined;          // the text, once white space behind a "::" has been dropped from it
    std::size_t taken = place_;  // up to where `joined` holds the text
    std::size_t lastScope = std::string_view::npos;
    if (text_[place_] == '~') ++place_;
    while (place_ < text_.size()) {
        place_ = behindWord(place_);
        if (charAt(place_) == '\\' && charAt(place_ + 1) == '\n' && isNamePart(charAt(place_ + 2))) {
            place_ += 2;
            startLine(place_);
            continue;
        }
        if (charAt(place_) != ':' || charAt(place_ + 1) != ':') break;
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
        token.text = ownTexts_.emplace_front(std::move(joined));
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
            ownTexts_.emplace_front("::" + std::string(text_.substr(component, place_ - component)));
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
        name.text = ownTexts_.emplace_front(std::move(joined));
    }
    name.valueType = Trn::ValueType::String;
    return name;
}

}  // namespace Cpp
