// Control statements: the parts of each, their heads and their bodies.

#include <utility>

#include "cpp/parser.h"
#include "cpp/parser_messages.h"
#include "cpp/parser_nesting.h"
#include "cpp/token_kind.h"
#include "cpp/token_sets.h"

namespace Cpp {

namespace {

bool hasCondition(int keyword) {
    switch (keyword) {
        case KeywordIf:
        case KeywordFor:
        case KeywordWhile:
        case KeywordCatch:
        case KeywordSwitch:
            return true;
        default:
            return false;
    }
}

}  // namespace

// FOREACH(a, b) { c(); }, FOREACH(a, b) c();
std::unique_ptr<CtrlStmtNode> Parser::parseMacroCtrlStmt(TokenBuffer& tokens) {
    NestingScope nesting(depth_, tokens);
    const Token name = tokens.next();
    auto head = std::make_unique<CtrlSubStmtHeadNode>();
    head->setKeyword(std::make_unique<KeywordNode>(name.kind, name.start, name.end));
    if (peekSignificantKind(tokens) == OpenParen) {
        skipTrivia(tokens);
        if (auto condition = parseCondition(tokens, HeadOf::Macro)) {
            head->setEnd(condition->end());
            head->setCondition(std::move(condition));
        }
    }
    auto part = std::make_unique<CtrlSubStmtNode>();
    part->setHead(std::move(head));
    part->setBody(parseBody(tokens));
    auto statement = std::make_unique<CtrlStmtNode>();
    statement->add(std::move(part));
    return statement;
}

std::unique_ptr<CtrlStmtNode> Parser::parseCtrlStmt(TokenBuffer& tokens) {
    NestingScope nesting(depth_, tokens);
    skipTrivia(tokens);
    const Token keyword = tokens.current();
    if (!isControlKeyword(keyword.kind)) {
        report(keyword.start, ExpectedControlKeyword);
        return nullptr;
    }
    auto statement = std::make_unique<CtrlStmtNode>();
    if (keyword.kind == KeywordIf) {
        parseIfChain(tokens, *statement);
        return statement;
    }
    statement->add(parseCtrlSubStmt(tokens));
    const auto addPart = [&] {
        addTrivia(tokens, *statement);
        statement->add(parseCtrlSubStmt(tokens));
    };
    switch (keyword.kind) {
        case KeywordTry:
            while (peekSignificantKind(tokens) == KeywordCatch) addPart();
            break;
        case KeywordDo:
            addBranches(tokens, *statement);
            addPart();
            break;
        default:
            break;
    }
    return statement;
}

// do
// #ifdef A
//     b();
// #else
//     c();
// #endif
// while (d);
void Parser::addBranches(TokenBuffer& tokens, CtrlStmtNode& statement) {
    auto* part = as<CtrlSubStmtNode>(statement.children().back().get());
    if (!keepsUnrecognized_ || !part || !part->body() || part->body()->hasBrackets()) return;
    while (tokens.peekKind() == Directive && peekSignificantKind(tokens) != KeywordWhile) {
        addTrivia(tokens, *part->body());
        const Index start = tokens.place();
        parseSingleStatement(tokens, *part->body());
        if (tokens.place() == start) return;
    }
}

// An "if" with its "else". Where that goes on with an "if", which is a statement inside the "else", the loop
// goes on with that statement, so that long chains do not nest calls.
void Parser::parseIfChain(TokenBuffer& tokens, CtrlStmtNode& first) {
    ChainScope chain(chainDepth_);
    CtrlStmtNode* statement = &first;
    while (true) {
        statement->add(parseCtrlSubStmt(tokens));
        if (peekSignificantKind(tokens) != KeywordElse) return;
        addTrivia(tokens, *statement);
        auto part = std::make_unique<CtrlSubStmtNode>();
        part->setHead(parseCtrlHead(tokens));
        if (peekSignificantKind(tokens) != KeywordIf) {
            part->setBody(parseBody(tokens));
            statement->add(std::move(part));
            return;
        }
        skipTrivia(tokens);
        chain.extend(tokens);
        auto body = std::make_unique<BlockNode>();
        auto inner = std::make_unique<CtrlStmtNode>();
        CtrlStmtNode* const outer = std::exchange(statement, inner.get());
        body->add(std::move(inner));
        part->setBody(std::move(body));
        outer->add(std::move(part));
    }
}

std::unique_ptr<CtrlSubStmtNode> Parser::parseCtrlSubStmt(TokenBuffer& tokens) {
    auto head = parseCtrlHead(tokens);
    if (!head) return nullptr;
    auto part = std::make_unique<CtrlSubStmtNode>();
    if (head->keyword()->keyword() == KeywordWhile && peekSignificantKind(tokens) == Semicolon) {
        head->setEnd(skipToSemicolon(tokens));
        part->setHead(std::move(head));
        return part;
    }
    part->setHead(std::move(head));
    part->setBody(parseBody(tokens));
    return part;
}

// Null when nothing stands where the body should, as in "else }".
std::unique_ptr<BlockNode> Parser::parseBody(TokenBuffer& tokens) {
    auto body = parseBlock(tokens);
    return Trn::isSet(body->start()) ? std::move(body) : nullptr;
}

std::unique_ptr<CtrlSubStmtHeadNode> Parser::parseCtrlHead(TokenBuffer& tokens) {
    skipTrivia(tokens);
    const Token keyword = tokens.next();
    if (!isControlKeyword(keyword.kind)) {
        tokens.stepBack();
        report(keyword.start, ExpectedControlKeyword);
        return nullptr;
    }
    const Position keywordEnd = hasCondition(keyword.kind) ? takeHeadWords(tokens, keyword.end) : keyword.end;
    auto head = std::make_unique<CtrlSubStmtHeadNode>();
    head->setKeyword(std::make_unique<KeywordNode>(keyword.kind, keyword.start, keywordEnd));
    if (!hasCondition(keyword.kind)) {
        takeAttribute(tokens, *head);
        return head;
    }
    if (peekSignificantKind(tokens) == OpenBrace) return head;
    if (const Token open = peekSignificant(tokens); open.kind != OpenParen) {
        report(open.start, ExpectedOpenParen);
        return head;
    }
    skipTrivia(tokens);
    auto condition = parseCondition(tokens);
    if (!condition) return nullptr;
    head->setEnd(condition->end());
    head->setCondition(std::move(condition));
    takeAttribute(tokens, *head);
    return head;
}

// `if (a) [[likely]]`, `else [[unlikely]]`
void Parser::takeAttribute(TokenBuffer& tokens, CtrlSubStmtHeadNode& head) {
    const Index attribute = links_.significant(tokens.place());
    if (!view(tokens).opensAttribute(attribute)) return;
    const Index close = links_.closing(attribute);
    head.setEnd(tokens.at(close).end);
    tokens.moveTo(close + 1);
}

// The words between a keyword and its "(", as in `if constexpr (a)`, `for each (…)`, or in front of the body, as in
// `if consteval {`. Returns where they end.
Trn::Position Parser::takeHeadWords(TokenBuffer& tokens, Position end) {
    const TokenView look = view(tokens);
    Index place = links_.significant(tokens.place());
    Index last = TokenLinks::kNone;
    for (; tokens.kindAt(place) == Identifier || tokens.kindAt(place) == Exclamation; place = look.next(place)) {
        last = place;
    }
    const int kind = tokens.kindAt(place);
    if (last == TokenLinks::kNone) return end;
    const bool isWithoutCondition = kind == OpenBrace && tokens.at(last).text == "consteval";
    if (kind != OpenParen && !isWithoutCondition) return end;
    tokens.moveTo(last + 1);
    return tokens.at(last).end;
}

}  // namespace Cpp
