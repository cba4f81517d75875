// The level of declarations: what a file, a namespace or a linkage block holds, and the shape of each
// declaration.

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include "cpp/parser.h"
#include "cpp/parser_messages.h"
#include "cpp/parser_nesting.h"
#include "cpp/token_kind.h"
#include "cpp/token_sets.h"

namespace Cpp {

void Parser::parse(Trn::Lexer& lexer, Trn::SyntaxNode& root, std::list<Tessel::Diagnostic>& diagnostics) {
    diagnostics_ = diagnostics;
    depth_ = chainDepth_ = 0;
    triviaBegin_ = triviaEnd_ = noDeclarationBefore_ = noBraceBefore_ = 0;
    braces_.clear();
    TokenBuffer tokens(&lexer);
    RootNode tree;
    try {
        parseTopLevel(tokens, tree);
    } catch (const ParseEnded& ended) {
        diagnostics_.push_back({Tessel::Error, ended.position, 0, ended.reason});
    }
    dynamic_cast<RootNode&>(root).swap(tree);
    diagnostics = diagnostics_;
}

void Parser::parseTopLevel(TokenBuffer& tokens, RootNode& root) {
    while (tokens.peekKind() != Trn::kEndKind) {
        tokens.release();
        const Token token = tokens.current();
        if (token.kind == Unknown || token.kind == Semicolon || token.kind == CloseBrace) {
            tokens.next();
        } else if (isTrivia(token.kind)) {
            addTrivia(tokens, root);
        } else if (token.kind == OpenBrace) {
            root.add(parseBlock(tokens));
        } else if (isControlKeyword(token.kind)) {
            root.add(parseCtrlStmt(tokens));
        } else if (isJumpKeyword(token.kind)) {
            const Index start = tokens.place();
            if (!collectUntilKind(tokens, Semicolon)) continue;
            TokenBuffer statement = tokens.slice(start, tokens.place());
            root.add(parseExprStmt(statement));
        } else if (token.kind == KeywordAsm || (token.kind == Identifier && isAssemblerWord(token.text))) {
            root.add(parseAsm(tokens));
        } else if (token.kind == Identifier) {
            parseNamedBlock(tokens, root);
        } else if (token.kind == KeywordUsing) {
            skipStatement(tokens, Semicolon);
        } else {
            addDeclaration(tokens, root, InClass::No);
        }
    }
}

// An identifier in front of a block, which is a macro's call, or else the start of a declaration.
void Parser::parseNamedBlock(TokenBuffer& tokens, RootNode& root) {
    const Token name = tokens.next();
    if (peekSignificant(tokens).kind == OpenBrace) {
        root.add(std::make_unique<ExprNode>(std::string(name.text), name.start, name.end));
        skipTrivia(tokens);
        root.add(parseBlock(tokens));
        return;
    }
    tokens.stepBack();
    addOrdinaryDeclaration(tokens, root, InClass::No);
}

// What a file, a namespace body, a linkage block and a class body have in common.
void Parser::addDeclaration(TokenBuffer& tokens, InteriorNode& list, InClass inClass) {
    switch (tokens.peekKind()) {
        case KeywordNamespace:
            list.add(parseNamespace(tokens));
            return;
        case KeywordTemplate:
            list.add(parseTemplate(tokens));
            return;
        case KeywordExtern:
            parseLinkage(tokens, list, inClass);
            return;
        default:
            addOrdinaryDeclaration(tokens, list, inClass);
    }
}

void Parser::addOrdinaryDeclaration(TokenBuffer& tokens, InteriorNode& list, InClass inClass) {
    const Index startPlace = tokens.place();
    const Position start = tokens.current().start;
    Declaration declaration = parseDeclaration(tokens, inClass);
    if (!declaration.node) {
        report(start, CannotParse);
        if (tokens.place() == startPlace) tokens.next();
        return;
    }
    if (declaration.takesSemicolon && peekSignificant(tokens).kind == Semicolon) {
        declaration.node->setEnd(skipToSemicolon(tokens));
    }
    list.add(std::move(declaration.node));
}

Parser::Declaration Parser::parseDeclaration(TokenBuffer& tokens, InClass inClass) {
    NestingScope nesting(depth_, tokens);
    skipTrivia(tokens);
    const Index start = tokens.place();
    const Scan scan = scanDeclaration(tokens);
    switch (scan.shape) {
        case Shape::Function:
            return parseFunctionShape(tokens, start, scan.place);
        case Shape::FunctionPointer:
            return parseFunctionPointerShape(tokens, start);
        case Shape::Class:
        case Shape::Enum:
            return parseBracedShape(tokens, start, scan);
        case Shape::Data: {
            TokenBuffer list = collectDeclaration(tokens);
            return {parseDataDecl(list, tokens, inClass), false};
        }
        case Shape::None:
            break;
    }
    if (tokens.kindAt(scan.place) == Trn::kEndKind) return failAtEnd(tokens, scan.place);
    tokens.moveTo(scan.place);
    return {};
}

// The end of the text inside a declaration.
Parser::Declaration Parser::failAtEnd(TokenBuffer& tokens, Index end) {
    report(tokens.at(end).start, UnexpectedEnd);
    tokens.moveTo(end);
    return {};
}

namespace {

// Follows the significant tokens of a declaration and keeps what decides its shape.
struct DeclarationScan {
    int angleDepth = 0;
    int bracketDepth = 0;
    int previousKind = Trn::kEndKind;
    bool sawOperator = false;
    bool sawEnum = false;
    bool sawColon = false;

