// What of the tokens that have been passed decides where the lines behind them hang.
#include <algorithm>
#include <utility>

#include "cpp/token_kind.h"
#include "cpp/token_sets.h"
#include "engine/columns.h"
#include "engine/hanging_lines.h"
#include "engine/operator_kinds.h"

namespace Tessel {

namespace {

bool isShift(const ExprToken& token) { return token.role == ExprRole::BinaryOperator && isShiftKind(token.kind); }

// Whether an operand follows that lines hang under.
bool awaitsValue(const ExprToken& token) {
    const int kind = token.kind;
    return kind == Cpp::KeywordReturn || (token.role == ExprRole::BinaryOperator && isAssignmentKind(kind));
}

}  // namespace

void HangingLines::breakName(std::size_t place, int column) {
    nameInLines_ = place;
    nameColumn_ = column;
}

void HangingLines::pass(std::size_t place, int column, bool startsLine) {
    if (startsLine) lineColumn_ = column;
    const bool isFirst = startsLine || previous_ == kNoToken;
    if (isFirst && isOutsideBrackets()) call_ = column == levels_.front().base ? place : kNoToken;
    if (isTrivia(place)) return passComment(place, column);
    const bool closesBody = levels_.back().close == place && levels_.back().kind == Level::Kind::Body;
    while (levels_.size() > 1 && levels_.back().close == place) closeLevel(place);
    const int start = std::exchange(levels_.back().comment, kNone);
    const int operandColumn = start == kNone ? column : start;
    if (chains_) columns_[place] = operandColumn;
    passInLevel(place, operandColumn, startsLine);
    if (levels_.back().first == column && startsLine) levels_.back().startedLine = true;
    if (closesBody && levels_.back().kind == Level::Kind::Body) levels_.back().element = {};
    previous_ = place;
    if (opensBracket(tokens_, place)) open(place);
}

// One in front of an operand on its line counts to it.
void HangingLines::passComment(std::size_t place, int column) {
    Level& level = levels_.back();
    const ExprToken& comment = tokens_[place];
    const std::size_t next = skipTrivia(place + 1);
    const bool leadsOperand = comment.kind == Cpp::BlockComment && next < tokens_.size() &&
                              tokens_[next].start.line == comment.lastLine();
    const bool startsOperand = level.element.start == kNone || level.awaitsOperand || level.awaitsLater;
    if (leadsOperand && startsOperand && level.comment == kNone) level.comment = column;
}

void HangingLines::passInLevel(std::size_t place, int column, bool startsLine) {
    Level& level = levels_.back();
    Element& element = level.element;
    const ExprToken& token = tokens_[place];
    const int kind = token.kind;
    const bool startsElement = element.start == kNone;
    if (level.first == kNone) level.first = column;
    if (startsElement) {
        element.start = column;
        element.line = lineColumn_;
    }
    if (std::exchange(level.awaitsSection, false)) level.section = column;
    if (token.role == ExprRole::Name) {
        level.behindComma = kNone;  // the comma parts what is declared
        const bool isFirst = namesInColumn_ && declarators_ == kNone && isOutsideBrackets();
        if (isFirst && startsLine && !startsElement) declarators_ = column;
    }
    if (startsElement || level.awaitsOperand || level.awaitsLater) level.operandStart = place;
    if (kind == Cpp::OpenBracket && kindAt(tokens_, previous_) != Cpp::CloseBracket) element.subscript = column;
    if (level.awaitsOperand) {
        element.operand = column;
        element.operandStartsLine = startsLine;
    }
    if (level.awaitsLater) element.later = column;
    if (!element.choices.empty() && element.choices.back() == kNone) element.choices.back() = column;
    element.choice = kNone;
    const bool goesOnWithMember = Cpp::isMemberAccess(kind) && !startsElement;
    if (startsLine) element.memberLine = goesOnWithMember ? column : kNone;
    if (goesOnWithMember && element.chain == kNone) element.chain = column;
    level.awaitsOperand = awaitsValue(token);
    level.awaitsLater = isOperator(place) && !level.awaitsOperand && !Cpp::isMemberAccess(kind);
    if (level.awaitsLater) {
        element.later = element.chain = element.memberLine = kNone;
        level.lastOperator = place;
    }
    if (level.awaitsOperand) {
        level.isReturned = kind == Cpp::KeywordReturn;
        element.beginOperand();
    } else {
        passSign(place, column, startsLine);
    }
    if (kind == Cpp::StringLiteral ? !continuesLiteral(place) : kind != Cpp::Identifier) {
        literalColumn_ = kind == Cpp::StringLiteral ? column : kNone;
    }
}

// What a sign ends, and what it begins or names a column for. A "=" or a "return" is no sign here.
void HangingLines::passSign(std::size_t place, int column, bool startsLine) {
    Level& level = levels_.back();
    Element& element = level.element;
    const ExprToken& token = tokens_[place];
    const int kind = token.kind;
    if (token.role == ExprRole::Separator) {
        // What follows the comma in `return a, b` is returned too.
        const int returned = level.isReturned && kind == Cpp::Comma ? element.operand : kNone;
        element = {};
        element.operand = returned;
    } else if (kind == Cpp::CloseParen && endsInComma(place)) {
        element = {};
        if (level.kind == Level::Kind::Statement) level.behindComma = level.base;
    } else if (isShift(token) && element.shift == kNone) {
        element.shift = column;
    } else if (kind == Cpp::Question) {
        element.questions.push_back(columnOfQuestion(level, place, column));
        element.choices.push_back(kNone);
        level.question = place;
    } else if (kind == Cpp::Colon && !element.questions.empty()) {
        element.questions.pop_back();
        element.choice = element.choices.back();
        element.choices.pop_back();
        element.otherwise = startsLine ? column : kNone;
    } else if (kind == Cpp::Colon && level.kind == Level::Kind::List) {
        level.awaitsSection = token.role == ExprRole::BinaryOperator;
    }
}

HangingLines::Opening HangingLines::openingAt(std::size_t place) const {
    const Level& outer = levels_.back();
    Opening opening;
    opening.place = place;
    opening.isBrace = tokens_[place].kind == Cpp::OpenBrace;
    opening.isBody = opening.isBrace && opensBody(place);
    const bool hasElement = outer.element.start != kNone;
    opening.isInList = outer.kind == Level::Kind::List && hasElement;
    opening.isInBraces = outer.kind == Level::Kind::Braces && hasElement;
    opening.isOneOfMany =
        chains_ && (outer.bracket == kNoToken ? isAmongOthers_ : chains_->holdsComma(outer.bracket));
    opening.isInFirst = opening.isInList && outer.element.start == outer.first && !outer.startedLine &&
                        !opening.isOneOfMany;
    opening.isInElements = opening.isOneOfMany && outer.kind == Level::Kind::List && outer.first != kNone;
    opening.standsInLines = opening.isInList && !opening.isInFirst && standsInLines(place);
    return opening;
}

void HangingLines::open(std::size_t place) {
    const Level& outer = levels_.back();
    const Opening opening = openingAt(place);
    Level level;
    level.bracket = place;
    level.close = tokens_[place].partner;
    level.kind = opening.isBody ? Level::Kind::Body : opening.isBrace ? Level::Kind::Braces : Level::Kind::List;
    level.blocks = blocksIn(outer, opening);
    level.base = baseIn(outer, opening);
    level.lineColumn = lineColumnIn(outer, opening);
    placeContents(level, outer, opening);
    levels_.push_back(level);
}

// f(a, g(
//     b
// ));
//
// return find_if(a, [](int b) {
//          return c(b);
//        }) == d;
int HangingLines::blocksIn(const Level& outer, const Opening& opening) const {
    const bool isInColumn = opening.isInElements && !opening.standsInLines && !indents_.fromLine;
    const int blocks = isInColumn ? outer.first : outer.blocks;
    const bool startsChain = chains_ && outer.operandStart != kNoToken && chains_->startWith(outer.operandStart);
    return startsChain && !indents_.fromLine ? std::max(blocks, columns_[outer.operandStart]) : blocks;
}

// A a{f(
//         b), c};
//
// f(a(
//       b)
//       .c(
//           d));
int HangingLines::baseIn(const Level& outer, const Opening& opening) const {
    // The arguments behind those of a template hang from where the name of the template stands.
    const bool isBehindTemplate = chains_ && opening.place > 0 && opening.place - 1 == templateClose_;
    const bool isInMemberLine = !chains_ && outer.element.memberLine == lineColumn_;
    const bool isInValues = !opening.isBrace && opening.isOneOfMany && opening.isInBraces;
    if (opening.isInFirst && !isInMemberLine && (chains_ || !goesOnBelow(opening.place))) return outer.base;
    if ((opening.isInList && !isInMemberLine) || isInValues) return outer.element.start;
    return isBehindTemplate ? templateLineColumn_ : lineColumn_;
}

// f(a, {
//          b});
int HangingLines::lineColumnIn(const Level& outer, const Opening& opening) const {
    const std::size_t place = opening.place;
    const bool isFirst = outer.bracket != kNoToken && outer.bracket + 1 == place;
    const bool isRow = chains_ && opening.isBrace && opening.isInBraces && isFirst && isAboveRow(place);
    const bool isArgument = opening.isBrace && !opening.isBody && opening.isInElements &&
                            outer.element.start != kNone && !standsAsBlock(place);
    if (isRow || isArgument) return outer.element.start;
    return opening.isBody && outer.kind != Level::Kind::Body ? captureLineColumn_ : lineColumn_;
}

void HangingLines::placeContents(Level& level, const Level& outer, const Opening& opening) const {
    const int behindName = columnBehindName(opening.place);
    const int column = opening.standsInLines ? wrapped(lineColumn_) : columnInCall(outer, opening.place);
    level.contents = behindName != kNone ? behindName : column;
    // What the first element of a list opens goes by what the list itself does: `outer(inner(`.
    if (level.contents == kNone && chains_ && !opening.isBody) {
        level.call = columnOfCall(outer);
        const bool isInSingle = outer.kind == Level::Kind::Braces && !opening.isOneOfMany && !outer.startedLine;
        if (level.call == kNone && (opening.isInFirst || isInSingle)) level.call = outer.call;
    }
    const ExprToken& bracket = tokens_[opening.place];
    const bool isTemplate = bracket.role == ExprRole::TemplateOpen;
    if (level.contents == kNone && chains_ && (isTemplate || bracket.kind == Cpp::OpenParen)) {
        if (level.call != kNone) level.contents = wrapped(level.call);
        if (level.contents == kNone && opening.isInFirst) level.contents = outer.contents;
        if (isTemplate && outer.bracket != kNoToken) level.contents = columnInParentheses(outer, level);
    }
}

// From where what stands in parentheses hangs: from where the lambda begins whose parameters these are, from the last
// line of the name in front of them. kNone for others.
int HangingLines::columnBehindName(std::size_t open) const {
    if (!chains_ || open == 0 || tokens_[open].kind != Cpp::OpenParen) return kNone;
    if (open - 1 == nameInLines_) return wrapped(nameColumn_);
    const std::size_t capture = kindAt(tokens_, open - 1) == Cpp::CloseBracket ? tokens_[open - 1].partner : kNoToken;
    if (!indents_.fromCapture || capture == kNoToken) return kNone;
    return isFirstOfElement(capture) || awaitsValue(tokens_[capture - 1]) ? wrapped(columns_[capture]) : kNone;
}

bool HangingLines::isFirstOfElement(std::size_t place) const {
    return place == 0 || tokens_[place - 1].role == ExprRole::Separator ||
           tokens_[place - 1].role == ExprRole::GroupOpen;
}

// Whether the line behind the one on which the braces close begins with the next element, as rows do: not `}, {`.
bool HangingLines::isAboveRow(std::size_t open) const {
    const std::size_t close = tokens_[open].partner;
    if (close == kNoToken || kindAt(tokens_, close + 1) != Cpp::Comma) return false;
    const std::size_t next = nextPlace(tokens_, close + 1);
    return next < tokens_.size() && tokens_[next].start.line > tokens_[close + 1].lastLine();
}

// Whether the last line begins with the "}", behind something that is no comma: `f(a, {\n    b\n});`.
bool HangingLines::standsAsBlock(std::size_t open) const {
    const std::size_t close = tokens_[open].partner;
    if (close == kNoToken) return false;
    std::size_t last = close - 1;
    while (last > open && isTrivia(last)) --last;
    return tokens_[last].kind != Cpp::Comma && tokens_[close].start.line > tokens_[last].lastLine();
}

// Whether the line behind the parentheses begins with a "." or "->".
bool HangingLines::goesOnBelow(std::size_t open) const {
    const std::size_t close = tokens_[open].partner;
    const std::size_t next = nextPlace(tokens_, close);
    return Cpp::isMemberAccess(kindAt(tokens_, next)) && tokens_[next].start.line > tokens_[close].lastLine();
}

// Whether what stands in the parentheses of a call has lines of its own.
bool HangingLines::standsInLines(std::size_t open) const {
    const bool isCall = tokens_[open].kind == Cpp::OpenParen && tokens_[open].followsCall;
    if (!isCall || tokens_[nextPlace(tokens_, open)].start.line == tokens_[open].start.line) return false;
    const std::size_t close = tokens_[open].partner;
    const ExprToken& last = tokens_[close - 1];
    return last.role != ExprRole::Block && tokens_[close].start.line > last.lastLine();
}

// Whether statements follow the "{", of a lambda or in one.
bool HangingLines::opensBody(std::size_t place) const {
    if (levels_.back().kind == Level::Kind::Body) return opensBlock(tokens_, place);
    std::size_t end = place > 0 ? place - 1 : kNoToken;
    if (kindAt(tokens_, end) == Cpp::CloseParen && tokens_[end].partner != kNoToken) {
        end = bracketBeforeParameters(tokens_, tokens_[end].partner);
    }
    return end != kNoToken && end == captureClose_;
}

void HangingLines::closeLevel(std::size_t place) {
    const Level& level = levels_.back();
    const std::size_t open = level.bracket;
    if (tokens_[place].kind == Cpp::CloseBracket && isFirstOfElement(open)) {
        captureClose_ = place;
        captureLineColumn_ = level.lineColumn;
    }
    if (tokens_[place].role == ExprRole::TemplateClose) {
        templateClose_ = place;
        templateLineColumn_ = level.lineColumn;
    }
    levels_.pop_back();
}

// Where the arguments hang of a template that stands between parentheses: not in front of what these begin with.
int HangingLines::columnInParentheses(const Level& outer, const Level& level) const {
    if (tokens_[outer.bracket].kind != Cpp::OpenParen || outer.first == kNone) return level.contents;
    return std::max(outer.first, level.contents == kNone ? wrapped(level.base) : level.contents);
}

// From where the arguments hang of a call that is part of an operation; kNone for others.
int HangingLines::columnOfCall(const Level& outer) const {
    const bool isInMemberLine = outer.element.memberLine != kNone && outer.element.memberLine == lineColumn_;
    if (isInMemberLine && outer.kind == Level::Kind::List) return lineColumn_;
    if (outer.element.later != kNone) {
        const OperandChains::Chain* chain = chains_->of(outer.lastOperator);
        const bool isInLoop = !chain && tokens_[outer.lastOperator].kind == Cpp::Colon;  // for (auto a : f(
        if (isInLoop && outer.kind == Level::Kind::List) return kNone;
        const bool isOnlyShift = isShift(tokens_[outer.lastOperator]) && chain && chain->operators == 1;
        return isOnlyShift ? columns_[chain->start] : outer.element.later;
    }
    if (outer.operandStart != kNoToken && chains_->startWith(outer.operandStart)) return columns_[outer.operandStart];
    const bool isAssigned = outer.element.operand != kNone && !outer.isReturned;
    if (outer.kind != Level::Kind::List || !isAssigned) return kNone;
    return outer.element.operand == lineColumn_ ? outer.element.operand : outer.element.start;
}

// Where the arguments hang of a call that a "." or "->" follows: from the operand that it is in. kNone for others.
int HangingLines::columnInCall(const Level& outer, std::size_t open) const {
    const std::size_t next = nextPlace(tokens_, tokens_[open].partner);
    const bool isMember = Cpp::isMemberAccess(kindAt(tokens_, next)) && !isPack(tokens_, next);
    if (!chains_ || tokens_[open].role != ExprRole::GroupOpen || !isMember) return kNone;
    const bool isInMemberLine = outer.element.memberLine != kNone && outer.element.memberLine == lineColumn_;
    const int operand = isInMemberLine ? lineColumn_ : outer.element.columnOfOperand();
    return operand == kNone ? kNone : columnAfter(indents_.operand.text, operand, tabSize_);
}

}  // namespace Tessel
