#include "layout/operand_scopes.h"

#include "cpp/token_kind.h"
#include "engine/operator_kinds.h"

namespace Tessel {

namespace {

OperandRank rankOfOperator(int kind) {
    switch (kind) {
        case Cpp::Question:
            return OperandRank::Conditional;
        case Cpp::LogicalOr:
            return OperandRank::Or;
        case Cpp::LogicalAnd:
            return OperandRank::And;
        case Cpp::Bar:
            return OperandRank::BitOr;
        case Cpp::Caret:
            return OperandRank::BitXor;
        case Cpp::Ampersand:
            return OperandRank::BitAnd;
        case Cpp::Equal:
        case Cpp::NotEqual:
            return OperandRank::Equality;
        case Cpp::Less:
        case Cpp::Greater:
        case Cpp::LessEqual:
        case Cpp::GreaterEqual:
            return OperandRank::Relation;
        case Cpp::ShiftLeft:
        case Cpp::ShiftRight:
            return OperandRank::Shift;
        case Cpp::Plus:
        case Cpp::Minus:
            return OperandRank::Sum;
        case Cpp::Asterisk:
        case Cpp::Slash:
        case Cpp::Percent:
            return OperandRank::Product;
        default:
            return isAssignmentKind(kind) ? OperandRank::Assignment : OperandRank::None;
    }
}

}  // namespace

OperandScopes::OperandScopes(const ExprTokens& tokens, std::size_t name)
    : tokens_(tokens), typeEnd_(name == kNoToken ? 0 : name), places_(tokens.size()) {
    levels_.emplace_back();
    for (std::size_t place = 0; place < tokens.size(); ++place) {
        if (tokens[place].role == ExprRole::Trivia) {
            places_[place].depth = static_cast<std::uint16_t>(levels_.size() - 1);
        } else {
            pass(place);
        }
    }
    while (!levels_.empty()) {
        endElement();
        levels_.pop_back();
    }
}

void OperandScopes::pass(std::size_t place) {
    const ExprToken& token = tokens_[place];
    places_[place].depth = static_cast<std::uint16_t>(levels_.size() - 1);
    while (levels_.size() > 1 && levels_.back().close == place) {
        endElement();
        levels_.pop_back();
        ++places_[place].closesBrackets;
    }
    if (token.role == ExprRole::Separator && token.kind == Cpp::Semicolon) {
        endElement();
    } else if (token.role == ExprRole::BinaryOperator && token.kind == Cpp::Colon &&
               levels_.back().questions == 0) {
        endElement();
    } else if (token.kind == Cpp::KeywordReturn) {
        levels_.back().operand = kNoToken;
    } else if (const OperandRank rank = rankOf(place); rank != OperandRank::None) {
        passOperator(place, rank);
    } else {
        if (levels_.back().operand == kNoToken) levels_.back().operand = place;
        if (opensBracket(tokens_, place)) levels_.emplace_back().close = token.partner;
    }
    previous_ = place;
}

OperandRank OperandScopes::rankOf(std::size_t place) {
    const ExprToken& token = tokens_[place];
    const int kind = token.kind;
    if (token.role == ExprRole::Separator) return OperandRank::Comma;
    Level& level = levels_.back();
    if (token.role == ExprRole::Operand) {
        const bool isMember =
            (kind == Cpp::Dot && !isPack(tokens_, place) && kindAt(tokens_, previous_) != Cpp::Dot) ||
            kind == Cpp::Arrow;
        const bool isOfResult = kind == Cpp::Arrow && typeEnd_ > 0 && levels_.size() == 1;
        return isMember && !isOfResult && level.operand != kNoToken ? OperandRank::Member : OperandRank::None;
    }
    const bool isInType = place < typeEnd_ && levels_.size() == 1;
    if (token.role != ExprRole::BinaryOperator || isInType) return OperandRank::None;
    if (kind == Cpp::Question) ++level.questions;
    if (kind == Cpp::Colon) {
        --level.questions;
        return OperandRank::Conditional;
    }
    return rankOfOperator(kind);
}

void OperandScopes::passOperator(std::size_t place, OperandRank rank) {
    places_[place].rank = rank;
    if (levels_.back().operand == kNoToken) levels_.back().operand = place;
    std::size_t start = levels_.back().operand;
    while (!levels_.back().open.empty() && levels_.back().open.back().rank > rank) {
        start = levels_.back().open.back().start;
        endScope();
    }
    Level& level = levels_.back();
    if (level.open.empty() || level.open.back().rank < rank) {
        scopes_.push_back({rank, places_[start].opens, false});
        places_[start].opens = static_cast<std::uint32_t>(scopes_.size() - 1);
        places_[place].isFirstOperator = true;
        level.open.push_back({rank, start, place, places_[start].opens});
    } else {
        const bool isQuestion = tokens_[place].kind == Cpp::Question;
        const bool followsColon = tokens_[level.open.back().lastOperator].kind == Cpp::Colon;
        if (isQuestion && followsColon) scopes_[level.open.back().scope].holdsQuestions = true;
        places_[level.open.back().lastOperator].nextOperator = place;
        level.open.back().lastOperator = place;
    }
    if (rank != OperandRank::Member) level.operand = kNoToken;
}

void OperandScopes::endScope() {
    Place& last = places_[previous_];
    ++last.closes;
    last.closesScope |= levels_.back().open.back().rank != OperandRank::Member;
    levels_.back().open.pop_back();
}

void OperandScopes::endElement() {
    while (!levels_.back().open.empty()) endScope();
    levels_.back().operand = kNoToken;
    levels_.back().questions = 0;
}

}  // namespace Tessel