    bool isOutside() const { return angleDepth == 0 && bracketDepth == 0; }
    bool afterOperator() const { return previousKind == KeywordOperator; }

    void countAngles(int kind) {
        if (afterOperator()) return;
        if (kind == Less) ++angleDepth;
        if (kind == Greater && angleDepth > 0) --angleDepth;
        // In `A<B<int>>` one token closes two lists; elsewhere it is a shift.
        if (kind == ShiftRight && angleDepth > 1) angleDepth -= 2;
    }

    void take(int kind) {
        countAngles(kind);
        if (kind == OpenBracket && !afterOperator()) ++bracketDepth;
        if (kind == CloseBracket && bracketDepth > 0) --bracketDepth;
        sawOperator |= kind == KeywordOperator;
        sawEnum |= kind == KeywordEnum;
        sawColon |= kind == Colon;
        previousKind = kind;
    }
};

}  // namespace

// At a "(": whether it opens a declarator with a pointer mark inside.
bool Parser::opensPointerDeclarator(TokenBuffer& tokens, bool isInName, int previousKind) {
    const Index start = tokens.place();
    tokens.next();
    const int inside = nextSignificant(tokens).kind;
    const int following = peekSignificant(tokens).kind;
    tokens.moveTo(start);
    if (inside == Asterisk) return true;
    return !isInName && previousKind == Asterisk && !(inside == Identifier && following == Asterisk);
}

// Reads ahead to the token that tells what the declaration is; the buffer stays where it is. A ";" or a brace
// ends a declaration even where a "<" before it found no ">": it was a comparison then.
Parser::Scan Parser::scanDeclaration(TokenBuffer& tokens) {
    const Index start = tokens.place();
    DeclarationScan scan;
    const auto found = [&](Shape shape) {
        const Scan result{shape, tokens.place()};
        noBraceBefore_ = std::max(noBraceBefore_, result.place);
        tokens.moveTo(start);
        return result;
    };
    while (true) {
        const Token token = tokens.current();
        if (isTrivia(token.kind)) {
            takeTrivia(tokens);
            continue;
        }
        switch (token.kind) {
            case Trn::kEndKind:
            case CloseBrace:
                return found(Shape::None);
            case Unknown:
            case Semicolon:
                return found(Shape::Data);
            case OpenBrace:
                return found(scan.sawEnum ? Shape::Enum : Shape::Class);
            case KeywordPublic:
            case KeywordPrivate:
            case KeywordProtected:
                // Behind a ":" it belongs to a base class, if only a class body follows.
                if (!scan.sawColon || tokens.place() < noBraceBefore_) return found(Shape::Data);
                break;
            case Assign:
                if (scan.isOutside() && !scan.sawOperator) return found(Shape::Data);
                break;
            case OpenParen:
                if (!scan.isOutside() || scan.afterOperator()) break;
                return found(opensPointerDeclarator(tokens, scan.sawOperator, scan.previousKind)
                                 ? Shape::FunctionPointer
                                 : Shape::Function);
            default:
                break;
        }
        scan.take(token.kind);
        tokens.next();
        if (token.kind == Identifier && isAttributeWord(token.text) && tokens.peekKind() == OpenParen) {
            skipBracketed(tokens, OpenParen, CloseParen);
        }
    }
}

// A declaration whose first "(" outside template brackets stands at `openParen`. Its head is scanned to the
// token that ends it, which stays in the buffer; then head and body are parsed.
Parser::Declaration Parser::parseFunctionShape(TokenBuffer& tokens, Index start, Index openParen) {
    tokens.moveTo(openParen);
    if (!skipBracketed(tokens, OpenParen, CloseParen)) return failAtEnd(tokens, tokens.place());
    if (!scanFunctionQualifiers(tokens)) return failAtEnd(tokens, tokens.place());
    if (tokens.peekKind() == OpenParen) {
        tokens.moveTo(start);
        return parseFunctionPointerShape(tokens, start);
    }
    scanFunctionEnd(tokens);
    TokenBuffer head = tokens.slice(start, tokens.place());
    auto declaration = parseFunctionDecl(head, tokens);
    const bool hasBody = declaration->body() != nullptr;
    return {std::move(declaration), !hasBody};
}

// Moves over what may follow a parameter list: "const", an exception specification, constructor initializers.
// Says false at the end of the text.
bool Parser::scanFunctionQualifiers(TokenBuffer& tokens) {
    while (true) {
        skipTrivia(tokens);
        switch (tokens.peekKind()) {
            case KeywordConst:
            case KeywordVolatile:
                tokens.next();
                break;
            case Colon:
                while (tokens.peekKind() != OpenBrace && tokens.peekKind() != Semicolon) {
                    if (tokens.peekKind() == Trn::kEndKind) return false;
                    tokens.next();
                    skipTrivia(tokens);
                }
                break;
            case KeywordThrow:
                tokens.next();
                if (const Token open = peekSignificant(tokens); open.kind != OpenParen) {
                    report(open.start,
                           "Expected '(' as part of exception specification clause 'throw()'. Got: " +
                               shown(open));
                    return true;
                }
                skipTrivia(tokens);
                if (!skipBracketed(tokens, OpenParen, CloseParen)) return false;
                break;
            default:
                return true;
        }
    }
}

// Moves over "= 0" to the token that ends a function's head, which is reported when it is none that may.
void Parser::scanFunctionEnd(TokenBuffer& tokens) {
    while (true) {
        skipTrivia(tokens);
        const Token token = tokens.current();
        if (token.kind == Assign) {
            tokens.next();
            const Token value = peekSignificant(tokens);
            if (value.kind == Number && value.text == "0") {
                nextSignificant(tokens);
                continue;
            }
            tokens.stepBack();
        }
        if (token.kind != OpenBrace && token.kind != Semicolon && token.kind != Comma &&
            !isAccessKeyword(token.kind) && !endsTokens(token.kind)) {
            report(token.start, ExpectedFunctionEnd);
        }
        return;
    }
}

// A declaration with a declarator in parentheses, up to its ";".
Parser::Declaration Parser::parseFunctionPointerShape(TokenBuffer& tokens, Index start) {
    int depth = 0;
    bool sawDeclarator = false;  // a "," before it separates a template's arguments
    bool sawAssign = false;
    while (true) {
        skipTrivia(tokens);
        const Token token = tokens.current();
        if (token.kind == Trn::kEndKind) return failAtEnd(tokens, tokens.place());
        const bool isOutside = depth == 0;
        if (isOutside && ((token.kind == Comma && sawDeclarator) || isAccessKeyword(token.kind))) break;
        // Only an initializer may hold braces; a body means that this is no pointer after all.
        if ((token.kind == OpenBrace && !sawAssign) || (token.kind == CloseBrace && isOutside)) {
            report(token.start, ExpectedFunctionEnd);
            return {};
        }
        tokens.next();
        if (isOutside && token.kind == Semicolon) break;
        if (token.kind == OpenParen || token.kind == OpenBrace) ++depth;
        if (!isOutside && (token.kind == CloseParen || token.kind == CloseBrace)) --depth;
        sawDeclarator |= token.kind == OpenParen;
        sawAssign |= token.kind == Assign;
    }
    TokenBuffer declaration = tokens.slice(start, tokens.place());
    return {parseFunctionPtrDecl(declaration), false};
}

// A class or an enum with its body, up to the "}" that closes it.
Parser::Declaration Parser::parseBracedShape(TokenBuffer& tokens, Index start, const Scan& scan) {
    const std::optional<Index> end = behindClosingBrace(tokens, scan.place);
    if (!end) return failAtEnd(tokens, tokens.place());
    tokens.moveTo(*end);
    TokenBuffer declaration = tokens.slice(start, *end);
    if (scan.shape == Shape::Enum) return {parseEnumDecl(declaration), true};
    return {parseClassDecl(declaration), true};
}

// The place behind the "}" that closes the "{" at `open`; nothing, and the buffer at its end, when there is
// none. The scan of a class notes the braces of all that it holds, for the classes among that ask for theirs
// next.
std::optional<Trn::TokenBuffer::Index> Parser::behindClosingBrace(TokenBuffer& tokens, Index open) {
    const auto known = std::lower_bound(braces_.begin(), braces_.end(), std::pair<Index, Index>(open, 0));
    if (known != braces_.end() && known->first == open) return known->second;
    braces_.clear();
    std::vector<std::size_t> unclosed;
    tokens.moveTo(open);
    do {
        if (isTrivia(tokens.peekKind())) {
            takeTrivia(tokens);
            continue;
        }
        const int kind = tokens.peekKind();
        if (kind == Trn::kEndKind) return std::nullopt;
        if (kind == OpenBrace) {
            unclosed.push_back(braces_.size());
            braces_.emplace_back(tokens.place(), 0);
        }
        tokens.next();
        if (kind == CloseBrace) {
            braces_[unclosed.back()].second = tokens.place();
            unclosed.pop_back();
        }
    } while (!unclosed.empty());
    return tokens.place();
}

std::unique_ptr<SyntaxNode> Parser::parseNamespace(TokenBuffer& tokens) {
    const Index start = tokens.place();
    if (const Token keyword = tokens.next(); keyword.kind != KeywordNamespace) {
        tokens.stepBack();
        report(keyword.start, "Expected \"namespace\".");
        return nullptr;
    }
    if (nextSignificant(tokens).kind == Identifier && peekSignificant(tokens).kind == Assign) {
        skipStatement(tokens, Semicolon);
        return nullptr;
    }
    tokens.moveTo(start);
    NestingScope nesting(depth_, tokens);
    auto head = parseNamespaceHead(tokens);
    skipTrivia(tokens);
    auto body = parseNamespaceBody(tokens);
    return std::make_unique<NamespaceDeclNode>(std::move(head), std::move(body));
}

std::unique_ptr<NamespaceHeadNode> Parser::parseNamespaceHead(TokenBuffer& tokens) {
    const Token keyword = tokens.next();
    Position end = keyword.end;
    std::string name;
    if (peekSignificant(tokens).kind == Identifier) {
        const Token identifier = nextSignificant(tokens);
        name = identifier.text;
        end = identifier.end;
    }
    return std::make_unique<NamespaceHeadNode>(std::move(name), keyword.start, end);
}

std::unique_ptr<NamespaceBodyNode> Parser::parseNamespaceBody(TokenBuffer& tokens) {
    const Token open = tokens.next();
    if (open.kind != OpenBrace) {
        report(open.start, "Expected:: \"{\".");
        tokens.stepBack();
        return nullptr;
    }
    auto body = std::make_unique<NamespaceBodyNode>();
    body->setStart(open.start);
    while (true) {
        addTrivia(tokens, *body);
        tokens.release();
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
            default:
                addDeclaration(tokens, *body, InClass::No);
        }
    }
}

