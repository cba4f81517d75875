// Roles are decided in two passes. The first matches brackets, "<" among them where it can open template
// arguments. The second walks the tokens with what stands in front of each:
//
//     a * b     binary: behind an operand
//     a * -b    "-" unary: behind an operator
//     T *p = q  a mark: behind a type, in front of a name that is declared
//     (T *)p    a mark: no operand follows
#include "engine/expr_tokens.h"

#include "cpp/lexer.h"
#include "cpp/token_sets.h"
#include "engine/operator_kinds.h"

namespace Tessel {

namespace {

using Tokens = std::vector<ExprToken>;

int kindAt(const Tokens& tokens, std::size_t place) {
    return place < tokens.size() ? tokens[place].token.kind : Trn::kEndKind;
}

std::size_t nextPlace(const Tokens& tokens, std::size_t place) {
    do ++place;
    while (place < tokens.size() && tokens[place].role == ExprRole::Trivia);
    return place;
}

int closingKind(int kind) {
    switch (kind) {
        case Cpp::OpenParen: return Cpp::CloseParen;
        case Cpp::OpenBracket: return Cpp::CloseBracket;
        case Cpp::OpenBrace: return Cpp::CloseBrace;
        default: return Cpp::Greater;
    }
}

// A token that cannot stand among template arguments outside parentheses: the "<" before it compares.
bool endsTemplateSearch(int kind) {
    switch (kind) {
        case Cpp::Semicolon:
        case Cpp::StringLiteral:
        case Cpp::Question: return true;
        default: return kind != Trn::kEndKind && isAssignmentKind(kind);
    }
}

// One that makes template arguments doubtful: `enable_if<!a && b>::type` has them, `a < b && c > d` has not.
bool isConditionOperator(int kind) {
    switch (kind) {
        case Cpp::Exclamation:
        case Cpp::Equal:
        case Cpp::NotEqual:
        case Cpp::LessEqual:
        case Cpp::GreaterEqual: return true;
        default: return isLogicalAndOr(kind);
    }
}

// A token that can only follow a ">" when that was a greater-than.
bool isOperandStart(const Trn::Token& token) {
    switch (token.kind) {
        case Cpp::Identifier: return !token.text.starts_with("::");
        case Cpp::Number:
        case Cpp::CharLiteral:
        case Cpp::StringLiteral: return true;
        default: return false;
    }
}

bool canPrecedeTemplateArguments(int kind) {
    return kind == Cpp::Identifier || kind == Cpp::KeywordOperator || kind == Cpp::KeywordTemplate ||
           isCastKeyword(kind);
}

// Finds the partners of all brackets.
class BracketMatcher {
public:
    BracketMatcher(Tokens& tokens, ExprMode mode) : tokens_(tokens), mode_(mode) {}

    void run() {
        int previousKind = Trn::kEndKind;
        for (std::size_t place = 0; place < tokens_.size(); ++place) {
            ExprToken& token = tokens_[place];
            const int kind = token.token.kind;
            if (token.role == ExprRole::Trivia || token.role == ExprRole::Block) continue;
            switch (kind) {
                case Cpp::OpenParen:
                case Cpp::OpenBracket:
                case Cpp::OpenBrace: open_.push_back({place}); break;
                case Cpp::Less:
                    if (canPrecedeTemplateArguments(previousKind)) open_.push_back({place});
                    break;
                case Cpp::CloseParen:
                case Cpp::CloseBracket:
                case Cpp::CloseBrace: close(place); break;
                case Cpp::Greater: closeAngle(place); break;
                case Cpp::ShiftRight: closeTwoAngles(place); break;
                default:
                    if (isConditionOperator(kind)) {
                        if (!endsArgument(place)) doubtAngles();
                    } else if (endsTemplateSearch(kind)) {
                        dropAngles();
                    }
            }
            previousKind = kind;
        }
    }

private:
    struct Open {
        std::size_t place;
        bool isDoubted = false;  // an angle behind which an operator of conditions stands
    };

    bool angleIsOpen() const { return !open_.empty() && kindAt(tokens_, open_.back().place) == Cpp::Less; }

    void dropAngles() {
        while (angleIsOpen()) open_.pop_back();
    }

