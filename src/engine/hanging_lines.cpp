#include "engine/hanging_lines.h"

#include <algorithm>
#include <utility>

#include "cpp/token_kind.h"
#include "cpp/words.h"
#include "engine/columns.h"
#include "engine/operator_kinds.h"

namespace Tessel {

namespace {

bool isShift(const ExprToken& token) {
    return token.role == ExprRole::BinaryOperator &&
           (token.kind == Cpp::ShiftLeft || token.kind == Cpp::ShiftRight);
}

bool isMemberAccess(int kind) {
    return kind == Cpp::Dot || kind == Cpp::Arrow;
}

// Whether an operand follows that lines hang under.
bool awaitsValue(const ExprToken& token) {
    const int kind = token.kind;
    return kind == Cpp::KeywordReturn || (token.role == ExprRole::BinaryOperator && isAssignmentKind(kind));
}

}  // namespace

HangingLines::HangingLines(const ExprTokens& tokens, Text text, int indentColumn,
                           const HangingIndents& indents, int tabSize)
    : tokens_(tokens), indents_(indents), tabSize_(tabSize), lineColumn_(indentColumn) {
    Level& level = levels_.emplace_back();
    namesInLine_ = text == Text::DeclaratorsInLine;
    level.kind = isInList(text) ? Level::Kind::List : Level::Kind::Statement;
    level.base = indentColumn;
    level.lineColumn = indentColumn;
    if (text == Text::Statement) hangCommasFrom(indentColumn);
    if (!indents.operand.present) return;
    if (text == Text::Condition) level.blocks = indentColumn;
    chains_.emplace(tokens, isInList(text) && text != Text::Element);
    columns_.resize(tokens.size(), kNone);
}

void HangingLines::hangCommasFrom(int statementColumn) {
    if (indents_.commas) levels_.front().behindComma = wrapped(statementColumn);
}

void HangingLines::hangCallsFrom(int statementColumn) {
    if (chains_) levels_.front().base = statementColumn;
}

void HangingLines::startInLineOf(int column) {
    const bool isBehindTemplate = chains_ && !namesInLine_ && kindAt(tokens_, 0) == Cpp::OpenBrace;
    if (isBehindTemplate) return;  // Type<\n    argument> name{
    lineColumn_ = column;
    if (chains_ && namesInLine_) levels_.front().base = column;
}

std::optional<int> HangingLines::columnOfBlock() const {
    const int column = levels_.back().blocks;
    return column == kNone ? std::nullopt : std::optional<int>(column);
}

std::optional<int> HangingLines::columnOfReturningBody(std::size_t capture) const {
    const Level& level = levels_.back();
    const bool isStatement = indents_.fromCapture && level.kind == Level::Kind::Statement;
    const bool isAssigned = isStatement && level.operandStart == capture;
    return isAssigned && level.element.operandStartsLine ? std::optional<int>(level.base) : std::nullopt;
}

int HangingLines::columnFor(std::size_t place) const {
    const Level& level = levels_.back();
    const std::size_t next = skipTrivia(place);
    if (next >= tokens_.size()) return columnInLevel(level);
    const ExprToken& token = tokens_[next];
    const bool hangsFromLine = indents_.fromLine && !level.isBraced() && level.bracket != kNoToken;
    if (hangsFromLine && level.element.questions.empty()) {
        return next == place && next == level.close ? level.lineColumn : columnFromLine(level);
    }
    if (next == level.close) {
        const bool isComment = next != place;
        if (isComment) return level.first != kNone ? level.first : columnOfContents(level);
        const bool standsUnderFirst =
            !level.isBraced() && level.first != kNone && !level.startedLine;
        return standsUnderFirst ? level.first : level.lineColumn;
    }
    const int kind = token.kind;
    if (isMemberAccess(kind) && level.element.start != kNone) {
        const bool isOfLambda = chains_ && token.role == ExprRole::BinaryOperator &&
                                kindAt(tokens_, level.operandStart) == Cpp::OpenBracket;
        return isOfLambda ? columnAfter(indents_.operand.text, level.element.columnOfOperand(), tabSize_)
                          : columnOfMember(level);
    }
    if (isShift(token) && level.element.shift != kNone) return level.element.shift;
    if (kind == Cpp::Colon && !level.element.questions.empty()) {
        return standsBelowQuestion(level, next) ? columns_[level.question] : level.element.questions.back();
    }
    if (kind == Cpp::Colon && level.section != kNone) return level.first;
    const bool isInList = level.kind == Level::Kind::List || level.isBraced();
    if (kind == Cpp::Comma && isInList && level.first != kNone) return level.first;
    // A type and the name that is declared are one element.
    const bool isName = token.role == ExprRole::Name || (kind == Cpp::Identifier && followsMark());
    if (isName && level.kind == Level::Kind::List && level.element.start != kNone) {
        return wrapped(level.element.start);
    }
    const bool isOfMacro = kind == Cpp::OpenParen || (kind == Cpp::Identifier && token.role == ExprRole::Operand);
    if (isOfMacro && level.kind == Level::Kind::Statement && followsMacroCall()) return level.base;
    if (level.element.choice != kNone && chains_ && !isOneOfConditions(level.question)) return level.element.choice;
    if (const int column = columnInChain(next); column != kNone) return column;
    if (continuesLiteral(next)) return literalColumn_;
    const bool isFlush = kind == Cpp::OpenBrace && level.kind == Level::Kind::Statement;
    if (isFlush && !holdsValueInLine(level, next)) return lineColumn_;
    return columnInLevel(level);
}

// `a =\n    {1, 2};`
bool HangingLines::holdsValueInLine(const Level& level, std::size_t open) const {
    const std::size_t close = tokens_[open].partner;
    return chains_ && level.awaitsOperand && close != kNoToken && tokens_[close].start.line == tokens_[open].start.line;
}

// A "&&" may as well be the operator of a condition.
bool HangingLines::followsMark() const {
    return chains_ && previous_ != kNoToken && tokens_[previous_].role == ExprRole::Mark &&
           tokens_[previous_].kind != Cpp::LogicalAnd;
}

// Whether nothing but calls of macros stands in front, a line each: what they make takes the arguments that follow, or
// brings what separates it from what follows.
bool HangingLines::followsMacroCall() const {
    const bool isCall = previous_ != kNoToken && call_ != kNoToken && tokens_[previous_].partner == call_ + 1;
    return isCall && tokens_[call_].kind == Cpp::Identifier && Cpp::isUpperCase(tokens_[call_].text());
}

// `IF_FEATURE(a,)`: the call of a macro that an element begins with takes the comma behind that, a name, in.
bool HangingLines::endsInComma(std::size_t close) const {
    if (kindAt(tokens_, previous_) != Cpp::Comma) return false;
    const std::size_t open = tokens_[close].partner;
    const bool holdsName = previous_ == open + 2 && kindAt(tokens_, open + 1) == Cpp::Identifier;
    return holdsName && (levels_.back().kind != Level::Kind::Statement || open == 1);
}

std::optional<int> HangingLines::columnWithinName() const {
    if (!chains_) return std::nullopt;
    const Level& level = levels_.back();
    const Element& element = level.element;
    if (element.later == kNone && level.kind == Level::Kind::Statement) {
        return wrapped(element.operandStartsLine ? element.operand : level.base);
    }
    return columnAfter(indents_.operand.text, element.later != kNone ? element.later : element.start, tabSize_);
}

// Of a "." or "->".
int HangingLines::columnOfMember(const Level& level) const {
    const bool isAssigned = level.element.operand != kNone && !level.isReturned;
    if (!chains_ && level.element.chain != kNone) return level.element.chain;
    const OptionalText& hang = chains_ ? indents_.operand : indents_.wrap;
    if (const int column = columnBehindSign(level); column != kNone) return columnAfter(hang.text, column, tabSize_);
    if (level.element.later != kNone) return columnAfter(hang.text, level.element.later, tabSize_);
    if (!chains_) return wrapped(columnOfElement(level));
    if (const int column = columnBehindOperand(level); column != kNone) return column;
    if (isAssigned) return columnAfter(indents_.operand.text, level.element.operand, tabSize_);
    if (level.kind == Level::Kind::Statement) return wrapped(level.base);
    return columnAfter(indents_.operand.text, level.element.start, tabSize_);
}

bool HangingLines::hangsFromOperand(const Level& level) const {
    const bool hangsFromStatement = indents_.fromStatement && level.kind == Level::Kind::Statement;
    return !hangsFromStatement && level.operandStart != kNoToken;
}

// Of what the operators in front of an operand are applied to, `!a`; kNone where there are none.
int HangingLines::columnBehindSign(const Level& level) const {
    if (!chains_ || !hangsFromOperand(level)) return kNone;
    std::size_t place = level.operandStart;
    while (place < tokens_.size() && tokens_[place].role == ExprRole::UnaryOperator) place = nextPlace(tokens_, place);
    return place == level.operandStart || place >= tokens_.size() ? kNone : columns_[place];
}

// In the first operand of a chain: behind where the further lines of that stand. kNone for other operands.
int HangingLines::columnBehindOperand(const Level& level) const {
    if (!hangsFromOperand(level)) return kNone;
    const OperandChains::Chain* chain = chains_->startingWith(level.operandStart);
    return chain ? indented(columns_[chain->start], chains_->depthOf(*chain) + 1) : kNone;
}

// For an operator, or the operand behind one; kNone for anything else.
int HangingLines::columnInChain(std::size_t place) const {
    if (!chains_) return kNone;
    const OperandChains::Chain* chain = chains_->of(place);
    if (!chain && previous_ != kNoToken) chain = chains_->of(previous_);
    if (!chain || columns_[chain->start] == kNone) return kNone;
    const Level& level = levels_.back();
    if (indents_.fromStatement && level.kind == Level::Kind::Statement) return wrapped(level.base);
    return indented(columns_[chain->start], chains_->depthOf(*chain));
}

// A word may be one, where operands hang by what they are part of.
bool HangingLines::isOperator(std::size_t place) const {
    const ExprToken& token = tokens_[place];
    return token.role == ExprRole::BinaryOperator ||
           (chains_ && token.kind == Cpp::Identifier && chains_->of(place) != nullptr);
}

// So many steps behind the column of an operand.
int HangingLines::indented(int column, int depth) const {
    for (; depth > 0; --depth) column = columnAfter(indents_.operand.text, column, tabSize_);
    return column;
}

// Where the first element stands does not count, unless it began a line.
int HangingLines::columnFromLine(const Level& level) const {
    if (level.element.start != kNone) return wrapped(level.element.line);
    return level.startedLine ? level.first : wrapped(level.lineColumn);
}

int HangingLines::columnInLevel(const Level& level) const {
    if (level.element.operand != kNone) return level.element.operand;
    if (level.first == kNone || level.awaitsOperand) return columnOfContents(level);
    const bool startsElement = level.element.start == kNone;
    if (startsElement && level.behindComma != kNone) return level.behindComma;
    if (startsElement && level.section != kNone) return level.section;
    if (level.kind == Level::Kind::Statement) {
        if (startsElement && chains_ && namesInLine_) return level.base;
        // What begins with a "=" continues a list of declarators that began elsewhere; where operands hang, declarators
        // do from their statement.
        const bool showsFirst = !chains_ && tokens_.front().role != ExprRole::BinaryOperator;
        return startsElement && showsFirst ? level.first : wrapped(level.base);
    }
    if (startsElement) return level.first;
    return level.kind == Level::Kind::Body ? wrapped(level.element.start) : level.element.start;
}

int HangingLines::columnOfContents(const Level& level) const {
    if (level.contents != kNone && level.element.start == kNone) return level.contents;
    const bool isValue = level.awaitsOperand && level.element.start != kNone;  // .name =\n    value
    if (isValue || !level.isBraced()) return wrapped(columnOfElement(level));
    const OptionalText& indent = level.kind == Level::Kind::Body ? indents_.body : indents_.data;
    return columnAfter(indent.text, level.lineColumn, tabSize_);
}

// From where what stands behind its first token is indented.
int HangingLines::columnOfElement(const Level& level) const {
    return level.kind == Level::Kind::Statement || level.element.start == kNone ? level.base : level.element.start;
}

int HangingLines::wrapped(int column) const {
    return columnAfter(indents_.wrap.text, column, tabSize_);
}

// Each of many comments in a row asks for what follows them all.
std::size_t HangingLines::skipTrivia(std::size_t place) const {
    if (place < triviaStart_ || place > triviaEnd_) {
        triviaStart_ = triviaEnd_ = place;
        while (triviaEnd_ < tokens_.size() && isTrivia(triviaEnd_)) ++triviaEnd_;
    }
    return triviaEnd_;
}

// Names of literals may stand among them: "a" PRIu64 "b".
bool HangingLines::continuesLiteral(std::size_t place) const {
    const auto isPart = [this](std::size_t at) {
        const int kind = tokens_[at].kind;
        return kind == Cpp::StringLiteral || kind == Cpp::Identifier;
    };
    return literalColumn_ != kNone && previous_ != kNoToken && isPart(previous_) && isPart(place);
}

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
    if (token.role == ExprRole::Name) level.behindComma = kNone;  // the comma parts what is declared
    if (startsElement || level.awaitsOperand || level.awaitsLater) level.operandStart = place;
    if (level.awaitsOperand) {
        element.operand = column;
        element.operandStartsLine = startsLine;
    }
    if (level.awaitsLater) element.later = column;
    if (!element.choices.empty() && element.choices.back() == kNone) element.choices.back() = column;
    element.choice = kNone;
    if (startsLine) element.memberLine = isMemberAccess(kind) && !startsElement ? column : kNone;
    level.awaitsOperand = awaitsValue(token);
    level.awaitsLater = isOperator(place) && !level.awaitsOperand && !isMemberAccess(kind);
    if (level.awaitsLater) {
        element.later = element.chain = element.memberLine = kNone;
        level.lastOperator = place;
    }
    if (level.awaitsOperand) {
        level.isReturned = kind == Cpp::KeywordReturn;
        element.operand = element.later = element.chain = element.memberLine = element.shift = kNone;
        element.operandStartsLine = false;
        element.questions.clear();
        element.choices.clear();
        element.otherwise = kNone;
    } else if (token.role == ExprRole::Separator) {
        // What follows the comma in `return a, b` is returned too.
        const int returned = level.isReturned && kind == Cpp::Comma ? element.operand : kNone;
        element = {};
        element.operand = returned;
    } else if (kind == Cpp::CloseParen && endsInComma(place)) {
        element = {};
        if (level.kind == Level::Kind::Statement) level.behindComma = level.base;
    } else if (isMemberAccess(kind) && !startsElement && element.chain == kNone) {
        element.chain = column;
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
    if (kind == Cpp::StringLiteral ? !continuesLiteral(place) : kind != Cpp::Identifier) {
        literalColumn_ = kind == Cpp::StringLiteral ? column : kNone;
    }
}

void HangingLines::open(std::size_t place) {
    const Level& outer = levels_.back();
    Level level;
    level.bracket = place;
    level.close = tokens_[place].partner;
    const bool isBrace = tokens_[place].kind == Cpp::OpenBrace;
    const bool isBody = isBrace && opensBody(place);
    level.kind = isBody ? Level::Kind::Body : isBrace ? Level::Kind::Braces : Level::Kind::List;
    const bool isInList = outer.kind == Level::Kind::List && outer.element.start != kNone;
    // What the first element of a list opens goes by what the list itself does: `outer(inner(`.
    const bool isOneOfMany = chains_ && outer.bracket != kNoToken && chains_->holdsComma(outer.bracket);
    const bool isInFirst = isInList && outer.element.start == outer.first && !outer.startedLine && !isOneOfMany;
    const bool isInElements = isOneOfMany && outer.kind == Level::Kind::List && outer.first != kNone;
    level.blocks = isInElements && !indents_.fromLine ? outer.first : outer.blocks;
    // The arguments behind those of a template hang from where the name of the template stands.
    const bool isBehindTemplate = chains_ && place > 0 && place - 1 == templateClose_;
    const int lineColumn = isBehindTemplate ? templateLineColumn_ : lineColumn_;
    // A a{f(
    //         b), c};
    const bool isInValues =
        !isBrace && isOneOfMany && outer.kind == Level::Kind::Braces && outer.element.start != kNone;
    level.base = isInFirst ? outer.base : isInList || isInValues ? outer.element.start : lineColumn;
    const bool isFirst = outer.bracket != kNoToken && outer.bracket + 1 == place;
    const bool isInBraces = isBrace && outer.kind == Level::Kind::Braces && outer.element.start != kNone;
    const bool isRow = chains_ && isInBraces && isFirst && isAboveRow(place);
    const bool isOfLambda = isBody && outer.kind != Level::Kind::Body;
    level.lineColumn = isRow ? outer.element.start : isOfLambda ? captureLineColumn_ : lineColumn_;
    const int behindName = columnBehindName(place);
    level.contents = behindName != kNone ? behindName : columnInCall(outer, place);
    const bool isTemplate = tokens_[place].role == ExprRole::TemplateOpen;
    if (level.contents == kNone && chains_ && !isBody) {
        level.call = columnOfCall(outer);
        const bool isInSingle = outer.kind == Level::Kind::Braces && !isOneOfMany && !outer.startedLine;
        if (level.call == kNone && (isInFirst || isInSingle)) level.call = outer.call;
    }
    if (level.contents == kNone && chains_ && (isTemplate || tokens_[place].kind == Cpp::OpenParen)) {
        if (level.call != kNone) level.contents = wrapped(level.call);
        if (level.contents == kNone && isInFirst) level.contents = outer.contents;
        if (isTemplate && outer.bracket != kNoToken) level.contents = columnInParentheses(outer, level);
    }
    levels_.push_back(level);
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
    const bool isMember = isMemberAccess(kindAt(tokens_, next)) && !isPack(tokens_, next);
    if (!chains_ || tokens_[open].role != ExprRole::GroupOpen || !isMember) return kNone;
    const bool isInMemberLine = outer.element.memberLine != kNone && outer.element.memberLine == lineColumn_;
    const int operand = isInMemberLine ? lineColumn_ : outer.element.columnOfOperand();
    return operand == kNone ? kNone : columnAfter(indents_.operand.text, operand, tabSize_);
}

}  // namespace Tessel
