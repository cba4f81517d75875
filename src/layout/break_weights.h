#pragma once

#include <cstddef>
#include <vector>

#include "layout/operand_scopes.h"
#include "layout/wrap_settings.h"

namespace Tessel {

// What a text that is weighed is, and so what its outermost lines hang from.
enum class WeighedText {
    Statement,  // begins at the indentation
    Condition,  // stands in the parentheses of a control statement
    Clauses,    // of a "for"
    Parameters, // of a function
    Head,       // of a function, from its type on
    Class,      // the head of one
    Initializers,  // of a constructor
};

// Whether a text hangs from the statement that it is, not from the brackets around it.
inline bool standsByItself(WeighedText text) {
    return text == WeighedText::Statement || text == WeighedText::Head || text == WeighedText::Class;
}

struct WeighedExtent {
    WeighedText text = WeighedText::Statement;
    std::size_t name = kNoToken;  // the place of the name of a function
    int indentColumn = 0;         // of the statement
    bool keepsName = false;       // on its line
};

// What a line costs that begins with a token: the more, the closer that belongs to the one in front, and the deeper it
// stands in brackets.
class BreakWeights {
public:
    static constexpr int kNoBreak = -1;

    // All are borrowed.
    BreakWeights(const ExprTokens& tokens, const OperandScopes& scopes, const WrapSettings& settings,
                 const WeighedExtent& extent);

    int at(std::size_t place) const { return weights_[place]; }
    // What it costs to make several lines of a block.
    int ofParting(std::size_t block) const;
    // Or two of a name.
    int ofSplitting(std::size_t name) const;
    // Whether lines begin with the operator, as opposed to the operand behind it.
    bool leadsLine(std::size_t place) const;

private:
    int weightOf(std::size_t left, std::size_t place) const;
    bool followsWord(std::size_t place) const;
    int weightBehindOpen(std::size_t open, std::size_t place) const;
    int weightOfMember(std::size_t place) const;
    int weightOfOperator(std::size_t left, std::size_t place) const;
    bool namesValue(std::size_t place) const;
    bool closesPlacement(std::size_t place) const;
    int weightOfAnnotation(std::size_t place) const;
    int weightOfWord(std::size_t left, std::size_t place) const;
    bool holdsElements(std::size_t open) const { return holdsComma_[open]; }

    const ExprTokens& tokens_;
    const OperandScopes& scopes_;
    const WrapSettings& settings_;
    WeighedText text_;
    std::size_t name_;
    bool keepsName_;
    std::vector<bool> holdsComma_;  // of the brackets that open
    std::vector<int> depths_;       // of brackets around each token
    std::vector<int> weights_;
};

}  // namespace Tessel
