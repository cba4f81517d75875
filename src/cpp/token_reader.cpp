#include "cpp/token_reader.h"

#include "cpp/region_markers.h"
#include "cpp/token_kind.h"
#include "cpp/token_sets.h"

namespace Cpp {

namespace {

// C uses words as names that are keywords in C++: `int private = 1;`, `template.next = 0;`, `for (try = 0; …)`. Whether
// a keyword is one of these is told by the token behind it; in front of a ";", by the end of a type before it.
bool isNameBefore(int word, int ahead, int following) {
    const bool endsDeclaration = following == Semicolon && (ahead == Identifier || ahead == Asterisk);
    if (following < Semicolon || following > ArrowAsterisk || following == OpenBrace) return false;
    switch (word) {
        case KeywordPublic:
        case KeywordProtected:
        case KeywordPrivate: return following != Colon && following != CloseBrace;
        case KeywordTry: return following != Colon;
        case KeywordCatch: return following != OpenParen;
        case KeywordNamespace: return following != OpenBracket && (following != Semicolon || endsDeclaration);
        case KeywordTemplate: return following != Less && (following != Semicolon || endsDeclaration);
        case KeywordFriend:
        case KeywordUsing:
        case KeywordVirtual: return following != OpenBracket && following != Tilde;
        case KeywordClass: return following == Semicolon || following == Dot || following == Arrow;
        default: return false;
    }
}

// Makes `first`, which opens a region, the token of all of it.
void takeRegion(Lexer& lexer, Trn::Token& first, int kind, int (*step)(const Trn::Token&)) {
    for (int depth = 1; depth > 0;) {
        const Trn::Token token = lexer.nextToken();
        first.end = token.end;
        first.length = token.offset + token.length - first.offset;
        if (token.kind == Trn::kEndKind) {
            first.kind = OpenRegion;
            return;
        }
        depth += step(token);
    }
    first.kind = kind;
}

}  // namespace

Trn::TokenList readTokens(Lexer& lexer) {
    // Most texts have fewer tokens. What is not needed is never touched.
    constexpr std::size_t charactersToToken = 4;
    Trn::TokenList tokens(lexer.text());
    tokens.reserve(lexer.text().size() / charactersToToken + 1);
    std::size_t previous = 0;  // the last token that is no comment
    int ahead = Trn::kEndKind;  // the kind of the one in front of it
    Trn::Token token;
    do {
        token = lexer.nextToken();
        if (previous < tokens.size() && isNameBefore(tokens.kind(previous), ahead, token.kind)) {
            tokens.setKind(previous, Identifier);
        }
        if (!isTrivia(token.kind)) {
            ahead = previous < tokens.size() ? tokens.kind(previous) : Trn::kEndKind;
            previous = tokens.size();
        }
        if (opensUnusedBlock(token)) {
            takeRegion(lexer, token, UnreadBlock, unusedBlockStep);
        } else if (opensProtectedRegion(token)) {
            takeRegion(lexer, token, ProtectedRegion, protectedRegionStep);
        }
        tokens.add(token);
    } while (token.kind != Trn::kEndKind);
    return tokens;
}

}  // namespace Cpp
