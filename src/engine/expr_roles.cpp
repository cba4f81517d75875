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
#include "engine/expr_casts.h"
#include "engine/operator_kinds.h"
#include "engine/shallow_stack.h"

namespace Tessel {

namespace {

class RoleFinder {
public:
    RoleFinder(ExprTokens& tokens, ExprMode mode, LambdaParameters parameters)
        : tokens_(tokens), mode_(mode), readsTypes_(parameters == LambdaParameters::Declared),
          isInReturnType_(mode == ExprMode::ReturnedType && readsTypes_) {}

    void run() {
        for (std::size_t place = 0; place < tokens_.size(); ++place) {
            if (tokens_[place].role == ExprRole::Trivia) continue;
            tokens_[place].role = roleOf(place);
            advance(place);
        }
    }

private:
    // What has been read since the last token that can begin a declaration.
    struct Segment {
        bool isTypeSoFar = true;  // nothing but the words of a type
        bool sawType = false;     // a word that is a type by itself
        bool atTextStart = true;  // begins the text or a clause of it
        bool sawQuestion = false;
        bool isParameter = false;   // of a lambda
        bool isArgument = false;    // of a template
        bool sawQualifier = false;  // "const" or "struct", which only types have
        bool followsNew = false;
        bool isOperand = false;  // of an operator, in parentheses
        bool isChoice = false;   // of _Generic: `int: 1`
    };

    int previousKind() const { return kindAt(tokens_, previous_); }
    ExprRole previousRole() const { return tokens_[previous_].role; }

