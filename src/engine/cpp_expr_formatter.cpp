// The sweep over the tokens of a text, with the white space around operators and in front of calls.
#include "engine/cpp_expr_formatter.h"

#include "cpp/token_joining.h"
#include "cpp/token_sets.h"
#include "engine/columns.h"
#include "engine/directive_parts.h"
#include "engine/expr_casts.h"
#include "engine/expr_run.h"
#include "engine/gap.h"
#include "engine/macro_bodies.h"
#include "engine/operator_kinds.h"
#include "engine/other_gaps.h"
#include "scheme/single_line.h"

namespace Tessel {

namespace {

using Zelmor::IndentScope;
using Zelmor::IndentState;
using Zelmor::LeadingSpaceScope;
using Zelmor::OIndentBuf;

// `_` and `N_`, the marks of texts to be translated.
bool isShortName(std::string_view name) { return name.size() <= 2 && name.ends_with('_'); }

// `T (*f)(int)`, `T (&a)[2]`, `T (A::*m)(int)`: whether the "(" at `open`, which has a partner, stands around a mark
// and a name.
bool opensDeclarator(const ExprTokens& tokens, std::size_t open) {
    std::size_t inside = nextPlace(tokens, open);
    if (inside < tokens.size() && tokens[inside].token.text.ends_with("::")) inside = nextPlace(tokens, inside);
    const int mark = kindAt(tokens, inside);
    const int behind = kindAt(tokens, nextPlace(tokens, tokens[open].partner));
    return (isPointerMark(mark) || mark == Cpp::LogicalAnd) &&
           (behind == Cpp::OpenParen || behind == Cpp::OpenBracket);
}

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

}  // namespace

CppExprFormatter::CppExprFormatter(const PropertySet& scheme, const Zelmor::TextDocument* source,
                                   LayoutLog* log)
    : CppExprFormatterBase(scheme, source, log),
      source_(source),
      settings_(CppExprFormatterBase::scheme()),
      looksBehind_(settings_.afterCast.present || settings_.afterDeleteBrackets.present ||
                   settings_.beforeEllipsis.present || log),
      keptIndent_(settings_.keepsLineIndent, tabSize(), columnAfter(settings_.hanging.wrap.text, 0, tabSize())),
      splices_(CppExprFormatterBase::scheme()) {}

void CppExprFormatter::formatExpression(std::string_view text, OIndentBuf& out, BlocksInText* blocks,
                                        HangingLines::Text hanging) {
    format(text, out, ExprMode::Expression, kAsInInput, false, blocks, hanging);
}

void CppExprFormatter::formatDeclarationText(std::string_view text, OIndentBuf& out,
                                             const OptionalText& typeWhitespace, HangingLines::Text hanging) {
    format(text, out, ExprMode::Declaration, typeWhitespace, false, nullptr, hanging);
}

void CppExprFormatter::formatForClause(std::string_view text, OIndentBuf& out, int statementColumn) {
    format(text, out, ExprMode::Declaration, kAsInInput, false, nullptr, HangingLines::Text::List, statementColumn);
}

void CppExprFormatter::formatTypeText(std::string_view text, OIndentBuf& out, const OptionalText& typeWhitespace) {
    format(text, out, ExprMode::Declaration, typeWhitespace, true, nullptr, HangingLines::Text::List);
}

void CppExprFormatter::formatDeclarators(std::string_view text, OIndentBuf& out, BlocksInText* blocks) {
    format(text, out, ExprMode::Declarators, kAsInInput, false, blocks, HangingLines::Text::Declarators);
}

void CppExprFormatter::format(std::string_view text, OIndentBuf& out, ExprMode mode,
                              const OptionalText& typeWhitespace, bool nameFollows, BlocksInText* blocks,
                              HangingLines::Text hanging, std::optional<int> statementColumn) {
    // The blocks hold expressions of their own. What a long text takes is not kept for the next one.
    constexpr std::size_t longText = 64 * 1024;
    ExprTokens ownTokens;
    const bool isLong = text.size() > longText;
    ExprTokens& tokens = blocks || isLong ? ownTokens : exprTokens_;
    if (isLong) tokens.reserve(text.size() / 2);  // what tables of numbers do not exceed
    readExprTokens(text, mode, tokens, blocks ? blocks->extents() : std::span<const TextExtent>(), &markers(),
                   lambdaParameters());
    Run run(text, tokens, out, mode, typeWhitespace, nameFollows, keepsColumns(), log());
    run.blocks = blocks;
    run.keepsLines = settings_.keepsLineBreaks && trimLeft(text).find('\n') != std::string_view::npos;
    if (run.keepsLines && !out.keepLeadingSpace()) {
        const int indentColumn = columnAfter(out.indent(), 0, out.tabSize());
        run.hanging.emplace(tokens, hanging, indentColumn, settings_.hanging, tabSize());
        const bool goesOn = hanging == HangingLines::Text::Declarators && out.lineHasText();
        if (goesOn) run.hanging->startInLineOf(std::max(out.textColumn(), indentColumn));
        run.hangingText = hanging;
        while (run.kindAt(run.firstText) == Cpp::Directive) ++run.firstText;
        if (statementColumn) run.hanging->hangCommasFrom(*statementColumn);
    }
    while (!run.sweep.atEnd()) writeCurrent(run);
    if (nameFollows) writeTypeEnd(run);
    run.sweep.writeGap();
    run.groups.clear();
}

bool CppExprFormatter::layOutDirective(std::string_view directive, OIndentBuf& out) {
    if (!settings_.aroundPaste.present) return layOutParts(directive, out);
    const std::string joined = withPasteGaps(directive, settings_.aroundPaste.text);
    if (joined == directive) return layOutParts(directive, out);
    const int column = sourceColumns().columnOf(directive);
    if (!layOutParts(joined, out)) writeLines(joined, column, InnerBlanks::Convert, out);
    return true;
}

// Says false where nothing is laid out; then nothing has been written.
bool CppExprFormatter::layOutParts(std::string_view directive, OIndentBuf& out) {
    if (!settings_.formatsDirectives) return false;
    const DirectiveParts parts = partsOf(directive);
    if (parts.areNone()) return false;
    const bool isOneLine = directive.find('\n') >= directive.size() - 1;
    const bool placesSplices = !isOneLine && (macroBodies_ || splices_.areAligned());
    if (!placesSplices) return writeParts(directive, parts, out);
    OIndentBuf lines{IndentState(out)};
    if (!writeParts(directive, parts, lines)) {
        if (!splices_.areAligned()) return false;
        writeRendered(directive, lines);
    }
    writeRendered(splices_.placed(directive, lines.takeText(), out.column()), out);
    return true;
}

// Says false where nothing in the directive is laid out; then nothing has been written.
bool CppExprFormatter::writeParts(std::string_view directive, const DirectiveParts& parts, OIndentBuf& out) {
    std::optional<std::string> body;
    if (macroBodies_ && parts.body.length > 0) body = macroBodies_->laidOut(directive, parts, out.column());
    if (!body && parts.parameters.length == 0 && parts.expression.length == 0) return false;
    // A directive's line goes on only where a splice stands. It may stand in an expression, whose tokens stay.
    if (!inDirectives_) inDirectives_ = std::make_unique<CppExprFormatter>(schemeOfDirectives(), source_, log());
    const int start = columnToIndentFrom(out);
    std::size_t written = 0;
    OpaqueWriter rest(directive, InnerBlanks::Convert, out);
    const auto writeBetween = [&](std::size_t end) {
        out.startLine();
        IndentScope noIndent(out, {});
        rest.write(directive.substr(written, end - written));
    };
    for (const TextExtent& part : {parts.parameters, parts.expression}) {
        if (part.length == 0) continue;
        writeBetween(part.offset);
        const bool hangsFromStart = parts.isCondition && settings_.operandIndent.present;
        IndentScope indent(out, indentToColumn(out, hangsFromStart ? start : out.column()));
        const std::string_view text = directive.substr(part.offset, part.length);
        inDirectives_->formatExpression(text, out, nullptr,
                                        hangsFromStart ? HangingLines::Text::Statement : HangingLines::Text::List);
        written = part.offset + part.length;
    }
    if (body) {
        writeBetween(parts.body.offset);
        writeRendered(*body, out);
        written = parts.body.offset + parts.body.length;
    }
    writeBetween(directive.size());
    return true;
}

// Nothing ends lines; operands that begin some hang from the directive, where operands hang at all.
PropertySet CppExprFormatter::schemeOfDirectives() const {
    PropertySet lines = withoutLineEnds(scheme());
    if (settings_.operandIndent.present) lines.setBool(Keys::HANGING_FROM_STATEMENT.name, true);
    return lines;
}

// Whether the white space behind the comma in front has been written.
bool CppExprFormatter::followsSpacedComma(const Run& run) const {
    return run.previousKind() == Cpp::Comma && !run.groups.empty() && spacingOf(run.groups.back()).after.present;
}

// Of the line from which the block that comes next is indented: a lambda's may begin several lines above its "{".
int CppExprFormatter::columnOfBlock(const Run& run) const {
    const bool isBelow = settings_.indentsFromLine && run.out.lineHasText() && run.capture != kNoToken &&
                         isBodyOf(run.tokens, run.capture, run.sweep.place());
    return isBelow ? run.captureColumn : run.out.textColumn();
}

// By how many columns the body of a lambda that comes next may move to the left, where lines begin in front of it.
int CppExprFormatter::spareOfBlock(const Run& run) const {
    const bool wraps = settings_.weighsWholes() && settings_.wrapMargin > 0 && !run.keepsLines;
    const bool isOfLambda = run.capture != kNoToken && isBodyOf(run.tokens, run.capture, run.sweep.place());
    if (!wraps || !isOfLambda) return 0;
    const int indentColumn = columnAfter(run.out.indent(), 0, run.out.tabSize());
    return std::max(run.out.column() - columnAfter(settings_.hanging.wrap.text, indentColumn, run.out.tabSize()), 0);
}

// A block stays on the line, or begins the line, where its author put it.
void CppExprFormatter::writeBlock(Run& run) {
    if (run.hanging && keepsLine(run)) {
        keepLine(run);
    } else if (isLineBreak(run.sweep.gap())) {
        const int column = run.out.textColumn();
        IndentScope indent(run.out, indentToColumn(run.out, column));
        LeadingSpaceScope leadingSpace(run.out, false);
        run.sweep.writeGap();
        run.out.startLine();
    } else if (isAllWhitespace(run.sweep.gap())) {
        const bool isPlaced = run.previousKind() == Cpp::OpenParen || followsSpacedComma(run);
        run.sweep.writeGapWith(isPlaced ? WantedText(run.sweep.gap()) : kBlank);
    } else {
        run.sweep.writeGap();
    }
    passToken(run);
    run.blocks->write(run.blocksWritten++, run.out, columnOfBlock(run), spareOfBlock(run));
    run.previous = run.sweep.place();
    run.after = nullptr;
    run.sweep.passToken();
}

void CppExprFormatter::writeCurrent(Run& run) {
    const ExprToken& token = run.current();
    measureLine(run);
    if (token.role == ExprRole::Trivia) {
        const bool isKept = token.token.kind != Cpp::Directive && keepsLine(run);
        // Operators keep the gap in front of a block comment; brackets do not.
        if (token.token.kind == Cpp::BlockComment && !isKept) {
            const bool endsLineOfOpen =
                run.after && run.after->hasLineFeed() && run.sweep.endsItsLine() && !isLineBreak(run.sweep.gap());
            if (isPresent(run.after) && run.previousRole() != ExprRole::BinaryOperator && !endsLineOfOpen) {
                run.sweep.writeGapWith(run.after);
            } else if (wrapsLines() && !endsLine(run) && joinedLine(run)) {
                run.sweep.writeGapWith(kBlank);
            }
        }
        run.after = nullptr;
        if (isKept) keepLine(run);
        passToken(run);
        writeTrivia(run.sweep, run.out);
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
    if (token.token.kind == Cpp::StringLiteral && run.previousKind() != Cpp::StringLiteral) {
        run.out.startLine();
        run.literalColumn = run.out.column();
    }
    if (!run.groups.empty()) startElements(run, run.groups.back());
    run.previous = run.sweep.place();
    run.after = wantedAfter(run, run.previous);
    const bool opens = token.role == ExprRole::GroupOpen || token.role == ExprRole::TemplateOpen ||
                       token.token.kind == Cpp::OpenBrace;
    writeToken(run);
    if (!opens || token.partner == kNoToken) return;
    if (run.blocks && token.token.kind == Cpp::OpenBracket) {
        run.capture = run.previous;
        run.captureColumn = run.out.textColumn();
    }
    openGroup(run);
}

// What a token that opens no group wants behind itself. A ";" in front of a "*" or "&" counts as an operator.
const OptionalText* CppExprFormatter::wantedAfter(const Run& run, std::size_t place) const {
    const int kind = run.kindAt(place);
    if (introducesWidth(run, place)) return &settings_.aroundBitFieldColon;
    const bool isOperator = run.roleAt(place) == ExprRole::BinaryOperator ||
                            (kind == Cpp::Semicolon && isPointerMark(run.kindAt(place + 1)));
    // a ?: b
    if (kind == Cpp::Question && run.kindAt(place + 1) == Cpp::Colon && run.sweep.blanksBehind().empty()) {
        return &kNothing;
    }
    if (isOperator) return &settings_.afterOperator;
    if (kind == Cpp::Comma) {
        const CommaTexts* const commas = absentCommaOf(run, place);
        return commas ? &commas->behind : nullptr;
    }
    if (kind != Cpp::StringLiteral || !wrapsLines() || isJoinedToNext(run, place)) return nullptr;
    return run.kindFrom(place + 1) == Cpp::StringLiteral ? &kBlank : nullptr;
}

// The comma that the scheme has nothing for; null for others.
const CommaTexts* CppExprFormatter::absentCommaOf(const Run& run, std::size_t place) const {
    if (run.kindAt(place) != Cpp::Comma || run.roleAt(place) != ExprRole::Separator) return nullptr;
    const CommaTexts* commas = nullptr;
    if (!run.groups.empty()) {
        // Of an initialiser, those in rows that are kept go by another key.
        const Group& group = run.groups.back();
        const Trn::Token& close = run.tokens[group.close].token;
        const bool isInRow = run.tokens[run.tokens[group.close].partner].token.start.line < close.start.line &&
                             !isLineBreak(run.sweep.blanksBehind());
        commas = group.kind == Group::Kind::Braces && !isInRow ? &settings_.commas.elements : commasOf(group);
    } else if (run.mode == ExprMode::Declarators) {
        commas = &settings_.commas.declarators;
    }
    return commas && commas->areAbsent() ? commas : nullptr;
}

// Whether nothing stands between a literal and a name or a prefix: they mean something else apart, as in "a"U"b".
bool CppExprFormatter::isJoinedToNext(const Run& run, std::size_t place) {
    if (place + 1 >= run.tokens.size()) return false;
    const Trn::Token& literal = run.tokens[place].token;
    const Trn::Token& next = run.tokens[place + 1].token;
    return literal.offset + literal.length == next.offset && Cpp::wouldJoin(literal.text, next.text);
}

void CppExprFormatter::writeGapBefore(Run& run) {
    const std::size_t place = run.sweep.place();
    const OptionalText* wanted = wantedBefore(run, place);
    const bool isForPrevious = !wanted || (isPresent(run.after) && !wanted->present);
    if (isForPrevious && run.roleAt(place) != ExprRole::BraceOpen) wanted = run.after;
    if (keepsLine(run) && !(wanted && wanted->hasLineFeed())) return keepLine(run);
    if (!wanted && (settings_.otherGaps.none.present || log())) wanted = otherGapOf(run);
    if (isStacked(run)) return startLiteralLine(run);
    if (wrapsLines() && !isPresent(wanted)) {
        if (const OptionalText* const joined = joinedLine(run)) wanted = joined;
    }
    run.sweep.writeGapWith(wanted);
}

// Whether the comment in front of the token, on its line, tells which argument it is: `/*size=*/0`.
bool CppExprFormatter::namesArgument(const Run& run, std::size_t place) {
    const bool followsComment = place > 0 && run.kindAt(place - 1) == Cpp::BlockComment;
    return followsComment && run.tokens[place - 1].token.text.ends_with("=*/") && !run.sweep.gap().empty() &&
           run.sweep.gap().find_first_not_of(kBlanks) == std::string_view::npos;
}

// Of the gap in front of the current token, about which no token has anything to say.
const OptionalText* CppExprFormatter::otherGapOf(const Run& run) const {
    const std::size_t place = run.sweep.place();
    const std::string_view gap = run.sweep.gap();
    if (namesArgument(run, place)) return isPresent(&settings_.otherGaps.none) ? &settings_.otherGaps.none : nullptr;
    if (place == 0 || run.previous != place - 1 || (gap.empty() && !mayNeedBlank(run.previousKind()))) return nullptr;
    if (gap.find_first_not_of(kBlanks) != gap.npos) return nullptr;
    const OtherGap wanted = otherGap(run.tokens, run.previous, place, gap.empty());
    const OptionalText& text = wanted == OtherGap::Blank ? settings_.otherGaps.blank : settings_.otherGaps.none;
    const bool isThere = !log() && text.text == gap;
    return wanted == OtherGap::AsItIs || isThere ? nullptr : &text;
}

// Tells where the current token stands, the gap in front of it written.
void CppExprFormatter::passToken(Run& run) {
    if (!run.hanging) return;
    const std::size_t place = run.sweep.place();
    if (place == run.firstText) run.firstLine.output = textColumnOf(run.out);
    // The blanks in front of a comment go with it.
    const bool isBehindText = run.current().role == ExprRole::Trivia && run.out.lineHasText();
    const int column = columnToIndentFrom(run.out);
    const std::string_view blanks = isBehindText ? run.sweep.gap() : std::string_view();
    run.hanging->pass(place, columnAfter(blanks, column, run.out.tabSize()), place > 0 && !run.out.lineHasText());
}

void CppExprFormatter::writeToken(Run& run) {
    passToken(run);
    const Trn::Token& token = run.current().token;
    const bool isNameInLines = token.kind == Cpp::Identifier && token.start.line != token.end.line;
    const std::optional<int> column =
        isNameInLines && run.hanging ? run.hanging->columnWithinName() : std::nullopt;
    std::optional<IndentScope> indent;
    if (column) indent.emplace(run.out, indentToColumn(run.out, *column));
    run.sweep.writeToken();
}

// The ":" of a bit field, as opposed to operators and labels.
bool CppExprFormatter::introducesWidth(const Run& run, std::size_t place) {
    return run.mode == ExprMode::Declarators && run.kindAt(place) == Cpp::Colon &&
           run.roleAt(place) == ExprRole::Operand;
}

// The "..." behind what is a pack, or is made one: `class... T`, `T... args`, `f(args...)`. Those of ranges,
// `case a ... b`, and those that fold stand between operands.
bool CppExprFormatter::startsEllipsis(const Run& run, std::size_t place) {
    if (!isPack(run.tokens, place)) return false;
    const int before = run.previousKind();
    const bool followsType = before == Cpp::KeywordTypename || before == Cpp::KeywordClass ||
                             before == Cpp::KeywordAuto || before == Cpp::KeywordSizeof ||
                             isBuiltinTypeKeyword(before);
    const bool followsOperand =
        before == Cpp::Identifier || before == Cpp::CloseParen || run.previousRole() == ExprRole::TemplateClose;
    switch (run.kindFrom(place + kDotsOfPack)) {
        case Cpp::Comma:
        case Cpp::CloseParen:
        case Cpp::CloseBracket:
        case Cpp::CloseBrace:
        case Cpp::Greater:
        case Cpp::ShiftRight:
        case Trn::kEndKind: return followsType || followsOperand;
        default: return followsType || (followsOperand && run.mode == ExprMode::Declaration);
    }
}

// What the next token that is no comment or directive, which stands at `place`, wants in front of itself;
// null when that is for the token before it to say.
const OptionalText* CppExprFormatter::wantedBefore(const Run& run, std::size_t place) const {
    if (run.previous == kNoToken) return nullptr;
    // Nearly all tokens are operands, which want nothing.
    const ExprRole role = run.roleAt(place);
    if (role == ExprRole::Operand && run.mode != ExprMode::Declarators && !looksBehind_) return nullptr;
    return wantedAtRole(run, place, role);
}

const OptionalText* CppExprFormatter::wantedAtRole(const Run& run, std::size_t place, ExprRole role) const {
    const OptionalText* const behind = looksBehind_ ? wantedBehindPrevious(run, place) : nullptr;
    if (isPresent(behind)) return behind;
    if (introducesWidth(run, place)) return run.previousKind() == Cpp::Comma ? behind : &settings_.aroundBitFieldColon;
    if (startsEllipsis(run, place)) return &settings_.beforeEllipsis;
    switch (role) {
        case ExprRole::BinaryOperator:
            if (run.previousRole() == ExprRole::BinaryOperator || run.previousRole() == ExprRole::Separator) {
                return behind;
            }
            if (settings_.formatsOtherGaps && run.previousRole() == ExprRole::GroupOpen) return behind;
            return &settings_.beforeOperator;
        case ExprRole::GroupOpen:
            return !behind && run.kindAt(place) == Cpp::OpenParen ? wantedBeforeParen(run, place) : behind;
        case ExprRole::TemplateOpen:
            if (behind || !settings_.formatsTypeArguments) return behind;
            return run.previousKind() == Cpp::KeywordTemplate ? &settings_.beforeTemplateOpen : &kNothing;
        case ExprRole::BraceOpen: return &settings_.beforeDataBrace;
        case ExprRole::Name:
            // Behind the text stands the name that the type is for, and the line end, where one is kept.
            if (run.nameFollows && (run.groups.empty() || (run.keepsLines && run.typeWhitespace.hasLineFeed()))) {
                return behind;
            }
            return run.typeWhitespace.present || run.previousRole() != ExprRole::Mark ? &run.typeWhitespace
                                                                                      : behind;
        case ExprRole::Separator:
            if (const CommaTexts* const commas = absentCommaOf(run, place)) return &commas->before;
            return behind;
        default: return behind;
    }
}

// Of what the previous token ends: a cast, or "delete[]".
const OptionalText* CppExprFormatter::wantedBehindPrevious(const Run& run, std::size_t place) const {
    switch (run.previousKind()) {
        case Cpp::CloseParen:
            if (!startsCastOperand(run.tokens, run.previous, place)) return nullptr;
            return isCastByBlank(run.tokens, run.previous, place) ? &kAsInInput : &settings_.afterCast;
        case Cpp::CloseBracket: return endsDelete(run.tokens, run.previous) ? &settings_.afterDeleteBrackets : nullptr;
        default: return nullptr;
    }
}

// What is no name may: `T{}(a)`, and a type that a function returns, `function<void(int)>`, `MOCK(f, void(int))`.
bool CppExprFormatter::takesArguments(const Run& run, std::size_t open) {
    if (run.previousKind() == Cpp::CloseBrace) return run.previousRole() == ExprRole::Operand;
    if (!isBuiltinTypeKeyword(run.previousKind()) || opensDeclarator(run.tokens, open)) return false;
    const bool isArgument = !run.groups.empty() && run.groups.back().kind == Group::Kind::Template;
    return isArgument || isWholeFunctionType(run, open);
}

// Nothing but a type and its parentheses, which declare no name: an element of a list by itself.
bool CppExprFormatter::isWholeFunctionType(const Run& run, std::size_t open) {
    const int ahead = run.previous == 0 ? Trn::kEndKind : run.kindBefore(run.previous);
    const std::size_t close = run.tokens[open].partner;
    if (close == kNoToken || (ahead != Trn::kEndKind && ahead != Cpp::Comma && ahead != Cpp::OpenParen)) return false;
    const int behind = run.kindFrom(close + 1);
    if (behind != Trn::kEndKind && behind != Cpp::Comma && behind != Cpp::CloseParen) return false;
    const int first = run.kindFrom(open + 1);
    return close == open + 1 || isBuiltinTypeKeyword(first) || Cpp::isQualifier(first);
}

const OptionalText* CppExprFormatter::wantedBeforeParen(const Run& run, std::size_t place) const {
    if (run.previousRole() == ExprRole::TemplateClose) {
        const std::size_t open = run.tokens[run.previous].partner;
        if (!isCastKeyword(run.kindBefore(open))) return nullptr;
        return &firstPresent(settings_.beforeCastParen, settings_.afterOperator);
    }
    switch (run.previousKind()) {
        case Cpp::Identifier: {
            // The name in front is a type.
            if (run.mode == ExprMode::Declaration && opensDeclarator(run.tokens, place)) return nullptr;
            if (!isShortName(run.tokens[run.previous].token.text)) return &settings_.afterCallName;
            return &firstPresent(settings_.afterShortCallName, settings_.afterCallName);
        }
        case Cpp::KeywordSizeof:
        case Cpp::KeywordThrow: return &settings_.afterCallName;
        default: break;
    }
    return settings_.formatsTypeArguments && takesArguments(run, place) ? &settings_.afterCallName : nullptr;
}

}  // namespace Tessel
