#include "engine/directive_parts.h"

#include <algorithm>
#include <span>
#include <vector>

#include "cpp/characters.h"
#include "cpp/directive_text.h"
#include "cpp/lexer.h"
#include "cpp/token_kind.h"
#include "cpp/token_sets.h"
#include "cpp/words.h"
#include "engine/gap.h"
#include "engine/operator_kinds.h"
#include "engine/token_boundary.h"

namespace Tessel {

namespace {

using Tokens = std::span<const Trn::Token>;

std::size_t endOf(const Trn::Token& token) { return std::size_t{token.offset} + token.length; }

bool hasParts(std::string_view word) { return word == "if" || word == "elif" || word == "define"; }

// All tokens behind the "#", at the places that they have in the directive; the first alone where nothing else counts.
// They are views of the text.
std::vector<Trn::Token> tokensOf(std::string_view directive) {
    std::vector<Trn::Token> tokens;
    // Most directives have no more.
    constexpr std::size_t fewTokens = 8;
    tokens.reserve(fewTokens);
    Cpp::Lexer lexer(directive.substr(1));
    for (Trn::Token token = lexer.nextToken(); token.kind != Trn::kEndKind; token = lexer.nextToken()) {
        ++token.offset;
        token.text = directive.substr(token.offset, token.length);
        tokens.push_back(token);
        if (tokens.size() == 1 && !hasParts(token.text)) break;
    }
    return tokens;
}

TextExtent extentOf(Tokens tokens) {
    if (tokens.empty()) return {};
    return {tokens.front().offset, endOf(tokens.back()) - tokens.front().offset};
}

bool isSplice(const Trn::Token& token) { return token.kind == Cpp::LineComment && token.text.starts_with('\\'); }

// What begins with a "#" inside a macro, which the lexer takes for a directive.
bool isHash(const Trn::Token& token) { return token.kind == Cpp::Directive; }

// Behind the last token that is no comment.
Tokens withoutTrailingTrivia(Tokens tokens) {
    while (!tokens.empty() && Cpp::isTrivia(tokens.back().kind)) tokens = tokens.first(tokens.size() - 1);
    return tokens;
}

constexpr int nestingStep(int kind) {
    switch (kind) {
        case Cpp::OpenParen:
        case Cpp::OpenBracket: return 1;
        case Cpp::CloseParen:
        case Cpp::CloseBracket: return -1;
        default: return 0;
    }
}

constexpr bool isExprKeyword(int kind) {
    return kind == Cpp::KeywordSizeof || kind == Cpp::KeywordTypeid || isCastKeyword(kind);
}

constexpr bool isOperatorOrBracket(int kind) {
    return kind >= Cpp::Colon && kind <= Cpp::ArrowAsterisk && kind != Cpp::OpenBrace && kind != Cpp::CloseBrace;
}

constexpr bool mayStartExpression(int kind) {
    switch (kind) {
        case Cpp::OpenParen:
        case Cpp::Exclamation:
        case Cpp::Tilde:
        case Cpp::Plus:
        case Cpp::Minus:
        case Cpp::Asterisk:
        case Cpp::Ampersand:
        case Cpp::Increment:
        case Cpp::Decrement: return true;
        default: return isValueKind(kind) || isExprKeyword(kind);
    }
}

constexpr bool mayEndExpression(int kind) {
    return isValueKind(kind) || kind == Cpp::CloseParen || kind == Cpp::CloseBracket || kind == Cpp::Increment ||
           kind == Cpp::Decrement;
}

// `T *p` at the start, which may declare something.
bool mayDeclare(Tokens tokens) {
    constexpr std::size_t length = 3;
    if (tokens.size() < length || tokens[0].kind != Cpp::Identifier) return false;
    const int mark = tokens[1].kind;
    return isAnyMark(mark) && tokens[2].kind != Cpp::Number && tokens[2].kind != Cpp::OpenParen;
}

// Whether the tokens cannot be anything but an expression, with brackets that match.
bool isExpression(Tokens tokens) {
    if (tokens.empty() || !mayStartExpression(tokens.front().kind) || !mayEndExpression(tokens.back().kind)) {
        return false;
    }
    int depth = 0;
    bool sawQuestion = false;
    for (const Trn::Token& token : tokens) {
        const int kind = token.kind;
        depth += nestingStep(kind);
        sawQuestion = sawQuestion || kind == Cpp::Question;
        const bool fits = isValueKind(kind) || isExprKeyword(kind) || isOperatorOrBracket(kind) ||
                          (kind == Cpp::BlockComment && token.start.line == token.end.line) || isSplice(token) ||
                          (Cpp::isTypeWord(kind) && depth > 0);
        if (!fits || depth < 0 || (kind == Cpp::Colon && !sawQuestion)) return false;
    }
    return depth == 0;
}

// `lib/some-file.h`: what may become text or the name of a file, in which no blanks may come to stand.
bool mayBeName(Tokens tokens) {
    int depth = nestingStep(tokens.front().kind);
    for (std::size_t place = 1; place + 1 < tokens.size(); ++place) {
        const Trn::Token& token = tokens[place];
        depth += nestingStep(token.kind);
        const bool joinsWords = token.kind == Cpp::Minus || token.kind == Cpp::Slash || token.kind == Cpp::Dot;
        const bool isJoined =
            endOf(tokens[place - 1]) == token.offset && endOf(token) == std::size_t{tokens[place + 1].offset};
        if (depth == 0 && joinsWords && isJoined && isValueKind(tokens[place - 1].kind)) return true;
    }
    return false;
}

// Whether the tokens are a list on lines between those of its braces, but no table, with lines for its elements, and no
// list of lists: `{`, `a, f(b), {}`, `}`.
bool isBlockLikeList(Tokens tokens) {
    int depth = 0;
    int braces = 0;
    bool sawComma = false;
    const Trn::Token* last = nullptr;
    for (const Trn::Token& token : tokens) {
        if (Cpp::isTrivia(token.kind)) continue;
        const bool isOpen = token.kind == Cpp::OpenBrace;
        const bool isClose = token.kind == Cpp::CloseBrace;
        if (last && (braces == 0 || (braces > 1 && !isClose))) return false;
        if (last && last->kind == Cpp::Comma && (isClose || token.start.line > last->end.line)) return false;
        depth += nestingStep(token.kind);
        braces += isOpen ? 1 : isClose ? -1 : 0;
        sawComma |= depth == 0 && token.kind == Cpp::Comma;
        last = &token;
    }
    return sawComma && braces == 0;
}

// What the statement that a macro stands for lacks an end for:  return f(a)   if (a) return b
bool startsStatement(int kind) {
    return kind == Cpp::KeywordReturn || kind == Cpp::KeywordIf || kind == Cpp::KeywordFor || kind == Cpp::KeywordWhile;
}

// Whether a statement is at the start, or a ";" or "{" is among the tokens, and they are no list, or at least one that
// looks like statements, or they are cases of a switch; both from a line of their own.
bool holdsStatements(Tokens tokens) {
    const auto isSemicolon = [](const Trn::Token& token) { return token.kind == Cpp::Semicolon; };
    const auto isBrace = [](const Trn::Token& token) { return token.kind == Cpp::OpenBrace; };
    const auto first = std::find_if_not(tokens.begin(), tokens.end(), isSplice);
    if (first == tokens.end()) return false;
    const bool startsLine = first != tokens.begin();
    if (first->kind == Cpp::KeywordCase || first->kind == Cpp::KeywordDefault) return startsLine;
    if (startsStatement(first->kind) || std::any_of(first, tokens.end(), isSemicolon)) return true;
    if (!isBrace(*first)) return std::any_of(first, tokens.end(), isBrace);
    return startsLine && isBlockLikeList({first, tokens.end()});
}

// Calls that follow each other on a line: `X(a) X(b)`.
bool isSequence(Tokens tokens) {
    int depth = 0;
    int previous = Trn::kEndKind;
    for (const Trn::Token& token : tokens) {
        if (isSplice(token)) previous = Trn::kEndKind;
        if (Cpp::isTrivia(token.kind)) continue;
        if (depth == 0 && previous == Cpp::CloseParen && token.kind == Cpp::Identifier) return true;
        depth += nestingStep(token.kind);
        previous = token.kind;
    }
    return false;
}

// `T a, U b`, which is no expression.
bool declaresList(Tokens tokens) {
    int depth = 0;
    bool sawComma = false;
    bool sawTwoWords = false;
    int previous = Trn::kEndKind;
    for (const Trn::Token& token : tokens) {
        if (Cpp::isTrivia(token.kind)) continue;
        sawComma |= depth == 0 && token.kind == Cpp::Comma;
        sawTwoWords |= depth == 0 && previous == Cpp::Identifier && token.kind == Cpp::Identifier;
        depth += nestingStep(token.kind);
        previous = token.kind;
    }
    return sawComma && sawTwoWords;
}

// `__has_include(<a>)`, and what stands for it: `HAS_INCLUDE(<a>)`. No operand begins with a "<".
bool namesHeader(Tokens condition) {
    const auto isOfHeaders = [](const Trn::Token& token) {
        return token.text.starts_with("__has_include") || token.text.starts_with("__has_embed");
    };
    const auto opensHeader = [](const Trn::Token& first, const Trn::Token& second) {
        return first.kind == Cpp::OpenParen && second.kind == Cpp::Less;
    };
    const auto isLess = [](const Trn::Token& token) { return token.kind == Cpp::Less; };
    const bool mayHold = std::any_of(condition.begin(), condition.end(), isOfHeaders);
    return (mayHold && std::any_of(condition.begin(), condition.end(), isLess)) ||
           std::adjacent_find(condition.begin(), condition.end(), opensHeader) != condition.end();
}

// Behind "#if".
DirectiveParts partsOfCondition(Tokens tokens) {
    const Tokens condition = withoutTrailingTrivia(tokens);
    // One token alone has no gaps that anything could be done to.
    if (condition.size() < 2 || !isExpression(condition) || namesHeader(condition)) return {};
    return {{}, extentOf(condition), {}, true};
}

// Behind "#define". Names that are joined are read as one elsewhere.
DirectiveParts partsOfMacro(Tokens tokens, bool holdsHash) {
    const auto isBlankOrColon = [](char c) { return c == ':' || c == ' ' || c == '\t' || c == '\\' || c == '\n'; };
    if (tokens.empty() || std::any_of(tokens[0].text.begin(), tokens[0].text.end(), isBlankOrColon)) return {};
    DirectiveParts parts;
    std::size_t body = 1;
    const bool takesParameters =
        tokens.size() > 1 && tokens[1].kind == Cpp::OpenParen && tokens[1].offset == endOf(tokens[0]);
    if (takesParameters) {
        while (body < tokens.size() && tokens[body].kind != Cpp::CloseParen) ++body;
        if (body == tokens.size()) return {};
        const Tokens parameters = tokens.subspan(1, body++);
        if (std::none_of(parameters.begin(), parameters.end(), isSplice)) parts.parameters = extentOf(parameters);
    }
    const Tokens expression = withoutTrailingTrivia(tokens.subspan(body));
    const std::size_t start = endOf(tokens[body - 1]);
    if (expression.empty() || (!takesParameters && mayBeName(expression))) return parts;
    const TextExtent whole{start, endOf(expression.back()) - start};
    // One token alone has no gaps that anything could be done to.
    if (expression.size() == 1 && !holdsHash) return parts;
    if (declaresList(expression) && !holdsStatements(expression)) return parts;
    if (isExpression(expression) && !mayDeclare(expression)) {
        (holdsHash ? parts.body : parts.expression) = holdsHash ? whole : extentOf(expression);
        return parts;
    }
    const auto first = std::find_if_not(expression.begin(), expression.end(), isSplice);
    const Tokens below = expression.subspan(static_cast<std::size_t>(first - expression.begin()));
    if (holdsStatements(expression) || (isExpression(below) && !mayDeclare(below) && !isSequence(below))) {
        parts.body = whole;
    }
    return parts;
}

// Blanks, and splices with their line ends.
bool isGap(std::string_view text) {
    for (std::size_t place = kBlanks.skipIn(text, 0); place < text.size(); place = kBlanks.skipIn(text, place + 1)) {
        if (text[place] == '\\') place = kBlanks.skipIn(text, place + 1);
        if (place == text.size() || text[place] != '\n') return false;
    }
    return true;
}

// Whether all that is left of a directive is blanks, and at most one comment.
bool endsDirective(std::string_view rest) {
    const std::string_view text = trimRight(rest);
    if (text.starts_with("/*")) return text.find("*/", 2) == text.size() - 2;
    return text.empty() || (text.starts_with("//") && text.find('\n') == text.npos);
}

// Whether another word than those of `hasParts` begins the directive. That takes no lexer to see.
bool startsOtherwise(std::string_view directive) {
    const std::size_t start = kBlanks.skipIn(directive, 1);
    std::size_t end = start;
    while (end < directive.size() && Cpp::isNamePart(directive[end])) ++end;
    return end > start && !hasParts(directive.substr(start, end - start));
}

// `#define WIDTH 0x10`: as most macros, it stands for one word, or for nothing. That takes no lexer to see.
bool definesWord(std::string_view directive) {
    constexpr std::string_view define = "define";
    constexpr int mostWords = 2;
    std::size_t place = kBlanks.skipIn(directive, 1);
    if (!directive.substr(place).starts_with(define)) return false;
    place += define.size();
    for (int word = 0; word < mostWords; ++word) {
        const std::size_t start = kBlanks.skipIn(directive, place);
        if (start == place) break;
        place = start;
        while (place < directive.size() && Cpp::isNamePart(directive[place])) ++place;
    }
    return endsDirective(directive.substr(kBlanks.skipIn(directive, place)));
}

// What is no other "#", no line end, and no splice.
bool mayStandAtPaste(char c) { return c != '#' && c != '\\' && c != '\n' && c != '"' && c != '\''; }

}  // namespace

std::string withoutHashes(std::string_view text) {
    constexpr char letter = '_';
    const auto isBlank = [&](std::size_t place) {
        return place < text.size() && (text[place] == ' ' || text[place] == '\t');
    };
    const auto isNameAt = [&](std::size_t place) { return place < text.size() && Cpp::isNamePart(text[place]); };
    std::string names(text);
    for (std::size_t place = names.find('#'); place != std::string::npos; place = names.find('#', place)) {
        names[place] = letter;
        const bool isJoining = place + 1 < names.size() && names[place + 1] == '#';
        if (!isJoining) continue;
        names[place + 1] = letter;
        std::size_t first = place;
        while (first > 0 && isBlank(first - 1)) --first;
        std::size_t last = place + 2;
        while (isBlank(last)) ++last;
        const auto nameFrom = names.begin() + static_cast<std::ptrdiff_t>(isNameAt(first - 1) ? first : place);
        const auto nameTo = names.begin() + static_cast<std::ptrdiff_t>(isNameAt(last) ? last : place + 2);
        std::fill(nameFrom, nameTo, letter);
    }
    return names;
}

bool joinsNames(std::string_view directive) {
    return directive.find("##") != directive.npos && Cpp::directiveStartsWith(directive, "#define");
}

std::string withPasteGaps(std::string_view directive, std::string_view gap) {
    if (!joinsNames(directive) || holdsSplicedToken(directive)) return std::string(directive);
    std::string names(directive);
    std::replace(names.begin() + 1, names.end(), '#', '_');
    std::string text;
    std::size_t written = 0;
    for (const Trn::Token& token : tokensOf(names)) {
        if (token.kind != Cpp::Identifier && token.kind != Cpp::Number) continue;
        const std::string_view word = directive.substr(token.offset, token.length);
        for (std::size_t found = word.find("##"); found != word.npos; found = word.find("##", found + 2)) {
            const std::size_t place = token.offset + found;
            const std::string_view front = directive.substr(0, place);
            const std::size_t start = std::max(kBlanks.skipBackIn(front), written);
            const std::size_t end = kBlanks.skipIn(directive, place + 2);
            const bool isPlain = start > written && mayStandAtPaste(directive[start - 1]) &&
                                 end < directive.size() && mayStandAtPaste(directive[end]);
            if (!isPlain) continue;
            text.append(directive.substr(written, start - written)).append(gap).append("##").append(gap);
            written = end;
        }
    }
    return text.append(directive.substr(written));
}

DirectiveParts partsOf(std::string_view directive) {
    // One token alone has no gaps that anything could be done to.
    if (startsOtherwise(directive) || definesWord(directive)) return {};
    std::vector<Trn::Token> all = tokensOf(directive);
    if (all.size() < 2 || holdsSplicedToken(directive)) return {};
    // Behind a character that is no token nothing is known.
    if (!isGap(directive.substr(1, all.front().offset - 1))) return {};
    if (all.front().text != "define") return partsOfCondition(Tokens(all).subspan(1));
    const bool holdsHash = std::ranges::any_of(all, isHash);
    std::string names;
    if (holdsHash) {
        names = directive.front() + withoutHashes(directive.substr(1));
        all = tokensOf(names);
    }
    const DirectiveParts parts = partsOfMacro(Tokens(all).subspan(1), holdsHash);
    const std::string_view parameters = directive.substr(parts.parameters.offset, parts.parameters.length);
    return parameters.find('#') == parameters.npos ? parts : DirectiveParts();
}

}  // namespace Tessel
