// ( int a ,int b )   →   (int a, int b)
//
// Lists whose commas break lines line their elements up below the first one.
#include <algorithm>
#include <optional>

#include "cpp/token_kind.h"
#include "engine/columns.h"
#include "engine/cpp_formatter.h"
#include "engine/formatter_scopes.h"
#include "engine/gap.h"
#include "scheme/property_keys.h"

namespace Tessel {

using Zelmor::IndentScope;
using Zelmor::LeadingSpaceScope;

namespace {

bool isLineComment(const Cpp::SyntaxNode& node) {
    const auto* comment = Cpp::as<Cpp::CommentNode>(&node);
    return comment && comment->isLineComment();
}

// Where the comments begin that nothing follows: those behind initialisers stand in front of the body.
std::size_t endOfInitializers(const Cpp::InteriorNode& list) {
    const auto& children = list.children();
    std::size_t end = children.size();
    while (end > 0 && Cpp::as<Cpp::CommentNode>(children[end - 1].get())) --end;
    return end;
}

// Whether the gap's last token is a comma that ends its line, or begins it.
bool partsLines(std::string_view gap) {
    const std::string_view separator = trimRight(gap);
    if (!separator.ends_with(',')) return false;
    return isLineBreak(trailingBlanks(gap)) || isLineBreak(separator.substr(0, separator.size() - 1));
}

// Whether the gap is a comma with blanks behind it that stay, or come to be line ends without an indentation.
bool isPlainComma(std::string_view gap, const OptionalText& after) {
    if (trimRight(gap) != ",") return false;
    if (!after.present) return isBlanks(gap.substr(1));
    return after.hasLineFeed() && after.text.find_first_not_of('\n') == std::string_view::npos;
}

// A comma that begins no line by itself, or the ":" of initializers that another branch of an #if has.
bool startsWithSeparator(std::string_view gap, const CommaTexts& commas) {
    const std::string_view separator = trimLeft(gap);
    return separator.starts_with(':') || (separator.starts_with(',') && !commas.before.hasLineFeed());
}

}  // namespace

void CppFormatter::formatSeparatedList(Cpp::InteriorNode& list, const CommaTexts& commas, const ListStart& start) {
    if (list.size() == 0) return;
    if (!commas.breaksLines() && !hangsLines()) {
        formatElements(list, commas);
        return;
    }
    const Cpp::SyntaxNode& first = **list.childBegin();
    const bool hasComment = !start.comment.empty();
    int column = copyUpTo(first);
    if (hasComment || start.hangsFromLine) column = start.column;
    FirstLine firstLine = listLine_;
    if (firstLine.source < 0 && isDirective(first)) {
        firstLine = lineInFront();
        column = std::max(column, firstLine.output);
    } else if (firstLine.source < 0) {
        firstLine = lineOf(writer_.ahead());
    }
    ValueScope<FirstLine> line(listLine_, firstLine);
    const std::string_view front = hasComment ? start.comment : writer_.ahead();
    if (listLine_.source >= 0) listLine_.hanging = exprFormatter_.sourceColumnOf(front);
    LeadingSpaceScope leadingSpace(out(), false);
    IndentScope indent(out(), indentToColumn(out(), column));
    formatElements(list, commas);
}

void CppFormatter::formatElements(Cpp::InteriorNode& list, const CommaTexts& commas) {
    const Cpp::SyntaxNode* previous = nullptr;
    bool isBehindComma = false;
    const bool hasBodyBehind = keepsLines() && Cpp::as<Cpp::InitializerListNode>(&list);
    std::size_t left = hasBodyBehind ? endOfInitializers(list) : list.size();
    for (const auto& child : list.children()) {
        const bool isForBody = left == 0 && isAllWhitespace(lineBefore(*child));
        std::optional<IndentScope> indent;
        std::optional<ValueScope<FirstLine>> noLine;
        if (isForBody) {
            indent.emplace(out(), indentToColumn(out(), baseColumn()));
            noLine.emplace(listLine_, FirstLine());
        }
        if (left > 0) --left;
        if (previous) {
            const std::string_view gap = writer_.readGap(child->start());
            isBehindComma |= trimLeft(gap).starts_with(',');
            const bool isAboveComma = keepsLines() && commas.before.hasLineFeed() && !isForBody && !isBehindComma &&
                                      Cpp::as<Cpp::CommentNode>(child.get()) && isAllWhitespace(gap) &&
                                      (isLineBreak(gap) || out().column() == 0);
            const Cpp::SyntaxNode& first = *list.children().front();
            const std::optional<int> column =
                isAboveComma ? columnOfLeadingComma(commas) : columnOfLineWithComma(gap, first, commas);
            if (column) indent.emplace(out(), indentToColumn(out(), *column));
            measureListBreak(gap, first, *child);
            writeListSeparator(gap, *previous, *child, commas);
            if (column && !isAboveComma) indent.reset();
        }
        ValueScope<FirstLine> ofLists(listLine_, {});
        ValueScope<bool> isAmongOthers(isAmongElements_, list.size() > 1);
        child->accept(*this);
        previous = child.get();
        if (!Cpp::isTrivia(*child)) isBehindComma = false;
    }
}

// For a line that begins with a comma, and the list is not indented for it: behind a directive or a comment, where
// nothing puts the comma to the left of the elements, and where its author has it below the first one.
std::optional<int> CppFormatter::columnOfLineWithComma(std::string_view gap, const Cpp::SyntaxNode& first,
                                                       const CommaTexts& commas) {
    const bool startsLine = keepsLines() && out().column() == 0 && startsWithSeparator(gap, commas);
    const std::size_t comma = startsLine ? leadingBlanks(gap).size() : findLeadingComma(gap);
    const bool isBelowFirst =
        comma != gap.npos && hangsLines() && !commas.breaksLines() && standsAsFirst(gap.substr(comma), first);
    if (startsLine) return isBelowFirst ? indentColumn() : columnOfLeadingComma(commas);
    if (!isBelowFirst) return std::nullopt;
    const std::string_view blanks = leadingBlanks(gap.substr(comma + 1));
    if (isLineBreak(blanks)) return columnAfter(",", indentColumn(), out().tabSize());
    const std::string_view behind = commas.behind.present ? std::string_view(commas.behind.text) : blanks;
    return columnAfter(std::string(",").append(behind), indentColumn(), out().tabSize());
}

// Whether the source does not have the piece to the left of a list's first element, or has it where further lines hang
// that do not go by that.
bool CppFormatter::standsAsFirst(std::string_view piece, const Cpp::SyntaxNode& first) {
    const int column = exprFormatter_.sourceColumnOf(piece);
    const std::string_view front = sourceFrom(first);
    const int firstColumn = exprFormatter_.sourceColumnOf(front);
    if (firstColumn < 0 || column >= firstColumn) return firstColumn >= 0;
    const std::string_view wrapIndent = exprFormatter_.settings().hanging.wrap.text;
    return settings_.hangsFromLine &&
           column == columnAfter(wrapIndent, exprFormatter_.columnOfSourceLine(front), out().tabSize());
}

// So far to the left that the element behind the comma stands below the first.
int CppFormatter::columnOfLeadingComma(const CommaTexts& commas) {
    std::string front(",");
    front += commas.behind.text;
    return columnBefore(front, indentColumn(), out().tabSize());
}

void CppFormatter::writeListSeparator(std::string_view gap, const Cpp::SyntaxNode& previous,
                                      const Cpp::SyntaxNode& next, const CommaTexts& commas) {
    const bool startsDirective = isDirective(next) || writer_.startsDirectiveBehind(gap);
    const std::string_view comments = commentsOfElement(gap);
    gap.remove_suffix(comments.size());
    const bool staysApart = isLineComment(next) || startsDirective || isCommentAtLineEnd(next);
    OptionalText before = commas.before;
    OptionalText between = commas.behind;
    if (keepsLines() && startsDirective && before.hasLineFeed()) before = kNothing;
    keepBreaks(gap, before, between);
    std::string withLines;
    if (settings_.blankLines > 0 && between.hasLineFeed()) {
        withLines = withBlankLines(between.text, trailingBlanks(gap));
        between.text = withLines;
    }
    const bool breaksLines = before.hasLineFeed() || between.hasLineFeed();
    const OptionalText* after = &between;
    if (before.hasLineFeed()) before.text = asOutputStands(before).text();
    if (!between.hasLineFeed()) {
        if (keepsLines() && isCommentAtLineEnd(next)) after = &kAsInInput;
        if (startsDirective) after = &kLineFeed;
    } else {
        const bool endsInComment = !keepsLines() || endsWithLineEndToken(gap);
        if (!startsDirective && endsInComment && writer_.holdsLineComment(gap)) {
            // The line end of a comment at the end is the one that is wanted.
            gap = gap.substr(0, lineEndBehind(gap));
        }
        if (isLineComment(previous) || staysApart) after = &kAsInInput;
    }
    // A comma that begins a line stands the further to the left, the more blanks are behind it.
    if (before.hasLineFeed() && isLineComment(next) && settings_.beforeLineComment.present) {
        after = &settings_.beforeLineComment;
    }
    const std::string_view rest = writer_.writeDirectiveEnd(gap);
    if (rest.size() < gap.size()) before = kNothing;
    gap = rest;
    // A line that has been wrapped is joined.
    if (exprFormatter_.wrapsLines() && !keepsLines() && !after->present && !staysApart && partsLines(gap))
        after = &kBlank;
    const bool leadsLine = keepsLines() && commas.before.hasLineFeed() && out().column() == 0;
    const bool isComma = trim(gap) == ",";
    if (isComma && leadsLine && !after->hasLineFeed()) {
        IndentScope indent(out(), indentToColumn(out(), columnOfLeadingComma(commas)));
        writeComma(gap, kNothing, *after);
    } else if (isComma && !breaksLines && after->present && !after->hasLineFeed()) {
        writeComma(gap, before, *after);
    } else if (!log_ && !before.hasLineFeed() && isPlainComma(gap, *after)) {
        writeComma(gap, before, *after);
    } else if (!log_ && out().keepsBlanks() && isAllWhitespace(gap)) {
        out().write(gap);  // between an element and its comment
    } else {
        writeRendered(exprFormatter_.respaceListSeparator(gap, Cpp::Comma, before, *after, state()));
    }
    if (keepsLines() && out().column() == 0 && !commas.breaksLines()) startKeptLine(gap);
    writer_.write(comments);
}

// Those on the line of an element that follow a comma in front of that line.
std::string_view CppFormatter::commentsOfElement(std::string_view gap) const {
    const std::string_view separator = trimLeft(gap);
    if (!keepsLines() || !settings_.formatsOtherGaps || !separator.starts_with(',')) return {};
    const std::string_view blanks = leadingBlanks(separator.substr(1));
    const std::string_view comments = separator.substr(1 + blanks.size());
    const bool areOnLine = !comments.empty() && isLineBreak(blanks) && !isLineBreak(trailingBlanks(comments));
    return areOnLine && writer_.holdsOnlyBlockComments(comments) ? comments : std::string_view();
}

// Begins the line that the gap, written but for its last blanks, ends in front of.
void CppFormatter::startKeptLine(std::string_view gap) {
    const int hanging = columnToIndentFrom(out());
    const int column = exprFormatter_.keptIndent().columnFor(listLine_, gap, hanging);
    if (column == hanging || !hangsLines()) return;
    startLineAt(out(), column);
}

// A comma with blanks around it, as nearly every gap is.
void CppFormatter::writeComma(std::string_view gap, const WantedText& before, const WantedText& after) {
    const std::string_view blanks = leadingBlanks(gap);
    if (before.present) {
        writer_.replace(blanks, before);
    } else if (!exprFormatter_.wrapsLines() || keepsLines() || !isLineBreak(blanks)) {
        writer_.leave(blanks, before);
        out().write(blanks);
    }
    out().write(",");
    const std::string_view behind = trailingBlanks(gap);
    const bool isColumn = exprFormatter_.keepsColumns() && after.text() == " " && isColumnGap(behind);
    writer_.replace(behind, isColumn ? WantedText(behind, Keys::KEEP_COLUMNS) : after);
}

// One whose first element hangs behind a directive or a comment, as it would without.
void CppFormatter::formatHangingList(Cpp::InteriorNode& list, const CommaTexts& commas, const ListStart& start) {
    const bool hangs = hangsLines() && out().column() == 0;
    const int hanging = columnAfter(exprFormatter_.settings().hanging.wrap.text, indentColumn(), out().tabSize());
    IndentScope indent(out(), hangs ? indentToColumn(out(), hanging) : out().indent());
    formatSeparatedList(list, commas, start);
}

// A list with its brackets. An empty one loses the white space between them when the scheme places any there.
void CppFormatter::formatBracketedList(Cpp::ParameterListNode& list, const OptionalText& afterOpen,
                                       const CommaTexts& commas, const OptionalText& beforeClose) {
    writer_.copyThrough(list.start());
    ValueScope<FirstLine> line(listLine_, lineOf(writer_.ahead()));
    if (list.size() == 0) {
        const std::string_view gap = writer_.readGap(list.end());
        if (afterOpen.present || beforeClose.present) {
            writer_.leave(leadingBlanks(gap), kNothing);
            writer_.writeWithoutLeading(gap);
        } else {
            writer_.write(gap);
        }
        return;
    }
    ListStart start = writeListStart(list, afterOpen, commas);
    if (settings_.hangsFromLine && hangsLines() && !start.startsLine) {
        start.hangsFromLine = true;
        start.column = columnAfter(exprFormatter_.settings().hanging.wrap.text, out().textColumn(), out().tabSize());
    }
    const int column = start.startsLine        ? indentColumn()
                       : start.comment.empty() ? writer_.nextColumn()
                                               : start.column;
    formatHangingList(list, commas, start);
    writeListEnd(list, beforeClose, column);
}

CppFormatter::ListStart CppFormatter::writeListStart(const Cpp::ParameterListNode& list, const OptionalText& afterOpen,
                                                     const CommaTexts& commas) {
    const Cpp::SyntaxNode& first = **list.childBegin();
    const std::string_view gap = writer_.readGap(first.start());
    const bool isBehindComment = settings_.formatsOtherGaps && writer_.holdsOnlyBlockComments(gap) &&
                                 (keepsLines() || gap.find('\n') == std::string_view::npos);
    if (isBehindComment) return writeCommentInFront(gap, afterOpen);
    if (isLineBreak(gap)) exprFormatter_.measureLineIndent(Keys::WRAP_INDENT, sourceFrom(first), gap);
    const bool isKept = keepsBreak(gap, afterOpen) && isAllWhitespace(gap);
    const bool isJoined = exprFormatter_.wrapsLines() && settings_.breaksAsLastResort && isLineBreak(gap);
    if (isKept) {
        writeKeptBreak(gap);
    } else if (settings_.formatsOtherGaps && trim(gap) == "," && !commas.behind.hasLineFeed()) {
        writeComma(gap, afterOpen, commas.behind);  // of a macro that may be given nothing first: `M(, a)`
    } else {
        const WantedText joined(kNothing.text, settings_.breaksAsLastResort.key);
        writer_.writeMerged(gap, isJoined && !afterOpen.present ? joined : afterOpen);
    }
    return {isKept, {}, 0, false};
}

// f(/* in */ int a): what is wanted behind the "(" does not part the comment from the element.
CppFormatter::ListStart CppFormatter::writeCommentInFront(std::string_view gap, const OptionalText& afterOpen) {
    const std::string_view blanks = leadingBlanks(gap);
    ListStart start{keepsBreak(blanks, afterOpen), trimLeft(gap), 0, false};
    if (start.startsLine) {
        writeKeptBreak(blanks);
    } else {
        writer_.replace(blanks, afterOpen);
    }
    start.column = writer_.nextColumn();
    const std::string_view behind = trailingBlanks(gap);
    const bool endsLine = isLineBreak(behind);
    writer_.write(endsLine ? trimRight(start.comment) : start.comment);
    if (endsLine) writeKeptBreakAt(behind, start.column);
    return start;
}

// A closing bracket that begins a line that is kept does so at `column`.
void CppFormatter::writeListEnd(const Cpp::ParameterListNode& list, const OptionalText& beforeClose,
                                int column) {
    const std::string_view closing = writer_.readGap(list.end());
    if (keepsBreak(closing, beforeClose) && isAllWhitespace(closing)) {
        writeKeptBreakAt(closing, exprFormatter_.keptIndent().columnBelowFirst(listLine_, closing, column));
        return;
    }
    // A ">>" that ends two lists is one token.
    const bool isInsideToken = closing.empty() && writer_.peek() == '>' && writer_.peekBehind() == '>';
    // A macro may be given nothing last: `M(a, )`.
    const bool isBehindComma = settings_.formatsOtherGaps && trim(closing) == "," && !isLineBreak(closing);
    const bool isBelowComment = keepsLines() && isLineBreak(trailingBlanks(closing));
    const bool staysInPlace = isInsideToken || isBehindComma || isBelowComment;
    writer_.writeMerged(closing, staysInPlace ? kAsInInput : beforeClose);
}

void CppFormatter::formatParenList(Cpp::ParameterListNode& list) {
    formatBracketedList(list, settings_.afterParameterOpen, settings_.commas.parameters,
                        settings_.beforeParameterClose);
}

}  // namespace Tessel
