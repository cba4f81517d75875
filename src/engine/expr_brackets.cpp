#include "engine/expr_brackets.h"

#include "cpp/token_kind.h"
#include "cpp/token_sets.h"
#include "cpp/words.h"
#include "engine/operator_kinds.h"
#include "engine/shallow_stack.h"

namespace Tessel {

namespace {

int closingKind(int kind) {
    switch (kind) {
        case Cpp::OpenParen:
            return Cpp::CloseParen;
        case Cpp::OpenBracket:
            return Cpp::CloseBracket;
        case Cpp::OpenBrace:
            return Cpp::CloseBrace;
        default:
            return Cpp::Greater;
    }
}

// A token that cannot stand among template arguments outside parentheses: the "<" before it compares.
bool endsTemplateSearch(int kind) {
    switch (kind) {
        case Cpp::Semicolon:
        case Cpp::StringLiteral:
        case Cpp::Question:
            return true;
        default:
            return kind != Trn::kEndKind && isAssignmentKind(kind);
    }
}

// One that makes template arguments doubtful: `enable_if<!a && b>::type` has them, `a < b && c > d` has not.
bool isConditionOperator(int kind) {
    switch (kind) {
        case Cpp::Exclamation:
        case Cpp::Equal:
        case Cpp::NotEqual:
        case Cpp::LessEqual:
        case Cpp::GreaterEqual:
            return true;
        default:
            return isLogicalAndOr(kind);
    }
}

// A token that can only follow a ">" when that was a greater-than.
bool isOperandStart(const ExprToken& token) {
    switch (token.kind) {
        case Cpp::Identifier:
            return !token.text().starts_with("::");
        case Cpp::Number:
        case Cpp::CharLiteral:
        case Cpp::StringLiteral:
            return true;
        default:
            return false;
    }
}

// A token in front of which an operand ends: a ">" there does not compare.
bool endsOperand(int kind) {
    switch (kind) {
        case Trn::kEndKind:
        case Cpp::CloseParen:
        case Cpp::CloseBrace:
        case Cpp::CloseBracket:
        case Cpp::Comma:
        case Cpp::Semicolon:
        case Cpp::OpenBrace:
        case Cpp::Assign:
        case Cpp::Dot:  // the first of "..."
        case Cpp::Greater:
        case Cpp::ShiftRight: return true;
        default: return false;
    }
}

bool canPrecedeTemplateArguments(int kind) {
    return kind == Cpp::Identifier || kind == Cpp::KeywordOperator || kind == Cpp::KeywordTemplate ||
           isCastKeyword(kind);
}

class BracketMatcher {
public:
    BracketMatcher(ExprTokens& tokens, ExprMode mode, LambdaParameters parameters)
        : tokens_(tokens), mode_(mode), declaresParameters_(parameters == LambdaParameters::Declared) {}

    void run() {
        int previousKind = Trn::kEndKind;
        std::size_t previous = kNoToken;
        for (std::size_t place = 0; place < tokens_.size(); ++place) {
            ExprToken& token = tokens_[place];
            const int kind = token.kind;
            if (token.role == ExprRole::Trivia || token.role == ExprRole::Block) continue;
            switch (kind) {
                case Cpp::OpenParen:
                    open_.push_back({place, false, declaresParameters_ && endsLambdaFront(previous)});
                    break;
                case Cpp::OpenBracket:
                case Cpp::OpenBrace:
                    open_.push_back({place});
                    break;
                case Cpp::Less:
                    if (canPrecedeTemplateArguments(previousKind) || endsCapture(previous) ||
                        endsOperatorName(previous) || endsMacroOfName(previous)) {
                        open_.push_back({place, false, previousKind == Cpp::CloseBracket, standsInParameters()});
                    }
                    break;
                case Cpp::CloseParen:
                case Cpp::CloseBracket:
                case Cpp::CloseBrace:
                    close(place);
                    break;
                case Cpp::Greater:
                    closeAngle(place);
                    break;
                case Cpp::ShiftRight:
                    closeTwoAngles(place);
                    break;
                default:
                    sawValue_ |= kind == Cpp::Assign || kind == Cpp::Semicolon;
                    if (isConditionOperator(kind) || choosesArgument(kind) || isConditionWord(place)) {
                        if (!endsArgument(place)) doubtAngles();
                    } else if (endsTemplateSearch(kind)) {
                        const bool isDefault = kind == Cpp::Assign && angleIsOpen() && open_.back().isOfLambda;
                        if (!isDefault) dropAngles();
                    }
            }
            previousKind = kind;
            previous = place;
        }
    }

private:
    struct Open {
        std::size_t place;
        bool isDoubted = false;  // an angle behind which an operator of conditions stands
        bool isOfLambda = false;      // template parameters, or parameters
        bool isInParameters = false;  // an angle in a type among a lambda's parameters
    };

