// f( a ,b )        f(a, b)        brackets of all kinds, and the commas between what they hold
#include <memory>

#include "cpp/token_kind.h"
#include "engine/columns.h"
#include "engine/element_columns.h"
#include "engine/expr_run.h"
#include "engine/gap.h"
#include "engine/operator_kinds.h"
#include "scheme/extension_keys.h"

namespace Tessel {

namespace {

const OptionalText kBlankOnLine{true, " ", Keys::KEEP_ONE_LINE_LISTS};

const OptionalText& onLine(const OptionalText& wanted, bool isOnOneLine) {
    return isOnOneLine && wanted.hasLineFeed() ? kBlankOnLine : wanted;
}

bool isLastOnLine(const ExprTokens& tokens, std::size_t place) {
    return place + 1 < tokens.size() && tokens[place + 1].start.line != tokens[place].start.line;
}

}  // namespace

void CppExprFormatter::openGroup(Run& run) {
    Group group;
    const ExprToken& open = run.tokens[run.previous];
    group.close = open.partner;
    switch (open.role) {
        case ExprRole::TemplateOpen: {
            const bool isCast = isCastKeyword(run.kindBefore(run.previous));
            group.kind = isCast ? Group::Kind::Cast : Group::Kind::Template;
            group.isList = isCast;
            break;
        }
        case ExprRole::BraceOpen:
            group.kind = Group::Kind::Braces;
            break;
        case ExprRole::GroupOpen:
            group.kind = open.kind == Cpp::OpenParen ? Group::Kind::Parentheses : Group::Kind::Brackets;
            group.isList = group.kind == Group::Kind::Parentheses;
            break;
        default: group.kind = Group::Kind::InnerBraces;
    }
    if (group.isBraced()) {
        const bool endsLine = isLastOnLine(run.tokens, run.previous);
        group.isRow = !endsLine && run.previous == run.hangingInBraces;
        if (endsLine || group.isRow) group.line = lineOfBrace(run, run.previous);
        const bool keepsLines =
            !settings_.commas.elements.behind.present || settings_.commas.elements.behind.hasLineFeed();
        group.holdsRows = keepsLines && (run.groups.empty() || run.groups.back().holdsRows);
        if (indentsContents(run)) {
            group.elements = std::make_unique<Group::ElementScope>(
                run.out(), holdsFlushRows(run) ? std::string() : run.out().indent() + settings_.dataIndent,
                settings_.dataIndent.present ? false : run.out().keepLeadingSpace(), log(), settings_.dataIndent.key);
        }
    }
    const bool isRequirement = run.previous == 0 && run.mode == ExprMode::Expression;  // { a + b } -> same_as<T>
    group.holdsValues = group.isBraced() && !isRequirement && !opensBlock(run.tokens, run.previous);
    group.holdsDeclarations = group.holdsValues && holdsDeclarations(run.tokens, run.previous);
    group.isShortList = group.holdsValues && open.start.line == run.tokens[group.close].lastLine();
    if (alignsLists() && group.holdsValues && !group.isShortList && !group.holdsDeclarations) noteRows(run);
    group.isOnOneLine = group.kind == Group::Kind::Braces && staysOnOneLine(run, group.close);
    run.after = afterOpen(group);
    if (group.holdsValues) run.after = inListBraces(run, group, run.after);
    run.groups.push_back(std::move(group));
}

// At the "{" written last.
void CppExprFormatter::noteRows(const Run& run) {
    const std::optional<std::size_t> start = sourceColumns().offsetInDocument(run.text);
    if (!start) return;
    const std::size_t least = run.groups.empty() ? ElementColumns::kLeastOutside : ElementColumns::kLeastInside;
    if (auto rows = readListRows(run.tokens, run.previous, least, *start)) listsInRows_.push_back(std::move(*rows));
}

// The line of the "{" written last. Lines behind one that begins beyond the margin would do so, too.
FirstLine CppExprFormatter::lineOfBrace(const Run& run, std::size_t open) const {
    const int column = textColumnOf(run.out());
    const bool isBeyondMargin = settings_.wrapMargin > 0 && column >= settings_.wrapMargin;
    if (!keptIndent_.isWanted() || isBeyondMargin) return {};
    return {sourceColumns().columnOfLine(run.text.substr(run.tokens[open].offset)), column, -1};
}

// At the "{" written last: whether its initializer, which stands on one line, does so here too.
bool CppExprFormatter::staysOnOneLine(const Run& run, std::size_t close) const {
    const ExprToken& open = run.tokens[run.previous];
    const ExprToken& end = run.tokens[close];
    if (!settings_.keepsOneLineLists || open.start.line != end.lastLine()) return false;
    const auto width = static_cast<int>(end.offset - open.offset);
    return settings_.wrapMargin == 0 || run.sweep.column() + width <= settings_.wrapMargin;
}

// At the "{" written last. Rows within an initializer stand as far to the left as the rows around them.
bool CppExprFormatter::indentsContents(const Run& run) {
    const ExprToken& open = run.tokens[run.previous];
    if (open.role == ExprRole::BraceOpen || run.groups.empty() || !run.groups.back().isBraced()) return true;
    return opensBlock(run.tokens, run.previous);
}

// At the "{" written last: whether rows of literals follow that stay in the first column.
bool CppExprFormatter::holdsFlushRows(const Run& run) const {
    return keptIndent_.isWanted() && isFlushLiteral(run, run.previous + 1);
}

// At the first token of a group, the gap in front of it written: the group's elements line up with it when
// commas break lines.
void CppExprFormatter::startElements(Run& run, Group& group) {
    if (group.hasElements) return;
    group.hasElements = true;
    if (!group.isList || !spacingOf(group).breaksLines()) return;
    group.listColumn = run.sweep.columnToIndentFrom();
    std::string indent = indentToColumn(run.out(), group.listColumn);
    group.elements = std::make_unique<Group::ElementScope>(run.out(), std::move(indent), false, log(), KeyId());
}

void CppExprFormatter::closeGroup(Run& run) {
    Group group = std::move(run.groups.back());
    run.groups.pop_back();
    group.elements.reset();
    writeClosingGap(run, group);
    run.previous = run.sweep.place();
    run.after = nullptr;
    writeToken(run);
    // ">>" ends the list around this one too.
    if (!run.groups.empty() && run.groups.back().close == run.previous) run.groups.pop_back();
}

void CppExprFormatter::writeClosingGap(Run& run, const Group& group) {
    const OptionalText* wanted = beforeClose(group);
    if (group.holdsValues) wanted = inListBraces(run, group, wanted);
    const bool isEmpty = group.isShortList && run.tokens[group.close].partner + 1 == group.close;
    if (isEmpty && settings_.inEmptyBraces.present) return run.sweep.writeGapWith(settings_.inEmptyBraces);
    const bool losesGap = !group.hasElements && (isPresent(run.after) || isPresent(wanted));
    if (!losesGap && keepsLine(run) && !(wanted && wanted->hasLineFeed())) return keepLine(run);
    if (!group.hasElements) return run.sweep.writeGapWith(losesGap ? &kNothing : nullptr);
    const bool closesAngle = group.kind == Group::Kind::Template || group.kind == Group::Kind::Cast;
    const bool wouldShift = closesAngle && isPresent(wanted) && wanted->text.empty();
    run.sweep.writeGapWith(wouldShift && run.previousKind() == Cpp::Greater ? &kBlank : wanted);
}

// Whether the author's line ends between a group's elements stay.
bool CppExprFormatter::isRow(const Group& group) const {
    return group.kind == Group::Kind::InnerBraces ||
           (group.kind == Group::Kind::Braces && !settings_.commas.elements.behind.present);
}

bool CppExprFormatter::isComma(const Run& run) const {
    if (run.current().kind != Cpp::Comma || run.current().role != ExprRole::Separator) return false;
    if (run.groups.empty()) {
        // a = 1, b = 2;
        const bool areSpaced = settings_.betweenDeclarators.present || settings_.beforeDeclaratorComma.present;
        const bool parts = run.mode == ExprMode::Declarators || (areSpaced && run.previous != kNoToken);
        return parts && !settings_.commas.declarators.breaksLines();
    }
    const CommaTexts* const commas = commasOf(run.groups.back());
    return commas && !commas->areAbsent();
}

void CppExprFormatter::writeComma(Run& run) {
    Group declarators;
    declarators.kind = Group::Kind::Braces;
    Group& group = run.groups.empty() ? declarators : run.groups.back();
    startElements(run, group);
    const SeparatorSpacing spacing =
        run.groups.empty() ? SeparatorSpacing{settings_.commas.declarators.before, settings_.commas.declarators.behind}
                           : spacingOf(group);
    const bool keepsFront = keepsLine(run) && !spacing.before.hasLineFeed();
    const bool keepsRows = !run.groups.empty() && isRow(group) && (group.holdsRows || !wrapsLines());
    const bool keepsLines = run.keepsLines || keepsRows;
    const std::string_view behind = run.sweep.blanksBehind();
    // What follows the text has a gap of its own.
    const bool endsText = run.groups.empty() && run.sweep.place() + 1 == run.tokens.size();
    const bool keepsBehind = endsText || (keepsLines && !spacing.after.hasLineFeed() && isLineBreak(behind)) ||
                             (keepsRows && settings_.betweenRowElements.present && isColumnGap(behind));
    if (keepsFront) keepLine(run);
    passToken(run);
    const OptionalText* const joined = wrapsLines() && !spacing.before.present ? joinedLine(run) : nullptr;
    run.previous = run.sweep.place();
    run.after = nullptr;
    const bool isOther = !spacing.before.present && settings_.otherGaps.none.present && isBlanks(run.sweep.gap());
    const OptionalText& before = joined ? *joined : isOther ? settings_.otherGaps.none : spacing.before;
    writeSeparator(run.sweep, {keepsFront ? kAsInInput : before, keepsBehind ? kAsInInput : spacing.after},
                   group.isList ? &group.listColumn : nullptr);
}

CppExprFormatterBase::SeparatorSpacing CppExprFormatter::spacingOf(const Group& group) const {
    const CommaTexts* const commas = commasOf(group);
    if (!commas) return {kAsInInput, kAsInInput};
    return {onLine(commas->before, group.isOnOneLine), onLine(commas->behind, group.isOnOneLine)};
}

const CommaTexts* CppExprFormatter::commasOf(const Group& group) const {
    switch (group.kind) {
        case Group::Kind::Parentheses:
        case Group::Kind::Cast: return &settings_.commas.callArguments;
        case Group::Kind::Template: return &settings_.commas.templateArguments;
        case Group::Kind::Braces: return isRow(group) ? &settings_.commas.rowElements : &settings_.commas.elements;
        case Group::Kind::InnerBraces: return &settings_.commas.innerElements;
        case Group::Kind::Brackets: return &settings_.commas.captures;
    }
    return nullptr;
}

// { 1, 2 }: what is to stand in the next gap, inside of such braces, for which another key may have something too.
// Declarations, { int a; }, stand apart from theirs.
// Lists below each other may be in columns, as may the lines of one. A comment that ends the line of its "{" is none of
// the elements.
const OptionalText* CppExprFormatter::inListBraces(const Run& run, const Group& group,
                                                   const OptionalText* other) const {
    const bool endsLine = Cpp::isComment(run.current().kind) && run.sweep.endsItsLine();
    if (!group.isShortList && (isPresent(other) || endsLine || !isNarrowGap(run))) return other;
    const bool isInColumns = keepsColumns() && isColumnGap(run.sweep.gap());
    const bool isBehindComma = run.previousKind() == Cpp::Comma;
    const OptionalText& within = group.holdsDeclarations ? settings_.otherGaps.blank : settings_.inListBraces;
    const bool counts = within.present ? !isInColumns && !isBehindComma : !other;
    return counts ? &within : other;
}

// Whether the next gap is a blank at most, or would be if its tab were one.
bool CppExprFormatter::isNarrowGap(const Run& run) const {
    const std::string_view gap = run.sweep.gap();
    const int column = run.sweep.column();
    return isBlanks(gap) && columnAfter(gap, column, tabSize()) <= column + 1;
}

const OptionalText* CppExprFormatter::afterOpen(const Group& group) const {
    switch (group.kind) {
        case Group::Kind::Parentheses: return &settings_.afterOpenParen;
        case Group::Kind::Brackets: return &settings_.afterOpenBracket;
        case Group::Kind::Braces: return &onLine(settings_.afterDataBrace, group.isOnOneLine);
        case Group::Kind::InnerBraces: return nullptr;
        default: return &settings_.afterOpenAngle;
    }
}

const OptionalText* CppExprFormatter::beforeClose(const Group& group) const {
    switch (group.kind) {
        case Group::Kind::Parentheses: return &settings_.beforeCloseParen;
        case Group::Kind::Brackets: return &settings_.beforeCloseBracket;
        case Group::Kind::Braces: return &onLine(settings_.beforeDataCloseBrace, group.isOnOneLine);
        case Group::Kind::InnerBraces: return nullptr;
        default: return &settings_.beforeCloseAngle;
    }
}

}  // namespace Tessel
