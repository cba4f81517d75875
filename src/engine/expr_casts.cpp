#include "engine/expr_casts.h"

#include <utility>

#include "cpp/token_kind.h"
#include "cpp/token_sets.h"
#include "cpp/words.h"
#include "engine/operator_kinds.h"

namespace Tessel {

namespace {

// Tokens; a group that holds more is no cast that anybody writes.
constexpr std::size_t kLongestCast = 64;

bool isTypeWord(const ExprToken& token) {
    const int kind = token.kind;
    return token.role == ExprRole::Mark || Cpp::isBuiltinTypeWord(kind) || Cpp::isQualifier(kind) ||
           kind == Cpp::KeywordEnum || Cpp::isClassKey(kind);
}

// `(T* name)`, `(int name)`: whether the last word is that of a parameter, as no cast has one. Macros stand there too.
bool declaresName(const ExprTokens& tokens, std::size_t type, std::size_t last) {
    if (type == kNoToken || tokens[last].kind != Cpp::Identifier) return false;
    const std::string_view name = tokens[last].text();
    const bool isMacro = name.starts_with('_') || Cpp::isUpperCase(name);
    return !isMacro && (tokens[type].role == ExprRole::Mark || isBuiltinTypeKeyword(tokens[type].kind));
}

std::size_t placeBefore(const ExprTokens& tokens, std::size_t place) {
    while (place > 0) {
        if (tokens[--place].role != ExprRole::Trivia) return place;
    }
    return kNoToken;
}

// Whether what follows the token is an operand, so that a "(" there opens a cast or a part of an expression.
bool awaitsOperand(const ExprToken& token) {
    switch (token.role) {
        case ExprRole::BinaryOperator:
        case ExprRole::UnaryOperator:
        case ExprRole::GroupOpen:
        case ExprRole::BraceOpen:
        case ExprRole::Separator: return true;
        default: break;
    }
    const int kind = token.kind;
    return kind == Cpp::KeywordReturn || kind == Cpp::KeywordCase || kind == Cpp::KeywordDelete ||
           kind == Cpp::OpenBrace;
}

bool startsOperand(const ExprToken& token) {
    const int kind = token.kind;
    if (kind == Cpp::Identifier) return Cpp::infixKind(token.text()) == Trn::kEndKind;  // (a) and b
    return isValueKind(kind) || kind == Cpp::KeywordSizeof || kind == Cpp::KeywordNew || isCastKeyword(kind);
}

}  // namespace

bool isNamedAsType(const ExprTokens& tokens, std::size_t open) {
    const std::size_t name = nextPlace(tokens, open);
    constexpr std::string_view ending = "_t";
    const std::string_view text = name < tokens.size() ? tokens[name].text() : std::string_view();
    return nextPlace(tokens, name) == tokens[open].partner && text.size() > ending.size() && text.ends_with(ending);
}

Parenthesised contentsOf(const ExprTokens& tokens, std::size_t open) {
    const std::size_t close = tokens[open].partner;
    bool isNames = true;
    bool sawTypeWord = false;
    int count = 0;
    std::size_t last = kNoToken;
    std::size_t second = kNoToken;  // the one in front of the last
    for (std::size_t inside = nextPlace(tokens, open); inside < close; inside = nextPlace(tokens, inside)) {
        const ExprToken& token = tokens[inside];
        if (inside > open + kLongestCast) return Parenthesised::Expression;
        const bool isName = token.kind == Cpp::Identifier;
        const bool isBracket = token.role == ExprRole::TemplateOpen || token.role == ExprRole::TemplateClose;
        if (isTypeWord(token)) {
            sawTypeWord = true;
        } else if (!isName && !isBracket && !sawTypeWord) {
            return Parenthesised::Expression;
        }
        isNames = isNames && isName;
        ++count;
        second = std::exchange(last, inside);
    }
    if (sawTypeWord && declaresName(tokens, second, last)) return Parenthesised::Expression;
    if (count > 0 && sawTypeWord) return Parenthesised::Type;
    if (count == 0 || !isNames) return Parenthesised::Expression;
    return count == 1 ? Parenthesised::Name : Parenthesised::Names;
}

bool holdsMadeValue(const ExprTokens& tokens, std::size_t open) {
    const std::size_t type = nextPlace(tokens, open);
    const std::size_t inner = nextPlace(tokens, type);
    if (!isTypeWord(tokens[type]) || kindAt(tokens, inner) != Cpp::OpenParen || tokens[inner].partner == kNoToken) {
        return false;
    }
    return !isPointerMark(kindAt(tokens, placeBefore(tokens, tokens[inner].partner)));
}

bool endsDelete(const ExprTokens& tokens, std::size_t place) {
    if (kindAt(tokens, place) != Cpp::CloseBracket) return false;
    const std::size_t open = tokens[place].partner;
    const bool isName = open > 1 && kindAt(tokens, open - 2) == Cpp::KeywordOperator;
    return open + 1 == place && open > 0 && kindAt(tokens, open - 1) == Cpp::KeywordDelete && !isName;
}

bool startsCastOperand(const ExprTokens& tokens, std::size_t previous, std::size_t place) {
    if (place >= tokens.size() || kindAt(tokens, previous) != Cpp::CloseParen) return false;
    const std::size_t open = tokens[previous].partner;
    if (open == kNoToken) return false;
    const std::size_t before = placeBefore(tokens, open);
    // (int)(char)c
    const bool followsCast = kindAt(tokens, before) == Cpp::CloseParen && tokens[before].partner != kNoToken &&
                             contentsOf(tokens, tokens[before].partner) == Parenthesised::Type;
    if (!followsCast && tokens[open].followsCall) return false;
    if (before != kNoToken && !followsCast && !awaitsOperand(tokens[before])) return false;
    const Parenthesised inside = contentsOf(tokens, open);
    if (inside == Parenthesised::Expression || holdsMadeValue(tokens, open)) return false;
    const ExprToken& token = tokens[place];
    if (token.role == ExprRole::UnaryOperator) return true;
    if (token.role == ExprRole::GroupOpen) {
        return token.kind == Cpp::OpenParen && (inside == Parenthesised::Type || isNamedAsType(tokens, open));
    }
    return token.role == ExprRole::Operand && startsOperand(token);
}

bool isCastByBlank(const ExprTokens& tokens, std::size_t close, std::size_t sign) {
    const int kind = kindAt(tokens, sign);
    const std::size_t open = tokens[close].partner;
    if ((kind != Cpp::Plus && kind != Cpp::Minus) || kindAt(tokens, sign + 1) == Cpp::Number) return false;
    return contentsOf(tokens, open) == Parenthesised::Name && !isNamedAsType(tokens, open);
}

}  // namespace Tessel
