#pragma once

#include <cstddef>

#include "engine/expr_tokens.h"
#include "engine/shallow_stack.h"

namespace Tessel {

// Walks over the tokens of a text, with what stands in front of each. What it asks is a file to a subject: what a token
// does (expr_roles.cpp, with the walk itself), where marks and names that are declared stand (expr_mark_roles.cpp), and
// where operands end, casts among them (expr_operand_roles.cpp).
class RoleFinder {
public:
    RoleFinder(ExprTokens& tokens, ExprMode mode, LambdaParameters parameters)
        : tokens_(tokens), mode_(mode), readsTypes_(parameters == LambdaParameters::Declared),
          isInReturnType_(mode == ExprMode::ReturnedType && readsTypes_) {
        if (readsTypes_ && isInstantiation(tokens)) mode_ = ExprMode::Declaration;
    }

    void run();

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

    ExprRole roleOf(std::size_t place) const;
    bool isOperatorName(std::size_t place) const;
    bool opensAggregate() const { return previous_ != kNoToken && previousKind() == Cpp::Assign; }
    bool followsRequirement() const;
    // Outside all brackets of the text behind a type.
    bool startsDeclarator() const;
    bool isAmongDeclarators() const { return mode_ == ExprMode::Declarators && outer_.empty() && braces_ == 0; }
    // A ":" of a bit field, as opposed to that of a conditional expression.
    bool introducesWidth() const { return isAmongDeclarators() && !segment_.sawQuestion; }
    bool followsFirstWord() const;
    bool namesArgument(std::size_t place) const;
    bool isCapture(std::size_t place) const;

    // The walk.
    void advance(std::size_t place);
    bool followsOperator() const;
    bool followsArgumentWord() const;
    // `new (p)`
    bool closesPlacement(std::size_t open) const { return open > 0 && kindAt(tokens_, open - 1) == Cpp::KeywordNew; }
    bool closesAttribute(std::size_t place) const;
    bool endsParameters(std::size_t place) const;
    bool goesOnWithReturnType(const ExprToken& token) const;
    bool isQualifierOfFunction(std::size_t place) const;
    bool isCallee() const;
    void extendSegment(const ExprToken& token);

    // Marks, and names that are declared.
    bool isInDeclaration() const {
        return (mode_ == ExprMode::Declaration && !segment_.isOperand) || segment_.isParameter;
    }
    ExprRole roleOfStar(std::size_t place) const;
    bool isFold(std::size_t place) const;
    bool followsType() const;
    bool closesTypeWord(std::size_t place) const;
    bool endsTypeOfMacro(std::size_t place) const;
    bool followsTypeOfMacro(std::size_t place) const;
    bool isMark(std::size_t place) const;
    bool isAgainstOneSide(std::size_t place) const;
    bool opensParameters(std::size_t open) const;
    bool declaresFunction(std::size_t open) const;
    bool endsDeclarator(std::size_t place) const;
    bool endsDeclaredName(std::size_t place) const;
    bool isFurtherName(std::size_t place) const;
    bool isDeclaredName(std::size_t place) const;

    // Operands.
    bool followsOperand(std::size_t place) const;
    bool followsName(std::size_t open) const;
    bool holdsAnnotatedType(std::size_t open) const;
    bool followsCast(std::size_t place) const;

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

}  // namespace Tessel
