// Classes, structs and unions with their base clauses and access labels; enums.

#include <utility>

#include "cpp/parser.h"
#include "cpp/parser_messages.h"
#include "cpp/parser_nesting.h"
#include "cpp/parser_scopes.h"
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

// Whether what is next declares a member of the class or enumeration in front: `enum { A } state : 8;`.
bool goesOnBehindBody(const Trn::TokenBuffer& tokens, ClassBodyNode& body) {
    const bool isBehindBrace = tokens.place() > 0 && tokens.kindAt(tokens.place() - 1) == CloseBrace;
    if (!isBehindBrace || body.size() == 0) return false;
    const SyntaxNode* last = std::prev(body.childEnd())->get();
    return as<EnumDeclNode>(last) || as<ClassDeclNode>(last);
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
    const std::string_view name = declaredClassName(tokens);
    auto head = parseClassHead(tokens);
    skipTrivia(tokens);
    std::unique_ptr<ClassBodyNode> body;
    if (tokens.peekKind() == OpenBrace) {
        const std::string_view outerName = std::exchange(className_, name);
        body = parseClassBody(tokens);
        className_ = outerName;
    }
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

// `CLASS_OF_1(A, Base) int a; };`: the macro is the head and has the "{", and its first argument is the name.
std::unique_ptr<ClassDeclNode> Parser::parseMacroClass(TokenBuffer& tokens, Index start, Index last) {
    const TokenView look = view(tokens);
    const Token argument = tokens.at(look.next(look.next(start)));
    TokenText words;
    tokens.moveTo(start);
    addThrough(tokens, last, words);
    words.add(tokens.current());
    const Position first = words.start();
    const Position end = words.end();
    auto name = std::make_unique<ClassNameNode>(ClassNameNode::kClass, words.take(), first, end);
    const std::string_view outerName = std::exchange(className_, argument.text);
    auto body = parseClassBody(tokens);
    body->setStart(end);
    className_ = outerName;
    return std::make_unique<ClassDeclNode>(std::make_unique<ClassHeadNode>(std::move(name), nullptr), std::move(body));
}

// The last name in front of the base clauses or the body, outside of brackets; "final" is none.
std::string_view Parser::declaredClassName(const TokenBuffer& tokens) const {
    std::string_view name;
    const TokenView look = view(tokens);
    for (Index place = links_.significant(tokens.place());; place = look.behind(place)) {
        const Token token = tokens.at(place);
        if (token.kind == Colon || token.kind == OpenBrace || token.kind == Trn::kEndKind) return name;
        if (token.kind == Identifier && token.text != "final") name = token.text;
    }
}

// The words up to the base clauses or the body, with a template's arguments, attributes and macros.
std::unique_ptr<ClassNameNode> Parser::parseClassName(TokenBuffer& tokens) {
    TokenText name;
    int classKey = -1;
    while (true) {
        const Token token = tokens.current();
        if (token.kind == Colon || token.kind == OpenBrace || token.kind == Semicolon || endsTokens(token.kind)) {
            break;
        }
        if (isTrivia(token.kind)) {
            if (isComplete(tokens.next()) && (token.kind == Directive || token.kind == UnreadBlock)) name.add(token);
            continue;
        }
        const Index close = links_.closing(tokens.place());
        if (close != TokenLinks::kNone) {
            // A macro's argument may be the key: `ALIGNED(struct) A {`.
            const int inside = tokens.kindAt(view(tokens).next(tokens.place()));
            if (classKey < 0 && token.kind == OpenParen && isClassKey(inside)) classKey = classKeyNumber(inside);
            addThrough(tokens, close + 1, name);
            continue;
        }
        if (isClassKey(token.kind)) classKey = classKeyNumber(token.kind);
        name.add(token);
        tokens.next();
    }
    if (classKey < 0 && hasMacroKey(tokens, name.size() > 1)) classKey = classKeyNumber(KeywordClass);
    if (classKey < 0) {
        report(name.empty() ? tokens.current().end : name.end(),
               "Expected an identifier for the class name.");
        return nullptr;
    }
    // A text may begin with the bases of a class whose name is elsewhere.
    const Position colon = tokens.current().start;
    const Position start = name.empty() ? colon : name.start();
    const Position end = name.empty() ? colon : name.end();
    return std::make_unique<ClassNameNode>(classKey, name.take(), start, end);
}

// Whether a macro stands for the class key in front of the bases or the body: `INTERFACE A {`, `INTERFACE A : B {`.
// One that is all there is, `INTERFACE(A) : public B {`, is told by the access keyword.
bool Parser::hasMacroKey(const TokenBuffer& tokens, bool isNamed) const {
    const bool makesClass = items(tokens).makesClass(tokens.place());
    const bool hasBases = keepsUnrecognized_ && tokens.peekKind() == Colon;
    return isNamed ? makesClass || hasBases : makesClass && hasBases;
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
    while (true) {
        skipTrivia(tokens);
        const Token token = tokens.current();
        if (token.kind == OpenBrace || endsTokens(token.kind)) {
            if (token.kind == Unknown) tokens.next();
            break;
        }
        const Index close = links_.closing(tokens.place());
        if (close != TokenLinks::kNone) {
            addThrough(tokens, close + 1, name);
            continue;
        }
        // Bases in the branches of a conditional group.
        if (keepsUnrecognized_ && access != 0 && isAccessKeyword(token.kind)) break;
        tokens.next();
        if (token.kind == Comma) break;
        const bool isInName = token.kind == Identifier || token.kind == Dot || token.kind == KeywordTypename ||
                              token.kind == KeywordTemplate;
        if (isInName) {
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
        } else if (!keepsUnrecognized_) {
            report(token.start, "Unexpected Token: \"" + shown(token) + "\"");
        }
    }
    if (!Trn::isSet(name.start())) return nullptr;
    const Position start = name.start();
    const Position end = name.end();
    return std::make_unique<BaseClauseNode>(access, isVirtual, name.take(), start, end);
}

std::unique_ptr<ClassBodyNode> Parser::parseClassBody(TokenBuffer& tokens) {
    const auto takeOther = [&](const Token& token, ClassBodyNode& body) {
        if (token.kind == KeywordUsing) {
            addAlias(tokens, body, &body);
        } else if (token.kind == KeywordNamespace) {
            report(token.start, "Namespace declaration illegal inside class declaration.");
            skipStatement(tokens, Semicolon);
        } else {
            return false;
        }
        return true;
    };
    return parseItems<ClassBodyNode>(tokens, takeOther, [&](ClassBodyNode& body) { parseMember(tokens, body); });
}

void Parser::parseMember(TokenBuffer& tokens, ClassBodyNode& body) {
    if (isAccessKeyword(tokens.peekKind()) || (isAccessLabel(tokens) && !goesOnBehindBody(tokens, body))) {
        body.add(parseAccessSpec(tokens));
    } else {
        addDeclaration(tokens, body, Scope::Class);
    }
}

// A name with a ":" behind it; the macros that stand for "public" have it.
bool Parser::isAccessLabel(const TokenBuffer& tokens) const {
    return tokens.peekKind() == Identifier && tokens.kindAt(view(tokens).next(tokens.place())) == Colon;
}

std::unique_ptr<AccessSpecNode> Parser::parseAccessSpec(TokenBuffer& tokens) {
    const Token word = tokens.next();
    while (isAccessKeyword(word.kind) && peekSignificantKind(tokens) == Identifier) {
        nextSignificant(tokens);
        if (peekSignificantKind(tokens) == OpenParen) skipBracketed(tokens);
    }
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
            if (isComplete(tokens.next()) && (token.kind == Directive || token.kind == UnreadBlock)) name.add(token);
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
    BodyScope scope(*this);
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
        if (isTagKey(token.kind)) {
            report(token.start, "Expected \"}\" first to close enum declaration.");
            return body;
        }
        body->add(parseEnumerator(tokens));
    }
}

// One enumerator; the "," after it is taken but lies outside the node, which is null for a lone ",".
std::unique_ptr<ExprNode> Parser::parseEnumerator(TokenBuffer& tokens) {
    TokenText text;
    while (true) {
        // What stands behind the last enumerator is the body's, not its own.
        const Token token = peekSignificant(tokens);
        if (token.kind == CloseBrace || token.kind == Trn::kEndKind || isClassKey(token.kind) ||
            token.kind == KeywordEnum) {
            break;
        }
        skipTrivia(tokens);
        const Index close = links_.closing(tokens.place());
        if (close != TokenLinks::kNone) {
            addThrough(tokens, close + 1, text);
            continue;
        }
        tokens.next();
        if (token.kind == Comma) break;
        text.add(token);
    }
    return text.makeLeaf<ExprNode>();
}

}  // namespace Cpp
