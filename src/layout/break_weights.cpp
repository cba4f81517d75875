#include "layout/break_weights.h"

#include <algorithm>

#include "cpp/token_kind.h"
#include "cpp/words.h"
#include "engine/expr_casts.h"
#include "engine/gap.h"
#include "engine/operator_kinds.h"

namespace Tessel {

namespace {

// For each bracket that stands around a token, by what stands in it.
constexpr int kLevelWeight = 20;
constexpr int kParenthesesDepth = 1;
constexpr int kSubscriptDepth = 10;
constexpr int kTemplateDepth = 12;

constexpr int kShiftWeight = 1;
constexpr int kBehindWord = 3;
constexpr int kBehindLabel = 25;  // "name: " << value, "name=" + value
constexpr int kColonOfLoop = 2;
constexpr int kBaseClauses = 3;
constexpr int kPureSpecifier = 500;  // the "0" of "= 0"
constexpr int kAssignedLambda = 35;
constexpr int kInnerMember = 35;  // "." with another call behind it
constexpr int kLastMember = 150;
constexpr int kCastOperand = 100;
constexpr int kTemplateArguments = 100;
constexpr int kParameters = 100;
constexpr int kAnnotationWeight = 100;
constexpr int kShortAnnotationWeight = 150;
constexpr std::size_t kShortAnnotation = 10;
constexpr int kDefaultValue = 110;
constexpr int kSecondName = 110;  // `T MACRO f()`
constexpr int kArrowOfResult = 110;
constexpr int kArrowOfHead = 20;  // the result has a line sooner than the last of the parameters
constexpr int kBraceBehindAssignment = 160;
constexpr int kDeclaredName = 200;
constexpr int kSubscript = 500;
constexpr int kPartOfName = 500;
constexpr int kBehindComment = 1000;

// A literal that names the value behind it, or ends a value's name.
bool isLabel(const ExprToken& token) {
    if (token.kind != Cpp::StringLiteral || !token.text().starts_with('"')) return false;
    std::string_view text = token.text().substr(1);
    text = trimLeft(trimRight(text.substr(0, text.size() - (text.ends_with('"') ? 1 : 0))));
    return text.size() > 1 && (text.ends_with(':') || text.ends_with('='));
}

// Of a virtual function.
bool isSpecifier(const ExprToken& token) { return token.text() == "override" || token.text() == "final"; }

int depthOf(const ExprToken& open) {
    if (open.role == ExprRole::TemplateOpen) return kTemplateDepth;
    return open.kind == Cpp::OpenBracket ? kSubscriptDepth : kParenthesesDepth;
}

}  // namespace

BreakWeights::BreakWeights(const ExprTokens& tokens, const OperandScopes& scopes,
                           const WrapSettings& settings, const WeighedExtent& extent)
    : tokens_(tokens),
      scopes_(scopes),
      settings_(settings),
      text_(extent.text),
      name_(extent.name),
      keepsName_(extent.keepsName),
      holdsComma_(tokens.size(), false),
      depths_(tokens.size(), 0),
      weights_(tokens.size(), kNoBreak) {
    int depth = standsByItself(text_) ? 1 : 1 + kParenthesesDepth;
    std::vector<std::size_t> brackets;
    for (std::size_t place = 0; place < tokens.size(); ++place) {
        if (opensBracket(tokens, place)) brackets.push_back(place);
        while (!brackets.empty() && tokens[brackets.back()].partner <= place) brackets.pop_back();
        if (scopes.at(place).rank == OperandRank::Comma && !brackets.empty())
            holdsComma_[brackets.back()] = true;
    }
    std::size_t left = kNoToken;
    for (std::size_t place = 0; place < tokens.size(); ++place) {
        while (!brackets.empty() && tokens[brackets.back()].partner < place) {
            depth -= depthOf(tokens[brackets.back()]);
            brackets.pop_back();
        }
        depths_[place] = depth;
        if (left != kNoToken) {
            const bool followsComment = place > 0 && tokens[place - 1].role == ExprRole::Trivia;
            const int weight = weightOf(left, place);
            if (weight != kNoBreak)
                weights_[place] = weight + kLevelWeight * depth + (followsComment ? kBehindComment : 0);
        }
        if (tokens[place].role != ExprRole::Trivia) left = place;
        if (!opensBracket(tokens, place)) continue;
        brackets.push_back(place);
        depth += depthOf(tokens[place]);
    }
}

int BreakWeights::ofParting(std::size_t block) const {
    return WrapSettings::kWeightOfOnlyElement + kLevelWeight * depths_[block];
}

int BreakWeights::ofSplitting(std::size_t name) const { return kPartOfName + kLevelWeight * depths_[name]; }

bool BreakWeights::leadsLine(std::size_t place) const {
    switch (scopes_.at(place).rank) {
        case OperandRank::None:
        case OperandRank::Comma:
        case OperandRank::Assignment:
            return false;
        case OperandRank::Conditional:
        case OperandRank::Member:
            return true;
        case OperandRank::Shift:
            if (tokens_[place].kind == Cpp::ShiftLeft)
                return settings_.shift == SeparatorPlace::StartsLine;
            [[fallthrough]];
        default:
            return settings_.operators != SeparatorPlace::EndsLine;
    }
}

int BreakWeights::weightOf(std::size_t left, std::size_t place) const {
    const ExprToken& before = tokens_[left];
    const ExprToken& token = tokens_[place];
    const int kind = token.kind;
    if (kind == Cpp::LineComment || kind == Cpp::Directive || closesBracket(tokens_, place)) return kNoBreak;
    if (before.kind == Cpp::Semicolon) return text_ == WeighedText::Clauses ? 0 : kNoBreak;
    if (kind == Cpp::Semicolon || token.role == ExprRole::Mark) return kNoBreak;
    if (before.role == ExprRole::BinaryOperator && before.kind == Cpp::Assign) {
        if (kind == Cpp::OpenBrace) return kBraceBehindAssignment;
        if (kind == Cpp::OpenBracket && text_ == WeighedText::Statement) return kAssignedLambda;
    }
    if (place == name_ && keepsName_) return kNoBreak;
    if (place == name_) return followsWord(left) ? kSecondName : settings_.weightOfFunctionName;
    if (name_ != kNoToken && place < name_ && scopes_.at(place).depth == 0) return kNoBreak;
    const bool isOuter = text_ == WeighedText::Head && scopes_.at(place).depth == 0;
    // A word by itself in front of what looks like a call is taken for a macro.
    const bool isAlone =
        left == 0 && before.kind == Cpp::Identifier && kindAt(tokens_, place + 1) == Cpp::OpenParen;
    if (token.role == ExprRole::Name && !isOuter) return isAlone ? kNoBreak : kDeclaredName;
    if (kind == Cpp::Arrow && name_ != kNoToken && scopes_.at(place).depth == 0) return kArrowOfHead;
    if (kind == Cpp::Arrow && token.role == ExprRole::BinaryOperator) return kArrowOfResult;
    if (opensBracket(tokens_, left)) return weightBehindOpen(left, place);
    if (kind == Cpp::OpenBracket && token.followsCall) return kSubscript;
    if (scopes_.at(place).rank == OperandRank::Member) return weightOfMember(place);
    return weightOfOperator(left, place);
}

// Whether the token is a word behind a type.
bool BreakWeights::followsWord(std::size_t place) const {
    if (place == 0 || tokens_[place].kind != Cpp::Identifier) return false;
    const ExprToken& before = tokens_[place - 1];
    const bool isMark = before.kind == Cpp::Asterisk || before.kind == Cpp::Ampersand;
    return before.kind == Cpp::Identifier || isMark || before.role == ExprRole::Mark ||
           before.role == ExprRole::TemplateClose || isBuiltinTypeKeyword(before.kind);
}

int BreakWeights::weightBehindOpen(std::size_t open, std::size_t place) const {
    if (tokens_[open].partner == place || tokens_[open].kind == Cpp::OpenBracket) return kNoBreak;
    if (tokens_[open].role == ExprRole::TemplateOpen) return kTemplateArguments;
    if (text_ == WeighedText::Head && tokens_[open].kind == Cpp::OpenParen) return kParameters;
    if (open > 0 && tokens_[open - 1].kind == Cpp::CloseBracket) return kParameters;
    return holdsElements(open) ? settings_.weightBehindOpen : WrapSettings::kWeightOfOnlyElement;
}

int BreakWeights::weightOfMember(std::size_t place) const {
    const std::size_t next = scopes_.at(place).nextOperator;
    return next != kNoToken && closesBracket(tokens_, next - 1) ? kInnerMember : kLastMember;
}

int BreakWeights::weightOfOperator(std::size_t left, std::size_t place) const {
    const OperandRank before = scopes_.at(left).rank;
    const OperandRank rank = scopes_.at(place).rank;
    if (rank == OperandRank::Comma || rank == OperandRank::Assignment) return kNoBreak;
    const bool isInHead = text_ == WeighedText::Head || text_ == WeighedText::Parameters;
    if (before != OperandRank::None) {
        if (leadsLine(left)) return kNoBreak;
        if (before == OperandRank::Assignment && isInHead) {
            const bool isBehindHead = text_ == WeighedText::Head && scopes_.at(place).depth == 0;
            return isBehindHead ? kPureSpecifier : kDefaultValue;
        }
        return tokens_[left].kind == Cpp::Plus && namesValue(left) ? kBehindLabel : static_cast<int>(before);
    }
    if (rank != OperandRank::None) {
        if (!leadsLine(place)) return kNoBreak;
        if (tokens_[place].kind != Cpp::ShiftLeft) return static_cast<int>(rank);
        return namesValue(place) ? kBehindLabel : kShiftWeight;
    }
    const bool isClass = text_ == WeighedText::Class;
    const std::size_t colon = isClass ? place : left;
    if (tokens_[colon].role == ExprRole::BinaryOperator && tokens_[colon].kind == Cpp::Colon) {
        return isClass ? kBaseClauses : kColonOfLoop;
    }
    if (!closesPlacement(left) && startsCastOperand(tokens_, left, place)) return kCastOperand;
    return weightOfWord(left, place);
}

// Whether what stands in front of the operator names what stands behind it, and is not all that does.
bool BreakWeights::namesValue(std::size_t place) const {
    const bool isOnly = scopes_.at(place).isFirstOperator && scopes_.at(place).nextOperator == kNoToken;
    return !isOnly && place > 0 && isLabel(tokens_[place - 1]);
}

// The ")" of `new (place) T()`.
bool BreakWeights::closesPlacement(std::size_t place) const {
    const std::size_t open = tokens_[place].partner;
    return closesBracket(tokens_, place) && open > 0 && tokens_[open - 1].kind == Cpp::KeywordNew;
}

// Behind the parameters of a function: `f() const GUARDED_BY(mutex)`.
int BreakWeights::weightOfAnnotation(std::size_t place) const {
    if (kindAt(tokens_, place + 1) == Cpp::OpenParen) return kBehindWord;
    return tokens_[place].text().size() < kShortAnnotation ? kShortAnnotationWeight : kAnnotationWeight;
}

// Behind what ends an operand: `PREFIX "text"`, `new (place) T()`, `NAME(a) OTHER(b)`, `T name` as an argument.
int BreakWeights::weightOfWord(std::size_t left, std::size_t place) const {
    const int kind = tokens_[place].kind;
    const int before = tokens_[left].kind;
    const ExprToken& word = tokens_[left];
    const bool isApart = tokens_[place].offset > word.end();
    if (kind == Cpp::StringLiteral && before == Cpp::Identifier && isApart) return kBehindWord;
    if (kind != Cpp::Identifier || word.text().ends_with("template")) return kNoBreak;
    const bool isBehindHead = name_ != kNoToken && place > name_ && scopes_.at(place).depth == 0;
    // What stands behind parameters that a macro holds, `f PARAMS((int)) M(x)`, is read by the line it is on.
    const bool isBehindParameters =
        before == Cpp::CloseParen && kindAt(tokens_, tokens_[left].partner + 1) == Cpp::OpenParen;
    if (isBehindHead && !isSpecifier(tokens_[place]) && !isBehindParameters &&
        (before == Cpp::KeywordConst || before == Cpp::CloseParen)) {
        return weightOfAnnotation(place);
    }
    if (before == Cpp::CloseParen) {
        const bool isMacro = kindAt(tokens_, place + 1) == Cpp::OpenParen && !isBehindParameters;
        return isMacro || closesPlacement(left) ? kBehindWord : kNoBreak;
    }
    if (isBehindHead) return before == Cpp::Identifier && !isSpecifier(tokens_[place]) ? kBehindWord : kNoBreak;
    if (before != Cpp::Identifier && !isBuiltinTypeKeyword(before)) return kNoBreak;
    // By itself in its line, it would be read as a macro.
    if (left == 0 && Cpp::isUpperCase(word.text())) return kNoBreak;
    return followsWord(left) ? kSecondName : kDeclaredName;
}

}  // namespace Tessel
