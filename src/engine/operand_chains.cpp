#include "engine/operand_chains.h"

#include "cpp/token_kind.h"
#include "cpp/words.h"
#include "engine/operator_kinds.h"

namespace Tessel {

namespace {

constexpr int kNoRank = 0;
constexpr int kConditional = 1;

// The stronger an operator binds, the more; kNoRank for what is none.
int rankOf(int kind) {
    switch (kind) {
        case Cpp::Question:
        case Cpp::Colon: return kConditional;
        case Cpp::LogicalOr: return 2;
        case Cpp::LogicalAnd: return 3;
        case Cpp::Bar: return 4;
        case Cpp::Caret: return 5;
        case Cpp::Ampersand: return 6;
        case Cpp::Equal:
        case Cpp::NotEqual: return 7;
        case Cpp::Less:
        case Cpp::Greater:
        case Cpp::LessEqual:
        case Cpp::GreaterEqual: return 8;
        case Cpp::ShiftLeft:
        case Cpp::ShiftRight: return 9;
        case Cpp::Plus:
        case Cpp::Minus: return 10;
        case Cpp::Asterisk:
        case Cpp::Slash:
        case Cpp::Percent: return 11;
        default: return kNoRank;
    }
}

// A word may be an operator: a and b.
int rankOfToken(const ExprToken& token) {
    if (token.role == ExprRole::BinaryOperator) return rankOf(token.kind);
    return token.kind == Cpp::Identifier ? rankOf(Cpp::infixKind(token.text())) : kNoRank;
}

}  // namespace

OperandChains::OperandChains(const ExprTokens& tokens, bool isList)
    : tokens_(tokens), chainOf_(tokens.size(), kNoToken), firstChain_(tokens.size(), kNoToken),
      holdsComma_(tokens.size(), false) {
    levels_.emplace_back().place = isList ? Place::BehindOpen : Place::AmongOthers;
    for (std::size_t place = 0; place < tokens.size(); ++place) {
        if (tokens[place].role != ExprRole::Trivia) pass(place);
    }
    while (!levels_.empty()) endLevel();
}

int OperandChains::depthOf(const Chain& chain) const {
    int depth = chain.isIndented ? 1 : 0;
    for (const Chain* inner = &chain; inner->outer != kNoToken;) {
        inner = &chains_[inner->outer];
        depth += inner->isIndented ? 1 : 0;
    }
    return depth;
}

void OperandChains::pass(std::size_t place) {
    while (levels_.size() > 1 && levels_.back().close == place) endLevel();
    Level& level = levels_.back();
    const ExprToken& token = tokens_[place];
    const int kind = token.kind;
    if (token.role == ExprRole::Separator) {
        if (kind == Cpp::Comma && level.bracket != kNoToken) holdsComma_[level.bracket] = true;
        startElement(level, kind == Cpp::Semicolon ? Place::ByItself : Place::AmongOthers);
        return;
    }
    if (kind == Cpp::KeywordReturn || (token.role == ExprRole::BinaryOperator && isAssignmentKind(kind))) {
        startElement(level, Place::ByItself);
        return;
    }
    if (token.role == ExprRole::BinaryOperator && isColonOfLoop(level, kind)) {
        startElement(level, Place::ByItself);
        return;
    }
    if (const int rank = rankOfToken(token); rank != kNoRank) {
        passOperator(place, rank);
        return;
    }
    if (level.operand == kNoToken) level.operand = place;
    if (token.partner == kNoToken || token.partner < place) return;
    Level inside;
    inside.bracket = place;
    inside.close = token.partner;
    inside.place = Place::BehindOpen;
    levels_.push_back(std::move(inside));
}

// `for (auto a : list)`: one that no "?" is for.
bool OperandChains::isColonOfLoop(Level& level, int kind) {
    if (kind == Cpp::Question) ++level.questions;
    return kind == Cpp::Colon && level.questions-- <= 0;
}

void OperandChains::passOperator(std::size_t place, int rank) {
    Level& level = levels_.back();
    std::size_t start = level.operand == kNoToken ? place : level.operand;
    std::size_t first = kNoToken;  // the chain that is its first operand
    while (!level.open.empty() && level.open.back().rank > rank) {
        first = level.open.back().chain;
        chains_[first].isIndented = true;
        start = chains_[first].start;
        level.open.pop_back();
    }
    // a ? b ? c : d : e
    const bool isQuestion = tokens_[place].kind == Cpp::Question;
    const auto isOver = [&level] {
        return level.open.size() > 1 && level.open[level.open.size() - 2].rank == kConditional &&
               !level.open.back().awaitsColon;
    };
    while (rank == kConditional && !isQuestion && isOver()) level.open.pop_back();
    const bool isNested = isQuestion && !level.open.empty() && level.open.back().awaitsColon;
    if (level.open.empty() || level.open.back().rank < rank || isNested) {
        level.open.push_back({rank, chains_.size(), false});
        if (first != kNoToken) chains_[first].outer = chains_.size();
        if (!startWith(start)) firstChain_[start] = chains_.size();
        chains_.push_back({start, rank == kConditional});
    }
    ++chains_[level.open.back().chain].operators;
    level.open.back().awaitsColon = isQuestion;
    chainOf_[place] = level.open.back().chain;
    level.operand = kNoToken;
}

void OperandChains::startElement(Level& level, Place place) {
    endElement(level);
    if (level.firstOuter != kNoToken && place == Place::AmongOthers) chains_[level.firstOuter].isIndented = true;
    level.firstOuter = kNoToken;
    level.operand = kNoToken;
    level.place = place;
}

void OperandChains::endElement(Level& level) {
    if (level.open.empty()) return;
    const std::size_t outer = level.open.front().chain;
    for (const Open& open : level.open) {
        if (open.chain != outer) chains_[open.chain].isIndented = true;
    }
    if (level.place == Place::BehindOpen) level.firstOuter = outer;
    if (level.place == Place::AmongOthers) chains_[outer].isIndented = true;
    level.open.clear();
}

void OperandChains::endLevel() {
    endElement(levels_.back());
    levels_.pop_back();
}

}  // namespace Tessel
