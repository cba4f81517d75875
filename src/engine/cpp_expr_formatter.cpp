// The sweep over the tokens of a text.
#include "engine/cpp_expr_formatter.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

#include "cpp/words.h"
#include "engine/columns.h"
#include "engine/declarator_text.h"
#include "engine/expr_run.h"
#include "engine/gap.h"
#include "engine/shown_width.h"

namespace Tessel {

namespace {

using Zelmor::IndentScope;
using Zelmor::LeadingSpaceScope;
using Zelmor::OIndentBuf;

// Whether the block is the body of a lambda that begins with the "[" at `capture`.
bool isBodyOf(const ExprTokens& tokens, std::size_t capture, std::size_t block) {
    for (std::size_t place = block; place-- > capture + 1;) {
        const ExprToken& token = tokens[place];
        if (token.role == ExprRole::Separator || token.role == ExprRole::GroupOpen) return false;
        if (token.partner < place) place = token.partner;
        if (place == capture) return true;
    }
    return false;
}

// Whether a lambda, whose body the block is, says what it returns.
bool returnsType(const ExprTokens& tokens, std::size_t capture, std::size_t block) {
    for (std::size_t place = tokens[capture].partner; place < block; ++place) {
        if (tokens[place].kind == Cpp::Arrow) return true;
        if (tokens[place].partner != kNoToken && tokens[place].partner > place) place = tokens[place].partner;
    }
    return false;
}

}  // namespace

CppExprFormatter::CppExprFormatter(const PropertySet& scheme, const Zelmor::TextDocument* source,
                                   LayoutLog* log)
    : CppExprFormatterBase(scheme, source, log),
      source_(source),
      settings_(CppExprFormatterBase::scheme()),
      settledText_(settings_),
      looksBehind_(settings_.afterCast.present || settings_.afterDeleteBrackets.present ||
                   settings_.beforeEllipsis.present || settings_.closesLists() || log),
      keptIndent_(settings_.keepsLineIndent, tabSize(), columnAfter(settings_.hanging.wrap.text, 0, tabSize())),
      splices_(CppExprFormatterBase::scheme()),
      defineTabs_(source ? source->text() : std::string_view(), tabSize()) {}

void CppExprFormatter::formatExpression(std::string_view text, OIndentBuf& out, BlocksInText* blocks,
                                        HangingLines::Text hanging, std::optional<int> statementColumn) {
    format(text, out, ExprMode::Expression, kAsInInput, {}, blocks, hanging, statementColumn);
}

void CppExprFormatter::formatReturnedType(std::string_view text, OIndentBuf& out) {
    format(text, out, ExprMode::ReturnedType, kAsInInput, {}, nullptr, HangingLines::Text::Statement);
}

void CppExprFormatter::formatDeclarationText(std::string_view text, OIndentBuf& out,
                                             const OptionalText& typeWhitespace, HangingLines::Text hanging) {
    format(text, out, ExprMode::Declaration, typeWhitespace, {}, nullptr, hanging);
}

void CppExprFormatter::formatForClause(std::string_view text, OIndentBuf& out, int statementColumn,
                                       bool isFirst) {
    // for (a = b; a && *c; ++a)
    const bool mayDeclare = isFirst || !formatsTypeArguments();
    format(text, out, mayDeclare ? ExprMode::Declaration : ExprMode::Expression, kAsInInput, {}, nullptr,
           HangingLines::Text::List, statementColumn);
}

void CppExprFormatter::formatTypeText(std::string_view text, OIndentBuf& out, const OptionalText& typeWhitespace,
                                      LastMarks marks) {
    format(text, out, ExprMode::Declaration, typeWhitespace, marks, nullptr, HangingLines::Text::List);
}

void CppExprFormatter::formatDeclarators(std::string_view text, OIndentBuf& out, BlocksInText* blocks,
                                         HangingLines::Text hanging, DeclaratorPlaces places) {
    format(text, out, ExprMode::Declarators, kAsInInput, {}, blocks, hanging, places.name, places.marks);
}

void CppExprFormatter::format(std::string_view text, OIndentBuf& out, ExprMode mode,
                              const OptionalText& typeWhitespace, std::optional<LastMarks> marksBeforeName,
                              BlocksInText* blocks, HangingLines::Text hanging,
                              std::optional<int> outerColumn, MarkColumns declaratorMarks) {
    // Many texts have no gaps, nor a type that would.
    const bool hasNoTypes = mode == ExprMode::Expression || mode == ExprMode::Declarators;
    if (hasNoTypes && !log() && Cpp::isSingleWord(text)) {
        out.write(text);
        return;
    }
    if (hasNoTypes && !log() && writeSettled(text, mode, out)) return;
    // The blocks hold expressions of their own. What a long text takes is not kept for the next one.
    constexpr std::size_t longText = 8 * 1024;
    ExprTokens ownTokens;
    const bool isLong = text.size() > longText;
    ExprTokens& tokens = blocks || isLong ? ownTokens : exprTokens_;
    readExprTokens(text, mode, tokens, blocks ? blocks->extents() : std::span<const TextExtent>(), &markers(),
                   lambdaParameters(), &sourceTokens_);
    Run run(text, tokens, out, mode, typeWhitespace, marksBeforeName, keepsColumns(), log());
    run.blocks = blocks;
    run.declaratorMarks = declaratorMarks;
    const bool isForClause = outerColumn && hanging == HangingLines::Text::List;
    const bool mayDeclareSeveral = isForClause && settings_.betweenDeclarators.present;
    if (mayDeclareSeveral && hasMarkBehindComma(tokens)) run.lastMarks = LastMarks::AgainstName;
    run.keepsLines = settings_.keepsLineBreaks && trimLeft(text).find('\n') != std::string_view::npos;
    // Blocks may come to hold lines.
    const bool hangs = run.keepsLines || (settings_.keepsLineBreaks && blocks);
    if (hangs && !out.keepLeadingSpace()) {
        const int indentColumn = columnAfter(out.indent(), 0, out.tabSize());
        run.hanging.emplace(tokens, hanging, indentColumn, settings_.hanging, tabSize());
        const bool areDeclarators = HangingLines::holdsDeclarators(hanging);
        if (areDeclarators && out.lineHasText()) run.hanging->startInLineOf(std::max(out.textColumn(), indentColumn));
        run.hangingText = hanging;
        while (run.kindAt(run.firstText) == Cpp::Directive) ++run.firstText;
        if (isForClause) {
            run.hanging->hangCommasFrom(*outerColumn);
            run.hanging->hangNamesFromFirst();
        } else if (outerColumn && areDeclarators) {
            run.hanging->hangDeclaratorsFrom(*outerColumn);
        } else if (outerColumn) {
            run.hanging->hangCallsFrom(*outerColumn);
        }
    }
    while (!run.sweep.atEnd()) writeCurrent(run);
    if (run.nameFollows) writeTypeEnd(run);
    run.sweep.writeEnd();
    run.groups.clear();
}

// Says false where the text is to be looked at; then nothing has been written.
bool CppExprFormatter::writeSettled(std::string_view text, ExprMode mode, OIndentBuf& out) const {
    const std::string_view expression = trimLeft(text);
    if (!settledText_.isOne(expression, mode)) return false;
    out.write(text.substr(0, text.size() - expression.size()));
    out.write(expression);
    return true;
}

// Whether the white space behind the comma in front has been written.
bool CppExprFormatter::followsSpacedComma(const Run& run) const {
    if (run.previousKind() != Cpp::Comma) return false;
    return run.groups.empty() ? settings_.commas.declarators.behind.present
                              : spacingOf(run.groups.back()).after.present;
}

// Of the line from which the block that comes next is indented: a lambda's may begin several lines above its "{".
int CppExprFormatter::columnOfBlock(const Run& run) const {
    if (!settings_.indentsFromLine) return run.out().textColumn();
    const bool isBelow = run.out().lineHasText() && run.capture != kNoToken &&
                         isBodyOf(run.tokens, run.capture, run.sweep.place());
    int lineColumn = isBelow ? run.captureColumn : run.out().textColumn();
    if (isBelow && run.hanging && returnsType(run.tokens, run.capture, run.sweep.place())) {
        lineColumn = run.hanging->columnOfReturningBody(run.capture).value_or(lineColumn);
    }
    const std::optional<int> inList = run.hanging ? run.hanging->columnOfBlock() : std::nullopt;
    return std::max(lineColumn, inList.value_or(lineColumn));
}

// Whether the body of a lambda comes next whose "{" begins a line, and stands where the line with the "[" begins.
bool CppExprFormatter::standsBelowLine(const Run& run) const {
    const std::size_t place = run.sweep.place();
    if (run.roleAt(place) != ExprRole::Block || run.capture == kNoToken) return false;
    const int lineColumn = columnOfSourceLine(run.tokens[run.capture].text());
    return columnOfSourceLine(run.tokens[place].text()) == lineColumn && isBodyOf(run.tokens, run.capture, place);
}

// By how many columns the body of a lambda that comes next may move to the left, where lines begin in front of it.
int CppExprFormatter::spareOfBlock(const Run& run) const {
    const bool wraps = settings_.weighsWholes() && settings_.wrapMargin > 0 && !run.keepsLines;
    const bool isOfLambda = run.capture != kNoToken && isBodyOf(run.tokens, run.capture, run.sweep.place());
    if (!wraps || !isOfLambda) return 0;
    const OIndentBuf& out = run.out();
    const int indentColumn = columnAfter(out.indent(), 0, out.tabSize());
    return std::max(out.column() - columnAfter(settings_.hanging.wrap.text, indentColumn, out.tabSize()), 0);
}

// Whether the "{" of a lambda that begins a line is to follow its head, as those of functions do.
bool CppExprFormatter::joinsBody(const Run& run) const {
    const bool isBody = settings_.beforeLambdaBody.present && run.capture != kNoToken && isLineBreak(run.sweep.gap());
    return isBody && isBodyOf(run.tokens, run.capture, run.sweep.place());
}

// Else a block stays on the line, or begins the line, where its author put it.
void CppExprFormatter::writeBlock(Run& run) {
    if (joinsBody(run)) {
        run.sweep.writeGapWith(settings_.beforeLambdaBody);
    } else if (run.hanging && keepsLine(run)) {
        keepLine(run);
    } else if (isLineBreak(run.sweep.gap())) {
        const int column = run.out().textColumn();
        IndentScope indent(run.out(), indentToColumn(run.out(), column));
        LeadingSpaceScope leadingSpace(run.out(), false);
        run.sweep.writeGap();
        run.out().startLine();
    } else if (isAllWhitespace(run.sweep.gap())) {
        const bool isPlaced = run.previousKind() == Cpp::OpenParen || followsSpacedComma(run);
        run.sweep.writeGapWith(isPlaced ? WantedText(run.sweep.gap()) : kBlank);
    } else {
        run.sweep.writeGap();
    }
    passToken(run);
    run.blocks->write(run.blocksWritten++, run.out(), columnOfBlock(run), spareOfBlock(run));
    run.previous = run.sweep.place();
    run.after = nullptr;
    run.sweep.passToken();
}

void CppExprFormatter::writeCurrent(Run& run) {
    const ExprToken& token = run.current();
    measureLine(run);
    if (token.role == ExprRole::Trivia) {
        const bool isKept = token.kind != Cpp::Directive && keepsLine(run);
        // Operators keep the gap in front of a block comment, if there is one; brackets do not.
        if (token.kind == Cpp::BlockComment && !isKept) {
            const bool endsLineOfOpen =
                run.after && run.after->hasLineFeed() && run.sweep.endsItsLine() && !isLineBreak(run.sweep.gap());
            const bool keepsGap = run.previousRole() == ExprRole::BinaryOperator &&
                                  (!settings_.formatsOtherGaps || !run.sweep.gap().empty());
            if (isPresent(run.after) && !keepsGap && !endsLineOfOpen) {
                run.sweep.writeGapWith(run.after);
            } else if (wrapsLines() && !endsLine(run) && joinedLine(run)) {
                run.sweep.writeGapWith(kBlank);
            }
        }
        run.after = nullptr;
        if (isKept) keepLine(run);
        passToken(run);
        std::optional<IndentScope> inFirstColumn;
        if (isKept && run.startsAtMargin && isSplicedComment(run, run.sweep.place())) {
            inFirstColumn.emplace(run.out(), std::string());
        }
        writeTrivia(run.sweep);
        return;
    }
    if (isComma(run)) {
        writeComma(run);
        return;
    }
    if (token.role == ExprRole::Block) {
        if (!run.groups.empty()) startElements(run, run.groups.back());
        writeBlock(run);
        return;
    }
    const bool closes = !run.groups.empty() && run.groups.back().close == run.sweep.place();
    if (closes) {
        closeGroup(run);
        return;
    }
    if (token.role == ExprRole::Mark) {
        writeMarks(run);
        return;
    }
    writeGapBefore(run);
    if (token.kind == Cpp::StringLiteral && run.previousKind() != Cpp::StringLiteral) {
        if (!run.startsAtMargin) run.out().startLine();
        run.literalColumn = run.sweep.column();
    }
    if (!run.groups.empty()) startElements(run, run.groups.back());
    run.previous = run.sweep.place();
    run.after = wantedAfter(run, run.previous);
    const bool opens = token.role == ExprRole::GroupOpen || token.role == ExprRole::TemplateOpen ||
                       token.kind == Cpp::OpenBrace;
    writeToken(run);
    if (!opens || token.partner == kNoToken) return;
    if (run.blocks && token.kind == Cpp::OpenBracket) {
        run.capture = run.previous;
        run.captureColumn = run.out().textColumn();
    }
    openGroup(run);
}

void CppExprFormatter::writeGapBefore(Run& run) {
    const std::size_t place = run.sweep.place();
    const OptionalText* wanted = wantedBefore(run, place);
    const bool isForPrevious = !wanted || (isPresent(run.after) && !wanted->present);
    if (isForPrevious && run.roleAt(place) != ExprRole::BraceOpen) wanted = run.after;
    if (keepsLine(run) && !(wanted && wanted->hasLineFeed())) return keepLine(run);
    if (!wanted && (settings_.otherGaps.none.present || log())) wanted = otherGapOf(run);
    if (isStacked(run)) return startLiteralLine(run);
    if (run.hanging && isColumnGap(run.sweep.gap()) && run.hanging->isOneOfConditions(place)) {
        return run.sweep.writeGap();
    }
    if (wrapsLines() && !isPresent(wanted)) {
        if (const OptionalText* const joined = joinedLine(run)) wanted = joined;
    }
    run.sweep.writeGapWith(wanted);
}

// Tells where the current token stands, the gap in front of it written.
void CppExprFormatter::passToken(Run& run) const {
    if (!run.hanging) return;
    const std::size_t place = run.sweep.place();
    if (place == run.firstText) {
        run.firstLine.output = textColumnOf(run.out());
        run.followsText = run.sweep.lineHasText();
    }
    // The blanks in front of a comment go with it.
    const bool goesOn = run.sweep.lineHasText();
    const bool isBehindText = goesOn && run.current().role == ExprRole::Trivia;
    // Nothing hangs under a literal that stays in the first column.
    const bool isFlush = keptIndent_.isWanted() && run.sweep.column() == 0 && isFlushLiteral(run, place);
    if (!goesOn) run.hiddenColumns = 0;
    const int shown = std::max(run.sweep.columnToIndentFrom() - run.hiddenColumns, 0);
    const int column = isFlush ? run.hanging->columnFor(place) : shown;
    run.hanging->pass(place, isBehindText ? columnAfter(run.sweep.gap(), column, run.out().tabSize()) : column,
                      place > 0 && !goesOn);
    if (isBehindText && leadsElements(run, place)) run.hanging->hangContentsFrom(column);
    if (run.current().start.line != run.current().lastLine()) run.hiddenColumns = 0;
    run.hiddenColumns += hiddenColumns(run.current().text(), tabSize());
}

// {// of these
//  a, b}      whether it is such a comment, against the brace, with the elements in its column in the source
bool CppExprFormatter::leadsElements(const Run& run, std::size_t place) const {
    const bool isInside = settings_.closesLists() && !keptIndent_.isWanted() && place > 0;
    if (!isInside || run.kindAt(place) != Cpp::LineComment || run.kindAt(place - 1) != Cpp::OpenBrace) return false;
    const std::size_t offset = run.tokens[place].offset;
    std::size_t next = place + 1;
    while (run.kindAt(next) == Cpp::LineComment) ++next;
    if (run.text[offset - 1] != '{' || next >= run.tokens.size() || closesBracket(run.tokens, next)) return false;
    const int column = sourceColumns().nearColumnOf(run.text.substr(offset));
    return column >= 0 && column == sourceColumns().nearColumnOf(run.text.substr(run.tokens[next].offset));
}

void CppExprFormatter::writeToken(Run& run) const {
    std::optional<IndentScope> margin;
    if (std::exchange(run.startsAtMargin, false) && run.sweep.column() == 0) margin.emplace(run.out(), std::string());
    passToken(run);
    const ExprToken& token = run.current();
    const bool isNameInLines = token.kind == Cpp::Identifier && token.start.line != token.lastLine();
    const std::optional<int> column =
        isNameInLines && run.hanging ? run.hanging->columnWithinName() : std::nullopt;
    std::optional<IndentScope> indent;
    // The line that the name begins is indented as it would be without the others.
    if (column) run.out().startLine();
    if (column) indent.emplace(run.out(), indentToColumn(run.out(), *column));
    if (column) run.hanging->breakName(run.sweep.place(), *column);
    run.sweep.writeToken();
}

}  // namespace Tessel
