#include "engine/gap.h"

#include <algorithm>

#include "cpp/lexer.h"
#include "cpp/token_kind.h"
#include "cpp/token_sets.h"

namespace Tessel {

namespace {

constexpr std::string_view kWhitespace = " \t\n\v\f\r";

bool isLineEndKind(int kind) { return kind == Cpp::Directive || kind == Cpp::LineComment; }

// Nothing but a "/" or a "#" begins a comment or a directive: most gaps need no lexer.
bool mayHoldTrivia(std::string_view text) { return text.find_first_of("/#") != std::string_view::npos; }

template <typename Test>
bool anyToken(std::string_view text, Test isWanted) {
    if (!mayHoldTrivia(text)) return false;
    Cpp::Lexer lexer(text);
    for (Trn::Token token = lexer.nextToken(); token.kind != Trn::kEndKind; token = lexer.nextToken()) {
        if (isWanted(token.kind)) return true;
    }
    return false;
}

void trimRightInPlace(std::string& text) { text.erase(trimRight(text).size()); }

void trimLeftInPlace(std::string& text) { text.erase(0, text.size() - trimLeft(text).size()); }

// Removes the white space behind the last line feed, which ends a comment or directive.
void trimBehindLastLine(std::string& gap) {
    const std::size_t lineFeed = gap.rfind('\n');
    if (lineFeed == std::string::npos || lineFeed + 1 == gap.size()) return;
    gap.erase(lineFeed + 1 + trimRight(std::string_view(gap).substr(lineFeed + 1)).size());
}

std::string withPrepended(std::string_view gap, std::string_view wanted) {
    std::string result;
    if (!startsWithLineEndToken(gap)) {
        result += wanted;
        result += trimLeft(gap);
        return result;
    }
    const std::size_t lineFeed = gap.find('\n');
    if (lineFeed == std::string_view::npos) return result;
    result += gap.substr(0, lineFeed + 1);
    result += wanted;
    result += trimLeft(gap.substr(lineFeed + 1));
    return result;
}

}  // namespace

bool isAllWhitespace(std::string_view text) { return std::all_of(text.begin(), text.end(), isWhitespace); }

bool isLineBreak(std::string_view text) {
    return text.find('\n') != std::string_view::npos && isAllWhitespace(text);
}

std::string_view trimLeft(std::string_view text) {
    const std::size_t first = text.find_first_not_of(kWhitespace);
    return first == std::string_view::npos ? std::string_view() : text.substr(first);
}

std::string_view trimRight(std::string_view text) {
    return text.substr(0, text.find_last_not_of(kWhitespace) + 1);
}

std::string_view trim(std::string_view text) { return trimLeft(trimRight(text)); }

bool startsWithLineEndToken(std::string_view text) {
    const std::string_view rest = trimLeft(text);
    if (rest.empty() || !mayHoldTrivia(rest.substr(0, 1))) return false;
    return isLineEndKind(Cpp::Lexer(rest).nextToken().kind);
}

bool endsWithLineEndToken(std::string_view text) {
    if (!mayHoldTrivia(text)) return false;
    Cpp::Lexer lexer(text);
    int lastKind = Trn::kEndKind;
    for (Trn::Token token = lexer.nextToken(); token.kind != Trn::kEndKind; token = lexer.nextToken()) {
        lastKind = token.kind;
    }
    return isLineEndKind(lastKind);
}

bool containsLineComment(std::string_view text) {
    return anyToken(text, [](int kind) { return kind == Cpp::LineComment; });
}

bool containsCommentOrDirective(std::string_view text) { return anyToken(text, Cpp::isTrivia); }

bool isDirectiveText(std::string_view text) {
    if (text.empty()) return false;
    return trimLeft(text.substr(0, text.size() - 1)).starts_with('#');
}

void mergeWhitespace(std::string& gap, std::string_view wanted) {
    if (wanted.find('\n') == std::string_view::npos && endsWithLineEndToken(gap)) {
        trimBehindLastLine(gap);
        return;
    }
    trimRightInPlace(gap);
    gap += wanted;
}

void prependWhitespace(std::string& gap, std::string_view wanted) { gap = withPrepended(gap, wanted); }

void surroundWithWhitespace(std::string& gap, std::string_view before, std::string_view after) {
    const bool keepsLineEnd = after.find('\n') == std::string_view::npos && endsWithLineEndToken(gap);
    std::string result = withPrepended(gap, before);
    if (keepsLineEnd) {
        trimBehindLastLine(result);
    } else {
        trimRightInPlace(result);
    }
    result += after;
    gap = std::move(result);
}

void stripLeadingSpace(std::string& gap) {
    if (!startsWithLineEndToken(gap)) {
        trimLeftInPlace(gap);
        return;
    }
    const std::size_t lineFeed = gap.find('\n');
    if (lineFeed == std::string::npos) return;
    const std::string_view rest = std::string_view(gap).substr(lineFeed + 1);
    gap.erase(lineFeed + 1, rest.size() - trimLeft(rest).size());
}

void stripTrailingSpace(std::string& gap) {
    if (endsWithLineEndToken(gap)) {
        trimBehindLastLine(gap);
    } else {
        trimRightInPlace(gap);
    }
}

void stripSurroundingSpace(std::string& gap) {
    if (startsWithLineEndToken(gap) || endsWithLineEndToken(gap)) return;
    trimRightInPlace(gap);
    trimLeftInPlace(gap);
}

void replaceCharOutsideComments(std::string& gap, char from, char to) {
    if (startsWithLineEndToken(gap) || endsWithLineEndToken(gap)) return;
    std::replace(gap.begin(), gap.end(), from, to);
}

}  // namespace Tessel
