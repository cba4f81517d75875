#pragma once

#include <cstddef>
#include <vector>

#include "engine/expr_tokens.h"

namespace Tessel {

// Which operators of a text belong together: those of one rank between the same brackets, with nothing weaker between
// them.
//
//     a && b * c || d        "||" by itself, and in it "&&", and in that "*"
class OperandChains {
public:
    struct Chain {
        std::size_t start = kNoToken;  // the first token of its first operand
        bool isIndented = false;       // its further lines stand behind that, as opposed to below it
        std::size_t outer = kNoToken;  // the chain that it is the first operand of
        std::size_t operators = 0;     // how many it has
    };

    // The tokens are borrowed. `isList`: the text stands in brackets.
    OperandChains(const ExprTokens& tokens, bool isList);

    // By how many indents further lines of the chain stand behind its start.
    int depthOf(const Chain& chain) const;
    // That of the operator at `place`; null where there is none.
    const Chain* of(std::size_t place) const {
        const std::size_t chain = place < chainOf_.size() ? chainOf_[place] : kNoToken;
        return chain == kNoToken ? nullptr : &chains_[chain];
    }
    // Whether an operand that begins with the token is the first of a chain.
    bool startWith(std::size_t place) const { return firstChain_[place] != kNoToken; }
    // The one that binds the strongest of those; null where there is none.
    const Chain* startingWith(std::size_t place) const {
        return startWith(place) ? &chains_[firstChain_[place]] : nullptr;
    }
    // Whether several elements stand behind the bracket.
    bool holdsComma(std::size_t open) const { return holdsComma_[open]; }

private:
    struct Open {
        int rank;
        std::size_t chain;
        bool awaitsColon;  // a "?" came last
    };

    // Where what is being read stands: behind a bracket, where it is alone unless a comma follows; behind "=", "return"
    // or ";"; or somewhere else.
    enum class Place { BehindOpen, ByItself, AmongOthers };

    // What stands between a pair of brackets, or the text itself.
    struct Level {
        std::size_t bracket = kNoToken;
        std::size_t close = kNoToken;
        std::size_t operand = kNoToken;  // the first token of the one that is being read
        Place place = Place::AmongOthers;
        std::vector<Open> open;             // chains, the weakest first
        std::size_t firstOuter = kNoToken;  // of a first element: the chain that is part of no other
        int questions = 0;                  // that no ":" has been read for
    };

    void pass(std::size_t place);
    void passOperator(std::size_t place, int rank);
    static bool isColonOfLoop(Level& level, int kind);
    void endElement(Level& level);
    void endLevel();
    void startElement(Level& level, Place place);

    const ExprTokens& tokens_;
    std::vector<Chain> chains_;
    std::vector<std::size_t> chainOf_;
    std::vector<std::size_t> firstChain_;  // that starts with the token
    std::vector<bool> holdsComma_;
    std::vector<Level> levels_;
};

}  // namespace Tessel
