// Comments, directives and the regions that they fence.

#include <string_view>

#include "cpp/comment_text.h"
#include "cpp/parser.h"
#include "cpp/parser_messages.h"
#include "cpp/token_kind.h"
#include "cpp/token_sets.h"

namespace Cpp {

namespace {

constexpr std::string_view kRegionOff = "VANTREL-OFF";
constexpr std::string_view kRegionOn = "VANTREL-ON";

constexpr bool isBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

// Whether a directive's text begins with `start` once its white space is taken out.
bool directiveStartsWith(std::string_view text, std::string_view start) {
    for (const char c : text) {
        if (isBlank(c)) continue;
        if (c != start.front()) return false;
        start.remove_prefix(1);
        if (start.empty()) return true;
    }
    return false;
}

bool opensUnusedBlock(const Trn::Token& token) {
    return token.kind == Directive && directiveStartsWith(token.text, "#if0");
}

bool opensProtectedRegion(const Trn::Token& token) {
    return isComment(token.kind) && trimmedCommentBody(token.text) == kRegionOff;
}

// How a token inside a `#if 0` block changes the depth of conditionals.
int unusedBlockStep(const Trn::Token& token) {
    if (token.kind != Directive) return 0;
    if (directiveStartsWith(token.text, "#if")) return 1;
    return directiveStartsWith(token.text, "#endif") ? -1 : 0;
}

int protectedRegionStep(const Trn::Token& token) {
    if (!isComment(token.kind)) return 0;
    const std::string_view body = trimmedCommentBody(token.text);
    if (body.starts_with(kRegionOff)) return 1;
    return body == kRegionOn ? -1 : 0;
}

// Moves behind the region that has just been opened. Returns its last token, of kEndKind when there is none.
Trn::Token skipRegion(Trn::TokenBuffer& tokens, int (*step)(const Trn::Token&)) {
    int depth = 1;
    while (true) {
        Trn::Token token = tokens.next();
        if (token.kind == Trn::kEndKind) return token;
        depth += step(token);
        if (depth == 0) return token;
    }
}

}  // namespace

Parser::Trivia Parser::takeTrivia(TokenBuffer& tokens) {
    Trivia trivia;
    trivia.token = tokens.next();
    trivia.end = trivia.token.end;
    Token last;
    if (opensUnusedBlock(trivia.token)) {
        last = skipRegion(tokens, unusedBlockStep);
    } else if (opensProtectedRegion(trivia.token)) {
        last = skipRegion(tokens, protectedRegionStep);
    } else {
        return trivia;
    }
    trivia.isRegion = true;
    trivia.isComplete = last.kind != Trn::kEndKind;
    trivia.end = last.end;
    if (!trivia.isComplete) tokens.stepBack();
    return trivia;
}

std::unique_ptr<PreprocDirectiveNode> Parser::makeDirectiveNode(TokenBuffer& tokens) {
    const Trivia trivia = takeTrivia(tokens);
    if (!trivia.isComplete) {
        report(trivia.end, UnexpectedEnd);
        return nullptr;
    }
    std::string text = trivia.isRegion ? std::string() : std::string(trivia.token.text);
    return std::make_unique<PreprocDirectiveNode>(std::move(text), trivia.token.start, trivia.end);
}

std::unique_ptr<CommentNode> Parser::makeCommentNode(TokenBuffer& tokens) {
    if (const Token token = tokens.current(); !isComment(token.kind)) {
        tokens.next();
        report(token.start, "Expected '// or /*'. Got: " + shown(token));
        return nullptr;
    }
    const Trivia trivia = takeTrivia(tokens);
    if (!trivia.isComplete) {
        report(trivia.end, UnexpectedEnd);
        return nullptr;
    }
    std::string text = trivia.isRegion ? std::string() : std::string(trivia.token.text);
    auto node = std::make_unique<CommentNode>(std::move(text), trivia.token.start, trivia.end);
    node->setProtectedRegion(trivia.isRegion);
    return node;
}

void Parser::skipTrivia(TokenBuffer& tokens) {
    while (isTrivia(tokens.peekKind())) {
        const Trivia trivia = takeTrivia(tokens);
        if (!trivia.isComplete) report(trivia.end, UnexpectedEnd);
    }
}

void Parser::addTrivia(TokenBuffer& tokens, InteriorNode& list) {
    while (isTrivia(tokens.peekKind())) {
        if (tokens.peekKind() == Directive) {
            list.add(makeDirectiveNode(tokens));
        } else {
            list.add(makeCommentNode(tokens));
        }
    }
}

// Many constructs may look over the same run of comments, each from its own end on.
Trn::Token Parser::peekSignificant(TokenBuffer& tokens) {
    if (!isTrivia(tokens.peekKind())) return tokens.current();
    const Index start = tokens.place();
    if (start >= triviaBegin_ && start < triviaEnd_) {
        tokens.moveTo(triviaEnd_);
    } else {
        triviaBegin_ = start;
    }
    while (isTrivia(tokens.peekKind())) takeTrivia(tokens);
    triviaEnd_ = tokens.place();
    Token token = tokens.current();
    tokens.moveTo(start);
    return token;
}

// The next token that is no comment or directive, taken with those before it.
Trn::Token Parser::nextSignificant(TokenBuffer& tokens) {
    skipTrivia(tokens);
    return tokens.next();
}

// Moves behind the bracket that closes the one at the current place. Says false at the end of the text.
bool Parser::skipBracketed(TokenBuffer& tokens, int open, int close) {
    int depth = 0;
    do {
        if (isTrivia(tokens.peekKind())) {
            skipTrivia(tokens);
            continue;
        }
        const int kind = tokens.peekKind();
        if (kind == Trn::kEndKind) return false;
        if (kind == open) ++depth;
        if (kind == close) --depth;
        tokens.next();
    } while (depth > 0);
    return true;
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
