#include "cpp/token_reader.h"

#include "cpp/region_markers.h"
#include "cpp/token_kind.h"
#include "cpp/token_sets.h"

namespace Cpp {

namespace {

// Makes `first`, which opens a region, the token of all of it.
void takeRegion(Lexer& lexer, Trn::Token& first, int kind, int (*step)(const Trn::Lexeme&)) {
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

Trn::TokenList readTokens(Lexer& lexer, KeywordNames::Words words) {
    // Most texts have fewer tokens and lines. What is not needed is never touched.
    constexpr std::size_t charactersToToken = 4;
    constexpr std::size_t charactersToLine = 16;
    Trn::TokenList tokens(lexer.text());
    const std::size_t size = lexer.text().size();
    tokens.reserve(size / charactersToToken + 1, size / charactersToLine + 1);
    KeywordNames names(words);
    while (true) {
        Trn::Token token = lexer.nextToken();
        if (!isTrivia(token.kind)) {
            if (const auto name = names.nameBefore(token.kind, tokens.size())) tokens.setKind(*name, Identifier);
        } else if (opensUnusedBlock(token)) {
            takeRegion(lexer, token, UnreadBlock, unusedBlockStep);
        } else if (opensProtectedRegion(token)) {
            takeRegion(lexer, token, ProtectedRegion, protectedRegionStep);
        }
        tokens.add(token);
        if (token.kind == Trn::kEndKind) return tokens;
    }
}

}  // namespace Cpp
