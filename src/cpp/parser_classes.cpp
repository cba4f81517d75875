// Classes, structs and unions with their base clauses and access labels; enums.

#include <utility>

#include "cpp/parser.h"
#include "cpp/parser_messages.h"
#include "cpp/parser_nesting.h"
#include "cpp/token_kind.h"
#include "cpp/token_sets.h"

namespace Cpp {

namespace {

// The class keys' numbers in a ClassNameNode.
int classKeyNumber(int kind) {
    switch (kind) {
        case KeywordStruct:
            return 1;
        case KeywordUnion:
            return 2;
        default:
            return 0;
    }
}

// The access keywords' numbers in an AccessSpecNode.
int accessLabelNumber(int kind) {
    constexpr int macroLabel = 4;
    switch (kind) {
        case KeywordPublic:
            return 1;
        case KeywordProtected:
            return 2;
        case KeywordPrivate:
            return 3;
        default:
            return macroLabel;
    }
}

// The access keywords' numbers in a BaseClauseNode.
int baseAccessNumber(int kind) {
    switch (kind) {
        case KeywordPublic:
            return 1;
        case KeywordProtected:
            return 2;
        case KeywordPrivate:
            return 3;
        default:
            return 0;
    }
}

}  // namespace

std::unique_ptr<ClassDeclNode> Parser::parseClassDecl(TokenBuffer& tokens) {
    auto head = parseClassHead(tokens);
    skipTrivia(tokens);
    std::unique_ptr<ClassBodyNode> body;
    if (tokens.peekKind() == OpenBrace) body = parseClassBody(tokens);
    if (!head) return nullptr;
    return std::make_unique<ClassDeclNode>(std::move(head), std::move(body));
}

std::unique_ptr<ClassHeadNode> Parser::parseClassHead(TokenBuffer& tokens) {
    auto name = parseClassName(tokens);
    skipTrivia(tokens);
    std::unique_ptr<BaseClauseListNode> bases;
    if (tokens.peekKind() == Colon) {
        tokens.next();
        bases = parseBaseClauseList(tokens);
    }
    if (!name) return nullptr;
    return std::make_unique<ClassHeadNode>(std::move(name), std::move(bases));
}

// The words up to the base clauses or the body, a template's arguments included.
std::unique_ptr<ClassNameNode> Parser::parseClassName(TokenBuffer& tokens) {
    TokenText name;
    int angleDepth = 0;
    int classKey = -1;
    while (true) {
        const Token token = tokens.current();
        if (token.kind == Colon || token.kind == OpenBrace || token.kind == Semicolon ||
            endsTokens(token.kind)) {
            break;
        }
        if (isComment(token.kind)) {
            takeTrivia(tokens);
            continue;
        }
        if (token.kind == Directive) {
            takeTrivia(tokens);
            name.add(token);
            continue;
        }
        if (token.kind == Less) ++angleDepth;
        if (token.kind == Greater && angleDepth > 0) --angleDepth;
        if (token.kind == ShiftRight && angleDepth > 1) angleDepth -= 2;
        if (isClassKey(token.kind) && angleDepth == 0) classKey = classKeyNumber(token.kind);
        name.add(token);
        tokens.next();
    }
    if (classKey < 0) {
        report(name.empty() ? tokens.current().end : name.end(),
               "Expected an identifier for the class name.");
        return nullptr;
    }
    const Position start = name.start();
    const Position end = name.end();
    return std::make_unique<ClassNameNode>(classKey, name.take(), start, end);
}

std::unique_ptr<BaseClauseListNode> Parser::parseBaseClauseList(TokenBuffer& tokens) {
    auto list = std::make_unique<BaseClauseListNode>();
    while (true) {
        addTrivia(tokens, *list);
        const Token token = tokens.current();
        if (token.kind == OpenBrace) return list;
        if (token.kind == Trn::kEndKind) {
            report(token.start, UnexpectedEnd);
            return list;
        }
        list->add(parseBaseClause(tokens));
    }
}

// One base class; the "," after it is taken but lies outside the node, which is null for a lone ",".
std::unique_ptr<BaseClauseNode> Parser::parseBaseClause(TokenBuffer& tokens) {
    TokenText name;
    int access = 0;
    bool isVirtual = false;
    int angleDepth = 0;
    while (true) {
        skipTrivia(tokens);
        const Token token = tokens.current();
        if (token.kind == OpenBrace || endsTokens(token.kind)) {
            if (token.kind == Unknown) tokens.next();
            break;
        }
        tokens.next();
        if (token.kind == Comma && angleDepth == 0) break;
        const bool wasInName = angleDepth > 0;
        if (token.kind == Less) ++angleDepth;
        if (token.kind == Greater && angleDepth > 0) --angleDepth;
        if (token.kind == ShiftRight && angleDepth > 1) angleDepth -= 2;
        if (wasInName || token.kind == Identifier || token.kind == Less) {
            name.add(token);
            continue;
        }
        name.extend(token);
        if (isAccessKeyword(token.kind)) {
            if (access != 0) {
                report(token.start, "Not expecting to find keyword \"" + std::string(token.text) + "\"");
            }
            access = baseAccessNumber(token.kind);
        } else if (token.kind == KeywordVirtual) {
            if (isVirtual) report(token.start, "Not expecting to find keyword \"virtual\"");
            isVirtual = true;
        } else {
            report(token.start, "Unexpected Token: \"" + shown(token) + "\"");
        }
    }
    if (!Trn::isSet(name.start())) return nullptr;
    const Position start = name.start();
    const Position end = name.end();
    return std::make_unique<BaseClauseNode>(access, isVirtual, name.take(), start, end);
}

std::unique_ptr<ClassBodyNode> Parser::parseClassBody(TokenBuffer& tokens) {
    const Token open = tokens.next();
    auto body = std::make_unique<ClassBodyNode>();
    body->setStart(open.start);
    while (true) {
        addTrivia(tokens, *body);
        const Token token = tokens.current();
        switch (token.kind) {
            case CloseBrace:
                tokens.next();
                body->setEnd(token.start);
                return body;
            case Trn::kEndKind:
                report(token.start, UnexpectedEnd);
                return body;
            case Unknown:
            case Semicolon:
                tokens.next();
                break;
            case KeywordUsing:
                skipStatement(tokens, Semicolon, body.get());
                break;
            case KeywordNamespace:
                report(token.start, "Namespace declaration illegal inside class declaration.");
                skipStatement(tokens, Semicolon);
                break;
            case KeywordPublic:
            case KeywordPrivate:
            case KeywordProtected:
                body->add(parseAccessSpec(tokens));
                break;
            case Identifier: {
                tokens.next();
                const bool isLabel = peekSignificant(tokens).kind == Colon;
                tokens.stepBack();
                if (isLabel) {
                    body->add(parseAccessSpec(tokens));
                } else {
                    addDeclaration(tokens, *body, InClass::Yes);
                }
                break;
            }
            default:
                addDeclaration(tokens, *body, InClass::Yes);
        }
    }
}

std::unique_ptr<AccessSpecNode> Parser::parseAccessSpec(TokenBuffer& tokens) {
    const Token word = tokens.next();
    if (isAccessKeyword(word.kind) && peekSignificant(tokens).kind == Identifier) nextSignificant(tokens);
    const Token colon = peekSignificant(tokens);
    if (colon.kind != Colon) {
        report(word.start, "Expected ':' Found: " + shown(word));
        return nullptr;
    }
    nextSignificant(tokens);
    return std::make_unique<AccessSpecNode>(accessLabelNumber(word.kind), word.start, colon.end);
}

std::unique_ptr<EnumDeclNode> Parser::parseEnumDecl(TokenBuffer& tokens) {
    auto head = parseEnumHead(tokens);
    skipTrivia(tokens);
    std::unique_ptr<EnumBodyNode> body;
    if (tokens.peekKind() == OpenBrace) body = parseEnumBody(tokens);
    if (!head) return nullptr;
    return std::make_unique<EnumDeclNode>(std::move(head), std::move(body));
}

std::unique_ptr<EnumHeadNode> Parser::parseEnumHead(TokenBuffer& tokens) {
    TokenText name;
    bool sawEnum = false;
    const Position first = tokens.current().start;
    while (true) {
        const Token token = tokens.current();
        if (token.kind == OpenBrace || token.kind == Semicolon || endsTokens(token.kind)) break;
        if (isTrivia(token.kind)) {
            takeTrivia(tokens);
            if (token.kind == Directive) name.add(token);
            continue;
        }
        sawEnum |= token.kind == KeywordEnum;
        name.add(token);
        tokens.next();
    }
    if (!sawEnum) {
        report(first, "Expected \"enum\".");
        return nullptr;
    }
    return name.makeLeaf<EnumHeadNode>();
}

std::unique_ptr<EnumBodyNode> Parser::parseEnumBody(TokenBuffer& tokens) {
    auto body = std::make_unique<EnumBodyNode>();
    body->setStart(tokens.next().start);
    while (true) {
        addTrivia(tokens, *body);
        const Token token = tokens.current();
        if (token.kind == CloseBrace) {
            tokens.next();
            body->setEnd(token.start);
            return body;
        }
        if (token.kind == Trn::kEndKind) {
            report(token.start, UnexpectedEnd);
            return body;
        }
        if (isClassKey(token.kind) || token.kind == KeywordEnum) {
            report(token.start, "Expected \"}\" first to close enum declaration.");
            return body;
        }
        body->add(parseEnumerator(tokens));
    }
}

// One enumerator; the "," after it is taken but lies outside the node, which is null for a lone ",".
std::unique_ptr<ExprNode> Parser::parseEnumerator(TokenBuffer& tokens) {
    TokenText text;
    int parenDepth = 0;
    while (true) {
        // What stands behind the last enumerator is the body's, not its own.
        const Token token = peekSignificant(tokens);
        if (token.kind == CloseBrace || token.kind == Trn::kEndKind || isClassKey(token.kind) ||
            token.kind == KeywordEnum) {
            break;
        }
        nextSignificant(tokens);
        if (token.kind == Comma && parenDepth == 0) break;
        if (token.kind == OpenParen) ++parenDepth;
        if (token.kind == CloseParen && parenDepth > 0) --parenDepth;
        text.add(token);
    }
    return text.makeLeaf<ExprNode>();
}

}  // namespace Cpp
