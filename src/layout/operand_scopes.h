#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "engine/expr_tokens.h"

namespace Tessel {

// How strongly what stands between operands binds them, the weakest first. The values are what a line costs that begins
// there, beside what it costs in brackets (BreakWeights).
enum class OperandRank : std::uint8_t {
    None,
    Comma,
    Assignment,
    Conditional,
    Or,
    And,
    BitOr,
    BitXor,
    BitAnd,
    Equality,
    Relation,
    Shift = 12,
    Sum,
    Product,
    Member,  // "." and "->"
};

// Which tokens of a text belong together as the operands of one rank: scopes, nested in each other and in the brackets.
//
//     a + b * c        [a + [b * c]]
//     f(a, b.c(d))     f([a, [b.c(d)]])
class OperandScopes {
public:
    // A scope that begins with a token; those that begin with the same one are linked, the outermost first.
    struct Scope {
        OperandRank rank = OperandRank::None;
        std::uint32_t next = kNoScope;
        bool holdsQuestions = false;  // a ? b : c ? d : e
    };
    struct Place {
        OperandRank rank = OperandRank::None;  // of an operator
        bool isFirstOperator = false;          // of its scope
        std::uint32_t opens = kNoScope;        // the first of the scopes that begin here
        std::uint16_t closes = 0;              // how many end here, those of brackets not counted
        std::uint16_t closesBrackets = 0;      // more than one for the ">>" of templates
        std::uint16_t depth = 0;               // how many brackets stand around it
        std::size_t nextOperator = kNoToken;   // of the same scope
        bool closesScope = false;              // with operators, of any rank but Member
    };

    static constexpr std::uint32_t kNoScope = 0xffffffff;

    // The tokens are borrowed. In front of a function's name, where there is one, stands its type.
    explicit OperandScopes(const ExprTokens& tokens, std::size_t name = kNoToken);

    const Place& at(std::size_t place) const { return places_[place]; }
    const Scope& scope(std::uint32_t scope) const { return scopes_[scope]; }

private:
    struct Open {
        OperandRank rank;
        std::size_t start;
        std::size_t lastOperator;
        std::uint32_t scope;
    };
    // What stands between two brackets, or the text.
    struct Level {
        std::size_t close = kNoToken;
        std::size_t operand = kNoToken;  // the first token of the one that is being read
        std::vector<Open> open;
        int questions = 0;  // whose ":" has not come
    };

    void pass(std::size_t place);
    void passOperator(std::size_t place, OperandRank rank);
    OperandRank rankOf(std::size_t place);
    void endScope();
    void endElement();

    const ExprTokens& tokens_;
    std::size_t typeEnd_;
    std::vector<Place> places_;
    std::vector<Scope> scopes_;
    std::vector<Level> levels_;
    std::size_t previous_ = kNoToken;
};

}  // namespace Tessel
