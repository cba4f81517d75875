// Lines that begin inside an expression: those that are kept, literals that stand below each other, and those that are
// joined before they are wrapped anew.
#include <algorithm>
#include <utility>

#include "engine/columns.h"
#include "engine/expr_run.h"
#include "engine/gap.h"
#include "engine/operator_kinds.h"
#include "engine/right_aligned_rows.h"
#include "scheme/property_keys.h"

namespace Tessel {

using Zelmor::IndentScope;

namespace {

const OptionalText kJoined{true, "", Keys::LINE_WRAP};
const OptionalText kJoinedByBlank{true, " ", Keys::LINE_WRAP};

}  // namespace

// Whether the comment ends its line, and will: the next token may have to stand behind it.
bool CppExprFormatter::endsLine(const Run& run) const {
    const OptionalText* behind = wantedBefore(run, run.sweep.place() + 1);
    return run.sweep.endsItsLine() && !(isPresent(behind) && !behind->hasLineFeed());
}

// Whether the current token begins a line that is kept.
bool CppExprFormatter::keepsLine(const Run& run) const {
    if (!run.keepsLines) return false;
    // `::new` begins with a name of no characters.
    const bool startsText = run.current().offset == run.tokens.front().offset;
    if (startsText) return false;
    return isLineBreak(run.sweep.gap()) || (run.sweep.column() == 0 && isAllWhitespace(run.sweep.gap()));
}

void CppExprFormatter::keepLine(Run& run) {
    if (!run.hanging) return run.sweep.writeGap();
    const std::string_view gap = run.sweep.takeGap();
    run.sweep.leave(gap, WantedText(gap, keyOfKeptLine(run)));
    const int column = columnOfKeptLine(run, gap);
    for (auto lineFeeds = std::ranges::count(gap, '\n'); lineFeeds > 0; --lineFeeds) run.out().write("\n");
    startLineAt(run.out(), column);
    run.startsAtMargin = column == 0;
}

// The rows of an initialiser are kept anyway.
KeyId CppExprFormatter::keyOfKeptLine(const Run& run) const {
    if (run.groups.empty() || !run.groups.back().isBraced()) return settings_.keepsLineBreaks.key;
    const bool isElement = run.groups.back().kind == Group::Kind::Braces && run.previousKind() == Cpp::Comma;
    return isElement && keptIndent_.isWanted() ? settings_.commas.elements.behind.key : settings_.dataIndent.key;
}

int CppExprFormatter::columnOfKeptLine(Run& run, std::string_view gap) const {
    if (!isInDirective_ && isSplicedComment(run, run.sweep.place())) return 0;
    const int hanging = hangingColumn(run);
    if (const auto column = columnOfRow(run, gap, hanging)) return *column;
    if (standsBelowMarks(run, gap)) return run.declaratorMarks.output;
    if (!keptIndent_.isWanted() || run.hanging->startsHangingDeclarator()) return hanging;
    if (isFlushLiteral(run, run.sweep.place())) return 0;
    if (!run.sourceHanging) startSourceHanging(run);
    const std::size_t place = run.sweep.place();
    // A brace no further than the first line is out of its place: lines go by that one, unless they would be, too.
    const FirstLine brace = lineOfGroup(run);
    FirstLine line = brace.source > run.firstLine.source ? brace : run.firstLine;
    if (run.sourceHanging) line.hanging = run.sourceHanging->columnFor(place);
    if (closesBracket(run.tokens, place) || isAssignedFurther(run, place)) {
        return keptIndent_.columnBelowFirst(line, gap, hanging);
    }
    const int column = keptIndent_.columnFor(line, gap, hanging);
    if (brace.source < 0 || (column != hanging && column >= brace.output)) return column;
    run.hangingInBraces = place;
    return hanging;
}

// char *a = 0,
//      *b;
bool CppExprFormatter::standsBelowMarks(const Run& run, std::string_view gap) const {
    if (run.declaratorMarks.source < 0 || !run.hanging->startsDeclarator()) return false;
    const bool isMark = run.roleAt(run.sweep.place()) == ExprRole::Mark;
    return isMark && columnBehind(gap, 0, tabSize()) == run.declaratorMarks.source;
}

// Where a row begins of those that are aligned on the right: as far behind the leftmost one as it does.
std::optional<int> CppExprFormatter::columnOfRow(Run& run, std::string_view gap, int hanging) const {
    const bool isElement = run.previousKind() == Cpp::Comma || run.previousKind() == Cpp::OpenBrace;
    if (!settings_.keepsLineBreaks || run.groups.empty() || !isElement) return std::nullopt;
    Group& group = run.groups.back();
    if (!group.isBraced() || run.roleAt(run.sweep.place()) == ExprRole::Trivia) return std::nullopt;
    if (!std::exchange(group.knowsRows, true)) {
        group.rows = columnOfRightAlignedRows(run.text, run.tokens, run.tokens[group.close].partner, tabSize());
        group.rowsColumn = hanging;
    }
    if (!group.rows) return std::nullopt;
    return std::min(group.rowsColumn + columnBehind(gap, 0, tabSize()) - *group.rows, kRightmostIndent);
}

// That of the innermost "{", but for what stands behind a directive in a row: it has nothing in front to hang from.
FirstLine CppExprFormatter::lineOfGroup(const Run& run) {
    if (run.groups.empty()) return {};
    const Group& group = run.groups.back();
    const bool isBehindDirective = run.kindAt(run.sweep.place() - 1) == Cpp::Directive;
    return group.isRow && isBehindDirective ? FirstLine() : group.line;
}

int CppExprFormatter::hangingColumn(const Run& run) const {
    if (isInType(run)) {
        const std::string_view hang = hangsInType(run) ? settings_.hanging.wrap.text : std::string_view();
        return columnAfter(hang, columnAfter(run.out().indent(), 0, tabSize()), tabSize());
    }
    return standsBelowLine(run) ? run.captureColumn : run.hanging->columnFor(run.sweep.place());
}

// `a =\nb = 0`: whether the operand that begins behind an "=" is assigned to.
bool CppExprFormatter::isAssignedFurther(const Run& run, std::size_t place) {
    if (run.previousKind() != Cpp::Assign) return false;
    const auto endsOperand = [&run](std::size_t at) {
        const ExprRole role = run.roleAt(at);
        return role == ExprRole::BinaryOperator || role == ExprRole::Separator || closesBracket(run.tokens, at);
    };
    while (place < run.tokens.size() && !endsOperand(place)) {
        place = opensBracket(run.tokens, place) ? run.tokens[place].partner + 1 : place + 1;
    }
    return run.kindAt(place) == Cpp::Assign;
}

// Whether it is a literal in the first column of the source: text that its author wants to see as it will be shown.
// A comment there in front of one counts to it.
bool CppExprFormatter::isFlushLiteral(const Run& run, std::size_t place) {
    const auto isFlush = [&run](std::size_t at) {
        const std::size_t offset = run.tokens[at].offset;
        return offset > 0 && run.text[offset - 1] == '\n';
    };
    if (place >= run.tokens.size() || !isFlush(place)) return false;
    if (run.roleAt(place) == ExprRole::Trivia) ++place;
    return run.kindAt(place) == Cpp::StringLiteral && isFlush(place);
}

// Whether it is a comment in the first column of a line that a splice has made one with the line in front of it. In a
// directive lines have no other end.
bool CppExprFormatter::isSplicedComment(const Run& run, std::size_t place) {
    const std::string_view ahead = run.text.substr(0, run.tokens[place].offset);
    return run.roleAt(place) == ExprRole::Trivia && Cpp::isComment(run.kindAt(place)) && ahead.ends_with("\\\n");
}

// Whether the current token goes on with a type outside its brackets.
bool CppExprFormatter::isInType(const Run& run) const {
    return run.nameFollows && settings_.operandIndent.present && run.hanging->isOutsideBrackets();
}

// Whether that hangs: what stands behind the first line in the source, or is the last name of the type. The type itself
// may stand behind a "}" on its line.
bool CppExprFormatter::hangsInType(const Run& run) const {
    const std::string_view current = run.text.substr(run.current().offset);
    if (current.starts_with("::") || run.followsText) return true;
    return sourceColumns().columnOfLine(current) > sourceColumns().columnOfLine(run.text);
}

// Nothing where the columns of the source are not known.
void CppExprFormatter::startSourceHanging(Run& run) const {
    if (run.firstText >= run.tokens.size()) return;
    const std::string_view first = run.text.substr(run.tokens[run.firstText].offset);
    // The blanks in front of a comment go with it.
    const bool leadsByComment = run.firstText == 0 && run.roleAt(0) == ExprRole::Trivia;
    const int column = sourceColumns().nearColumnOf(leadsByComment ? run.text : first);
    if (column < 0) return;
    run.firstLine.source = sourceColumns().columnOfLine(first);
    const bool hangsFromStatement =
        run.hangingText == HangingLines::Text::LoopCondition && settings_.operandIndent.present;
    const bool isList = HangingLines::isInList(run.hangingText) && !hangsFromStatement;
    // Declarators may go on in a line that stands behind the one that they hang from.
    const int indented = columnAfter(run.out().indent(), 0, tabSize());
    const bool standBehind = HangingLines::holdsDeclarators(run.hangingText) && run.firstLine.output > indented;
    const int behind = standBehind ? run.firstLine.output - indented : 0;
    // A list goes by its line where the output indents it so: using A = decltype(\n    value);
    const bool goesByColumn = isList && run.firstLine.output != indented;
    const int indentColumn = goesByColumn ? column : std::max(run.firstLine.source - behind, 0);
    run.sourceHanging.emplace(run.text, run.tokens, run.hangingText, SourceHanging::Start{indentColumn, column},
                              settings_.hanging, tabSize());
}

// Whether the current token is a literal that stands in a line below another one, in the rows of an
// initializer. Lines of rows are not joined, and this is how the line wrapper parts literals.
bool CppExprFormatter::isStacked(const Run& run) const {
    const bool isInRows = !run.groups.empty() && run.groups.front().holdsRows;
    return isInRows && wrapsLines() && run.kindAt(run.sweep.place()) == Cpp::StringLiteral &&
           run.previous + 1 == run.sweep.place() && run.previousKind() == Cpp::StringLiteral &&
           isLineBreak(run.sweep.gap());
}

void CppExprFormatter::startLiteralLine(Run& run) {
    const std::string_view gap = run.sweep.gap();
    const auto lineFeeds = static_cast<std::size_t>(std::count(gap.begin(), gap.end(), '\n'));
    run.sweep.writeGapWith(WantedText(std::string(lineFeeds, '\n')));
    startLineAt(run.out(), run.literalColumn);
}

// What joins two lines that the line wrapper may have parted, behind a comma or a cast, or in front of an
// operator or a comma that begins its line. Wrapping again would else start from lines that it does not see
// as one. Rows of an initializer are kept, by the wrapper too. Null where the gap is to stay.
const OptionalText* CppExprFormatter::joinedLine(const Run& run) const {
    const std::string_view gap = run.sweep.gap();
    const bool isRow = !run.groups.empty() && run.groups.back().holdsRows;
    if (run.previous == kNoToken || !isAllWhitespace(gap) || isRow) return nullptr;
    const ExprToken& token = run.current();
    if (isLineBreak(gap) && settings_.breaksAsLastResort) {
        if (run.previousKind() == Cpp::OpenParen) return &kJoined;
        const bool followsOperator = run.previousRole() == ExprRole::BinaryOperator;
        if (followsOperator && isAssignmentKind(run.previousKind())) return &kJoinedByBlank;
    }
    if (isLineBreak(gap) && token.kind == Cpp::Comma) return &kJoined;
    if (isLineBreak(gap) && token.role == ExprRole::BinaryOperator) return &kJoinedByBlank;
    const bool followsComment = run.previous + 1 != run.sweep.place();
    if (followsComment && (isLineBreak(gap) || token.role != ExprRole::Trivia)) return nullptr;
    if (!isJoinable(gap)) return nullptr;
    if (run.previousKind() == Cpp::Comma) return &kJoinedByBlank;
    if (token.role == ExprRole::Trivia && run.previousRole() == ExprRole::BinaryOperator) return &kJoinedByBlank;
    return followsCast(run) ? &kJoinedByBlank : nullptr;
}

// Whether the current token is the operand of a cast, as far as the line wrapper knows one.
bool CppExprFormatter::followsCast(const Run& run) const {
    const ExprToken& close = run.tokens[run.previous];
    if (close.role == ExprRole::TemplateClose) return isCastKeyword(run.kindBefore(close.partner));
    if (close.kind != Cpp::CloseParen || close.partner == kNoToken) return false;
    const int before = run.kindBefore(close.partner);
    if (before == Cpp::Identifier || before == Cpp::Greater) return false;
    switch (run.kindFrom(run.sweep.place())) {
        case Cpp::Identifier:
        case Cpp::Number:
        case Cpp::CharLiteral:
        case Cpp::StringLiteral:
        case Cpp::OpenParen: return true;
        default: return false;
    }
}

}  // namespace Tessel