    // Those that are open up to the next bracket compare, unless a name in what they make follows.
    void doubtAngles() {
        for (auto open = open_.rbegin(); open != open_.rend() && !open->isDoubted; ++open) {
            if (kindAt(tokens_, open->place) != Cpp::Less) return;
            open->isDoubted = true;
        }
    }

    // `T &&>`: the "&&" belongs to a type.
    bool endsArgument(std::size_t place) const {
        const int next = kindAt(tokens_, nextPlace(tokens_, place));
        return kindAt(tokens_, place) == Cpp::LogicalAnd && (next == Cpp::Greater || next == Cpp::ShiftRight);
    }

    void join(std::size_t openPlace, std::size_t closePlace) {
        tokens_[openPlace].partner = closePlace;
        tokens_[closePlace].partner = openPlace;
    }

    void close(std::size_t place) {
        dropAngles();
        if (open_.empty() || closingKind(kindAt(tokens_, open_.back().place)) != kindAt(tokens_, place)) return;
        join(open_.back().place, place);
        open_.pop_back();
    }

    bool canEndTemplateArguments(std::size_t place) const {
        if (open_.back().isDoubted) {
            const std::size_t name = nextPlace(tokens_, place);
            return name < tokens_.size() && tokens_[name].token.text.starts_with("::");
        }
        if (mode_ == ExprMode::Declaration) return true;
        const std::size_t next = nextPlace(tokens_, place);
        return next >= tokens_.size() || !isOperandStart(tokens_[next].token) || startsDeclaration(open_.back().place);
    }

    // Whether a "<" stands behind the text's first word, where `vector<int> v` may be declared in a condition.
    bool startsDeclaration(std::size_t place) const { return place == 1; }

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
        tokens_[open_.back().place].partner = place;
        open_.pop_back();
        join(open_.back().place, place);
        open_.pop_back();
    }

    Tokens& tokens_;
    ExprMode mode_;
    std::vector<Open> open_;
};

// Finds the role of every token from what stands around it.
class RoleFinder {
public:
    RoleFinder(Tokens& tokens, ExprMode mode) : tokens_(tokens), mode_(mode) {}

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
        bool sawQualifier = false;  // "const", which only types have
    };

    int previousKind() const { return kindAt(tokens_, previous_); }
    ExprRole previousRole() const { return tokens_[previous_].role; }

    ExprRole roleOf(std::size_t place) const {
        const ExprToken& token = tokens_[place];
        const int kind = token.token.kind;
        if (token.role == ExprRole::Block) return ExprRole::Block;
        if (previous_ != kNoToken && previousKind() == Cpp::KeywordOperator && isOperatorName(place)) {
            return ExprRole::Operand;
        }
        const bool isMatched = token.partner != kNoToken;
        switch (kind) {
            case Cpp::OpenParen:
            case Cpp::OpenBracket: return isMatched ? ExprRole::GroupOpen : ExprRole::Operand;
            case Cpp::CloseParen:
            case Cpp::CloseBracket: return isMatched ? ExprRole::GroupClose : ExprRole::Operand;
            case Cpp::OpenBrace: return isMatched && opensAggregate() ? ExprRole::BraceOpen : ExprRole::Operand;
            case Cpp::CloseBrace:
                return isMatched && tokens_[token.partner].role == ExprRole::BraceOpen ? ExprRole::BraceClose
                                                                                       : ExprRole::Operand;
            case Cpp::Less: return isMatched ? ExprRole::TemplateOpen : ExprRole::BinaryOperator;
            case Cpp::Greater:
            case Cpp::ShiftRight: return isMatched ? ExprRole::TemplateClose : ExprRole::BinaryOperator;
            case Cpp::Comma:
            case Cpp::Semicolon: return ExprRole::Separator;
            case Cpp::Tilde: return ExprRole::UnaryOperator;
            case Cpp::Exclamation: return ExprRole::UnaryOperator;
            case Cpp::Increment:
            case Cpp::Decrement: return followsOperand(place) ? ExprRole::Operand : ExprRole::UnaryOperator;
            case Cpp::Asterisk:
            case Cpp::Ampersand:
            case Cpp::LogicalAnd: return roleOfStar(place);
            case Cpp::Plus:
            case Cpp::Minus: return followsOperand(place) ? ExprRole::BinaryOperator : ExprRole::UnaryOperator;
            case Cpp::Identifier: return isDeclaredName(place) ? ExprRole::Name : ExprRole::Operand;
            case Cpp::Colon: return introducesWidth() ? ExprRole::Operand : ExprRole::BinaryOperator;
            case Cpp::Assign: return isCapture(place) ? ExprRole::Operand : ExprRole::BinaryOperator;
            default: return isOperatorKind(kind) ? ExprRole::BinaryOperator : ExprRole::Operand;
        }
    }