    // The "<" of `operator< <int>`, the ")" of `operator()<int>`.
    bool endsOperatorName(std::size_t place) const {
        if (place == kNoToken || place == 0) return false;
        const bool isPair = tokens_[place].partner == place - 1;
        return kindAt(tokens_, place - (isPair ? 2 : 1)) == Cpp::KeywordOperator;
    }

    // The ")" of `CAT(a, b)<c>`, where only types are named.
    bool endsMacroOfName(std::size_t place) const {
        const bool namesTypes = declaresParameters_ && mode_ == ExprMode::Declaration && !sawValue_;
        if (!namesTypes || kindAt(tokens_, place) != Cpp::CloseParen) return false;
        const std::size_t open = tokens_[place].partner;
        return open != kNoToken && open > 0 && kindAt(tokens_, open - 1) == Cpp::Identifier;
    }

    // The "]" of a lambda, as opposed to that of an index.
    bool endsCapture(std::size_t place) const {
        if (kindAt(tokens_, place) != Cpp::CloseBracket || tokens_[place].partner == kNoToken) return false;
        const std::size_t open = tokens_[place].partner;
        const int ahead = open > 0 ? kindAt(tokens_, open - 1) : Trn::kEndKind;
        switch (ahead) {
            case Cpp::Identifier:
            case Cpp::CloseParen:
            case Cpp::CloseBracket:
            case Cpp::CloseBrace:
            case Cpp::Greater:
            case Cpp::KeywordThis:
            case Cpp::KeywordAuto:
            case Cpp::KeywordOperator: return false;
            default: return true;
        }
    }

    // The "]" of a lambda, or the ">" of its template parameters.
    bool endsLambdaFront(std::size_t place) const {
        const bool closesAngle = kindAt(tokens_, place) == Cpp::Greater && tokens_[place].partner != kNoToken;
        const std::size_t open = closesAngle ? tokens_[place].partner : place + 1;
        return open != 0 && open - 1 < tokens_.size() && endsCapture(open - 1);
    }

    // Whether what comes next stands in a type among a lambda's parameters.
    bool standsInParameters() const {
        if (open_.empty()) return false;
        return angleIsOpen() ? open_.back().isInParameters : open_.back().isOfLambda;
    }

    bool angleIsOpen() const { return !open_.empty() && kindAt(tokens_, open_.back().place) == Cpp::Less; }

    void dropAngles() {
        while (angleIsOpen()) open_.pop_back();
    }

    // Those that are open up to the next bracket compare, unless a name in what they make follows.
    void doubtAngles() {
        for (std::size_t count = open_.size(); count > 0 && !open_[count - 1].isDoubted; --count) {
            if (kindAt(tokens_, open_[count - 1].place) != Cpp::Less) return;
            open_[count - 1].isDoubted = true;
        }
    }

    // `a < b or c > d`
    bool isConditionWord(std::size_t place) const {
        return declaresParameters_ && tokens_[place].kind == Cpp::Identifier && angleIsOpen() &&
               isLogicalAndOr(Cpp::infixKind(tokens_[place].text()));
    }

