// What is kept as it was written:
//
//     WIDGETS                  a macro that stands by itself
//     int a ? b;               what no rule recognises, up to where something can begin again

#include "cpp/directive_text.h"
#include "cpp/parser.h"
#include "cpp/token_kind.h"
#include "cpp/token_sets.h"
#include "cpp/words.h"

namespace Cpp {

namespace {

// Times the size of a text, in tokens: far more than any code needs, and a small part of what reading it costs.
constexpr std::size_t kMostReadInVain = 16;

// A keyword that begins an item wherever it stands outside of brackets, at the start of a line.
bool beginsItem(int kind) {
    switch (kind) {
        case KeywordNamespace:
        case KeywordTemplate:
        case KeywordUsing:
        case KeywordTypedef:
        case KeywordClass:
        case KeywordStruct:
        case KeywordUnion:
        case KeywordEnum:
        case KeywordExtern:
        case KeywordStatic:
        case KeywordCase:
        case KeywordDefault: return true;
        default: return isAccessKeyword(kind) || isControlKeyword(kind) || isJumpKeyword(kind);
    }
}

// `static char id[] = "…"` in a branch that nobody reads: a literal without a ";", an #endif, and then a name or a
// type, which no expression goes on with.
bool beginsBehindBranch(const Trn::TokenBuffer& tokens, std::size_t end, std::size_t place) {
    const int kind = tokens.kindAt(place);
    if (tokens.kindAt(end - 1) != StringLiteral || (kind != Identifier && !isTypeWord(kind))) return false;
    for (std::size_t between = end; between < place; ++between) {
        const bool isDirective = tokens.kindAt(between) == Directive;
        if (isDirective && directiveStartsWith(tokens.at(between).text, "#endif")) return true;
    }
    return false;
}

}  // namespace

// The place behind the item that begins at `start`: behind its ";", or behind a "}" that ends its line, or in front of
// what can only be another item; `start` where nothing of one stands.
Parser::Index Parser::endOfItem(const TokenBuffer& tokens, Index start) const {
    const TokenView look = view(tokens);
    const Index first = links_.significant(start);
    Index end = first;  // behind the last token that has been taken
    for (Index place = first;;) {
        const int kind = tokens.kindAt(place);
        if (kind == CloseBrace || kind == Trn::kEndKind) return end > first ? end : start;
        const bool startsLine = end > first && tokens.at(place).start.line > tokens.at(end - 1).end.line;
        if (startsLine && (beginsItem(kind) || beginsBehindBranch(tokens, end, place))) return end;
        const Index following = look.behind(place);
        const Index close = links_.closing(place);
        end = (close == TokenLinks::kNone ? place : close) + 1;
        if (kind == Semicolon) return end;
        const bool endsLine = tokens.at(following).start.line > tokens.at(end - 1).end.line;
        if (kind == OpenBrace && endsLine && tokens.kindAt(following) != Semicolon) return end;
        place = following;
    }
}

// The same, but `start` where a literal does not end, which may have taken in anything.
Parser::Index Parser::endOfKept(const TokenBuffer& tokens, Index start) const {
    const Index end = endOfItem(tokens, start);
    for (Index place = start; place < end; ++place) {
        if (tokens.kindAt(place) == Unknown) return start;
    }
    return end;
}

// The same for an item that could not be read, as far as it was. What is behind it has been read in vain, and is read
// again; where that comes to too much, as with `if` a hundred thousand times in a class, it is kept with the item.
Parser::Index Parser::endOfFailed(const TokenBuffer& tokens, Index start) {
    const Index reached = tokens.place();
    Index end = endOfKept(tokens, start);
    if (reached <= end) return end;
    readInVain_ += reached - end;
    if (readInVain_ <= kMostReadInVain * tokens_->size()) return end;
    while (end < reached) {
        const Index next = endOfKept(tokens, end);
        if (next == end) break;
        end = next;
    }
    return end;
}

std::unique_ptr<KeptNode> Parser::makeKeptNode(TokenBuffer& tokens, Index start, Index end, bool isMacro) {
    auto node = makeVerbatimNode(tokens, start, end);
    kept_.push_back({node->start(), node->end(), isMacro});
    return node;
}

std::unique_ptr<KeptNode> Parser::makeVerbatimNode(TokenBuffer& tokens, Index start, Index end) {
    TokenText text;
    tokens.moveTo(start);
    while (tokens.place() < end) {
        const Token token = tokens.next();
        if (isTrivia(token.kind) && text.empty()) continue;
        text.add(token);
    }
    return text.makeLeaf<KeptNode>();
}

// `using …;`, `namespace a = b;`. Where nothing is kept it has no node, but for the comments in it when they are
// wanted.
void Parser::addAlias(TokenBuffer& tokens, InteriorNode& list, InteriorNode* comments) {
    const Index start = tokens.place();
    Index place = start;
    const auto ends = [&] {
        const int kind = tokens.kindAt(place);
        return kind == Semicolon || kind == CloseBrace || endsTokens(kind);
    };
    while (!ends()) place = view(tokens).behind(place);
    const bool isWhole = keepsUnrecognized_ && tokens.kindAt(place) == Semicolon;
    if (isWhole && tokens.kindAt(start) == KeywordUsing && isNamespaceAlias(tokens)) {
        list.add(parseExprStmt(tokens));
    } else if (isWhole) {
        list.add(makeVerbatimNode(tokens, start, place + 1));
    } else {
        skipStatement(tokens, Semicolon, comments);
    }
}

}  // namespace Cpp