    // The token behind "operator", and the ")" or "]" that belongs to it.
    bool isOperatorName(std::size_t place) const {
        const int kind = kindAt(tokens_, place);
        return kind >= Cpp::Assign || kind == Cpp::Comma || kind == Cpp::OpenParen;
    }

    bool opensAggregate() const { return previous_ != kNoToken && previousKind() == Cpp::Assign; }

    // Outside all brackets of the text behind a type.
    bool isAmongDeclarators() const { return mode_ == ExprMode::Declarators && outer_.empty(); }

    // A ":" of a bit field, as opposed to that of a conditional expression.
    bool introducesWidth() const { return isAmongDeclarators() && !segment_.sawQuestion; }

    // The "=" of a lambda's capture list.
    bool isCapture(std::size_t place) const {
        return previous_ != kNoToken && previousKind() == Cpp::OpenBracket &&
               (kindAt(tokens_, place + 1) == Cpp::CloseBracket || kindAt(tokens_, place + 1) == Cpp::Comma);
    }

    bool isInDeclaration() const { return mode_ == ExprMode::Declaration || segment_.isParameter; }

    ExprRole roleOfStar(std::size_t place) const {
        const bool isLogical = kindAt(tokens_, place) == Cpp::LogicalAnd;
        if (isAmongDeclarators() && (previous_ == kNoToken || previousKind() == Cpp::Comma)) return ExprRole::Mark;
        if (previous_ != kNoToken && previousRole() == ExprRole::Mark) return ExprRole::Mark;
        if (previous_ == kNoToken) return isLogical ? ExprRole::BinaryOperator : ExprRole::UnaryOperator;
        if (isMark(place)) return ExprRole::Mark;
        return followsOperand(place) || isLogical ? ExprRole::BinaryOperator : ExprRole::UnaryOperator;
    }

    bool followsType() const {
        const int kind = previousKind();
        return kind == Cpp::Identifier || previousRole() == ExprRole::TemplateClose ||
               isBuiltinTypeKeyword(kind) || Cpp::isQualifier(kind) || kind == Cpp::KeywordUnsigned ||
               kind == Cpp::KeywordSigned || kind == Cpp::KeywordAuto;
    }

    bool isMark(std::size_t place) const {
        if (!followsType()) return false;
        if (isBuiltinTypeKeyword(previousKind()) || previousKind() == Cpp::KeywordAuto) return true;
        std::size_t next = nextPlace(tokens_, place);
        while (isPointerMark(kindAt(tokens_, next)) || Cpp::isQualifier(kindAt(tokens_, next))) {
            next = nextPlace(tokens_, next);
        }
        const bool isArray = kindAt(tokens_, next) == Cpp::OpenBracket && isInDeclaration();
        if (endsDeclarator(next) || (isArray && segment_.isTypeSoFar)) return segment_.isTypeSoFar || kindAt(tokens_, place) != Cpp::LogicalAnd;
        if (!segment_.isTypeSoFar || !segment_.sawType) return false;
        if (segment_.sawQualifier) return true;
        const int kind = kindAt(tokens_, next);
        if (kind == Cpp::Assign) return isInDeclaration();
        if (kind == Cpp::OpenParen) return isInDeclaration() && kindAt(tokens_, next + 1) == Cpp::Asterisk;
        if (kind != Cpp::Identifier) return false;
        const std::size_t behindName = nextPlace(tokens_, next);
        if (isInDeclaration()) return endsDeclaredName(behindName);
        const int behind = kindAt(tokens_, behindName);
        return segment_.atTextStart && (behind == Cpp::Assign || behind == Cpp::Colon);
    }