std::unique_ptr<SyntaxNode> Parser::parseTemplate(TokenBuffer& tokens) {
    skipTrivia(tokens);
    const Token keyword = tokens.next();
    if (keyword.kind != KeywordTemplate) {
        tokens.stepBack();
        report(keyword.start, "Expected the keyword 'template'. Got: " + shown(keyword));
        return nullptr;
    }
    if (peekSignificant(tokens).kind != Less) {
        tokens.stepBack();
        return parseExprStmt(tokens);
    }
    skipTrivia(tokens);
    return std::make_unique<TemplateNode>(
        std::make_unique<KeywordNode>(keyword.kind, keyword.start, keyword.end),
        parseParameterList(tokens, Brackets::Angles));
}

void Parser::parseLinkage(TokenBuffer& tokens, InteriorNode& list, InClass inClass) {
    const Index start = tokens.place();
    if (const Token keyword = tokens.next(); keyword.kind != KeywordExtern) {
        report(keyword.start, "Expected 'extern'. Got: " + shown(keyword));
        return;
    }
    const auto takeSignificantKind = [&] {
        while (isTrivia(tokens.peekKind())) takeTrivia(tokens);
        return tokens.next().kind;
    };
    const bool isBlock = takeSignificantKind() == StringLiteral && takeSignificantKind() == OpenBrace;
    tokens.moveTo(start);
    if (isBlock) {
        list.add(parseLinkageBlock(tokens));
    } else {
        addOrdinaryDeclaration(tokens, list, inClass);
    }
}

