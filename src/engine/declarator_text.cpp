#include "engine/declarator_text.h"

#include <algorithm>
#include <string_view>

#include "cpp/lexer.h"
#include "cpp/token_kind.h"

namespace Tessel {

namespace {

constexpr const char* kBlanks = " \t\n";

// A comment, a directive or a splice, which keeps the white space in front of it.
bool beginsTrivia(char c) { return c == '/' || c == '#' || c == '\\'; }

std::size_t skipBlanks(const std::string& text, std::size_t place) {
    return std::min(text.find_first_not_of(kBlanks, place), text.size());
}

// Behind the first "]", or 0 when there is none.
std::size_t firstBracketEnd(std::string_view text) {
    if (text.find(']') == std::string_view::npos) return 0;
    Cpp::Lexer lexer(text);
    for (Trn::Token token = lexer.nextToken(); token.kind != Trn::kEndKind; token = lexer.nextToken()) {
        if (token.kind == Cpp::CloseBracket) return std::size_t{token.offset} + token.length;
    }
    return 0;
}

}  // namespace

void spaceBrackets(std::string& declarator, const OptionalText& afterName, const OptionalText& afterBracket) {
    if (afterName.present) {
        const std::size_t nameEnd = std::min(declarator.find_first_of("[,( \t\n/#\\"), declarator.size());
        const std::size_t next = skipBlanks(declarator, nameEnd);
        const bool isWanted = next == declarator.size() || declarator[next] == '[';
        if (isWanted) declarator.replace(nameEnd, next - nameEnd, afterName.text);
    }
    if (!afterBracket.present) return;
    const std::size_t end = firstBracketEnd(declarator);
    const std::size_t next = skipBlanks(declarator, end);
    if (end == 0 || (next < declarator.size() && beginsTrivia(declarator[next]))) return;
    declarator.replace(end, next - end, afterBracket.text);
}

}  // namespace Tessel
