// T *a    f(T &)    new T *[3]    function<A *(B &)>
//
// Whether a "*", "&" or "&&" is a mark of a type, and a name one that is declared.
#include "cpp/token_kind.h"
#include "cpp/token_sets.h"
#include "cpp/words.h"
#include "engine/operator_kinds.h"
#include "engine/role_finder.h"

namespace Tessel {

ExprRole RoleFinder::roleOfStar(std::size_t place) const {
    const bool isLogical = kindAt(tokens_, place) == Cpp::LogicalAnd;
    if (isAmongDeclarators() && startsDeclarator()) return ExprRole::Mark;
    if (previous_ != kNoToken && previousRole() == ExprRole::Mark) return ExprRole::Mark;
    if (previous_ == kNoToken) return isLogical ? ExprRole::BinaryOperator : ExprRole::UnaryOperator;
    // `f() const &&`, `ref(&&)`
    const bool standsAlone = previousKind() == Cpp::OpenParen && kindAt(tokens_, place + 1) == Cpp::CloseParen;
    if (followsParameters_ || standsAlone) return ExprRole::Operand;
    if (isFold(place)) return ExprRole::BinaryOperator;
    if (isMark(place)) return ExprRole::Mark;
    // `int (A::*a)(int)`
    if (tokens_[previous_].text().ends_with("::")) return ExprRole::UnaryOperator;
    // `T (&&a)[2]`, `a = &&label`
    const bool isByItself = previousRole() == ExprRole::GroupOpen || previousKind() == Cpp::Assign;
    if (isLogical && isByItself) return ExprRole::UnaryOperator;
    return followsOperand(place) || isLogical ? ExprRole::BinaryOperator : ExprRole::UnaryOperator;
}

// `*a, *b`, and behind a macro: `*a, FAR *b`. What a declarator begins with is multiplied by nothing.
bool RoleFinder::startsDeclarator() const {
    if (previous_ == kNoToken || previousKind() == Cpp::Comma) return true;
    return previousKind() == Cpp::Identifier && kindAt(tokens_, beforePrevious_) == Cpp::Comma;
}

// `(a && ...)`, `constant<(a && ...)>`, as opposed to the parameters of a template's argument:
// `function<void(A&&...)>`
bool RoleFinder::isFold(std::size_t place) const {
    const std::size_t dots = nextPlace(tokens_, place);
    if (!isPack(tokens_, dots) || outer_.empty()) return false;
    if (outer_.back().isArgument ? outer_.back().sawType : isInDeclaration()) return false;
    const std::size_t behind = dots + kDotsOfPack;
    return kindAt(tokens_, behind) == Cpp::CloseParen || kindAt(tokens_, behind) == kindAt(tokens_, place);
}

bool RoleFinder::followsType() const {
    const int kind = previousKind();
    if (kind == Cpp::Identifier) return !Cpp::isOperatorWord(tokens_[previous_].text());
    return previousRole() == ExprRole::TemplateClose || Cpp::isBuiltinTypeWord(kind) || Cpp::isQualifier(kind) ||
           kind == Cpp::KeywordAuto || closesTypeWord(previous_);
}

// The ")" of `decltype(a)`.
bool RoleFinder::closesTypeWord(std::size_t place) const {
    if (tokens_[place].role != ExprRole::GroupClose) return false;
    const std::size_t open = tokens_[place].partner;
    return open > 0 && Cpp::namesType(tokens_[open - 1]);
}

// `ELEMENT(a) *`, in front of a name that is not in the text.
bool RoleFinder::endsTypeOfMacro(std::size_t place) const {
    if (mode_ != ExprMode::Declaration || !outer_.empty() || previousRole() != ExprRole::GroupClose) return false;
    while (isPointerMark(kindAt(tokens_, place)) || Cpp::isQualifier(kindAt(tokens_, place))) {
        place = nextPlace(tokens_, place);
    }
    return place >= tokens_.size();
}

// The parameter `const LIST_OF(A) *a`.
bool RoleFinder::followsTypeOfMacro(std::size_t place) const {
    const bool isStatement = tokens_.back().kind == Cpp::Semicolon;
    const bool isParameter = readsTypes_ && mode_ == ExprMode::Declaration && outer_.empty() && !isStatement;
    if (!isParameter || previousRole() != ExprRole::GroupClose) return false;
    const std::size_t open = tokens_[previous_].partner;
    if (open == kNoToken || open == 0) return false;
    std::size_t word = open - 1;
    if (kindAt(tokens_, word) != Cpp::Identifier || !Cpp::isUpperCase(tokens_[word].text())) return false;
    while (word > 0 && Cpp::isWord(kindAt(tokens_, word - 1))) --word;
    std::size_t name = nextPlace(tokens_, place);
    while (isPointerMark(kindAt(tokens_, name)) || Cpp::isQualifier(kindAt(tokens_, name))) {
        name = nextPlace(tokens_, name);
    }
    return word == 0 && kindAt(tokens_, name) == Cpp::Identifier && endsDeclaredName(nextPlace(tokens_, name));
}

bool RoleFinder::isMark(std::size_t place) const {
    if (endsTypeOfMacro(place) || followsTypeOfMacro(place)) return true;
    if (readsTypes_ && Cpp::isQualifier(previousKind())) return true;
    // `using A = TYPE(B) *;`
    if (kindAt(tokens_, nextPlace(tokens_, place)) == Cpp::Semicolon) return true;
    if (!followsType()) return false;
    if (isInReturnType_ && outer_.empty()) return true;
    if (isBuiltinTypeKeyword(previousKind()) || previousKind() == Cpp::KeywordAuto || closesTypeWord(previous_))
        return true;
    // `new T *(a)`
    const bool isLogical = kindAt(tokens_, place) == Cpp::LogicalAnd;
    if (segment_.followsNew && segment_.isTypeSoFar && !isLogical) return true;
    std::size_t next = nextPlace(tokens_, place);
    while (isPointerMark(kindAt(tokens_, next)) || Cpp::isQualifier(kindAt(tokens_, next))) {
        next = nextPlace(tokens_, next);
    }
    if (segment_.isArgument && segment_.isTypeSoFar && opensParameters(next)) return true;
    const bool isArray = kindAt(tokens_, next) == Cpp::OpenBracket && isInDeclaration();
    if (endsDeclarator(next) || (isArray && segment_.isTypeSoFar)) return segment_.isTypeSoFar || !isLogical;
    if (!segment_.isTypeSoFar || !segment_.sawType) return false;
    if (segment_.sawQualifier) return true;
    const int kind = kindAt(tokens_, next);
    if (kind == Cpp::Assign) return isInDeclaration();
    if (kind == Cpp::OpenParen) {
        const int inside = kindAt(tokens_, next + 1);
        return isInDeclaration() && (isPointerMark(inside) || inside == Cpp::LogicalAnd);
    }
    // A template's argument has no name: `constant<A::a * B::b>`
    if (kind != Cpp::Identifier || segment_.isArgument) return false;
    const std::size_t behindName = nextPlace(tokens_, next);
    if (isInDeclaration()) return endsDeclaredName(behindName) || (readsTypes_ && isFurtherName(behindName));
    const int behind = kindAt(tokens_, behindName);
    if (behind == Cpp::Comma && isAgainstOneSide(place)) return segment_.atTextStart;
    return segment_.atTextStart && (behind == Cpp::Assign || behind == Cpp::Colon);
}

// `foreach (T *a, list)`: operators stand apart from both operands, or from none.
bool RoleFinder::isAgainstOneSide(std::size_t place) const {
    if (place == 0 || place + 1 >= tokens_.size()) return false;
    const bool isBehindBlank = tokens_[place - 1].end() < tokens_[place].offset;
    const bool isAheadOfBlank = tokens_[place].end() < tokens_[place + 1].offset;
    return isBehindBlank != isAheadOfBlank;
}

// `function<A *(B &)>`: whether types stand in the parentheses, which end a template's argument.
bool RoleFinder::opensParameters(std::size_t open) const {
    if (kindAt(tokens_, open) != Cpp::OpenParen || tokens_[open].partner == kNoToken) return false;
    const std::size_t close = tokens_[open].partner;
    const int last = kindAt(tokens_, close - 1);
    const bool holdsType = close == open + 1 || isPointerMark(last) || last == Cpp::LogicalAnd ||
                           isBuiltinTypeKeyword(last) || Cpp::isQualifier(last);
    return holdsType && endsDeclarator(nextPlace(tokens_, close));
}

// Where no operand can follow, a "*" or "&" multiplies nothing.
bool RoleFinder::endsDeclarator(std::size_t place) const {
    if (place < tokens_.size() && tokens_[place].role == ExprRole::Block) return true;
    if (isPack(tokens_, place)) return true;
    switch (kindAt(tokens_, place)) {
        case Trn::kEndKind:
        case Cpp::CloseParen:
        case Cpp::Comma:
        case Cpp::Semicolon:
            return true;
        case Cpp::Greater:
        case Cpp::ShiftRight:
            return tokens_[place].partner != kNoToken;
        default:
            return false;
    }
}

bool RoleFinder::endsDeclaredName(std::size_t place) const {
    switch (kindAt(tokens_, place)) {
        case Cpp::Assign:
        case Cpp::Colon:
        case Cpp::OpenBracket:
        case Cpp::OpenParen:
            return true;
        default:
            return endsDeclarator(place);
    }
}

// `A *a UNUSED`, `A * API a`: whether another name stands right behind one, as in no expression.
bool RoleFinder::isFurtherName(std::size_t place) const {
    return kindAt(tokens_, place) == Cpp::Identifier && !Cpp::isOperatorWord(tokens_[place].text());
}

bool RoleFinder::isDeclaredName(std::size_t place) const {
    if (!isInDeclaration() || previous_ == kNoToken) return false;
    if (tokens_[place].text().starts_with("::")) return false;
    if (!segment_.isTypeSoFar || !segment_.sawType || !followsType()) return false;
    return endsDeclaredName(nextPlace(tokens_, place));
}

}  // namespace Tessel
