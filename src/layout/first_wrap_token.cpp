#include "layout/first_wrap_token.h"

#include <algorithm>

#include "cpp/token_kind.h"
#include "engine/operator_kinds.h"

namespace Tessel {

namespace {

constexpr int kComma[] = {Cpp::Comma};
constexpr int kSemicolon[] = {Cpp::Semicolon};
constexpr int kShift[] = {Cpp::ShiftLeft, Cpp::ShiftRight};
constexpr int kLogical[] = {Cpp::LogicalAnd, Cpp::LogicalOr};
constexpr int kBinary[] = {Cpp::Colon,     Cpp::Slash,      Cpp::Plus,    Cpp::Minus,   Cpp::Percent,
                           Cpp::ShiftLeft, Cpp::ShiftRight, Cpp::Less,    Cpp::Greater, Cpp::Equal,
                           Cpp::NotEqual,  Cpp::Bar,        Cpp::Question};
constexpr int kPartsOfConditional[] = {Cpp::Question, Cpp::Colon};
constexpr int kFactor[] = {Cpp::Asterisk, Cpp::Slash, Cpp::Percent, Cpp::Ampersand, Cpp::Caret};
constexpr int kComparison[] = {Cpp::Less,  Cpp::Greater,  Cpp::LessEqual, Cpp::GreaterEqual,
                              Cpp::Equal, Cpp::NotEqual};
constexpr int kAssignment[] = {Cpp::Assign,      Cpp::AmpersandAssign, Cpp::AsteriskAssign,
                               Cpp::CaretAssign, Cpp::GreaterEqual,    Cpp::ShiftLeftAssign,
                               Cpp::LessEqual,   Cpp::MinusAssign,     Cpp::PercentAssign,
                               Cpp::BarAssign,   Cpp::PlusAssign,      Cpp::ShiftRightAssign};

constexpr int kSignKinds[] = {Cpp::Plus, Cpp::Minus};
constexpr int kOperatorsProper[] = {Cpp::Colon,      Cpp::Slash, Cpp::Percent, Cpp::ShiftLeft,
                                    Cpp::ShiftRight, Cpp::Less,  Cpp::Greater, Cpp::Equal,
                                    Cpp::NotEqual,   Cpp::Bar,   Cpp::Question};
constexpr int kSeparators[] = {Cpp::Comma, Cpp::Semicolon};

bool startsOperand(int kind) {
    return kind == Cpp::OpenParen || kind == Cpp::Identifier || isCastKeyword(kind);
}

bool startsCastOperand(int kind) {
    return kind == Cpp::OpenParen || kind == Cpp::Identifier || kind == Cpp::CharLiteral ||
           kind == Cpp::Number || kind == Cpp::StringLiteral;
}

// Not a bracket of template arguments, a mark, or the name of an operator function.
bool isSeparator(const ExprToken& token) {
    return token.role == ExprRole::BinaryOperator || token.role == ExprRole::Separator;
}

bool isClosing(const ExprToken& token) {
    return token.role == ExprRole::GroupClose || token.role == ExprRole::TemplateClose;
}

std::size_t significantBefore(const std::vector<ExprToken>& tokens, std::size_t first, std::size_t place) {
    while (place > first) {
        if (tokens[--place].role != ExprRole::Trivia) return place;
    }
    return kNoToken;
}

std::size_t significantBehind(const std::vector<ExprToken>& tokens, std::size_t place, std::size_t last) {
    while (++place < last) {
        if (tokens[place].role != ExprRole::Trivia) return place;
    }
    return kNoToken;
}

}  // namespace

namespace TokenClasses {
const TokenClass commaTokens(kComma);
const TokenClass semicolonTokens(kSemicolon);
const TokenClass shiftTokens(kShift);
const TokenClass logicalTokens(kLogical);
const TokenClass binaryTokens(kBinary);
const TokenClass conditionalTokens(kPartsOfConditional);
const TokenClass factorTokens(kFactor);
const TokenClass comparisonTokens(kComparison);
const TokenClass assignmentTokens(kAssignment);
}  // namespace TokenClasses

bool isIn(TokenClass tokens, int kind) {
    return std::find(tokens.begin(), tokens.end(), kind) != tokens.end();
}

TokenPlace placeOf(const std::vector<ExprToken>& tokens, std::size_t first, std::size_t place,
                   std::size_t last) {
    const ExprToken& token = tokens[place];
    TokenPlace result{token, kindAt(tokens, significantBefore(tokens, first, place)),
                      kindAt(tokens, significantBehind(tokens, place, last))};
    if (isClosing(token)) {
        result.kindBeforeBracket = kindAt(tokens, significantBefore(tokens, first, token.partner));
        result.firstKindInBracket = kindAt(tokens, significantBehind(tokens, token.partner, place));
    }
    return result;
}

std::size_t FirstWrapToken::find(const std::vector<ExprToken>& tokens, std::size_t first, std::size_t from,
                                 std::size_t last) const {
    for (std::size_t place = from; place < last; ++place) {
        const ExprToken& token = tokens[place];
        if (token.role == ExprRole::Trivia) continue;
        if (opensBracket(tokens, place) && token.partner < last) place = token.partner;
        if (isWrapToken(tokens[place].kind) && breaksAt(placeOf(tokens, first, place, last))) return place;
    }
    return kNoToken;
}

bool FindFirstElem::breaksAt(const TokenPlace& place) const {
    const auto isSeparatorKind = [this](int kind) { return isIn(separators_, kind); };
    return isSeparatorKind(place.token.kind) && isSeparator(place.token) &&
           !isSeparatorKind(place.nextKind) && !isSeparatorKind(place.previousKind);
}

bool FindFirstBinaryOp::isWrapToken(int kind) const {
    return isIn(kOperatorsProper, kind) || isIn(kSignKinds, kind);
}

bool FindFirstBinaryOp::breaksAt(const TokenPlace& place) const {
    const int kind = place.token.kind;
    if (isIn(kOperatorsProper, kind)) return isSeparator(place.token);
    if (!isIn(kSignKinds, kind) || place.token.role == ExprRole::Operand) return false;
    if (place.previousKind == Trn::kEndKind) return false;
    const bool followsOperator = isWrapToken(place.previousKind) || isIn(kSeparators, place.previousKind);
    return !followsOperator || startsOperand(place.nextKind);
}

bool FindFirstCast::isWrapToken(int kind) const {
    return kind == Cpp::Greater || kind == Cpp::ShiftRight;
}

bool FindFirstCast::breaksAt(const TokenPlace& place) const {
    return place.token.role == ExprRole::TemplateClose && isCastKeyword(place.kindBeforeBracket);
}

bool FindFirstOldCast::isWrapToken(int kind) const {
    return kind == Cpp::CloseParen;
}

bool FindFirstOldCast::breaksAt(const TokenPlace& place) const {
    const int before = place.kindBeforeBracket;
    const bool followsName = before == Cpp::Identifier || before == Cpp::Greater ||
                             before == Cpp::ShiftRight || before == Cpp::KeywordOperator;
    // `(*function)(argument)`
    const bool isDeclarator = place.firstKindInBracket == Cpp::Asterisk;
    return place.token.role == ExprRole::GroupClose && !followsName && !isDeclarator &&
           startsCastOperand(place.nextKind);
}

}  // namespace Tessel
