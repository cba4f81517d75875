// What the author did in an expression where a key is not about one gap, for the log: sides of marks, and how lines
// are continued.
#include "engine/columns.h"
#include "engine/expr_run.h"
#include "engine/gap.h"
#include "engine/operator_kinds.h"
#include "scheme/property_keys.h"

namespace Tessel {

namespace {

constexpr int kStartsLine = 1;
constexpr int kEndsLine = 2;

}  // namespace

// The side on which the marks stand in the source, where a blank tells it, and the white space on the other.
void CppExprFormatter::measureMarks(const Run& run, const MarkSettings& marks, std::size_t end) const {
    constexpr int toType = 0;
    constexpr int toName = 1;
    if (!log()) return;
    const std::string_view front = run.sweep.gap();
    const std::string_view behind = leadingBlanks(run.text.substr(run.tokens[end - 1].end()));
    if (!isAllWhitespace(front) || front.empty() == behind.empty()) return;
    const std::string_view piece = run.text.substr(run.current().offset);
    log()->measured(marks.anchor.key, piece, front.empty() ? toType : toName);
    log()->measured(marks.gap.key, piece, front.empty() ? behind : front);
}

// At a token of the sweep that begins a line in the source.
void CppExprFormatter::measureLine(const Run& run) const {
    if (!log() || run.previous == kNoToken || !isLineBreak(run.sweep.gap())) return;
    const ExprToken& token = run.current();
    const std::string_view piece = run.text.substr(token.offset);
    const ExprToken& previous = run.tokens[run.previous];
    const bool leads = token.role == ExprRole::BinaryOperator;
    if (leads || previous.role == ExprRole::BinaryOperator) {
        const int kind = leads ? token.kind : previous.kind;
        if (!isAssignmentKind(kind)) {
            log()->measured(isShiftKind(kind) ? KeyId(Keys::SHIFT_WRAP_STYLE) : KeyId(Keys::EXPR_WRAP_STYLE), piece,
                            leads ? kStartsLine : kEndsLine);
        }
    }
    log()->measured(Keys::KEEP_LINE_BREAKS, piece, 1);
    const std::string_view before = run.text.substr(previous.offset);
    const bool followsAssignment = previous.role == ExprRole::BinaryOperator && isAssignmentKind(previous.kind);
    if (previous.role == ExprRole::BraceOpen) measureLineIndent(settings_.dataIndent.key, piece, before);
    if (previous.role == ExprRole::GroupOpen || followsAssignment) measureLineIndent(Keys::WRAP_INDENT, piece, before);
    const bool leadsByComma = token.kind == Cpp::Comma;
    const bool isInList = !run.groups.empty() && run.groups.back().kind == Group::Kind::Parentheses;
    if (!isInList || (!leadsByComma && previous.kind != Cpp::Comma)) return;
    const std::size_t open = run.tokens[run.groups.back().close].partner;
    measureContinuation(piece, run.text.substr(run.tokens[open + 1].offset), leadsByComma);
}

// How far the piece, which begins a line, stands behind the line of what is in front of it: the first row of an
// initialiser behind its "{", an argument behind "(".
void CppExprFormatter::measureLineIndent(KeyId key, std::string_view piece, std::string_view before) const {
    if (!log()) return;
    const int columns = sourceColumns().nearColumnOf(piece) - sourceColumns().columnOfLine(before);
    if (columns >= 0) log()->measured(key, piece, std::string(static_cast<std::size_t>(columns), ' '));
}

// How a line begins that continues a list: by its comma or behind that, below the first element, or how far behind the
// line of that.
void CppExprFormatter::measureContinuation(std::string_view piece, std::string_view firstElement,
                                           bool leadsByComma) const {
    constexpr int aligned = 1;
    constexpr int indented = 2;
    if (!log()) return;
    log()->measured(Keys::COMMA_WRAP_STYLE, piece, leadsByComma ? kStartsLine : kEndsLine);
    const int column = sourceColumns().nearColumnOf(piece);
    const int first = sourceColumns().nearColumnOf(firstElement);
    if (column < 0 || first < 0 || sourceColumns().startsLine(firstElement)) return;
    log()->measured(Keys::WRAP_STYLE, piece, column == first ? aligned : indented);
    const int base = sourceColumns().columnOfLine(firstElement);
    if (column == first || column < base) return;
    log()->measured(Keys::WRAP_INDENT, piece, std::string(static_cast<std::size_t>(column - base), ' '));
}

}  // namespace Tessel
