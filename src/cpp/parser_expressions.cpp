// Expressions, which stay text, and the blocks that stand in them:
//
//     run([&](int a) { return a; });        the text, with one body
//     a = ({ int b = c(); b; });

#include <algorithm>
#include <utility>

#include "cpp/expression_text.h"
#include "cpp/parser.h"
#include "cpp/parser_messages.h"
#include "cpp/parser_nesting.h"
#include "cpp/parser_scopes.h"
#include "cpp/token_kind.h"
#include "cpp/token_sets.h"
#include "cpp/words.h"

namespace Cpp {

namespace {

constexpr std::string_view kRequires = "requires";

// Behind an operand a "[" is an index.
bool endsOperand(int kind) {
    switch (kind) {
        case Identifier:
        case Number:
        case StringLiteral:
        case CharLiteral:
        case CloseParen:
        case CloseBracket:
        case CloseBrace:
        case KeywordThis:
        case KeywordOperator:
        case KeywordNew:
        case KeywordDelete: return true;
        default: return isTypeWord(kind);  // new int[2]{1, 2}
    }
}

// An operator, but those that may also be the mark of a type, or of one operand, or brackets.
bool joinsOperands(int kind) {
    switch (kind) {
        case Increment:
        case Decrement:
        case Asterisk:
        case Ampersand:
        case OpenBracket:
        case CloseBracket: return false;
        default: return kind >= Assign && kind <= ArrowAsterisk;
    }
}

// Behind which no statement ends. A ">" may be the end of a type.
bool awaitsOperand(int kind) {
    return kind == Comma || kind == KeywordReturn || (joinsOperands(kind) && kind != Greater && kind != ShiftRight);
}

// With which no statement begins, but for signs that nobody begins one with.
bool onlyContinues(int kind) {
    return kind == Semicolon || (joinsOperands(kind) && kind != Exclamation && kind != Tilde);
}

// A token that cannot stand inside the parentheses of a control statement's head.
bool breaksCondition(int kind) {
    switch (kind) {
        case Trn::kEndKind:
        case CloseBrace:
        case KeywordNamespace:
        case KeywordCase:
        case KeywordDefault:
        case KeywordContinue:
        case KeywordBreak:
        case KeywordGoto:
        case KeywordReturn: return true;
        default: return isControlKeyword(kind);
    }
}

}  // namespace

// The token that is next, with all up to the bracket that closes it, unless a literal that does not end comes first.
void Parser::takeToken(TokenBuffer& tokens, Expression& expression) {
    skipTrivia(tokens);
    const Index here = tokens.place();
    const Index close = links_.closing(here);
    if (close == TokenLinks::kNone) {
        expression.add(tokens.next(), here);
    } else {
        takeGroup(tokens, close, expression);
    }
}

void Parser::takeGroup(TokenBuffer& tokens, Index close, Expression& expression) {
    while (tokens.place() <= close) {
        skipTrivia(tokens);
        const Index here = tokens.place();
        const int kind = tokens.kindAt(here);
        if (kind == Unknown) return;
        if (kind == OpenBracket || kind == Identifier) noteBody(tokens, expression);
        if (kind == OpenBrace && takeBody(tokens, expression)) continue;
        expression.add(tokens.next(), here);
        if (expression.text.isStretch()) takeRun(tokens, close + 1, expression);
    }
}

// Takes all tokens of the source that follow each other, in front of the place, but for those that tell of bodies.
void Parser::takeRun(TokenBuffer& tokens, Index end, Expression& expression) const {
    const Index first = tokens.place();
    const Index behind = tokens.endOfPieces(end, [&](Index place) { return mayConcernBodies(tokens, place); });
    if (behind == first) return;
    expression.widen(tokens.at(behind - 1), behind, behind - first);
    tokens.moveTo(behind);
}

bool Parser::mayConcernBodies(const TokenBuffer& tokens, Index place) const {
    switch (const int kind = tokens.kindAt(place)) {
        case Unknown:
        case OpenBracket:
        case OpenBrace:
        case KeywordTemplate: return true;
        case Identifier: return tokens.lengthAt(place) == kRequires.size();
        default: return isTrivia(kind);
    }
}

// At a "[" of a lambda, or at "requires", notes where its body will be.
void Parser::noteBody(const TokenBuffer& tokens, Expression& expression) const {
    const Token token = tokens.current();
    if (token.kind == Identifier && token.text == kRequires && keepsUnrecognized_) {
        const TokenView look = view(tokens);
        Index place = look.next(tokens.place());
        if (tokens.kindAt(place) == OpenParen) place = look.behind(place);
        if (tokens.kindAt(place) == OpenBrace) expression.requirements = place;
    }
    if (token.kind != OpenBracket) return;
    if (expression.previous != TokenLinks::kNone && endsOperand(tokens.kindAt(expression.previous))) return;
    if (const auto body = heads(tokens).lambdaBody(tokens.place())) expression.lambdas.push_back(*body);
}

// At a "{": takes the block that begins here. Says false when it holds values.
bool Parser::takeBody(TokenBuffer& tokens, Expression& expression) {
    const Index open = tokens.place();
    const Index close = links_.closing(open);
    if (close == TokenLinks::kNone) return false;
    const bool holdsRequirements = expression.requirements == open;
    const bool isExpected = !holdsRequirements && expression.expectsBodyAt(open);
    if (isExpected) expression.lambdas.pop_back();
    if (!holdsRequirements && !isExpected) {
        const bool isFirst = expression.previous == TokenLinks::kNone;
        const int before = isFirst ? Trn::kEndKind : tokens.kindAt(expression.previous);
        const bool isArgument = before == OpenParen || before == Comma;
        if (!isArgument || !links_.holdsStatements(open)) return false;
    }
    const Token brace = tokens.current();
    expression.bodies.add(holdsRequirements ? parseRequirements(tokens) : parseBlock(tokens));
    expression.add(brace, open);
    expression.add(tokens.at(close), close);
    return true;
}

// What stands in the braces of a requires-expression: each is a text of its own.
std::unique_ptr<BlockNode> Parser::parseRequirements(TokenBuffer& tokens) {
    NestingScope nesting(depth_, tokens);
    auto block = std::make_unique<BlockNode>();
    const Index close = links_.closing(tokens.place());
    block->setStart(tokens.next().start);
    while (tokens.place() < close) {
        if (isTrivia(tokens.peekKind())) {
            addTrivia(tokens, *block);
            continue;
        }
        Index end = tokens.place();
        while (end < close && tokens.kindAt(end) != Semicolon) end = view(tokens).behind(end);
        TokenText requirement;
        addThrough(tokens, std::min(end + 1, close), requirement);
        block->add(requirement.makeLeaf<ExprNode>());
    }
    block->setEnd(tokens.next().start);
    return block;
}

// A statement that is no declaration, down to its ";". Null when nothing of one stands here.
std::unique_ptr<ExprNode> Parser::parseExprStmt(TokenBuffer& tokens) {
    skipTrivia(tokens);
    Expression statement(Expression::Form::Statement);
    while (true) {
        const bool mayEnd = tokens.peekKind() == Directive || tokens.peekKind() == UnreadBlock;
        if (isTrivia(tokens.peekKind()) && (!mayEnd || goesOn(tokens, statement))) {
            isComplete(tokens.next());
            continue;
        }
        const Token token = tokens.current();
        if (token.kind == Semicolon) {
            statement.text.addEnd(token);
            tokens.next();
            return statement.makeLeaf();
        }
        if (endsTokens(token.kind)) {
            const bool isEmpty = statement.previous == TokenLinks::kNone;
            report(isEmpty ? token.start : tokens.at(statement.previous).start, UnexpectedEnd);
            return statement.makeLeaf();
        }
        noteBody(tokens, statement);
        if (endsExpression(tokens, statement)) return statement.makeLeaf();
        if (token.kind == OpenBrace && takeBody(tokens, statement)) continue;
        takeToken(tokens, statement);
    }
}

// At a directive outside of brackets, which ends a statement: whether the statement goes on behind it all the same, for
// an operand is to come, or an operator that no statement begins with.
bool Parser::goesOn(const TokenBuffer& tokens, const Expression& statement) const {
    if (!keepsUnrecognized_ || statement.previous == TokenLinks::kNone) return false;
    if (awaitsOperand(tokens.kindAt(statement.previous))) return true;
    return onlyContinues(tokens.kindAt(links_.significant(tokens.place())));
}

// Whether the next token, outside of brackets, belongs to another statement.
bool Parser::endsExpression(const TokenBuffer& tokens, const Expression& statement) const {
    const int kind = tokens.peekKind();
    const bool isFirst = statement.previous == TokenLinks::kNone;
    const int before = isFirst ? Trn::kEndKind : tokens.kindAt(statement.previous);
    switch (kind) {
        case Directive:
        case UnreadBlock:
        case CloseBrace:
        case KeywordCase:
        case KeywordDefault: return true;
        case OpenBrace:
            return !statement.expectsBodyAt(tokens.place()) &&
                   (isFirst || !items(tokens).holdsValues(tokens.place(), statement.previous));
        case KeywordThrow:
        case KeywordReturn: return !isFirst;
        case KeywordClass:
        case KeywordStruct: return !statement.sawTemplate && before != KeywordNew && before != Assign;
        default: return isControlKeyword(kind);
    }
}

// From "(" to the ")" that closes it. A macro's may hold the head of a statement:  IF_FEATURE(if (a))
std::unique_ptr<ExprNode> Parser::parseCondition(TokenBuffer& tokens, HeadOf head) {
    const Position start = tokens.current().start;
    const Index close = links_.closing(tokens.place());
    const bool takesKeywords = head == HeadOf::Macro && close != TokenLinks::kNone;
    Expression condition;
    while (tokens.place() <= close) {
        skipTrivia(tokens);
        const Index here = tokens.place();
        const Token token = tokens.current();
        const bool breaks = breaksCondition(token.kind) && !takesKeywords;
        if (breaks || (token.kind == OpenBrace && links_.closing(here) == TokenLinks::kNone) ||
            (token.kind == OpenBrace && close == TokenLinks::kNone)) {
            report(token.start, ExpectedCloseParen);
            return nullptr;
        }
        noteBody(tokens, condition);
        if (token.kind != OpenBrace) {
            condition.add(tokens.next(), here);
        } else if (!takeBody(tokens, condition)) {
            takeGroup(tokens, links_.closing(here), condition);
        }
    }
    auto node = std::make_unique<ExprNode>(LeafText(), start, condition.text.end());
    node->setBodies(std::move(condition.bodies));
    return node;
}

}  // namespace Cpp
