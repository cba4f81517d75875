// Comments, directives and regions; and tokens that are taken, or passed over, up to some place.

#include "cpp/parser.h"
#include "cpp/parser_messages.h"
#include "cpp/token_kind.h"
#include "cpp/token_sets.h"
#include "cpp/words.h"

namespace Cpp {

// A region without its end is reported wherever it is met.
bool Parser::isComplete(const Token& trivia) {
    if (trivia.kind != OpenRegion) return true;
    report(trivia.end, UnexpectedEnd);
    return false;
}

std::unique_ptr<PreprocDirectiveNode> Parser::makeDirectiveNode(TokenBuffer& tokens) {
    const Token token = tokens.next();
    LeafText text = token.kind == UnreadBlock ? LeafText() : LeafText(token);
    return std::make_unique<PreprocDirectiveNode>(std::move(text), token.start, token.end);
}

std::unique_ptr<CommentNode> Parser::makeCommentNode(TokenBuffer& tokens) {
    const Token token = tokens.next();
    const bool isProtected = token.kind == ProtectedRegion;
    LeafText text = isProtected ? LeafText() : LeafText(token);
    auto node = std::make_unique<CommentNode>(std::move(text), token.start, token.end);
    node->setProtectedRegion(isProtected);
    return node;
}

void Parser::skipTrivia(TokenBuffer& tokens) {
    const Index place = links_.significant(tokens.place());
    if (place == tokens.place()) return;
    isComplete(tokens.at(place - 1));
    tokens.moveTo(place);
}

void Parser::addTrivia(TokenBuffer& tokens, InteriorNode& list) {
    while (isTrivia(tokens.peekKind())) {
        switch (tokens.peekKind()) {
            case Directive:
            case UnreadBlock: list.add(makeDirectiveNode(tokens)); break;
            case OpenRegion: isComplete(tokens.next()); break;
            default: list.add(makeCommentNode(tokens));
        }
    }
}

Trn::Token Parser::peekSignificant(const TokenBuffer& tokens) const {
    return tokens.at(links_.significant(tokens.place()));
}

// The next token that is no comment or directive, taken with those before it.
Trn::Token Parser::nextSignificant(TokenBuffer& tokens) {
    skipTrivia(tokens);
    return tokens.next();
}

// Moves behind the bracket that closes the one at the current place. Says false where there is none.
bool Parser::skipBracketed(TokenBuffer& tokens) {
    const Index close = links_.closing(tokens.place());
    if (close == TokenLinks::kNone) return false;
    tokens.moveTo(close + 1);
    return true;
}

// Whether the parentheses belong to the word in front of them, as those of "decltype" do.
bool Parser::isArgumentOf(const TokenBuffer& tokens, Index openParen, Index previous) const {
    return previous != TokenLinks::kNone && tokens.kindAt(openParen) == OpenParen &&
           takesArgument(tokens.at(previous));
}

// Adds all tokens of the source that follow each other, in front of the place.
void Parser::addRun(TokenBuffer& tokens, Index end, TokenText& text) {
    const Index first = tokens.place();
    const Index behind = tokens.endOfPieces(end, [&](Index place) { return isTrivia(tokens.kindAt(place)); });
    if (behind == first) return;
    text.widen(tokens.at(behind - 1), behind - first, LeafText::Form::Joined);
    tokens.moveTo(behind);
}

// Adds the tokens in front of the place.
void Parser::addThrough(TokenBuffer& tokens, Index end, TokenText& text) {
    skipTrivia(tokens);
    while (tokens.place() < end && tokens.peekKind() != Trn::kEndKind) {
        text.add(tokens.next());
        if (text.isStretch()) addRun(tokens, end, text);
        skipTrivia(tokens);
    }
}

// Takes tokens up to a ";" and returns its start; at the end of the text, that of the last token.
Trn::Position Parser::skipToSemicolon(TokenBuffer& tokens) {
    Position previous;
    while (true) {
        const Token token = nextSignificant(tokens);
        if (token.kind == Semicolon) return token.start;
        if (endsTokens(token.kind)) {
            report(previous, UnexpectedEnd);
            tokens.stepBack();
            return previous;
        }
        previous = token.start;
    }
}

// Takes tokens up to and including the first of the kind, making no nodes but of the comments that the caller
// wants to keep.
void Parser::skipStatement(TokenBuffer& tokens, int kind, InteriorNode* comments) {
    while (true) {
        if (comments && isComment(tokens.peekKind())) {
            comments->add(makeCommentNode(tokens));
            continue;
        }
        skipTrivia(tokens);
        if (tokens.peekKind() == OpenBrace && skipBracketed(tokens)) continue;
        const Token token = tokens.next();
        if (token.kind == kind) return;
        if (token.kind == Trn::kEndKind) {
            tokens.stepBack();
            report(token.start, UnexpectedEnd);
            return;
        }
    }
}

// Takes tokens up to and including the first of the kind. Reports the end of the text and says false when it
// comes first.
bool Parser::collectUntilKind(TokenBuffer& tokens, int kind) {
    while (true) {
        const Token token = nextSignificant(tokens);
        if (token.kind == kind) return true;
        if (token.kind == Trn::kEndKind) {
            tokens.stepBack();
            report(token.start, UnexpectedEnd);
            return false;
        }
    }
}

}  // namespace Cpp
