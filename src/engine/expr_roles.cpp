// The tokens are walked with what stands in front of each:
//
//     a * b     binary: behind an operand
//     a * -b    "-" unary: behind an operator
//     T *p = q  a mark: behind a type, in front of a name that is declared
//     (T *)p    a mark: no operand follows
#include "engine/expr_roles.h"

#include "cpp/token_kind.h"
#include "cpp/token_sets.h"
#include "cpp/words.h"
#include "engine/operator_kinds.h"
#include "engine/role_finder.h"

namespace Tessel {

// What it calls for every token is called nowhere else.
void RoleFinder::run() {
    for (std::size_t place = 0; place < tokens_.size(); ++place) {
        if (tokens_[place].role == ExprRole::Trivia) continue;
        tokens_[place].role = roleOf(place);
        advance(place);
    }
}

inline ExprRole RoleFinder::roleOf(std::size_t place) const {
    const ExprToken& token = tokens_[place];
    const int kind = token.kind;
    if (token.role == ExprRole::Block) return ExprRole::Block;
    if (previous_ != kNoToken && previousKind() == Cpp::KeywordOperator && isOperatorName(place)) {
        return ExprRole::Operand;
    }
    const bool isMatched = token.partner != kNoToken;
    switch (kind) {
        case Cpp::OpenParen:
        case Cpp::OpenBracket:
            return isMatched ? ExprRole::GroupOpen : ExprRole::Operand;
        case Cpp::CloseParen:
        case Cpp::CloseBracket:
            return isMatched ? ExprRole::GroupClose : ExprRole::Operand;
        case Cpp::OpenBrace:
            return isMatched && opensAggregate() ? ExprRole::BraceOpen : ExprRole::Operand;
        case Cpp::CloseBrace:
            return isMatched && tokens_[token.partner].role == ExprRole::BraceOpen ? ExprRole::BraceClose
                                                                                   : ExprRole::Operand;
        case Cpp::Less:
            return isMatched ? ExprRole::TemplateOpen : ExprRole::BinaryOperator;
        case Cpp::Greater:
        case Cpp::ShiftRight:
            return isMatched ? ExprRole::TemplateClose : ExprRole::BinaryOperator;
        case Cpp::Comma:
        case Cpp::Semicolon:
            return ExprRole::Separator;
        case Cpp::Tilde:
            return ExprRole::UnaryOperator;
        case Cpp::Exclamation:
            return ExprRole::UnaryOperator;
        case Cpp::Increment:
        case Cpp::Decrement:
            return followsOperand(place) ? ExprRole::Operand : ExprRole::UnaryOperator;
        case Cpp::Asterisk:
        case Cpp::Ampersand:
        case Cpp::LogicalAnd:
            return roleOfStar(place);
        case Cpp::Plus:
        case Cpp::Minus:
            return followsOperand(place) ? ExprRole::BinaryOperator : ExprRole::UnaryOperator;
        case Cpp::Identifier:
            return isDeclaredName(place) ? ExprRole::Name : ExprRole::Operand;
        case Cpp::Colon:
            return introducesWidth() || namesArgument(place) || (segment_.isChoice && !segment_.sawQuestion)
                       ? ExprRole::Operand
                       : ExprRole::BinaryOperator;
        case Cpp::Arrow:
            return followsParameters_ || followsRequirement() ? ExprRole::BinaryOperator : ExprRole::Operand;
        case Cpp::Assign:
            return isCapture(place) ? ExprRole::Operand : ExprRole::BinaryOperator;
        default:
            return isOperatorKind(kind) ? ExprRole::BinaryOperator : ExprRole::Operand;
    }
}

// The token behind "operator", and the ")" or "]" that belongs to it.
inline bool RoleFinder::isOperatorName(std::size_t place) const {
    const int kind = kindAt(tokens_, place);
    return kind >= Cpp::Assign || kind == Cpp::Comma || kind == Cpp::OpenParen;
}

// `{ a + b } -> same_as<T>`
bool RoleFinder::followsRequirement() const {
    return previous_ != kNoToken && previousKind() == Cpp::CloseBrace && tokens_[previous_].partner == 0;
}

// Whether the last word begins an argument, which may be read as a parameter.
bool RoleFinder::followsFirstWord() const {
    if (previous_ == kNoToken) return false;
    if (beforePrevious_ == kNoToken) return mode_ == ExprMode::Declaration;
    const ExprRole before = tokens_[beforePrevious_].role;
    return !outer_.empty() && (before == ExprRole::GroupOpen || before == ExprRole::Separator);
}

// `DEFINE(a, doc: "text")`: against the word that an argument of a macro begins with.
bool RoleFinder::namesArgument(std::size_t place) const {
    if (!readsTypes_ || !followsFirstWord()) return false;
    const ExprToken& word = tokens_[previous_];
    const std::size_t behind = place + 1;
    const bool isApart = behind >= tokens_.size() || tokens_[place].end() < tokens_[behind].offset;
    return word.kind == Cpp::Identifier && word.end() == tokens_[place].offset && isApart;
}

// The "=" of a lambda's capture list.
bool RoleFinder::isCapture(std::size_t place) const {
    return previous_ != kNoToken && previousKind() == Cpp::OpenBracket &&
           (kindAt(tokens_, place + 1) == Cpp::CloseBracket || kindAt(tokens_, place + 1) == Cpp::Comma);
}

inline void RoleFinder::advance(std::size_t place) {
    ExprToken& token = tokens_[place];
    if (token.kind == Cpp::OpenBrace) ++braces_;
    if (token.kind == Cpp::CloseBrace) --braces_;
    if (token.role == ExprRole::GroupOpen && previous_ != kNoToken) token.followsCall = isCallee();
    if (token.role == ExprRole::GroupOpen || token.role == ExprRole::TemplateOpen) {
        outer_.push_back(segment_);
        segment_ = {};
        segment_.isOperand = outer_.back().isOperand || followsOperator() || followsArgumentWord();
        segment_.atTextStart = false;
        segment_.isParameter =
            token.kind == Cpp::OpenParen && (followsCapture(tokens_, place) || declaresFunction(place));
        segment_.isArgument = token.role == ExprRole::TemplateOpen;
        segment_.isChoice = place > 0 && tokens_[place - 1].text() == "_Generic";
    } else if ((token.role == ExprRole::GroupClose || token.role == ExprRole::TemplateClose) &&
               !outer_.empty()) {
        const bool closesTwo = token.kind == Cpp::ShiftRight && outer_.size() > 1;
        if (closesTwo) outer_.pop_back();
        segment_ = outer_.back();
        outer_.pop_back();
        const bool goesOnWithType =
            closesTypeWord(place) || closesPlacement(token.partner) || closesAttribute(place);
        if (token.role == ExprRole::GroupClose && !goesOnWithType) segment_.isTypeSoFar = false;
    } else if (token.role == ExprRole::Separator) {
        const bool isClause = token.kind == Cpp::Semicolon && outer_.empty();
        const Segment before = segment_;
        segment_ = {};
        segment_.atTextStart = isClause;
        segment_.isParameter = before.isParameter;
        segment_.isArgument = before.isArgument;
        segment_.isOperand = before.isOperand;
        segment_.isChoice = before.isChoice;
    } else {
        extendSegment(token);
    }
    if (isInReturnType_ || token.kind == Cpp::Arrow) isInReturnType_ = goesOnWithReturnType(token);
    const bool mayQualify = followsParameters_ || previous_ == kNoToken;
    followsParameters_ = endsParameters(place) || (mayQualify && isQualifierOfFunction(place));
    beforePrevious_ = previous_;
    previous_ = place;
}

// `void f(T *a, int b);` among statements: whether a name or a mark behind a built-in type can be part of no value.
bool RoleFinder::declaresFunction(std::size_t open) const {
    // The name is in front of the text.
    if (mode_ != ExprMode::Declarators || !readsTypes_ || previous_ != kNoToken) return false;
    bool startsElement = true;
    for (std::size_t place = open + 1; place < tokens_[open].partner; ++place) {
        const ExprToken& token = tokens_[place];
        const int behind = kindAt(tokens_, nextPlace(tokens_, place));
        const bool isDeclared = behind == Cpp::Identifier || isPointerMark(behind);
        if (startsElement && isBuiltinTypeKeyword(token.kind) && isDeclared) return true;
        startsElement = token.kind == Cpp::Comma;
        if (token.role == ExprRole::GroupOpen && token.partner != kNoToken) place = token.partner;
    }
    return false;
}

// The last "]" of `[[maybe_unused]] T &a`.
bool RoleFinder::closesAttribute(std::size_t place) const {
    const std::size_t open = tokens_[place].partner;
    return kindAt(tokens_, place) == Cpp::CloseBracket && kindAt(tokens_, open + 1) == Cpp::OpenBracket &&
           tokens_[open + 1].partner + 1 == place;
}

bool RoleFinder::followsOperator() const {
    return previous_ != kNoToken && previousRole() == ExprRole::BinaryOperator && previousKind() != Cpp::Arrow;
}

// `sizeof(a * b)`, `decltype(a * b)`
bool RoleFinder::followsArgumentWord() const {
    return previous_ != kNoToken &&
           (previousKind() == Cpp::KeywordSizeof || Cpp::takesArgument(tokens_[previous_]));
}

// The ")" of a lambda's parameters, or that of a function whose head has begun in front of the text.
inline bool RoleFinder::endsParameters(std::size_t place) const {
    const ExprToken& token = tokens_[place];
    if (token.kind != Cpp::CloseParen) return false;
    if (token.partner == kNoToken) return outer_.empty();
    if (token.partner == 0) return false;
    return tokens_[token.partner - 1].text() == "noexcept" || followsCapture(tokens_, token.partner);
}

// Conditions may follow the type, or the body.
inline bool RoleFinder::goesOnWithReturnType(const ExprToken& token) const {
    if (!outer_.empty()) return isInReturnType_;
    const bool startsType = readsTypes_ && token.kind == Cpp::Arrow && token.role == ExprRole::BinaryOperator;
    return startsType || (isInReturnType_ && token.role != ExprRole::Block && token.text() != "requires");
}

// One that may stand between parameters and "->".
inline bool RoleFinder::isQualifierOfFunction(std::size_t place) const {
    const ExprToken& token = tokens_[place];
    return Cpp::isQualifier(token.kind) || token.kind == Cpp::KeywordMutable || token.kind == Cpp::Ampersand ||
           token.kind == Cpp::LogicalAnd || token.text() == "noexcept" || token.text() == "override" ||
           token.text() == "final";
}

inline bool RoleFinder::isCallee() const {
    const int kind = previousKind();
    return previousRole() == ExprRole::Name || previousRole() == ExprRole::Block ||
           kind == Cpp::Identifier || kind == Cpp::KeywordSizeof || kind == Cpp::KeywordThrow ||
           kind == Cpp::CloseBracket || previousRole() == ExprRole::GroupClose ||
           previousRole() == ExprRole::TemplateClose;
}

inline void RoleFinder::extendSegment(const ExprToken& token) {
    const int kind = token.kind;
    segment_.sawQuestion |= kind == Cpp::Question;
    segment_.sawQualifier |= Cpp::isQualifier(kind) || Cpp::isClassKey(kind);
    segment_.followsNew |= kind == Cpp::KeywordNew;
    if (kind == Cpp::Identifier || Cpp::isBuiltinTypeWord(kind) || kind == Cpp::KeywordAuto) {
        segment_.sawType = true;
        return;
    }
    // `this T&& self`
    const bool isObject = kind == Cpp::KeywordThis && segment_.isTypeSoFar && !segment_.sawType;
    const bool startsInstantiation = kind == Cpp::KeywordTemplate && !segment_.sawType;
    const bool isModifier =
        isObject || startsInstantiation || (kind >= Cpp::KeywordClass && kind <= Cpp::KeywordUnion);
    if (kind == Cpp::KeywordNew) {
        segment_.isTypeSoFar = true;
        segment_.sawType = false;
    } else if (token.role != ExprRole::Mark && !isModifier) {
        segment_.isTypeSoFar = false;
    }
}

void findRoles(ExprTokens& tokens, ExprMode mode, LambdaParameters parameters) {
    RoleFinder(tokens, mode, parameters).run();
}

}  // namespace Tessel
