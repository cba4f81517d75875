#include "engine/gap.h"

#include <algorithm>

#include "cpp/lexer.h"
#include "cpp/token_kind.h"
#include "cpp/token_sets.h"
#include "engine/directive_ahead.h"
#include "engine/open_directive.h"
#include "engine/holds_any_of.h"

namespace Tessel {

namespace {

bool isLineEndKind(int kind) { return kind == Cpp::Directive || kind == Cpp::LineComment; }

// Nothing but a "/" or a "#" begins a comment or a directive, and a "\" the splice of two lines, which goes for a
// comment: most gaps need no lexer.
bool mayHoldTrivia(std::string_view text) { return holdsAnyOf<'/', '#', '\\'>(text); }

// The place behind the line comment or directive that the text starts with, whatever comments stand in front
// of the directive on its line; 0 where it starts with something else.
std::size_t firstLineEndTokenEnd(std::string_view text) {
    const std::string_view rest = trimLeft(text);
    if (rest.empty() || !mayHoldTrivia(rest.substr(0, 1))) return 0;
    const Trn::Token first = Cpp::Lexer(text).nextToken();
    if (isLineEndKind(first.kind)) return std::size_t{first.offset} + first.length;
    return endOfDirectiveAhead(text, [lexer = Cpp::Lexer(text)]() mutable { return lexer.nextToken(); });
}

}  // namespace

bool isAllWhitespace(std::string_view text) { return std::all_of(text.begin(), text.end(), isWhitespace); }

std::size_t lineStartOf(std::string_view text, std::size_t place) { return text.substr(0, place).rfind('\n') + 1; }

std::size_t charactersIn(std::string_view text) {
    std::size_t count = 0;
    for (const char c : text) count += isWhitespace(c) ? 0 : 1;
    return count;
}

bool isLineBreak(std::string_view text) {
    bool hasLineFeed = false;
    for (const char c : text) {
        if (!isWhitespace(c)) return false;
        hasLineFeed = hasLineFeed || c == '\n';
    }
    return hasLineFeed;
}

std::size_t findLeadingComma(std::string_view gap) {
    const std::size_t first = leadingBlanks(gap).size();
    if (first < gap.size() && gap[first] == ',') {
        return isLineBreak(gap.substr(0, first)) ? first : std::string_view::npos;
    }
    const std::string_view separator = trimRight(gap);
    if (!separator.ends_with(',')) return std::string_view::npos;
    const std::size_t last = separator.size() - 1;
    return isLineBreak(trailingBlanks(separator.substr(0, last))) ? last : std::string_view::npos;
}

std::string withBlankLines(std::string_view wanted, std::string_view blanks) {
    const auto lineFeeds = [](std::string_view text) { return std::count(text.begin(), text.end(), '\n'); };
    const auto missing = std::max<std::ptrdiff_t>(lineFeeds(blanks) - lineFeeds(wanted), 0);
    return std::string(static_cast<std::size_t>(missing), '\n').append(wanted);
}

std::string onOneLine(std::string_view text) {
    std::string result(text);
    std::replace(result.begin(), result.end(), '\n', ' ');
    return result;
}

bool holdsColumnGap(std::string_view text) {
    char former = '\0';
    for (const char c : text) {
        if (c == '\t' || (c == ' ' && former == ' ')) return true;
        former = c;
    }
    return false;
}

bool isColumnGap(std::string_view text) { return text.size() > (text.starts_with('\t') ? 0 : 1) && isBlanks(text); }

bool startsWithLineEndToken(std::string_view text) {
    return firstLineEndTokenEnd(text) > 0;
}

bool endsWithLineEndToken(std::string_view text) {
    if (!mayHoldTrivia(text)) return false;
    Cpp::Lexer lexer(text);
    int lastKind = Trn::kEndKind;
    std::size_t end = 0;
    OpenDirective directive;
    for (Trn::Token token = lexer.nextToken(); token.kind != Trn::kEndKind; token = lexer.nextToken()) {
        directive.passGap(text.substr(end, token.offset - end));
        directive.passToken(token.kind, token.text);
        lastKind = token.kind;
        end = std::size_t{token.offset} + token.length;
    }
    // Characters that belong to no token may follow it.
    return (isLineEndKind(lastKind) || directive.isOpen()) && isAllWhitespace(text.substr(end));
}

std::size_t lineEndBehind(std::string_view gap) {
    const std::size_t end = trimRight(gap).size();
    const std::size_t lineFeed = endsWithLineEndToken(gap) ? gap.find('\n', end) : std::string_view::npos;
    return lineFeed == std::string_view::npos ? end : lineFeed + 1;
}

MergedGap mergedGap(std::string_view gap, std::string_view wanted) {
    if (wanted.find('\n') != std::string_view::npos || !endsWithLineEndToken(gap)) return {trimRight(gap), wanted};
    const std::size_t lineFeed = gap.rfind('\n');
    const bool isBehindAll = lineFeed != std::string_view::npos && lineFeed >= trimRight(gap).size();
    return {isBehindAll ? gap.substr(0, lineFeed + 1) : gap, {}};
}

PrependedGap prependedGap(std::string_view gap) {
    const std::size_t end = firstLineEndTokenEnd(gap);
    if (end == 0) return {{}, trimLeft(gap)};
    return {gap.substr(0, end), trimLeft(gap.substr(end))};
}

std::string_view strippedGap(std::string_view gap) {
    return startsWithLineEndToken(gap) || endsWithLineEndToken(gap) ? gap : trim(gap);
}

void mergeWhitespace(std::string& gap, std::string_view wanted) {
    const MergedGap merged = mergedGap(gap, wanted);
    gap = std::string(merged.kept).append(merged.added);
}

void replaceCharOutsideComments(std::string& gap, char from, char to) {
    if (startsWithLineEndToken(gap) || endsWithLineEndToken(gap)) return;
    std::replace(gap.begin(), gap.end(), from, to);
}

}  // namespace Tessel
