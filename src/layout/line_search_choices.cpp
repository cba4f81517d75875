// Where a line may begin, where one has to, and at which column.
#include <algorithm>

#include "cpp/token_kind.h"
#include "engine/columns.h"
#include "layout/line_search.h"

namespace Tessel {

namespace {

constexpr int kShortType = 6;
constexpr int kDeepLiterals = 2;  // brackets around literals in a row, which stay on the line there

bool isComparison(OperandRank rank) { return rank == OperandRank::Relation || rank == OperandRank::Equality; }

}  // namespace

int LineSearch::continuation(const Scope& scope) const {
    return columnAfter(settings_.wrapIndent.text, std::max(scope.last, scope.indent), settings_.tabSize);
}

bool LineSearch::followsOperator(std::size_t place) const {
    const std::size_t left = before(place);
    const OperandRank rank = scopes_.at(left).rank;
    return rank != OperandRank::None && rank != OperandRank::Comma && rank != OperandRank::Member;
}

// Whether the token begins an element of a list that stands in columns, and one in the first of them.
bool LineSearch::isInColumns(const Scope& scope, std::size_t place) const {
    return scope.columns > 0 && listColumns_.indexOf(place) != kNoToken;
}
bool LineSearch::startsRow(const Scope& scope, std::size_t place) const {
    return listColumns_.indexOf(place) % static_cast<std::size_t>(scope.columns) == 0;
}

// ROW(a)
// ROW(b)    where nothing but the line parts what macros make
bool LineSearch::followsRowOfMacros(std::size_t place) const {
    if (place >= tokens_.size() || tokens_[place].kind != Cpp::Identifier || !standsApart(place)) return false;
    const ExprToken& left = tokens_[before(place)];
    return scopes_.at(place).depth > 0 && left.kind == Cpp::CloseParen && tokens_[left.partner].followsCall;
}

int LineSearch::columnOfLine(const Way& way, std::size_t place) const {
    const Scope& scope = way.top;
    if (isClose(place) && tokens_[place].kind == Cpp::CloseBrace) return scope.lineColumn;
    const std::size_t left = before(place);
    const OperandRank rank = scopes_.at(place).rank;
    if (way.declarator >= 0 && startsDeclarator(place)) return way.declarator;
    if (way.literal >= 0 && tokens_[place].kind == Cpp::StringLiteral) return way.literal;
    if (rank == OperandRank::Shift && scope.shift >= 0) return scope.shift;
    if (rank == OperandRank::Member) return scope.member >= 0 ? scope.member : continuation(scope);
    const bool followsQuestion = left != kNoToken && scopes_.at(left).rank == OperandRank::Conditional;
    if (isQuestionInRow(scope, place)) {
        return columnAfter(settings_.operandIndent.text, scope.question, settings_.tabSize);
    }
    if (scope.question >= 0 && (rank == OperandRank::Conditional || followsQuestion)) return scope.question;
    if (place == name_) return std::max(scope.last, scope.indent);
    if (followsRowOfMacros(place)) return scope.row >= 0 && !scope.isBraced ? scope.row : scope.indent;
    const bool followsWord =
        tokens_[place].kind == Cpp::Identifier && tokens_[left].kind == Cpp::Identifier;
    if (followsWord && scope.isBraced) return scope.indent;
    if (followsWord || tokens_[place].role == ExprRole::Name) return continuation(scope);
    const bool isOfLater = way.later >= 0 && scopes_.at(place).depth == 0;
    if (scopes_.at(left).rank == OperandRank::Assignment) {
        return isOfLater ? columnAfter(settings_.wrapIndent.text, way.later, settings_.tabSize) : continuation(scope);
    }
    const bool isOperator = rank != OperandRank::None && rank != OperandRank::Comma;
    if (tokens_[left].kind == Cpp::CloseParen && !isOperator) return continuation(scope);
    const bool isStatement = standsByItself(kind_);
    if (isStatement && scope.indent == indentColumn_ && tokens_[left].kind != Cpp::CloseBrace) {
        return columnAfter(settings_.wrapIndent.text, scope.indent, settings_.tabSize);
    }
    return scope.indent;
}

bool LineSearch::mustBegin(const Way& way, std::size_t place, int lineColumn) const {
    const Scope& scope = way.top;
    const int kind = tokens_[place].kind;
    if (text_.continuesLiteral(place)) return true;
    if (weights_.at(place) == BreakWeights::kNoBreak) return false;
    if (isInColumns(scope, place)) return startsRow(scope, place);
    const std::size_t left = before(place);
    const OperandRank rank = scopes_.at(place).rank;
    const OperandRank leftRank = scopes_.at(left).rank;
    const bool startsElement = leftRank == OperandRank::Comma || tokens_[left].kind == Cpp::Semicolon;
    const bool leadsPart =
        rank == OperandRank::Conditional && !(scope.holdsQuestions && kind == Cpp::Question);
    if ((startsElement || leadsPart) && scope.isBroken) return true;
    if (rank == OperandRank::Member && mustBeginMember(way, place, lineColumn)) return true;
    const bool isDeclaredName =
        tokens_[place].role == ExprRole::Name && tokens_[left].role == ExprRole::TemplateClose;
    if (isDeclaredName && scope.isBroken) return true;
    return way.column > lineColumn && mustBeginOperand(scope, place);
}

// What is part of an operation, and would stand to the left of where it does.
bool LineSearch::mustBeginOperand(const Scope& scope, std::size_t place) const {
    const std::size_t left = before(place);
    const OperandRank rank = scopes_.at(place).rank;
    const OperandRank leftRank = scopes_.at(left).rank;
    const bool startsLiterals =
        tokens_[place].kind == Cpp::StringLiteral && place + 1 < tokens_.size() &&
        text_.continuesLiteral(place + 1);
    if (startsLiterals && leftRank != OperandRank::Shift && scopes_.at(place).depth < kDeepLiterals) return true;
    const bool isOperand =
        followsOperator(place) && leftRank != OperandRank::Assignment && !weights_.leadsLine(left);
    if (isOperand && scope.isBroken) {
        const bool isBinary = left > 0 && scopes_.at(before(left)).closesScope;
        return !isComparison(leftRank) || isBinary;
    }
    if (rank == OperandRank::Shift && weights_.leadsLine(place)) {
        return scope.isBroken || endsOutputLine(left) || standsBetweenLiterals(place);
    }
    if (rank >= OperandRank::Or && rank < OperandRank::Member) return scope.isBroken;
    return place == name_ && scope.isBroken;
}

// A call that its line has no room for, and those behind one that began a line.
bool LineSearch::mustBeginMember(const Way& way, std::size_t place, int lineColumn) const {
    const std::size_t next = scopes_.at(place).nextOperator;
    int end = way.column;
    if (next != kNoToken) {
        for (std::size_t at = place; at < next; ++at) end += gaps_[at] + widths_[at];
    }
    const bool isOutside = scopes_.at(place).depth < way.lineDepth;
    if (!text_.isWithinMargin(end) && (way.column > lineColumn || isOutside)) return true;
    return isClose(before(place)) && (way.top.member >= 0 || way.top.isBroken);
}

// `endl`, "text\n" and '\n'
bool LineSearch::endsOutputLine(std::size_t place) const {
    const std::string_view text = text_.tokenText(place);
    return text == "endl" || text.ends_with("::endl") || text.ends_with("\\n\"") || text == "'\\n'";
}

bool LineSearch::standsBetweenLiterals(std::size_t place) const {
    return text_.kindAt(before(place)) == Cpp::StringLiteral && text_.kindAt(place + 1) == Cpp::StringLiteral;
}

// Whether the base clauses, which the token is part of, stand on the line of their class.
bool LineSearch::keepsBases(const Way& way, std::size_t place) const {
    if (place < bases_) return false;
    const Scope* scope = &way.top;
    for (std::uint32_t outer = way.outer; outer != kNone; outer = outer_[outer].outer) scope = &outer_[outer].scope;
    return !scope->hasLine;
}

// That of one of several conditions, which the "?" stays behind where it can.
bool LineSearch::isQuestionInRow(const Scope& scope, std::size_t place) const {
    return scope.holdsQuestions && tokens_[place].kind == Cpp::Question &&
           scopes_.at(place).rank == OperandRank::Conditional;
}

bool LineSearch::mayBegin(const Way& way, std::size_t place) const {
    if (text_.continuesLiteral(place)) return true;
    if (weights_.at(place) == BreakWeights::kNoBreak) return false;
    const Scope& scope = way.top;
    if (isInColumns(scope, place)) return startsRow(scope, place);
    const std::size_t left = before(place);
    if (isOpen(left)) {
        const bool isBrace = tokens_[left].kind == Cpp::OpenBrace;
        const std::size_t around = before(left);
        const bool isElement =
            around != kNoToken && (isOpen(around) || scopes_.at(around).rank == OperandRank::Comma);
        if (isBrace && isElement) return false;
        const int depth = scopes_.at(place).depth;
        if (!isBrace && way.lowestDepth < way.lineDepth && way.lowestDepth < depth) return false;
    }
    if (kind_ == WeighedText::Class && scopes_.at(place).depth > 0 && keepsBases(way, place)) return false;
    const OperandRank rank = scopes_.at(place).rank;
    const bool isOperator =
        rank > OperandRank::Assignment && rank < OperandRank::Member && rank != OperandRank::Conditional;
    if (scope.isOperandWhole && !isOperator) return false;
    if (rank == OperandRank::Member && scope.keepsMembers) return false;
    if (place == name_ && way.column < kShortType) return false;
    return !scope.isWhole;
}

}  // namespace Tessel
