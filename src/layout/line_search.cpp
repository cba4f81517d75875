#include "layout/line_search.h"

#include <algorithm>

#include "cpp/token_kind.h"
#include "engine/columns.h"
#include "engine/operator_kinds.h"
#include "layout/line_text.h"

namespace Tessel {

namespace {

constexpr std::int64_t kColumnBeyondMargin = 1'000'000;
constexpr int kFirstLineOfScope = 15;  // lines that begin where others do are to be preferred
constexpr int kFirstShift = 120;       // behind a short operand, or a broken one
constexpr int kWidthOfShift = 3;       // of "<< "
constexpr int kLongArguments = 10;     // columns
constexpr int kShortType = 6;
constexpr int kShortPartOfMargin = 3;  // an operand in front of "<<" is short in the first third of a line
constexpr int kHangingBlock = 80;      // with elements behind it
constexpr int kDeepLiterals = 2;       // brackets around literals in a row, which stay on the line there

std::uint64_t mixed(std::uint64_t hash, std::uint64_t value) {
    hash ^= value + 0x9e3779b97f4a7c15ULL + (hash << 6) + (hash >> 2);
    return hash * 0xff51afd7ed558ccdULL;
}

bool isRelation(OperandRank rank) {
    return rank == OperandRank::Relation;
}
bool isComparison(OperandRank rank) {
    return rank == OperandRank::Relation || rank == OperandRank::Equality;
}

}  // namespace

LineSearch::LineSearch(WrapText& text, const WrapSettings& settings, const WeighedExtent& extent)
    : text_(text),
      tokens_(text.tokens()),
      settings_(settings),
      kind_(extent.text),
      indentColumn_(extent.indentColumn),
      name_(extent.name),
      partsElements_(extent.text == WeighedText::Class ||
                     (extent.text == WeighedText::Initializers && settings.partsInitializers())),
      scopes_(text.tokens(), extent.name),
      weights_(text.tokens(), scopes_, settings, extent) {}

bool LineSearch::isSuited() {
    if (tokens_.empty() || tokens_.size() > kMostTokens) return false;
    for (std::size_t place = 0; place < tokens_.size(); ++place) {
        const bool isEven = text_.isEven({place, place + 1}) &&
                            text_.gap(place).find_first_of("\t\n") == std::string_view::npos;
        if (!isEven && !text_.continuesLiteral(place) && !text_.isLongBlock(place)) return false;
        if (tokens_[place].token.kind == Cpp::LineComment || tokens_[place].token.kind == Cpp::Directive)
            return false;
    }
    return true;
}

void LineSearch::takeWidths() {
    before_.assign(tokens_.size(), kNoToken);
    gaps_.clear();
    widths_.clear();
    std::size_t last = kNoToken;
    for (std::size_t place = 0; place < tokens_.size(); ++place) {
        before_[place] = last;
        if (!isTrivia(place)) last = place;
        gaps_.push_back(lengthOf(text_.gap(place)));
        widths_.push_back(text_.measure({place, place + 1}, 0).column);
    }
}

bool LineSearch::lay(int column, int trailingWidth, int commentWidth) {
    if (!isSuited()) return false;
    takeWidths();
    weighWays(column, trailingWidth + commentWidth);
    // No line break helps a comment that is too long anyway.
    if (commentWidth > 0 && lightest().cost >= kColumnBeyondMargin) weighWays(column, trailingWidth);
    putLines(lightest());
    return true;
}

void LineSearch::weighWays(int column, int trailingWidth) {
    lines_.clear();
    outer_.clear();
    Way first;
    const bool hangsFromStatement = standsByItself(kind_);
    first.top.indent = hangsFromStatement ? indentColumn_ : column;
    first.top.last = first.top.indent;
    first.top.call = hangsFromStatement ? 0 : column;
    first.lineColumn = indentColumn_;
    first.column = column;
    ways_.assign(1, first);
    pass(ways_.front(), 0, false);
    for (std::size_t place = 1; place < tokens_.size(); ++place) {
        const bool hasChoice = weights_.at(place) != BreakWeights::kNoBreak || text_.continuesLiteral(place);
        if (hasChoice) part(place);
        if (!hasChoice || next_.empty()) {
            for (Way& way : ways_) goOn(way, place);
        } else {
            keepLightest();
        }
    }
    for (Way& way : ways_) {
        const int end = way.column;
        way.column += trailingWidth;
        payOverflow(way, end);
    }
}

// The ways to go on from each: with a line that begins at the token, and without.
void LineSearch::part(std::size_t place) {
    next_.clear();
    for (Way& way : ways_) {
        const int lineColumn = columnOfLine(way, place);
        const bool must = mustBegin(way, place, lineColumn);
        if (mayBegin(way, place)) {
            Way& broken = next_.emplace_back(way);
            beginLine(broken, place, lineColumn);
            pass(broken, place, true);
        }
        if (!must) goOn(next_.emplace_back(way), place);
    }
}

void LineSearch::goOn(Way& way, std::size_t place) {
    stayOnLine(way, place);
    pass(way, place, false);
}

// Of ways that go on alike, only the lightest.
void LineSearch::keepLightest() {
    order_.clear();
    for (const Way& way : next_) order_.push_back(&way);
    if (order_.size() > 1) std::ranges::stable_sort(order_, {}, &Way::cost);
    ways_.clear();
    for (const Way* way : order_) {
        const auto goesOnAlike = [way](const Way& other) {
            return way->column == other.column && way->literal == other.literal &&
                   way->lineDepth == other.lineDepth && way->lowestDepth == other.lowestDepth &&
                   way->top == other.top;
        };
        if (std::ranges::any_of(ways_, goesOnAlike)) continue;
        ways_.push_back(*way);
        if (ways_.size() == kMostWays) break;
    }
}

void LineSearch::putLines(const Way& way) {
    std::vector<Line> lines;
    for (std::uint32_t line = way.lines; line != kNone; line = lines_[line].before)
        lines.push_back(lines_[line]);
    for (auto line = lines.rbegin(); line != lines.rend(); ++line) {
        if (line->column == kParted) {
            text_.part(line->place);
        } else {
            text_.startLine(line->place, {line->column});
        }
    }
}

int LineSearch::continuation(const Scope& scope) const {
    return columnAfter(settings_.wrapIndent.text, std::max(scope.last, scope.indent), settings_.tabSize);
}

bool LineSearch::followsOperator(std::size_t place) const {
    const std::size_t left = before(place);
    const OperandRank rank = scopes_.at(left).rank;
    return rank != OperandRank::None && rank != OperandRank::Comma && rank != OperandRank::Member;
}

int LineSearch::columnOfLine(const Way& way, std::size_t place) const {
    const Scope& scope = way.top;
    const std::size_t left = before(place);
    const OperandRank rank = scopes_.at(place).rank;
    if (way.literal >= 0 && tokens_[place].token.kind == Cpp::StringLiteral) return way.literal;
    if (rank == OperandRank::Shift && scope.shift >= 0) return scope.shift;
    if (rank == OperandRank::Member) return scope.member >= 0 ? scope.member : continuation(scope);
    const bool followsQuestion = left != kNoToken && scopes_.at(left).rank == OperandRank::Conditional;
    if (scope.question >= 0 && (rank == OperandRank::Conditional || followsQuestion)) return scope.question;
    if (place == name_) return std::max(scope.last, scope.indent);
    const bool followsWord =
        tokens_[place].token.kind == Cpp::Identifier && tokens_[left].token.kind == Cpp::Identifier;
    if (followsWord || tokens_[place].role == ExprRole::Name) return continuation(scope);
    if (scopes_.at(left).rank == OperandRank::Assignment) return continuation(scope);
    const bool isOperator = rank != OperandRank::None && rank != OperandRank::Comma;
    if (tokens_[left].token.kind == Cpp::CloseParen && !isOperator) return continuation(scope);
    const bool isStatement = standsByItself(kind_);
    if (isStatement && scope.indent == indentColumn_ && tokens_[left].token.kind != Cpp::CloseBrace) {
        return columnAfter(settings_.wrapIndent.text, scope.indent, settings_.tabSize);
    }
    return scope.indent;
}

bool LineSearch::mustBegin(const Way& way, std::size_t place, int lineColumn) const {
    const Scope& scope = way.top;
    const int kind = tokens_[place].token.kind;
    if (text_.continuesLiteral(place)) return true;
    if (weights_.at(place) == BreakWeights::kNoBreak) return false;
    const std::size_t left = before(place);
    const OperandRank rank = scopes_.at(place).rank;
    const OperandRank leftRank = scopes_.at(left).rank;
    const bool startsElement = leftRank == OperandRank::Comma || tokens_[left].token.kind == Cpp::Semicolon;
    const bool leadsPart =
        rank == OperandRank::Conditional && !(scope.holdsQuestions && kind == Cpp::Question);
    if ((startsElement || leadsPart) && scope.isBroken) return true;
    if (rank == OperandRank::Member && mustBeginMember(way, place, lineColumn)) return true;
    const bool isDeclaredName =
        tokens_[place].role == ExprRole::Name && tokens_[left].role == ExprRole::TemplateClose;
    if (isDeclaredName && scope.isBroken) return true;
    if (way.column <= lineColumn) return false;
    const bool startsLiterals =
        kind == Cpp::StringLiteral && place + 1 < tokens_.size() && text_.continuesLiteral(place + 1);
    if (startsLiterals && leftRank != OperandRank::Shift && scopes_.at(place).depth < kDeepLiterals) return true;
    const bool isOperand =
        followsOperator(place) && leftRank != OperandRank::Assignment && !weights_.leadsLine(left);
    if (isOperand && scope.isBroken) {
        const bool isBinary = left > 0 && scopes_.at(before(left)).closesScope;
        return !isComparison(leftRank) || isBinary;
    }
    if (rank == OperandRank::Shift && weights_.leadsLine(place)) {
        return (scope.isBroken && scope.shift < 0) || endsOutputLine(left) || standsBetweenLiterals(place);
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
    return text == "endl" || text.ends_with("\\n\"") || text == "'\\n'";
}

bool LineSearch::standsBetweenLiterals(std::size_t place) const {
    return text_.kindAt(before(place)) == Cpp::StringLiteral && text_.kindAt(place + 1) == Cpp::StringLiteral;
}

bool LineSearch::mayBegin(const Way& way, std::size_t place) const {
    if (text_.continuesLiteral(place)) return true;
    if (weights_.at(place) == BreakWeights::kNoBreak) return false;
    const Scope& scope = way.top;
    const std::size_t left = before(place);
    if (isOpen(left)) {
        const bool isBrace = tokens_[left].token.kind == Cpp::OpenBrace;
        const std::size_t around = before(left);
        const bool isElement =
            around != kNoToken && (isOpen(around) || scopes_.at(around).rank == OperandRank::Comma);
        if (isBrace && isElement) return false;
        const int depth = scopes_.at(place).depth;
        if (!isBrace && way.lowestDepth < way.lineDepth && way.lowestDepth < depth) return false;
    }
    const OperandRank rank = scopes_.at(place).rank;
    const bool isOperator =
        rank > OperandRank::Assignment && rank < OperandRank::Member && rank != OperandRank::Conditional;
    if (scope.isOperandWhole && !isOperator) return false;
    if (rank == OperandRank::Member && scope.keepsMembers) return false;
    const bool isQuestion = tokens_[place].token.kind == Cpp::Question;
    if (isQuestion && rank == OperandRank::Conditional && scope.holdsQuestions) return false;
    if (place == name_ && way.column < kShortType) return false;
    return !scope.isWhole;
}

void LineSearch::beginLine(Way& way, std::size_t place, int column) {
    Scope& scope = way.top;
    const std::size_t left = before(place);
    const OperandRank rank = scopes_.at(place).rank;
    const OperandRank leftRank = scopes_.at(left).rank;
    if (!scope.hasLine) way.cost += kFirstLineOfScope;
    scope.hasLine = scope.holdsLine = true;
    way.cost += std::max(weights_.at(place), 0);
    const bool isShift = rank == OperandRank::Shift && weights_.leadsLine(place);
    if (isShift && scope.shift < 0 && (way.column <= settings_.rightMargin / kShortPartOfMargin || scope.isBroken))
        way.cost += kFirstShift;
    if (rank == OperandRank::Member && scope.member < 0) scope.member = column;
    const bool leads =
        rank > OperandRank::Assignment && rank != OperandRank::Member && rank != OperandRank::Conditional;
    const bool followsSeparator =
        leftRank == OperandRank::Comma || tokens_[left].token.kind == Cpp::Semicolon;
    const bool followsBinary = followsOperator(place) && leftRank != OperandRank::Conditional;
    const bool isColonInRow = scope.holdsQuestions && rank == OperandRank::Conditional;
    if (tokens_[place].token.kind == Cpp::Question || isColonInRow) {
        scope.isBroken = true;
    } else if (followsSeparator || followsBinary || leads) {
        scope.isBroken = scope.isParted && followsSeparator;
    } else if (!isOpen(left) && tokens_[left].token.kind != Cpp::Colon) {
        scope.isBroken = true;
    }
    scope.last = column + (isShift ? kWidthOfShift : 0);
    way.lineDepth = way.lowestDepth = scopes_.at(place).depth;
    way.column = way.lineColumn = column;
    note(way, place, column);
}

void LineSearch::note(Way& way, std::size_t place, int column) {
    lines_.push_back({way.lines, static_cast<std::uint32_t>(place), column});
    way.lines = static_cast<std::uint32_t>(lines_.size() - 1);
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
    while (line != kNone && lines_[line].column == kParted) line = lines_[line].before;
    return line == kNone || lines_[line].place < capture;
}

void LineSearch::stayOnLine(Way& way, std::size_t place) {
    Scope& scope = way.top;
    const std::size_t left = before(place);
    const int column = way.column + gaps_[place];
    if (left == kNoToken || isTrivia(place)) {
        way.column = column;
        return;
    }
    const OperandRank rank = scopes_.at(place).rank;
    const OperandRank leftRank = scopes_.at(left).rank;
    const bool followsOpen = isOpen(left);
    const bool goesOn = leftRank == OperandRank::None || leftRank == OperandRank::Member;
    if (goesOn && !followsOpen && rank != OperandRank::Member) {
        way.column = column;
        return;
    }
    if (followsOpen && !isClose(place)) scope.indent = column;
    if (rank == OperandRank::Member && isClose(left)) {
        if (way.column > columnOfLine(way, place)) scope.keepsMembers = true;
        int width = 0;
        for (std::size_t at = tokens_[left].partner + 1; at <= left && width <= kLongArguments; ++at) {
            width += gaps_[at] + widths_[at];
        }
        if (width > kLongArguments) scope.isWhole = true;
    }
    const bool followsBinary = followsOperator(place);
    const bool isSecondPart = leftRank == OperandRank::Conditional && tokens_[left].token.kind == Cpp::Colon;
    const bool isOperandOfMany = leftRank == OperandRank::Comma || isSecondPart ||
                                 (followsBinary && leftRank != OperandRank::Conditional);
    if (isOperandOfMany && leftRank != OperandRank::Assignment && !isRelation(leftRank)) {
        const bool leads = weights_.leadsLine(left);
        const OperandScopes::Place& op = scopes_.at(left);
        const bool hasTwo =
            op.isFirstOperator && op.nextOperator == kNoToken && leftRank != OperandRank::Conditional;
        if ((!leads && !hasTwo) || (leads && !scope.brokeOperator)) scope.isOperandWhole = true;
    }
    way.column = column;
    if (leftRank == OperandRank::Comma && scope.isParted) scope.isWhole = true;
    const bool isColon = rank == OperandRank::Conditional && tokens_[place].token.kind == Cpp::Colon;
    if (isColon && scope.holdsQuestions) scope.isWhole = true;
    if (leftRank == OperandRank::Comma) {
        scope.last = column;
    } else if (followsBinary) {
        const OperandScopes::Place& op = scopes_.at(left);
        const bool isOnlyShift =
            leftRank == OperandRank::Shift && op.isFirstOperator && op.nextOperator == kNoToken;
        const bool startsScope = scopes_.at(place).opens != OperandScopes::kNoScope &&
                                 scopes_.scope(scopes_.at(place).opens).rank != OperandRank::Member;
        if ((leftRank != OperandRank::Assignment && !isOnlyShift) || startsScope) scope.last = column;
    } else if (followsOpen) {
        const std::size_t behind = nextPlace(tokens_, tokens_[left].partner);
        const bool isMember = behind < tokens_.size() && scopes_.at(behind).rank == OperandRank::Member;
        if (isMember && way.outer != kNone && outer_[way.outer].scope.member < 0) scope.last = column;
    }
}

void LineSearch::pass(Way& way, std::size_t place, bool beginsLine) {
    const int start = way.column;
    if (!isTrivia(place)) {
        const OperandRank rank = scopes_.at(place).rank;
        if (rank != OperandRank::None && rank != OperandRank::Member) way.top.isOperandWhole = false;
        const bool isShift = rank == OperandRank::Shift && weights_.leadsLine(place);
        if (isShift && way.top.shift < 0) {
            way.top.shift = start;
        } else if (rank > OperandRank::Comma && rank < OperandRank::Member) {
            way.top.brokeOperator = beginsLine;
        }
        const bool isQuestion = tokens_[place].token.kind == Cpp::Question && rank == OperandRank::Conditional;
        if (isQuestion && !way.top.holdsQuestions) way.top.question = start;
        const bool isBracket = tokens_[place].partner != kNoToken;
        if (!isBracket) way.lowestDepth = std::min<int>(way.lowestDepth, scopes_.at(place).depth);
        if (rank == OperandRank::Member)
            way.top.call = scopes_.at(place).nextOperator == kNoToken ? 0 : start;
        openScopes(way, place);
        for (int count = scopes_.at(place).closesBrackets; count > 0; --count) pop(way);
        if (isOpen(place)) openBracket(way, place);
        for (int count = scopes_.at(place).closes; count > 0; --count) pop(way);
        const int kind = tokens_[place].token.kind;
        if (kind == Cpp::StringLiteral) {
            if (way.literal < 0) way.literal = start;
        } else if (kind != Cpp::Identifier) {
            way.literal = -1;
        }
    }
    const bool isLongBlock = text_.isLongBlock(place) || partsBlock(way, place);
    if (isLongBlock && hangsBlock(way, place)) way.cost += kHangingBlock;
    way.column = start + (isLongBlock ? 1 : widths_[place]);
    payOverflow(way, start);
    if (!isLongBlock) return;
    way.cost += way.lineColumn - indentColumn_;
    way.column = way.lineColumn + 1;
    way.top.isBroken = way.top.holdsLine = true;
}

void LineSearch::payOverflow(Way& way, int before) const {
    const int margin = settings_.rightMargin;
    const int excess = std::max(way.column - margin, 0) - std::max(before - margin, 0);
    way.cost += kColumnBeyondMargin * excess;
}

// Of operands, the outermost first.
void LineSearch::openScopes(Way& way, std::size_t place) {
    const std::size_t left = before(place);
    const OperandRank leftRank = left == kNoToken ? OperandRank::None : scopes_.at(left).rank;
    bool standsBehind = left != kNoToken && (isOpen(left) || leftRank == OperandRank::Assignment ||
                                             tokens_[left].token.kind == Cpp::Semicolon ||
                                             tokens_[left].token.kind == Cpp::KeywordReturn);
    if (left == kNoToken && kind_ != WeighedText::Statement) standsBehind = true;
    const bool followsColon =
        left != kNoToken && tokens_[left].token.kind == Cpp::Colon && leftRank == OperandRank::None;
    standsBehind |= followsColon;
    for (std::uint32_t at = scopes_.at(place).opens; at != OperandScopes::kNoScope;
         at = scopes_.scope(at).next) {
        const OperandRank rank = scopes_.scope(at).rank;
        const Scope& around = way.top;
        Scope inside;
        inside.isWhole = around.isWhole || around.isOperandWhole;
        inside.last = around.last;
        inside.indent = std::max({way.column, around.indent, around.last});
        if (rank != OperandRank::Member) inside.last = std::max(around.last, way.column);
        if (rank != OperandRank::Conditional && tokens_[place].role != ExprRole::UnaryOperator)
            inside.call = way.column;
        const bool isIndented =
            rank == OperandRank::Conditional ||
            (!standsBehind && rank > OperandRank::Assignment && rank != OperandRank::Member);
        if (isIndented)
            inside.indent = columnAfter(settings_.operandIndent.text, inside.indent, settings_.tabSize);
        standsBehind = false;
        inside.holdsQuestions = scopes_.scope(at).holdsQuestions;
        if (inside.holdsQuestions) inside.question = way.column;
        inside.isParted = partsElements_ && rank == OperandRank::Comma && scopes_.at(place).depth == 0;
        push(way, inside);
    }
}

void LineSearch::openBracket(Way& way, std::size_t place) {
    const Scope& around = way.top;
    Scope inside;
    inside.last = around.last;
    inside.isWhole = around.isWhole || around.isOperandWhole;
    if (tokens_[place].token.kind == Cpp::OpenBrace) {
        inside.indent = columnAfter(settings_.wrapIndent.text, around.last, settings_.tabSize);
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
    hash = mixed(hash, pair(scope.question, scope.call));
    unsigned flags = 0;
    for (const bool flag : {scope.isBroken, scope.hasLine, scope.holdsLine, scope.isWhole,
                            scope.isOperandWhole, scope.brokeOperator, scope.isParted, scope.keepsMembers,
                            scope.holdsQuestions}) {
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