std::unique_ptr<LinkageBlockNode> Parser::parseLinkageBlock(TokenBuffer& tokens) {
    NestingScope nesting(depth_, tokens);
    TokenText linkage;
    linkage.add(tokens.next());
    linkage.add(nextSignificant(tokens));
    skipTrivia(tokens);
    auto words = linkage.makeLeaf<ExprNode>();
    return std::make_unique<LinkageBlockNode>(std::move(words), parseLinkageBody(tokens));
}

std::unique_ptr<LinkageBlockBodyNode> Parser::parseLinkageBody(TokenBuffer& tokens) {
    const Token open = tokens.next();
    if (open.kind != OpenBrace) {
        report(open.start, "Expected '{'. Got: " + shown(open));
        tokens.stepBack();
        return nullptr;
    }
    auto body = std::make_unique<LinkageBlockBodyNode>();
    body->setStart(open.start);
    while (true) {
        addTrivia(tokens, *body);
        tokens.release();
        const Token token = tokens.current();
        if (isAccessKeyword(token.kind)) {
            tokens.next();
            report(token.start, "public: protected: private: labels are illegal inside linkage blocks.");
            continue;
        }
        if (isControlKeyword(token.kind)) {
            tokens.next();
            report(token.start,
                   "control statements (e.g. if, else, while) are illegal inside linkage blocks.");
            continue;
        }
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
                skipStatement(tokens, Semicolon);
                break;
            case KeywordTemplate:
                tokens.next();
                report(token.start, "templates cannot be declared to have 'C' linkage.");
                break;
            default:
                addDeclaration(tokens, *body, InClass::No);
        }
    }
}

}  // namespace Cpp