    // Where no operand can follow, a "*" or "&" multiplies nothing.
    bool endsDeclarator(std::size_t place) const {
        if (place < tokens_.size() && tokens_[place].role == ExprRole::Block) return true;
        switch (kindAt(tokens_, place)) {
            case Trn::kEndKind:
            case Cpp::CloseParen:
            case Cpp::Comma:
            case Cpp::Dot:  // of "..."
            case Cpp::Semicolon: return true;
            case Cpp::Greater:
            case Cpp::ShiftRight: return tokens_[place].partner != kNoToken;
            default: return false;
        }
    }

    bool endsDeclaredName(std::size_t place) const {
        switch (kindAt(tokens_, place)) {
            case Cpp::Assign:
            case Cpp::Colon:
            case Cpp::OpenBracket:
            case Cpp::OpenParen: return true;
            default: return endsDeclarator(place);
        }
    }

    bool isDeclaredName(std::size_t place) const {
        if (!isInDeclaration() || previous_ == kNoToken) return false;
        if (tokens_[place].token.text.starts_with("::")) return false;
        if (!segment_.isTypeSoFar || !segment_.sawType || !followsType()) return false;
        return endsDeclaredName(nextPlace(tokens_, place));
    }

    // Whether the token stands behind an operand, so that an operator there is a binary one.
    bool followsOperand(std::size_t place) const {
        if (previous_ == kNoToken) return false;
        switch (previousRole()) {
            case ExprRole::GroupClose: return !followsCast(place);
            case ExprRole::TemplateClose:
            case ExprRole::BraceClose:
            case ExprRole::Block:
            case ExprRole::Name: return true;
            case ExprRole::Operand: break;
            default: return false;
        }
        switch (previousKind()) {
            case Cpp::Identifier:
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
            case Cpp::CloseBrace: return true;
            default: return isBuiltinTypeKeyword(previousKind());
        }
    }

    // `(T)-x`: whether the group in front is a cast. With one name in it, `(n)*x`, it may be either: then the
    // input's white space behind the operator tells what its writer meant; but behind a cast a sign is that of a
    // number.
    bool followsCast(std::size_t place) const {
        const std::size_t close = previous_;
        const std::size_t open = tokens_[close].partner;
        if (kindAt(tokens_, close) != Cpp::CloseParen || tokens_[open].followsCall) return false;
        bool isOneName = true;
        bool sawTypeWord = false;
        int count = 0;
        for (std::size_t inside = nextPlace(tokens_, open); inside < close; inside = nextPlace(tokens_, inside)) {
            const ExprToken& token = tokens_[inside];
            const int kind = token.token.kind;
            if (inside > open + kLongestCast) return false;
            if (token.role == ExprRole::Mark || isBuiltinTypeKeyword(kind) || Cpp::isQualifier(kind) ||
                kind == Cpp::KeywordUnsigned || kind == Cpp::KeywordSigned || Cpp::isClassKey(kind)) {
                sawTypeWord = true;
            } else if (kind != Cpp::Identifier && token.role != ExprRole::TemplateOpen &&
                       token.role != ExprRole::TemplateClose) {
                if (!sawTypeWord) return false;
            }
            isOneName = isOneName && kind == Cpp::Identifier;
            ++count;
        }
        if (count == 0) return false;
        if (sawTypeWord) return true;
        if (!isOneName || count > 1) return false;
        const Trn::Token& mark = tokens_[place].token;
        const std::size_t next = place + 1;
        const bool isSign = mark.kind == Cpp::Plus || mark.kind == Cpp::Minus;
        if (isSign && kindAt(tokens_, next) != Cpp::Number) return false;
        return next < tokens_.size() && tokens_[next].token.offset == mark.offset + mark.length;
    }

    void advance(std::size_t place) {
        ExprToken& token = tokens_[place];
        if (token.role == ExprRole::GroupOpen && previous_ != kNoToken) token.followsCall = isCallee();
        if (token.role == ExprRole::GroupOpen || token.role == ExprRole::TemplateOpen) {
            outer_.push_back(segment_);
            segment_ = {};
            segment_.atTextStart = false;
            segment_.isParameter = token.token.kind == Cpp::OpenParen && followsCapture();
        } else if ((token.role == ExprRole::GroupClose || token.role == ExprRole::TemplateClose) &&
                   !outer_.empty()) {
            const bool closesTwo = token.token.kind == Cpp::ShiftRight && outer_.size() > 1;
            if (closesTwo) outer_.pop_back();
            segment_ = outer_.back();
            outer_.pop_back();
            if (token.role == ExprRole::GroupClose) segment_.isTypeSoFar = false;
        } else if (token.role == ExprRole::Separator) {
            const bool isClause = token.token.kind == Cpp::Semicolon && outer_.empty();
            const bool isParameter = segment_.isParameter;
            segment_ = {};
            segment_.atTextStart = isClause;
            segment_.isParameter = isParameter;
        } else {
            extendSegment(token);
        }
        previous_ = place;
    }

