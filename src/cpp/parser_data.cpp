// Data declarations: type, name with what follows it, and the initializer or bit-field width.

#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "cpp/parser.h"
#include "cpp/parser_messages.h"
#include "cpp/token_classes.h"
#include "cpp/token_kind.h"
#include "cpp/token_sets.h"

namespace Cpp {

namespace {

using Trn::Token;
using Tokens = std::span<const Token>;

// The parts of a declarator: `int a[10], *p` has the type "int" and the name "a[10], *p".
struct Declarator {
    Tokens type;
    Tokens name;
};

// Counts parentheses and brackets; angle brackets outside them may open and close template arguments.
struct Nesting {
    int paren = 0;
    int bracket = 0;
    int angle = 0;

    bool isOutside() const { return paren == 0 && bracket == 0; }

    void take(int kind) {
        if (isOutside()) takeAngle(kind);
        if (kind == OpenParen) ++paren;
        if (kind == CloseParen && paren > 0) --paren;
        if (kind == OpenBracket) ++bracket;
        if (kind == CloseBracket && bracket > 0) --bracket;
    }

    void takeAngle(int kind) {
        if (kind == Less) ++angle;
        if (kind == Greater && angle > 0) --angle;
        if (kind == ShiftRight && angle > 1) angle -= 2;
    }
};

// Counts brackets, forwards or backwards. Angle brackets inside the others compare.
struct DeclaratorDepth {
    int bracket = 0;
    int angle = 0;