    ExprRole roleOf(std::size_t place) const {
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
    bool isOperatorName(std::size_t place) const {
        const int kind = kindAt(tokens_, place);
        return kind >= Cpp::Assign || kind == Cpp::Comma || kind == Cpp::OpenParen;
    }

    bool opensAggregate() const { return previous_ != kNoToken && previousKind() == Cpp::Assign; }

    // `{ a + b } -> same_as<T>`
    bool followsRequirement() const {
        return previous_ != kNoToken && previousKind() == Cpp::CloseBrace && tokens_[previous_].partner == 0;
    }

    // Outside all brackets of the text behind a type.
    bool isAmongDeclarators() const { return mode_ == ExprMode::Declarators && outer_.empty() && braces_ == 0; }

    // A ":" of a bit field, as opposed to that of a conditional expression.
    bool introducesWidth() const { return isAmongDeclarators() && !segment_.sawQuestion; }

    // Whether the last word begins an argument, which may be read as a parameter.
    bool followsFirstWord() const {
        if (previous_ == kNoToken) return false;
        if (beforePrevious_ == kNoToken) return mode_ == ExprMode::Declaration;
        const ExprRole before = tokens_[beforePrevious_].role;
        return !outer_.empty() && (before == ExprRole::GroupOpen || before == ExprRole::Separator);
    }

    // `DEFINE(a, doc: "text")`: against the word that an argument of a macro begins with.
    bool namesArgument(std::size_t place) const {
        if (!readsTypes_ || !followsFirstWord()) return false;
        const ExprToken& word = tokens_[previous_];
        const std::size_t behind = place + 1;
        const bool isApart = behind >= tokens_.size() || tokens_[place].end() < tokens_[behind].offset;
        return word.kind == Cpp::Identifier && word.end() == tokens_[place].offset && isApart;
    }

    // The "=" of a lambda's capture list.
    bool isCapture(std::size_t place) const {
        return previous_ != kNoToken && previousKind() == Cpp::OpenBracket &&
               (kindAt(tokens_, place + 1) == Cpp::CloseBracket || kindAt(tokens_, place + 1) == Cpp::Comma);
    }

    bool isInDeclaration() const {
        return (mode_ == ExprMode::Declaration && !segment_.isOperand) || segment_.isParameter;
    }

    ExprRole roleOfStar(std::size_t place) const {
        const bool isLogical = kindAt(tokens_, place) == Cpp::LogicalAnd;
        if (isAmongDeclarators() && (previous_ == kNoToken || previousKind() == Cpp::Comma))
            return ExprRole::Mark;
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

    // `(a && ...)`, `constant<(a && ...)>`, as opposed to the parameters of a template's argument:
    // `function<void(A&&...)>`
    bool isFold(std::size_t place) const {
        const std::size_t dots = nextPlace(tokens_, place);
        if (!isPack(tokens_, dots) || outer_.empty()) return false;
        if (outer_.back().isArgument ? outer_.back().sawType : isInDeclaration()) return false;
        const std::size_t behind = dots + kDotsOfPack;
        return kindAt(tokens_, behind) == Cpp::CloseParen || kindAt(tokens_, behind) == kindAt(tokens_, place);
    }

    bool followsType() const {
        const int kind = previousKind();
        if (kind == Cpp::Identifier) return !Cpp::isOperatorWord(tokens_[previous_].text());
        return previousRole() == ExprRole::TemplateClose || isBuiltinTypeKeyword(kind) || Cpp::isQualifier(kind) ||
               kind == Cpp::KeywordUnsigned || kind == Cpp::KeywordSigned || kind == Cpp::KeywordAuto ||
               closesTypeWord(previous_);
    }

    // The ")" of `decltype(a)`.
    bool closesTypeWord(std::size_t place) const {
        if (tokens_[place].role != ExprRole::GroupClose) return false;
        const std::size_t open = tokens_[place].partner;
        return open > 0 && Cpp::namesType(tokens_[open - 1]);
    }

    // `ELEMENT(a) *`, in front of a name that is not in the text.
    bool endsTypeOfMacro(std::size_t place) const {
        if (mode_ != ExprMode::Declaration || !outer_.empty() || previousRole() != ExprRole::GroupClose) return false;
        while (isPointerMark(kindAt(tokens_, place)) || Cpp::isQualifier(kindAt(tokens_, place))) {
            place = nextPlace(tokens_, place);
        }
        return place >= tokens_.size();
    }

    bool isMark(std::size_t place) const {
        if (endsTypeOfMacro(place)) return true;
        if (readsTypes_ && Cpp::isQualifier(previousKind())) return true;
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
        return segment_.atTextStart && (behind == Cpp::Assign || behind == Cpp::Colon);
    }

    // `function<A *(B &)>`: whether types stand in the parentheses, which end a template's argument.
    bool opensParameters(std::size_t open) const {
        if (kindAt(tokens_, open) != Cpp::OpenParen || tokens_[open].partner == kNoToken) return false;
        const std::size_t close = tokens_[open].partner;
        const int last = kindAt(tokens_, close - 1);
        const bool holdsType = close == open + 1 || isPointerMark(last) || last == Cpp::LogicalAnd ||
                               isBuiltinTypeKeyword(last) || Cpp::isQualifier(last);
        return holdsType && endsDeclarator(nextPlace(tokens_, close));
    }

    // Where no operand can follow, a "*" or "&" multiplies nothing.
    bool endsDeclarator(std::size_t place) const {
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

    bool endsDeclaredName(std::size_t place) const {
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
    bool isFurtherName(std::size_t place) const {
        return kindAt(tokens_, place) == Cpp::Identifier && !Cpp::isOperatorWord(tokens_[place].text());
    }

    bool isDeclaredName(std::size_t place) const {
        if (!isInDeclaration() || previous_ == kNoToken) return false;
        if (tokens_[place].text().starts_with("::")) return false;
        if (!segment_.isTypeSoFar || !segment_.sawType || !followsType()) return false;
        return endsDeclaredName(nextPlace(tokens_, place));
    }

    // Whether the token stands behind an operand, so that an operator there is a binary one.
    bool followsOperand(std::size_t place) const {
        if (previous_ == kNoToken) return false;
        switch (previousRole()) {
            case ExprRole::GroupClose:
                return !followsCast(place) && !followsDelete();
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

    // `delete[] *p`
    bool followsDelete() const {
        return endsDelete(tokens_, previous_);
    }

    // `(A)(B)&c`: whether one name in parentheses stands in front of the group.
    bool followsName(std::size_t open) const {
        if (open == 0 || kindAt(tokens_, open - 1) != Cpp::CloseParen) return false;
        const std::size_t first = tokens_[open - 1].partner;
        return first != kNoToken && !tokens_[first].followsCall &&
               contentsOf(tokens_, first) != Parenthesised::Expression;
    }

    // `(annotation T)`, as opposed to what the operators of macros and of the language make of names: `(NOT a)`,
    // `(not a)`, `(a AND b)`.
    bool holdsAnnotatedType(std::size_t open) const {
        const std::size_t first = nextPlace(tokens_, open);
        const std::size_t second = nextPlace(tokens_, first);
        const std::string_view word = tokens_[first].text();
        const bool areTwo = nextPlace(tokens_, second) == tokens_[open].partner;
        return areTwo && !Cpp::isUpperCase(word) && !Cpp::isOperatorWord(word);
    }

    // `(T)-x`: whether the group in front is a cast. With one name in it, `(n)*x`, it may be either: then the
    // input's white space behind the operator tells what its writer meant; but behind a cast a sign is that
    // of a number.
    bool followsCast(std::size_t place) const {
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
        const bool isApart = tokens_[close].end() < mark.offset;
        if (!isApart && isCastByBlank(tokens_, close, place)) return false;
        const bool isBeforeOperand = next < tokens_.size() && tokens_[next].role != ExprRole::Trivia;
        return isBeforeOperand && tokens_[next].offset == mark.end();
    }

    void advance(std::size_t place) {
        ExprToken& token = tokens_[place];
        if (token.kind == Cpp::OpenBrace) ++braces_;
        if (token.kind == Cpp::CloseBrace) --braces_;
        if (token.role == ExprRole::GroupOpen && previous_ != kNoToken) token.followsCall = isCallee();
        if (token.role == ExprRole::GroupOpen || token.role == ExprRole::TemplateOpen) {
            outer_.push_back(segment_);
            segment_ = {};
            segment_.isOperand = outer_.back().isOperand || followsOperator() || followsArgumentWord();
            segment_.atTextStart = false;
            segment_.isParameter = token.kind == Cpp::OpenParen && followsCapture(tokens_, place);
            segment_.isArgument = token.role == ExprRole::TemplateOpen;
            segment_.isChoice = place > 0 && tokens_[place - 1].text() == "_Generic";
        } else if ((token.role == ExprRole::GroupClose || token.role == ExprRole::TemplateClose) &&
                   !outer_.empty()) {
            const bool closesTwo = token.kind == Cpp::ShiftRight && outer_.size() > 1;
            if (closesTwo) outer_.pop_back();
            segment_ = outer_.back();
            outer_.pop_back();
            if (token.role == ExprRole::GroupClose && !closesTypeWord(place) && !closesPlacement(token.partner))
                segment_.isTypeSoFar = false;
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

    bool followsOperator() const {
        return previous_ != kNoToken && previousRole() == ExprRole::BinaryOperator && previousKind() != Cpp::Arrow;
    }

    // `sizeof(a * b)`, `decltype(a * b)`
    bool followsArgumentWord() const {
        return previous_ != kNoToken &&
               (previousKind() == Cpp::KeywordSizeof || Cpp::takesArgument(tokens_[previous_]));
    }

    // `new (p)`
    bool closesPlacement(std::size_t open) const { return open > 0 && kindAt(tokens_, open - 1) == Cpp::KeywordNew; }

    // The ")" of a lambda's parameters, or that of a function whose head has begun in front of the text.
    bool endsParameters(std::size_t place) const {
        const ExprToken& token = tokens_[place];
        if (token.kind != Cpp::CloseParen) return false;
        if (token.partner == kNoToken) return outer_.empty();
        if (token.partner == 0) return false;
        return tokens_[token.partner - 1].text() == "noexcept" || followsCapture(tokens_, token.partner);
    }

    // Conditions may follow the type, or the body.
    bool goesOnWithReturnType(const ExprToken& token) const {
        if (!outer_.empty()) return isInReturnType_;
        const bool startsType = readsTypes_ && token.kind == Cpp::Arrow && token.role == ExprRole::BinaryOperator;
        return startsType || (isInReturnType_ && token.role != ExprRole::Block && token.text() != "requires");
    }

    // One that may stand between parameters and "->".
    bool isQualifierOfFunction(std::size_t place) const {
        const ExprToken& token = tokens_[place];
        return Cpp::isQualifier(token.kind) || token.kind == Cpp::KeywordMutable || token.kind == Cpp::Ampersand ||
               token.kind == Cpp::LogicalAnd || token.text() == "noexcept" || token.text() == "override" ||
               token.text() == "final";
    }

    bool isCallee() const {
        const int kind = previousKind();
        return previousRole() == ExprRole::Name || previousRole() == ExprRole::Block ||
               kind == Cpp::Identifier || kind == Cpp::KeywordSizeof || kind == Cpp::KeywordThrow ||
               kind == Cpp::CloseBracket || previousRole() == ExprRole::GroupClose ||
               previousRole() == ExprRole::TemplateClose;
    }

    void extendSegment(const ExprToken& token) {
        const int kind = token.kind;
        segment_.sawQuestion |= kind == Cpp::Question;
        segment_.sawQualifier |= Cpp::isQualifier(kind) || Cpp::isClassKey(kind);
        segment_.followsNew |= kind == Cpp::KeywordNew;
        if (kind == Cpp::Identifier || isBuiltinTypeKeyword(kind) || kind == Cpp::KeywordUnsigned ||
            kind == Cpp::KeywordSigned || kind == Cpp::KeywordAuto) {
            segment_.sawType = true;
            return;
        }
        // `this T&& self`
        const bool isObject = kind == Cpp::KeywordThis && segment_.isTypeSoFar && !segment_.sawType;
        const bool isModifier = isObject || (kind >= Cpp::KeywordClass && kind <= Cpp::KeywordUnion);
        if (kind == Cpp::KeywordNew) {
            segment_.isTypeSoFar = true;
            segment_.sawType = false;
        } else if (token.role != ExprRole::Mark && !isModifier) {
            segment_.isTypeSoFar = false;
        }
    }

    ExprTokens& tokens_;
    ExprMode mode_;
    bool readsTypes_;
    std::size_t previous_ = kNoToken;
    std::size_t beforePrevious_ = kNoToken;
    bool followsParameters_ = false;  // or what qualifies the function whose they are
    bool isInReturnType_;
    Segment segment_;
    ShallowStack<Segment> outer_;
    int braces_ = 0;  // that are open
};

}  // namespace

void findRoles(ExprTokens& tokens, ExprMode mode, LambdaParameters parameters) {
    RoleFinder(tokens, mode, parameters).run();
}

}  // namespace Tessel