    // Behind the "[ ]" of a lambda.
    bool followsCapture() const {
        if (previous_ == kNoToken || previousKind() != Cpp::CloseBracket) return false;
        const std::size_t open = tokens_[previous_].partner;
        return open != kNoToken && !tokens_[open].followsCall;
    }

    bool isCallee() const {
        const int kind = previousKind();
        return previousRole() == ExprRole::Name || previousRole() == ExprRole::Block || kind == Cpp::Identifier || kind == Cpp::KeywordSizeof ||
               kind == Cpp::KeywordThrow || kind == Cpp::CloseBracket || previousRole() == ExprRole::GroupClose ||
               previousRole() == ExprRole::TemplateClose;
    }

    void extendSegment(const ExprToken& token) {
        const int kind = token.token.kind;
        segment_.sawQuestion |= kind == Cpp::Question;
        segment_.sawQualifier |= Cpp::isQualifier(kind);
        if (kind == Cpp::Identifier || isBuiltinTypeKeyword(kind) || kind == Cpp::KeywordUnsigned ||
            kind == Cpp::KeywordSigned) {
            segment_.sawType = true;
            return;
        }
        const bool isModifier = kind >= Cpp::KeywordClass && kind <= Cpp::KeywordUnion;
        if (token.role != ExprRole::Mark && !isModifier) segment_.isTypeSoFar = false;
    }

    // Tokens; a group that holds more is no cast that anybody writes.
    static constexpr std::size_t kLongestCast = 64;

    Tokens& tokens_;
    ExprMode mode_;
    std::size_t previous_ = kNoToken;
    Segment segment_;
    std::vector<Segment> outer_;
};

void lexPiece(std::string_view text, std::size_t first, std::size_t last, Tokens& tokens) {
    Cpp::Lexer lexer(text.substr(first, last - first));
    for (Trn::Token token = lexer.nextToken(); token.kind != Trn::kEndKind; token = lexer.nextToken()) {
        ExprToken& added = tokens.emplace_back();
        added.token = token;
        added.token.offset += static_cast<std::uint32_t>(first);
        // The lexer's own text would end with the lexer.
        added.token.text = text.substr(added.token.offset, token.length);
        if (Cpp::isTrivia(token.kind)) added.role = ExprRole::Trivia;
    }
}

}  // namespace

bool opensBlock(const std::vector<ExprToken>& tokens, std::size_t open) {
    while (open > 0 && tokens[open - 1].role == ExprRole::Trivia) --open;
    switch (open > 0 ? tokens[open - 1].token.kind : Trn::kEndKind) {
        case Cpp::CloseParen:
        case Cpp::CloseBracket:
        case Cpp::Semicolon:
        case Cpp::KeywordDo:
        case Cpp::KeywordElse:
        case Cpp::KeywordTry:
            return true;
        default:
            return false;
    }
}

void readExprTokens(std::string_view text, ExprMode mode, std::vector<ExprToken>& tokens,
                    std::span<const TextExtent> blocks) {
    tokens.clear();
    std::size_t place = 0;
    for (const TextExtent& block : blocks) {
        lexPiece(text, place, block.offset, tokens);
        ExprToken& added = tokens.emplace_back();
        added.role = ExprRole::Block;
        added.token.kind = Cpp::CloseBrace;
        added.token.offset = static_cast<std::uint32_t>(block.offset);
        added.token.length = static_cast<std::uint32_t>(block.length);
        added.token.text = text.substr(block.offset, block.length);
        place = block.offset + block.length;
    }
    lexPiece(text, place, text.size(), tokens);
    BracketMatcher(tokens, mode).run();
    RoleFinder(tokens, mode).run();
}

}  // namespace Tessel
