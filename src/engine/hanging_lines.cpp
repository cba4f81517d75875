#include "engine/hanging_lines.h"

#include "cpp/token_kind.h"
#include "cpp/token_sets.h"
#include "cpp/words.h"
#include "engine/columns.h"
#include "engine/operator_kinds.h"

namespace Tessel {

HangingLines::HangingLines(const ExprTokens& tokens, Text text, int indentColumn,
                           const HangingIndents& indents, int tabSize)
    : tokens_(tokens), indents_(indents), tabSize_(tabSize), lineColumn_(indentColumn) {
    Level& level = levels_.emplace_back();
    namesInLine_ = text == Text::DeclaratorsInLine;
    isAmongOthers_ = text == Text::Element;
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
    if (namesInLine_) (chains_ ? levels_.front().base : levels_.front().behindComma) = column;
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
    if (Cpp::isMemberAccess(kind) && level.element.start != kNone) {
        const bool isOfLambda = chains_ && token.role == ExprRole::BinaryOperator &&
                                kindAt(tokens_, level.operandStart) == Cpp::OpenBracket;
        return isOfLambda ? columnAfter(indents_.operand.text, level.element.columnOfOperand(), tabSize_)
                          : columnOfMember(level);
    }
    const bool isShift = token.role == ExprRole::BinaryOperator && isShiftKind(kind);
    if (isShift && level.element.shift != kNone) return level.element.shift;
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
    if (kind == Cpp::StringLiteral && followsNameOfLiteral()) return level.base;
    const bool followsSubscript = chains_ && kindAt(tokens_, previous_) == Cpp::CloseBracket;
    if (kind == Cpp::OpenBracket && followsSubscript && level.element.subscript != kNone) {
        return level.element.subscript;
    }
    const bool isFlush = kind == Cpp::OpenBrace && level.kind == Level::Kind::Statement;
    if (isFlush && !holdsValueInLine(level, next)) return lineColumn_;
    const bool isMade = level.element.operand != kNone && followsPlacement();
    return isMade ? columnBehindPlacement(level) : columnInLevel(level);
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
    const bool hangsFromValue = isAssigned || level.element.operandStartsLine;
    if (hangsFromValue) return columnAfter(indents_.operand.text, level.element.operand, tabSize_);
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

bool HangingLines::startsDeclarator() const {
    const Level& level = levels_.back();
    const bool startsElement = level.element.start == kNone && level.first != kNone && !level.awaitsOperand;
    return isOutsideBrackets() && startsElement;
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
    // A statement behind comments: `else /* why */`, where no rule ends that line.
    const bool startsStatement = previous_ == kNoToken && level.kind == Level::Kind::Statement;
    if (startsStatement) return level.base;
    if (level.first == kNone || level.awaitsOperand) return columnOfContents(level);
    const bool startsElement = level.element.start == kNone;
    if (startsElement && level.behindComma != kNone) return level.behindComma;
    if (startsElement && level.section != kNone) return level.section;
    if (startsHangingDeclarator()) return declarators_;
    if (level.kind == Level::Kind::Statement) {
        if (startsElement && chains_ && namesInLine_) return level.base;
        // What begins with a "=" continues a list of declarators that began elsewhere; where operands hang, others than
        // those behind a value do from their statement.
        const bool showsFirst = !chains_ && tokens_.front().role != ExprRole::BinaryOperator;
        return startsElement && showsFirst ? level.first : wrapped(level.base);
    }
    if (startsElement) return level.first;
    return level.kind == Level::Kind::Body ? wrapped(level.element.start) : level.element.start;
}

// `a = new (b)\n    T`
bool HangingLines::followsPlacement() const {
    const bool endsBracket = chains_ && kindAt(tokens_, previous_) == Cpp::CloseParen;
    const std::size_t open = endsBracket ? tokens_[previous_].partner : kNoToken;
    return open != kNoToken && open > 0 && tokens_[open - 1].kind == Cpp::KeywordNew;
}

int HangingLines::columnBehindPlacement(const Level& level) const {
    const Element& element = level.element;
    if (level.kind != Level::Kind::Statement || element.later != kNone) return element.operand;
    if (!element.operandStartsLine) return wrapped(level.base);
    return columnAfter(indents_.operand.text, element.operand, tabSize_);
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
    if (level.element.start == kNone) return level.base;
    // The text begins with the value of the first declarator.
    const bool isLaterDeclarator = declarators_ != kNone && level.element.start != level.first;
    return level.kind != Level::Kind::Statement || isLaterDeclarator ? level.element.start : level.base;
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

// Whether a name is all that stands in front: what begins with one and goes on with a literal is text as a whole.
bool HangingLines::followsNameOfLiteral() const {
    const Level& level = levels_.back();
    const bool isOfStatement = level.kind == Level::Kind::Statement && isOutsideBrackets();
    const bool isSecond = previous_ != kNoToken && previous_ == level.operandStart &&
                          level.element.start == level.base && level.element.operand == kNone &&
                          level.element.later == kNone;
    return isOfStatement && isSecond && tokens_[previous_].kind == Cpp::Identifier;
}

}  // namespace Tessel
