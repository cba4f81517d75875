#include "cpp/keyword_names.h"

namespace Cpp {

namespace {

// Words that are no keywords in C, but for those that may stand at the end of a type.
constexpr bool isReservedByCpp(int kind) {
    switch (kind) {
        case KeywordPublic:
        case KeywordProtected:
        case KeywordPrivate:
        case KeywordTry:
        case KeywordCatch:
        case KeywordNamespace:
        case KeywordTemplate:
        case KeywordFriend:
        case KeywordUsing:
        case KeywordVirtual:
        case KeywordClass:
        case KeywordNew:
        case KeywordDelete:
        case KeywordThis: return true;
        default: return false;
    }
}

// Behind a sign that ends nothing, no declaration begins.
constexpr bool isInExpression(int ahead) {
    switch (ahead) {
        case Semicolon:
        case Colon:
        case CloseParen:
        case CloseBracket:
        case OpenBrace:
        case CloseBrace: return false;
        default: return isPunctuation(ahead);
    }
}

}  // namespace

// Told by the token behind the keyword; in front of a ";", by the end of a type before it.
bool KeywordNames::isNameBefore(int following) const {
    const bool endsDeclaration = following == Semicolon && (ahead_ == Identifier || ahead_ == Asterisk);
    if (isTagKey(ahead_) && isAccessKeyword(last_)) return true;
    if (!isPunctuation(following) || following == OpenBrace) return false;
    switch (last_) {
        case KeywordPublic:
        case KeywordProtected:
        case KeywordPrivate: return following != Colon && following != CloseBrace;
        case KeywordTry: return following != Colon;
        case KeywordCatch: return following != OpenParen || isBuiltinTypeKeyword(ahead_);
        case KeywordThrow: return following == OpenParen && isBuiltinTypeKeyword(ahead_);
        case KeywordNamespace:
            if (following == OpenBracket) return isInExpression(ahead_) || isBuiltinTypeKeyword(ahead_);
            return following != Semicolon || endsDeclaration;
        case KeywordTemplate: return following != Less && (following != Semicolon || endsDeclaration);
        case KeywordFriend:
        case KeywordUsing:
        case KeywordVirtual: return following != OpenBracket && following != Tilde;
        case KeywordClass: return following == Semicolon || following == Dot || following == Arrow;
        default: return false;
    }
}

// `struct list *new = a->next;`, `int class;`, `foo(T *this)`: what no operand, no name of a class and no member can
// stand behind.
bool KeywordNames::isNameOfC(int following) const {
    if (following == Trn::kEndKind) return isReservedByCpp(last_) && followsTypeAndMark();
    if (!isPunctuation(following) || following == OpenBrace) return false;
    const bool isMember = ahead_ == Dot || ahead_ == Arrow;
    switch (last_) {
        case KeywordNew: {
            const bool isOperand = following == OpenParen && !isMember;
            return ahead_ != KeywordOperator && !isOperand && following != OpenBracket;
        }
        case KeywordDelete:
            if (following == Semicolon || following == Comma || following == CloseParen) {
                return ahead_ == Identifier || followsTypeAndMark();
            }
            return isMember || following == Assign || following == Dot || following == Arrow;
        case KeywordClass: return isClassName(following);
        case KeywordThis:
            return beforeAhead_ != Asterisk && followsTypeAndMark() &&
                   (following == Comma || following == CloseParen || following == Semicolon ||
                    following == Assign);
        default: return false;
    }
}

// Template parameters, enumerations and attributes have the key in front of a sign, too.
bool KeywordNames::isClassName(int following) const {
    switch (following) {
        case Less:
        case Greater:
        case ShiftRight:
        case OpenParen:
        case OpenBracket:
        case Colon: return false;
        case Comma:
        case Assign: return followsTypeAndMark() || isBuiltinTypeKeyword(ahead_);
        case CloseParen: return followsTypeAndMark() || isBuiltinTypeKeyword(ahead_) || ahead_ == Comma;
        default: return true;
    }
}

// `T *`, `T **`, as opposed to the `*` of an expression, which has no pointer behind it.
bool KeywordNames::followsTypeAndMark() const {
    return ahead_ == Asterisk &&
           (beforeAhead_ == Asterisk || beforeAhead_ == Identifier || isBuiltinTypeKeyword(beforeAhead_));
}

}  // namespace Cpp
