// a - b    (T)-b    (... + b)    delete[] *b
//
// Whether an operator stands behind an operand, so that it is a binary one.
#include "cpp/token_kind.h"
#include "cpp/token_sets.h"
#include "cpp/words.h"
#include "engine/expr_casts.h"
#include "engine/operator_kinds.h"
#include "engine/role_finder.h"

namespace Tessel {

// Whether the token stands behind an operand, so that an operator there is a binary one.
bool RoleFinder::followsOperand(std::size_t place) const {
    if (previous_ == kNoToken) return false;
    switch (previousRole()) {
        case ExprRole::GroupClose:
            return !followsCast(place) && !endsDelete(tokens_, previous_);
        case ExprRole::TemplateClose:
        case ExprRole::BraceClose:
        case ExprRole::Block:
        case ExprRole::Name:
            return true;
        case ExprRole::Operand:
            break;
        default:
            return false;
    }
    // `(... + args)`, `(0 + ... + args)`
    if (previousKind() == Cpp::Dot) {
        if (previous_ < kDotsOfPack || !isPack(tokens_, previous_ + 1 - kDotsOfPack)) return false;
        const std::size_t ahead = previous_ - kDotsOfPack;
        return kindAt(tokens_, ahead) == Cpp::OpenParen || kindAt(tokens_, ahead) == kindAt(tokens_, place);
    }
    switch (previousKind()) {
        case Cpp::Identifier:
            return !Cpp::isOperatorWord(tokens_[previous_].text());
        case Cpp::Number:
        case Cpp::CharLiteral:
        case Cpp::StringLiteral:
        case Cpp::Unknown:
        case Cpp::KeywordThis:
        case Cpp::KeywordTrue:
        case Cpp::KeywordFalse:
        case Cpp::Increment:
        case Cpp::Decrement:
        case Cpp::CloseParen:
        case Cpp::CloseBracket:
        case Cpp::CloseBrace:
            return true;
        default:
            return isBuiltinTypeKeyword(previousKind());
    }
}

// `(A)(B)&c`: whether one name in parentheses stands in front of the group.
bool RoleFinder::followsName(std::size_t open) const {
    if (open == 0 || kindAt(tokens_, open - 1) != Cpp::CloseParen) return false;
    const std::size_t first = tokens_[open - 1].partner;
    return first != kNoToken && !tokens_[first].followsCall &&
           contentsOf(tokens_, first) != Parenthesised::Expression;
}

// `(annotation T)`, as opposed to what the operators of macros and of the language make of names: `(NOT a)`,
// `(not a)`, `(a AND b)`.
bool RoleFinder::holdsAnnotatedType(std::size_t open) const {
    const std::size_t first = nextPlace(tokens_, open);
    const std::size_t second = nextPlace(tokens_, first);
    const std::string_view word = tokens_[first].text();
    const bool areTwo = nextPlace(tokens_, second) == tokens_[open].partner;
    return areTwo && !Cpp::isUpperCase(word) && !Cpp::isOperatorWord(word);
}

// `(T)-x`: whether the group in front is a cast. With one name in it, `(n)*x`, it may be either: then the
// input's white space behind the operator tells what its writer meant, unless the name is one of types; but behind a
// cast a sign is that of a number.
bool RoleFinder::followsCast(std::size_t place) const {
    const std::size_t close = previous_;
    const std::size_t open = tokens_[close].partner;
    if (kindAt(tokens_, close) != Cpp::CloseParen) return false;
    if (tokens_[open].followsCall && !followsName(open)) return false;
    const Parenthesised inside = contentsOf(tokens_, open);
    if (inside == Parenthesised::Type) return !readsTypes_ || !holdsMadeValue(tokens_, open);
    if (inside == Parenthesised::Names) return readsTypes_ && holdsAnnotatedType(open);
    if (inside != Parenthesised::Name) return false;
    const ExprToken& mark = tokens_[place];
    const std::size_t next = place + 1;
    if (readsTypes_ && isNamedAsType(tokens_, open) && kindAt(tokens_, next) == Cpp::Identifier) return true;
    const bool isApart = tokens_[close].end() < mark.offset;
    if (!isApart && isCastByBlank(tokens_, close, place)) return false;
    const bool isBeforeOperand = next < tokens_.size() && tokens_[next].role != ExprRole::Trivia;
    return isBeforeOperand && tokens_[next].offset == mark.end();
}

}  // namespace Tessel
