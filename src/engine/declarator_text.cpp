#include "engine/declarator_text.h"

#include <algorithm>
#include <string_view>

#include "cpp/lexer.h"
#include "cpp/token_kind.h"
#include "engine/expr_tokens.h"
#include "engine/operator_kinds.h"
#include "textstream/char_set.h"

namespace Tessel {

namespace {

constexpr Zelmor::CharSet kGapCharacters(" \t\n");
// What may follow a name.
constexpr Zelmor::CharSet kBehindName("[,( \t\n/#\\");

// A comment, a directive or a splice, which keeps the white space in front of it.
bool beginsTrivia(char c) { return c == '/' || c == '#' || c == '\\'; }

// Behind the first "]", or 0 when there is none.
std::size_t firstBracketEnd(std::string_view text) {
    if (text.find(']') == std::string_view::npos) return 0;
    Cpp::Lexer lexer(text);
    for (Trn::Token token = lexer.nextToken(); token.kind != Trn::kEndKind; token = lexer.nextToken()) {
        if (token.kind == Cpp::CloseBracket) return std::size_t{token.offset} + token.length;
    }
    return 0;
}

// The place behind the token, and behind what it opens.
std::size_t behindGroup(const ExprTokens& tokens, std::size_t place) {
    return (opensBracket(tokens, place) ? tokens[place].partner : place) + 1;
}

}  // namespace

bool hasMarkBehindComma(std::string_view declarators) {
    ExprTokens tokens;
    readExprTokens(declarators, ExprMode::Declarators, tokens);
    return hasMarkBehindComma(tokens);
}

bool hasMarkBehindComma(const ExprTokens& tokens) {
    for (std::size_t place = 0; place < tokens.size(); place = behindGroup(tokens, place)) {
        const bool isComma = tokens[place].kind == Cpp::Comma;
        if (isComma && isPointerMark(kindAt(tokens, nextPlace(tokens, place)))) return true;
    }
    return false;
}

std::size_t placeOfValue(std::string_view declarators) {
    ExprTokens tokens;
    readExprTokens(declarators, ExprMode::Declarators, tokens);
    for (std::size_t place = 0; place < tokens.size(); place = behindGroup(tokens, place)) {
        if (tokens[place].kind == Cpp::Assign) return tokens[place].offset;
    }
    return declarators.size();
}

bool holdsStatements(std::string_view declarators) {
    ExprTokens tokens;
    readExprTokens(declarators, ExprMode::Declarators, tokens);
    const auto isEnd = [](const ExprToken& token) { return token.kind == Cpp::Semicolon; };
    const auto end = std::ranges::find_if(tokens, isEnd);
    return end != tokens.end() && end + 1 != tokens.end();
}

std::string_view gapBehindName(std::string_view declarator) {
    const std::size_t nameEnd = kBehindName.findIn(declarator);
    const std::size_t next = kGapCharacters.skipIn(declarator, nameEnd);
    const bool isPlace = next == declarator.size() || declarator[next] == '[';
    return isPlace ? declarator.substr(nameEnd, next - nameEnd) : std::string_view();
}

std::string_view gapBehindBracket(std::string_view declarator) {
    const std::size_t end = firstBracketEnd(declarator);
    const std::size_t next = kGapCharacters.skipIn(declarator, end);
    if (end == 0 || (next < declarator.size() && beginsTrivia(declarator[next]))) return {};
    return declarator.substr(end, next - end);
}

void spaceBrackets(std::string& declarator, const OptionalText& afterName, const OptionalText& afterBracket) {
    const auto replace = [&declarator](std::string_view gap, const OptionalText& wanted) {
        if (!gap.data()) return;
        declarator.replace(static_cast<std::size_t>(gap.data() - declarator.data()), gap.size(), wanted.text);
    };
    if (afterName.present) replace(gapBehindName(declarator), afterName);
    if (afterBracket.present) replace(gapBehindBracket(declarator), afterBracket);
}

}  // namespace Tessel
