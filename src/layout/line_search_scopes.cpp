// What a way comes to with each token: the scopes that it opens and closes, and what a line there, or none, means to
// the lines behind it.
#include <algorithm>

#include "cpp/token_kind.h"
#include "engine/columns.h"
#include "engine/operator_kinds.h"
#include "layout/line_search.h"

namespace Tessel {

namespace {

constexpr int kFirstLineOfScope = 15;  // lines that begin where others do are to be preferred
constexpr int kFirstShift = 120;       // behind a short operand, or a broken one
// Of lines that cost the same, what decides: what is streamed into a call stands below it, and an element is sooner put
// on a line of its own than broken.
constexpr int kBehindCall = 1;
constexpr int kInsideElement = 1;
constexpr int kWidthOfShift = 3;       // of "<< "
constexpr int kLongArguments = 10;     // columns
constexpr int kShortPartOfMargin = 3;  // an operand in front of "<<" is short in the first third of a line
constexpr int kQuestionInRow = 20;
constexpr int kHangingBlock = 80;      // with elements behind it

std::uint64_t mixed(std::uint64_t hash, std::uint64_t value) {
    hash ^= value + 0x9e3779b97f4a7c15ULL + (hash << 6) + (hash >> 2);
    return hash * 0xff51afd7ed558ccdULL;
}

bool isRelation(OperandRank rank) { return rank == OperandRank::Relation; }

}  // namespace

// Beside its weight.
int LineSearch::costOfShift(const Way& way, std::size_t place) const {
    const Scope& scope = way.top;
    const int cost = scope.followsElement ? kInsideElement : 0;
    if (scope.shift >= 0) return cost;
    const bool isBehindShort = way.column <= settings_.rightMargin / kShortPartOfMargin;
    if (isBehindShort || scope.isBroken) return cost + kFirstShift;
    return isClose(before(place)) ? cost - kBehindCall : cost;
}

void LineSearch::beginLine(Way& way, std::size_t place, int column) {
    Scope& scope = way.top;
    const std::size_t left = before(place);
    const OperandRank rank = scopes_.at(place).rank;
    const OperandRank leftRank = scopes_.at(left).rank;
    if (!scope.hasLine) way.cost += kFirstLineOfScope;
    scope.hasLine = scope.holdsLine = true;
    way.lead = -1;
    way.cost += std::max(weights_.at(place), 0);
    if (isQuestionInRow(scope, place)) way.cost += kQuestionInRow;
    const bool isShift = rank == OperandRank::Shift && weights_.leadsLine(place);
    if (isShift) way.cost += costOfShift(way, place);
    if (rank == OperandRank::Member && scope.member < 0) scope.member = column;
    const bool leads =
        rank > OperandRank::Assignment && rank != OperandRank::Member && rank != OperandRank::Conditional;
    const bool followsSeparator =
        leftRank == OperandRank::Comma || tokens_[left].kind == Cpp::Semicolon;
    const bool followsBinary = followsOperator(place) && leftRank != OperandRank::Conditional;
    const bool isColonInRow = scope.holdsQuestions && rank == OperandRank::Conditional;
    if (tokens_[place].kind == Cpp::Question || isColonInRow) {
        scope.isBroken = true;
    } else if (followsSeparator || followsBinary || leads) {
        scope.isBroken = scope.isParted && followsSeparator;
    } else if (!isOpen(left) && tokens_[left].kind != Cpp::Colon) {
        scope.isBroken = true;
    }
    scope.last = column + (isShift ? kWidthOfShift : 0);
    way.lineDepth = way.lowestDepth = scopes_.at(place).depth;
    way.column = way.lineColumn = column;
    note(way, place, column);
}

void LineSearch::stayOnLine(Way& way, std::size_t place) {
    Scope& scope = way.top;
    const std::size_t left = before(place);
    const int column = isInColumns(scope, place) ? stayInColumn(way, place) : way.column + gaps_[place];
    if (left == kNoToken || isTrivia(place)) {
        way.column = column;
        return;
    }
    const OperandRank rank = scopes_.at(place).rank;
    const OperandRank leftRank = scopes_.at(left).rank;
    const bool followsOpen = isOpen(left);
    const bool isColon = rank == OperandRank::Conditional && tokens_[place].kind == Cpp::Colon;
    if (isColon && scope.holdsQuestions) scope.isWhole = true;
    const bool goesOn = leftRank == OperandRank::None || leftRank == OperandRank::Member;
    if (goesOn && !followsOpen && rank != OperandRank::Member) {
        way.column = column;
        return;
    }
    const int start = way.lead >= 0 ? way.lead : column;
    if (followsOpen && !isClose(place)) scope.indent = start;
    if (rank == OperandRank::Member && isClose(left)) stayBehindCall(way, place);
    if (keepsOperandWhole(scope, place)) scope.isOperandWhole = true;
    way.column = column;
    if (leftRank == OperandRank::Comma && scope.isParted) scope.isWhole = true;
    if (hangsFurther(way, place)) scope.last = start;
}

int LineSearch::stayInColumn(Way& way, std::size_t place) {
    const int column = way.top.indent + listColumns_.offsetOf(place, static_cast<std::size_t>(way.top.columns));
    const int blanks = column - way.column;
    if (blanks <= gaps_[place]) return way.column + gaps_[place];
    note(way, place, kPadded, blanks);
    return column;
}

// At a "." behind a call on the same line.
void LineSearch::stayBehindCall(Way& way, std::size_t place) {
    const std::size_t left = before(place);
    if (way.column > columnOfLine(way, place)) way.top.keepsMembers = true;
    if (tokens_[left].kind != Cpp::CloseParen) return;
    int width = 0;
    for (std::size_t at = tokens_[left].partner + 1; at <= left && width <= kLongArguments; ++at) {
        width += gaps_[at] + widths_[at];
    }
    if (width > kLongArguments) way.top.isWhole = true;
}

// Whether the operand that the token begins on the line of what is in front of it has to stay there as a whole: one of
// several, unless lines begin with the operators and the last one did.
bool LineSearch::keepsOperandWhole(const Scope& scope, std::size_t place) const {
    const std::size_t left = before(place);
    const OperandScopes::Place& op = scopes_.at(left);
    const bool isSecondPart = op.rank == OperandRank::Conditional && tokens_[left].kind == Cpp::Colon;
    const bool isOperandOfMany = op.rank == OperandRank::Comma || isSecondPart ||
                                 (followsOperator(place) && op.rank != OperandRank::Conditional);
    if (!isOperandOfMany || op.rank == OperandRank::Assignment || isRelation(op.rank)) return false;
    if (weights_.leadsLine(left)) return !scope.brokeOperator;
    const bool hasTwo =
        op.isFirstOperator && op.nextOperator == kNoToken && op.rank != OperandRank::Conditional;
    return !hasTwo;
}

// Whether the lines to come hang from the token, which does not begin one.
bool LineSearch::hangsFurther(const Way& way, std::size_t place) const {
    const std::size_t left = before(place);
    const OperandScopes::Place& op = scopes_.at(left);
    if (op.rank == OperandRank::Comma) return true;
    if (followsOperator(place)) {
        const bool isOnlyShift =
            op.rank == OperandRank::Shift && op.isFirstOperator && op.nextOperator == kNoToken;
        const bool startsScope = scopes_.at(place).opens != OperandScopes::kNoScope &&
                                 scopes_.scope(scopes_.at(place).opens).rank != OperandRank::Member;
        return (op.rank != OperandRank::Assignment && !isOnlyShift) || startsScope;
    }
    if (!isOpen(left)) return false;
    const std::size_t behind = nextPlace(tokens_, tokens_[left].partner);
    const bool isMember = behind < tokens_.size() && scopes_.at(behind).rank == OperandRank::Member;
    return isMember && way.outer != kNone && outer_[way.outer].scope.member < 0;
}

void LineSearch::pass(Way& way, std::size_t place, bool beginsLine) {
    const int start = way.column;
    if (!isTrivia(place)) {
        passToken(way, place, beginsLine);
        way.lead = -1;
    } else if (tokens_[place].kind == Cpp::LineComment) {
        way.lead = -1;
    } else if (way.lead < 0) {
        way.lead = start;
    }
    const bool isLongBlock = text_.isLongBlock(place) || partsBlock(way, place);
    if (isLongBlock && hangsBlock(way, place)) way.cost += kHangingBlock;
    way.column = start + (isLongBlock ? 1 : widths_[place]);
    const int bracket = text_.kindAt(place + 1) == Cpp::OpenParen ? 1 : 0;
    if (!text_.isWithinMargin(way.column + bracket)) splitName(way, place, start);
    payOverflow(way, start, place);
    if (!isLongBlock) return;
    way.cost += way.lineColumn - indentColumn_;
    way.column = way.lineColumn + 1;
    way.top.isBroken = way.top.holdsLine = true;
}

void LineSearch::passToken(Way& way, std::size_t place, bool beginsLine) {
    const int start = way.column;
    const OperandRank rank = scopes_.at(place).rank;
    // Names that a clause declares stand below the first one where that begins a line.
    if (place == declarator_ && (beginsLine || kind_ != WeighedText::Clauses)) way.declarator = start;
    if (tokens_[place].kind == Cpp::Semicolon) way.declarator = way.later = -1;
    if (way.declarator >= 0 && startsDeclarator(place)) way.later = start;
    if (rank != OperandRank::None && rank != OperandRank::Member) way.top.isOperandWhole = false;
    const bool isShift = rank == OperandRank::Shift && weights_.leadsLine(place);
    if (isShift && way.top.shift < 0) {
        way.top.shift = start;
    } else if (rank > OperandRank::Comma && rank < OperandRank::Member) {
        way.top.brokeOperator = beginsLine;
    }
    const bool isQuestion = tokens_[place].kind == Cpp::Question && rank == OperandRank::Conditional;
    if (isQuestion && !way.top.holdsQuestions) way.top.question = start;
    const bool isBracket = tokens_[place].partner != kNoToken;
    if (!isBracket) way.lowestDepth = std::min<int>(way.lowestDepth, scopes_.at(place).depth);
    if (rank == OperandRank::Member)
        way.top.call = scopes_.at(place).nextOperator == kNoToken ? 0 : start;
    openScopes(way, place);
    if (rank == OperandRank::Comma) way.top.row = -1;
    const bool isCall = text_.kindAt(place + 1) == Cpp::OpenParen && tokens_[place + 1].partner != kNoToken;
    if (isCall && way.top.row < 0 && followsRowOfMacros(nextPlace(tokens_, tokens_[place + 1].partner))) {
        way.top.row = start;
    }
    for (int count = scopes_.at(place).closesBrackets; count > 0; --count) pop(way);
    if (isOpen(place)) openBracket(way, place);
    for (int count = scopes_.at(place).closes; count > 0; --count) pop(way);
    const int kind = tokens_[place].kind;
    if (kind == Cpp::StringLiteral) {
        if (way.literal < 0) way.literal = start;
    } else if (kind != Cpp::Identifier) {
        way.literal = -1;
    }
}

// A name that its line has no room for goes on in the next one behind the last "::" that there is room for.
void LineSearch::splitName(Way& way, std::size_t place, int start) {
    const std::string_view name = text_.tokenText(place);
    const std::size_t room = static_cast<std::size_t>(std::max(settings_.rightMargin - start, 0));
    constexpr std::string_view scope = "::";
    if (tokens_[place].kind != Cpp::Identifier || room <= scope.size() || way.top.isWhole) return;
    const std::size_t last = name.substr(0, room).rfind(scope);
    if (last == std::string_view::npos || last == 0) return;
    const int behind = static_cast<int>(last + scope.size());
    const int from = place == name_ ? std::max(way.top.last, way.top.indent) : start;
    const int column = columnAfter(settings_.wrapIndent.text, from, settings_.tabSize);
    way.cost += weights_.ofSplitting(place);
    way.top.hasLine = way.top.holdsLine = way.top.isBroken = true;
    way.column = column + widths_[place] - behind;
    way.lineColumn = column;
    if (place == name_) way.top.last = column;
    note(way, place, column, behind);
}

// A block that its line has no room for becomes one of several lines.
bool LineSearch::partsBlock(Way& way, std::size_t place) {
    if (!text_.isPartable(place) || text_.isWithinMargin(way.column + widths_[place])) return false;
    way.cost += weights_.ofParting(place);
    note(way, place, kParted);
    return true;
}

// Whether elements follow the block of a lambda that does not begin its line.
bool LineSearch::hangsBlock(const Way& way, std::size_t place) const {
    if (text_.kindAt(place + 1) != Cpp::Comma) return false;
    std::size_t capture = before(place);
    while (capture != kNoToken && text_.kindAt(capture) != Cpp::OpenBracket) capture = before(capture);
    std::uint32_t line = way.lines;
    while (line != kNone && lines_[line].column < 0) line = lines_[line].before;
    return line == kNone || lines_[line].place < capture;
}

// Of operands, the outermost first.
void LineSearch::openScopes(Way& way, std::size_t place) {
    const std::size_t left = before(place);
    const OperandRank leftRank = left == kNoToken ? OperandRank::None : scopes_.at(left).rank;
    bool standsBehind = left != kNoToken && (isOpen(left) || leftRank == OperandRank::Assignment ||
                                             tokens_[left].kind == Cpp::Semicolon ||
                                             tokens_[left].kind == Cpp::KeywordReturn);
    if (left == kNoToken && kind_ != WeighedText::Statement) standsBehind = true;
    const bool followsColon =
        left != kNoToken && tokens_[left].kind == Cpp::Colon && leftRank == OperandRank::None;
    standsBehind |= followsColon;
    const int column = way.lead >= 0 ? way.lead : way.column;
    for (std::uint32_t at = scopes_.at(place).opens; at != OperandScopes::kNoScope;
         at = scopes_.scope(at).next) {
        const OperandRank rank = scopes_.scope(at).rank;
        const Scope& around = way.top;
        Scope inside;
        inside.isWhole = around.isWhole || around.isOperandWhole || around.columns > 1;
        inside.last = around.last;
        inside.indent = std::max({column, around.indent, around.last});
        if (rank != OperandRank::Member) inside.last = std::max(around.last, column);
        if (rank != OperandRank::Conditional && tokens_[place].role != ExprRole::UnaryOperator)
            inside.call = column;
        const bool isIndented =
            rank == OperandRank::Conditional ||
            (!standsBehind && rank > OperandRank::Assignment && rank != OperandRank::Member);
        if (isIndented)
            inside.indent = columnAfter(settings_.operandIndent.text, inside.indent, settings_.tabSize);
        standsBehind = false;
        inside.followsElement = leftRank == OperandRank::Comma && column > way.lineColumn;
        inside.holdsQuestions = scopes_.scope(at).holdsQuestions;
        inside.isBraced = around.isBraced && rank == OperandRank::Comma;
        if (inside.holdsQuestions) inside.question = column;
        inside.isParted = partsElements_ && rank == OperandRank::Comma && scopes_.at(place).depth == 0;
        if (rank == OperandRank::Comma && listColumns_.indexOf(place) == 0)
            inside.columns = static_cast<int>(listColumns_.countWithin(place, settings_.rightMargin - inside.indent));
        push(way, inside);
    }
}

void LineSearch::openBracket(Way& way, std::size_t place) {
    const Scope& around = way.top;
    Scope inside;
    inside.last = around.last;
    inside.isWhole = around.isWhole || around.isOperandWhole || around.columns > 1;
    if (tokens_[place].kind == Cpp::OpenBrace) {
        inside.indent = columnAfter(settings_.wrapIndent.text, around.last, settings_.tabSize);
        inside.lineColumn = way.lineColumn;
        inside.isBraced = true;
    } else {
        inside.indent =
            columnAfter(settings_.wrapIndent.text, std::max(around.last, around.call), settings_.tabSize);
        if (tokens_[place].role == ExprRole::TemplateOpen && scopes_.at(place).depth > 0) {
            inside.indent = std::max(inside.indent, around.indent);
            inside.last = std::max(inside.last, around.indent);
        }
    }
    push(way, inside);
}

std::uint64_t LineSearch::hashOf(const Scope& scope) {
    const auto pair = [](int first, int second) {
        return static_cast<std::uint64_t>(first + 1) << 32 | static_cast<std::uint32_t>(second + 1);
    };
    std::uint64_t hash = mixed(scope.outerHash, pair(scope.indent, scope.last));
    hash = mixed(hash, pair(scope.member, scope.shift));
    hash = mixed(hash, pair(scope.row, 0));
    hash = mixed(hash, pair(scope.question, scope.call));
    hash = mixed(hash, pair(scope.lineColumn, scope.columns));
    unsigned flags = 0;
    for (const bool flag : {scope.isBroken, scope.hasLine, scope.holdsLine, scope.isWhole,
                            scope.isOperandWhole, scope.brokeOperator, scope.isParted, scope.keepsMembers,
                            scope.holdsQuestions, scope.followsElement}) {
        flags = flags << 1 | (flag ? 1U : 0U);
    }
    return mixed(hash, flags);
}

void LineSearch::push(Way& way, Scope inside) {
    inside.outerHash = hashOf(way.top);
    outer_.push_back({way.top, way.outer});
    way.outer = static_cast<std::uint32_t>(outer_.size() - 1);
    way.top = inside;
}

void LineSearch::pop(Way& way) {
    if (way.outer == kNone) return;
    const bool holdsLine = way.top.holdsLine;
    way.top = outer_[way.outer].scope;
    way.outer = outer_[way.outer].outer;
    way.top.isBroken |= holdsLine;
    way.top.holdsLine |= holdsLine;
}

}  // namespace Tessel
