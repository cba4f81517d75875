#include "engine/macro_call.h"

#include "cpp/characters.h"
#include "cpp/lexer.h"
#include "cpp/token_kind.h"

namespace Tessel {

namespace {

// Of a declaration as much as of an expression, or of neither.
constexpr bool isDoubtful(int kind) {
    switch (kind) {
        case Cpp::Unknown:
        case Cpp::Directive:
        case Cpp::LineComment:
        case Cpp::BlockComment:
        case Cpp::Semicolon:
        case Cpp::OpenBrace:
        case Cpp::CloseBrace:
        case Cpp::Asterisk:
        case Cpp::Ampersand:
        case Cpp::LogicalAnd:
        case Cpp::Less:
        case Cpp::Greater: return true;
        default: return false;
    }
}

}  // namespace

bool isMacroCall(const Cpp::KeptNode& item, bool keepsLines) {
    const bool isOnLine = item.start().line == item.end().line;
    if (!isOnLine && !keepsLines) return false;
    Cpp::Lexer lexer{std::string_view(item.text())};
    if (lexer.nextToken().kind != Cpp::Identifier || lexer.nextToken().kind != Cpp::OpenParen) return false;
    int depth = 1;
    bool followsWord = false;
    while (depth > 0) {
        const Trn::Token token = lexer.nextToken();
        const int kind = token.kind;
        if (kind == Trn::kEndKind || isDoubtful(kind)) return false;
        // Where words that follow each other go on in further lines, is the macro's affair.
        const bool isWord = Cpp::isNamePart(token.text.front());
        if (!isOnLine && isWord && followsWord) return false;
        followsWord = isWord;
        if (kind == Cpp::OpenParen) ++depth;
        if (kind == Cpp::CloseParen) --depth;
    }
    const int following = lexer.nextToken().kind;
    return following == Trn::kEndKind || (following == Cpp::Comma && lexer.nextToken().kind == Trn::kEndKind);
}

}  // namespace Tessel
