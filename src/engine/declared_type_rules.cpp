// What stands between the first character of a type and the name that it declares:
//
// char*p;         char *p;            by the anchor of the mark
// unsigned n;     unsigned    n;      in columns
#include <algorithm>
#include <string>

#include "cpp/characters.h"
#include "cpp/keyword_table.h"
#include "cpp/token_joining.h"
#include "cpp/token_kind.h"
#include "cpp/words.h"
#include "engine/columns.h"
#include "engine/cpp_formatter.h"
#include "engine/gap.h"
#include "engine/head_words.h"
#include "engine/holds_any_of.h"
#include "engine/opaque_text.h"
#include "engine/type_text.h"

namespace Tessel {

using Zelmor::LeadingSpaceScope;

namespace {

// Two "&" that stand apart are not the operator "&&".
std::string marksWithoutBlanks(std::string_view marks) {
    std::string result;
    for (std::size_t place = 0; place < marks.size(); ++place) {
        if (isWhitespace(marks[place])) continue;
        const bool isApart = place > 0 && isWhitespace(marks[place - 1]);
        if (isApart && marks[place] == '&' && result.ends_with('&')) result += ' ';
        result += marks[place];
    }
    return result;
}

std::string_view lastWordOf(std::string_view text) {
    return {std::find_if_not(text.rbegin(), text.rend(), Cpp::isNamePart).base(), text.end()};
}

// `f (a) b(c);`: a macro with nothing between its name and its arguments may be read as one that stands by itself,
// unless a type stands in front of it.
bool isMadeByMacro(std::string_view type) {
    static constexpr Zelmor::CharSet openings("<(");
    const std::size_t open = openings.findIn(type);
    if (!type.substr(open).starts_with('(')) return false;
    const std::string_view front = trimRight(type.substr(0, open));
    const std::string_view name = lastWordOf(front);
    const std::string_view ahead = trimRight(front.substr(0, front.size() - name.size()));
    const bool isClosed = std::ranges::count(type, '(') == std::ranges::count(type, ')');
    const bool followsType = isClosed && Cpp::isBuiltinTypeKeyword(Cpp::keywordKind(lastWordOf(ahead)));
    return !followsType && !Cpp::takesArgument(name);
}

// Up to where it stands behind no comments.
std::string_view withoutCommentsBehind(std::string_view type) {
    ExprTokens tokens;
    readExprTokens(type, ExprMode::Declaration, tokens);
    while (!tokens.empty() && tokens.back().role == ExprRole::Trivia) tokens.pop_back();
    if (tokens.empty()) return {};
    return type.substr(0, tokens.back().end());
}

// The first line of a type that begins in the next one, with the white space behind it; nothing for any other type.
std::string_view lineOfSpecifiers(std::string_view type) {
    const std::size_t length = type.find('\n');
    const bool areSpecifiers = length < trimRight(type).size() && isSpecifiers(trimRight(type.substr(0, length)));
    return areSpecifiers ? type.substr(0, type.size() - trimLeft(type.substr(length)).size()) : std::string_view();
}

// Whether nothing but words, a blank apart, stands in front of the last gap, as in most types: `unsigned int`.
bool isOfWords(std::string_view type) {
    char former = ' ';
    for (const char c : trimRight(type)) {
        if (!Cpp::isNamePart(c) && (c != ' ' || former == ' ')) return false;
        former = c;
    }
    return true;
}

}  // namespace

bool CppFormatter::formatsArgumentsOf(std::string_view type) const {
    if (!settings_.formatsTypeArguments || !holdsAnyOf<'<', '('>(type)) return false;
    if (!writer_.holdsOpaque(type)) return true;
    const bool endsInComment = endsWithLineEndToken(type) || trimRight(type).ends_with("*/");
    return keepsLines() && !endsInComment && writer_.holdsLineComment(type) && writer_.holdsOnlyComments(type);
}

// `type` reaches up to the name. Marks at its end go where their anchor says when `formatsMarks`.
void CppFormatter::writeType(std::string_view type, const OptionalText& whitespace, bool formatsMarks,
                             LastMarks marks) {
    if (isOfWords(type)) return writer_.writeMerged(type, whitespace);
    // It stands below its specifiers, wherever a template header in front of them ends.
    const std::string_view specifiers = keepsLines() ? lineOfSpecifiers(type) : std::string_view();
    if (!specifiers.empty()) {
        writer_.write(specifiers.substr(0, specifiers.rfind('\n') + 1));
        return writeType(type.substr(specifiers.size()), whitespace, formatsMarks, marks);
    }
    const std::string_view front = keepsLines() && endsWithLineEndToken(type) ? withoutCommentsBehind(type) : type;
    if (front.size() < type.size() && formatsArgumentsOf(front)) {
        const bool endsInMarks = formatsMarks && endsWithMarks(front) && !isMadeByMacro(front);
        if (endsInMarks) {
            // The comment stands behind them, and the name behind that.
            exprFormatter_.formatDeclarationText(front, out(), kAsInInput, HangingLines::Text::List);
        } else {
            writeType(front, kAsInInput, formatsMarks, marks);
        }
        writer_.writeMerged(type.substr(front.size()), whitespace);
        return;
    }
    const bool isMade = isMadeByMacro(type);
    const bool formatsArguments = formatsArgumentsOf(type) && !isMade;
    const std::string_view words = trimRight(type);
    const bool isOnOneLine = words.find('\n') == words.npos && !writer_.holdsOpaque(type);
    const bool formatsWords = settings_.formatsOtherGaps && !isMade && isOnOneLine &&
                              holdsColumnGap(words);
    // Those in front of a word stand against the type or, as the source has them, apart.
    const bool holdsMarks = settings_.formatsTypeArguments && !isMade && isOnOneLine && holdsAnyOf<'*'>(words) &&
                            exprFormatter_.settings().asterisk.anchor == kAnchoredToType;
    if (formatsMarks && (formatsArguments || formatsWords || holdsMarks || endsWithMarks(type))) {
        exprFormatter_.formatTypeText(type, out(), whitespace, marks);
    } else {
        writer_.writeMerged(type, whitespace);
    }
}

// Writes the type, and padding up to the column in which the names of a run stand. Marks that belong to the name
// start there, or end there when they hang.
void CppFormatter::writeAlignedType(std::string_view type, KeyId alignment, int offset) {
    const std::string_view blanks = trailingBlanks(type);
    const TypeText text(type);
    if (!text.hasMarks()) {
        writeOnOneLine(text.text);
        pad(blanks, alignment, offset, text.text);
        return;
    }
    const ExprSettings& settings = exprFormatter_.settings();
    const MarkSettings& marks = text.text.back() == '*' ? settings.asterisk : settings.ampersand;
    const std::string markText = marksWithoutBlanks(text.text.substr(text.head.size()));
    if (marks.anchor != kAnchoredToType && marks.anchor != kAnchoredToName) {
        writeOnOneLine(text.text);
        pad(blanks, alignment, offset, text.text);
        return;
    }
    writeOnOneLine(text.head);
    if (marks.anchor == kAnchoredToType) {
        out().write(markText);
        pad(blanks, alignment, offset, markText);
        return;
    }
    writer_.leave(blanks, WantedText({}, marks.anchor.key));
    const int hanging = marks.isHanging ? static_cast<int>(markText.size()) : 0;
    pad(leadingBlanks(text.text.substr(text.head.size())), alignment, offset, text.head, hanging);
    out().write(markText);
}

// A type without opaque tokens.
void CppFormatter::writeOnOneLine(std::string_view text) {
    std::string line(text);
    replaceCharOutsideComments(line, '\n', ' ');
    out().write(line);
}

// Pads up to `offset` columns behind the indentation, or behind where the line begins if it keeps its own, less those
// that are to hang in front of that column. What stands before never runs into what follows.
void CppFormatter::pad(std::string_view found, KeyId alignment, int offset, std::string_view before, int hanging) {
    const int indentWidth = out().keepLeadingSpace() ? textColumnOf(out()) : indentColumn();
    int padding = alignmentPadding(offset, out().column(), indentWidth, out().tabSize()) - hanging;
    const char next[] = {writer_.peek(), writer_.peek(1)};
    if (padding < 1 && Cpp::wouldJoin(before, {next, sizeof next})) padding = 1;
    const std::string blanks(static_cast<std::size_t>(std::max(padding, 0)), ' ');
    writer_.leave(found, WantedText(blanks, alignment));
    LeadingSpaceScope keepSpace(out(), true);
    padColumns(out(), padding);
}

}  // namespace Tessel