    bool isOutside() const { return bracket == 0 && angle == 0; }
};

// The place of the first "," outside all brackets, or the number of tokens.
std::size_t firstSeparator(Tokens tokens) {
    DeclaratorDepth depth;
    for (std::size_t place = 0; place < tokens.size(); ++place) {
        switch (tokens[place].kind) {
            case Comma:
                if (depth.isOutside()) return place;
                break;
            case OpenParen:
            case OpenBracket:
                ++depth.bracket;
                break;
            case CloseParen:
            case CloseBracket:
                depth.bracket -= depth.bracket > 0;
                break;
            case Less:
                depth.angle += depth.bracket == 0;
                break;
            case Greater:
                depth.angle -= depth.bracket == 0 && depth.angle > 0;
                break;
            case ShiftRight:
                if (depth.bracket == 0 && depth.angle > 1) depth.angle -= 2;
                break;
            default:
                break;
        }
    }
    return tokens.size();
}

// The first declared name is the last identifier outside brackets in front of the first ",".
Declarator splitDeclarator(Tokens tokens) {
    DeclaratorDepth depth;
    for (std::size_t place = firstSeparator(tokens); place-- > 0;) {
        switch (tokens[place].kind) {
            case CloseBracket:
                ++depth.bracket;
                break;
            case OpenBracket:
                --depth.bracket;
                break;
            case Greater:
                depth.angle += depth.bracket == 0;
                break;
            case ShiftRight:
                depth.angle += depth.bracket == 0 ? 2 : 0;
                break;
            case Less:
                depth.angle -= depth.bracket == 0;
                break;
            case Identifier:
                if (depth.isOutside()) return {tokens.first(place), tokens.subspan(place)};
                break;
            default:
                break;
        }
    }
    return {{}, tokens};
}

Declarator splitBitField(Tokens tokens) {
    std::size_t typeSize = 0;
    while (typeSize < tokens.size() &&
           (isIntegralTypeKeyword(tokens[typeSize].kind) || isTypeModifierKeyword(tokens[typeSize].kind))) {
        ++typeSize;
    }
    const std::size_t others = tokens.size() - typeSize;
    if (others == 0) return {tokens, {}};
    if (others == 1 && typeSize == 0) return {tokens, {}};
    return {tokens.first(tokens.size() - 1), tokens.last(1)};
}

template <typename Node>
std::unique_ptr<Node> makeNode(Tokens tokens) {
    if (tokens.empty()) return nullptr;
    return std::make_unique<Node>(typeText(tokens), tokens.front().start, tokens.back().end);
}

}  // namespace

// Takes the tokens of a declaration statement: up to its ";", or up to its "=" when no "," came before it,
// for then the initializer is read from where it stands. A token that cannot be the declaration's own is the
// list's last one and stays in the buffer.
Trn::TokenBuffer Parser::collectDeclaration(TokenBuffer& tokens) {
    const Index start = tokens.place();
    Nesting nesting;
    int braceDepth = 0;
    bool sawComma = false;
    bool sawAssign = false;
    while (true) {
        skipTrivia(tokens);
        const int kind = tokens.next().kind;
        if (endsTokens(kind) || (kind == OpenBrace && !sawAssign)) break;
        if ((kind == CloseBrace && braceDepth == 0) || (isAccessKeyword(kind) && nesting.isOutside())) {
            TokenBuffer list = tokens.slice(start, tokens.place());
            tokens.stepBack();
            return list;
        }
        if (kind == OpenBrace) ++braceDepth;
        if (kind == CloseBrace) --braceDepth;
        nesting.take(kind);
        if (!nesting.isOutside() || braceDepth > 0) continue;
        if (kind == Semicolon || (kind == Assign && !sawComma)) break;
        sawComma |= kind == Comma;
        sawAssign |= kind == Assign;
    }
    return tokens.slice(start, tokens.place());
}

// Behind a "(": whether a ">" follows its ")", as in `function<void(int)>`.
bool Parser::endsTemplateArguments(TokenBuffer& tokens) {
    const Index start = tokens.place();
    tokens.stepBack();
    const bool isClosed = skipBracketed(tokens, OpenParen, CloseParen);
    const int following = peekSignificant(tokens).kind;
    tokens.moveTo(start);
    return isClosed && (following == Greater || following == ShiftRight);
}

std::unique_ptr<DataDeclNode> Parser::parseDataDecl(TokenBuffer& list, TokenBuffer& tokens, InClass inClass) {
    std::vector<Token> declarator;
    Nesting nesting;
    Token ending;
    while (true) {
        ending = nextSignificant(list);
        const int kind = ending.kind;
        if (endsTokens(kind)) return nullptr;
        if (kind == Semicolon || isAccessKeyword(kind)) break;
        if (nesting.isOutside()) {
            if (kind == Assign) break;
            if (kind == OpenParen && (declarator.empty() || declarator.back().kind != Asterisk) &&
                (nesting.angle == 0 || !endsTemplateArguments(list))) {
                break;
            }
            if (kind == Colon && inClass == InClass::Yes && nesting.angle == 0) {
                const int following = peekSignificant(list).kind;
                if (following == Number || following == Identifier) break;
            }
        }
        nesting.take(kind);
        declarator.push_back(ending);
    }
    if (!declarator.empty() && declarator.front().kind == Comma) return nullptr;
    const Declarator parts = ending.kind == Colon ? splitBitField(declarator) : splitDeclarator(declarator);
    auto type = makeNode<TypeNode>(parts.type);
    auto name = makeNode<IdNode>(parts.name);
    if (!type && (!name || ending.kind == OpenParen)) return nullptr;
    auto declaration = std::make_unique<DataDeclNode>(std::move(type), std::move(name));
    if (!parseTail(ending, list, tokens, *declaration)) return nullptr;
    return declaration;
}

// Reads what `introducer` begins. Says false when the declaration cannot be made sense of.
bool Parser::parseTail(const Token& introducer, TokenBuffer& list, TokenBuffer& tokens,
                       DataDeclNode& declaration) {
    std::unique_ptr<ExprNode> tail;
    switch (introducer.kind) {
        case Semicolon:
            declaration.setEnd(introducer.start);
            return true;
        case Assign:
            tail = parseInitialValue(introducer, list, tokens);
            break;
        case OpenParen:
            tail = parseCallInitializer(introducer, list);
            break;
        case Colon:
            tail = parseBitField(introducer, list);
            break;
        default:
            return true;  // the access label behind a declaration without ";"
    }
    if (!tail) return false;
    declaration.setTail(std::move(tail));
    return true;
}

// "= ... ;", from the list where it still holds it, else from the tokens behind it.
std::unique_ptr<ExprNode> Parser::parseInitialValue(const Token& assign, TokenBuffer& list,
                                                    TokenBuffer& tokens) {
    TokenBuffer& source = peekSignificant(list).kind == Trn::kEndKind ? tokens : list;
    TokenText text;
    text.add(assign);
    Position previous = assign.start;
    int braceDepth = 0;
    while (true) {
        const Token token = nextSignificant(source);
        if (endsTokens(token.kind)) {
            source.stepBack();
            report(previous, UnexpectedEnd);
            return nullptr;
        }
        if (token.kind == OpenBrace) ++braceDepth;
        if (token.kind == CloseBrace && --braceDepth < 0) {
            // It closes what the declaration stands in: the ";" is missing.
            source.stepBack();
            report(token.start, ExpectedDataEnd);
            return nullptr;
        }
        text.add(token);
        if (token.kind == Semicolon && braceDepth == 0) return text.makeLeaf<ExprNode>();
        previous = token.start;
    }
}

// "( ... ) ;"
std::unique_ptr<ExprNode> Parser::parseCallInitializer(const Token& open, TokenBuffer& list) {
    TokenText text;
    text.add(open);
    int depth = 1;
    Position previous = open.start;
    while (true) {
        const Token token = nextSignificant(list);
        if (endsTokens(token.kind)) {
            report(previous, UnexpectedEnd);
            return nullptr;
        }
        text.add(token);
        if (token.kind == OpenParen) ++depth;
        if (token.kind == CloseParen) --depth;
        if (token.kind == Semicolon) {
            if (depth == 0) return text.makeLeaf<ExprNode>();
            report(token.start, UnexpectedSemicolon);
            return nullptr;
        }
        previous = token.start;
    }
}

// ": 3, b : 4;"
std::unique_ptr<ExprNode> Parser::parseBitField(const Token& colon, TokenBuffer& list) {
    TokenText text;
    text.add(colon);
    const auto take = [&](auto isWanted, const char* wanted) {
        const Token token = nextSignificant(list);
        if (isWanted(token.kind)) {
            text.add(token);
            return true;
        }
        report(token.start,
               std::string("Bad looking bitfield. Expected ") + wanted + " Got: '" + shown(token) + "'.");
        return false;
    };
    const auto isWidth = [](int kind) { return kind == Number || kind == Identifier; };
    const auto isName = [](int kind) { return kind == Identifier; };
    const auto isColon = [](int kind) { return kind == Colon; };
    const char* const widthText = "an identifier or an integer literal.";
    if (!take(isWidth, widthText)) return nullptr;
    while (true) {
        const Token token = nextSignificant(list);
        if (token.kind != Semicolon && token.kind != Comma) {
            report(token.start, ExpectedDataEnd);
            return nullptr;
        }
        text.add(token);
        if (token.kind == Semicolon) return text.makeLeaf<ExprNode>();
        if (!take(isName, "an Identifier.") || !take(isColon, "':'.") || !take(isWidth, widthText))
            return nullptr;
    }
}

}  // namespace Cpp
