#include "engine/expr_tokens.h"

#include "cpp/keyword_names.h"
#include "cpp/lexer.h"
#include "cpp/token_sets.h"
#include "engine/expr_brackets.h"
#include "engine/expr_regions.h"
#include "engine/expr_roles.h"
#include "engine/source_tokens.h"

namespace Tessel {

namespace {

void readPiece(std::string_view text, std::size_t first, std::size_t last, Cpp::KeywordNames::Words words,
               ExprTokens& tokens, SourceTokens* source) {
    if (source && source->add(text, first, last, tokens)) return;
    constexpr std::size_t charactersToToken = 2;  // tables of numbers have fewer tokens
    if (tokens.capacity() == 0) tokens.reserve((last - first) / charactersToToken);
    Cpp::Lexer lexer(text.substr(first, last - first));
    Cpp::KeywordNames names(words);
    const auto nameLast = [&](int kind) {
        if (const auto name = names.nameBefore(kind, tokens.size() - 1)) tokens[*name].kind = Cpp::Identifier;
    };
    for (Trn::Token token = lexer.nextToken(); token.kind != Trn::kEndKind; token = lexer.nextToken()) {
        const std::size_t place = first + token.offset;
        const bool isPiece = token.text.size() == token.length && token.start.line == token.end.line;
        tokens.emplace_back(token.kind, token.start, place, text.substr(place, token.length), isPiece);
        if (!Cpp::isTrivia(token.kind)) nameLast(token.kind);
    }
    nameLast(Trn::kEndKind);
}

}  // namespace

bool opensBlock(const ExprTokens& tokens, std::size_t open) {
    while (open > 0 && tokens[open - 1].role == ExprRole::Trivia) --open;
    switch (open > 0 ? tokens[open - 1].kind : Trn::kEndKind) {
        case Cpp::CloseParen:
        case Cpp::CloseBracket:
        case Cpp::Semicolon:
        case Cpp::KeywordDo:
        case Cpp::KeywordElse:
        case Cpp::KeywordTry:
            return true;
        default:
            return false;
    }
}

bool holdsDeclarations(const ExprTokens& tokens, std::size_t open) {
    std::size_t close = tokens[open].partner;
    if (close == kNoToken || close < open) return false;
    do --close;
    while (close > open && tokens[close].role == ExprRole::Trivia);
    return tokens[close].kind == Cpp::Semicolon;
}

void readExprTokens(std::string_view text, ExprMode mode, ExprTokens& tokens,
                    std::span<const TextExtent> blocks, const MarkerPairs* markers, LambdaParameters parameters,
                    SourceTokens* source) {
    using Words = Cpp::KeywordNames::Words;
    const Words words = parameters == LambdaParameters::Declared ? Words::All : Words::Some;
    tokens.clear();
    std::size_t place = 0;
    for (const TextExtent& block : blocks) {
        readPiece(text, place, block.offset, words, tokens, source);
        ExprToken& added = tokens.emplace_back();
        added.role = ExprRole::Block;
        added.kind = Cpp::CloseBrace;
        added.offset = static_cast<std::uint32_t>(block.offset);
        added.setText(text.substr(block.offset, block.length));
        place = block.offset + block.length;
    }
    readPiece(text, place, text.size(), words, tokens, source);
    if (markers) mergeRegions(*markers, tokens);
    matchBrackets(tokens, mode, parameters);
    findRoles(tokens, mode, parameters);
}

}  // namespace Tessel