    // `A<b ? 1 : 2>`, where the arguments of types are laid out.
    bool choosesArgument(int kind) const { return declaresParameters_ && kind == Cpp::Question; }

    // `T &&>`, `T &&, U`, `T &&...`: the "&&" belongs to a type.
    bool endsArgument(std::size_t place) const {
        return kindAt(tokens_, place) == Cpp::LogicalAnd && endsOperand(kindAt(tokens_, nextPlace(tokens_, place)));
    }

    // `enable_if_t<!A> *p`, or, where a value may stand too, `enable_if_t<!A> * = nullptr`: nothing that multiplies.
    bool isMark(std::size_t place) const {
        if (!isPointerMark(kindAt(tokens_, place))) return false;
        const bool isInType = mode_ == ExprMode::Declaration && !sawValue_;
        return isInType || endsOperand(kindAt(tokens_, nextPlace(tokens_, place)));
    }

    void join(std::size_t openPlace, std::size_t closePlace) {
        tokens_[openPlace].setPartner(closePlace);
        tokens_[closePlace].setPartner(openPlace);
    }

    void close(std::size_t place) {
        dropAngles();
        if (open_.empty() || closingKind(kindAt(tokens_, open_.back().place)) != kindAt(tokens_, place))
            return;
        join(open_.back().place, place);
        open_.pop_back();
    }

    bool canEndTemplateArguments(std::size_t place) const {
        if (open_.back().isDoubted) {
            const std::size_t next = nextPlace(tokens_, place);
            return endsOperand(kindAt(tokens_, next)) || isMark(next) ||
                   (next < tokens_.size() && tokens_[next].text().starts_with("::"));
        }
        if (mode_ == ExprMode::Declaration || open_.back().isInParameters) return true;
        // `static_cast<int> SIZE(a)`: a macro makes the parentheses.
        const std::size_t open = open_.back().place;
        if (open > 0 && isCastKeyword(kindAt(tokens_, open - 1))) return true;
        // Where types are laid out, nothing is compared in it.
        if (declaresParameters_ && isInstantiation(tokens_)) return true;
        const std::size_t next = nextPlace(tokens_, place);
        return next >= tokens_.size() || !isOperandStart(tokens_[next]) ||
               startsDeclaration(open_.back().place);
    }

    // Whether a "<" stands behind the text's first word, where `vector<int> v` may be declared in a condition,
    // `const vector<int> v` is, and, behind a macro, `UNUSED vector<int> v` may be.
    bool startsDeclaration(std::size_t place) const {
        const int first = kindAt(tokens_, 0);
        const bool followsMacro = declaresParameters_ && first == Cpp::Identifier;
        const bool isSecond = place == 2 && kindAt(tokens_, 1) == Cpp::Identifier;
        return place == 1 || (isSecond && (followsMacro || Cpp::isQualifier(first)));
    }

    void closeAngle(std::size_t place) {
        if (!angleIsOpen()) return;
        if (canEndTemplateArguments(place)) {
            join(open_.back().place, place);
            open_.pop_back();
        } else {
            dropAngles();
        }
    }

    // ">>" closes two lists at once; the token is given to the outer one.
    void closeTwoAngles(std::size_t place) {
        const std::size_t count = open_.size();
        if (count < 2 || !angleIsOpen() || kindAt(tokens_, open_[count - 2].place) != Cpp::Less) return;
        if (!canEndTemplateArguments(place)) return;
        tokens_[open_.back().place].setPartner(place);
        open_.pop_back();
        join(open_.back().place, place);
        open_.pop_back();
    }

    ExprTokens& tokens_;
    ExprMode mode_;
    bool declaresParameters_;
    ShallowStack<Open> open_;
    bool sawValue_ = false;  // or a clause, in front of which a declaration's type ends
};

}  // namespace

void matchBrackets(ExprTokens& tokens, ExprMode mode, LambdaParameters parameters) {
    BracketMatcher(tokens, mode, parameters).run();
}

}  // namespace Tessel
