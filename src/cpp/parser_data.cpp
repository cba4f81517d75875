// Data declarations: type, name with what follows it, and the initializer or bit-field width.

#include <span>
#include <utility>
#include <vector>

#include "cpp/expression_text.h"
#include "cpp/parser.h"
#include "cpp/parser_messages.h"
#include "cpp/token_classes.h"
#include "cpp/token_kind.h"
#include "cpp/token_sets.h"
#include "cpp/words.h"

namespace Cpp {

namespace {

using Trn::Token;
using TokenSpan = std::span<const Token>;

// The parts of a declarator: `int a[10], *p` has the type "int" and the name "a[10], *p".
struct Declarator {
    TokenSpan type;
    TokenSpan name;
};

// Counts brackets, forwards or backwards. Angle brackets inside the others compare.
struct DeclaratorDepth {
    int bracket = 0;
    int angle = 0;

    bool isOutside() const { return bracket == 0 && angle == 0; }
};

// The place of the first "," outside all brackets, or the number of tokens.
std::size_t firstSeparator(TokenSpan tokens) {
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

// The place of the "(" of the group that ends at `close`.
std::size_t openingParen(TokenSpan tokens, std::size_t close) {
    int depth = 0;
    for (std::size_t place = close;; --place) {
        if (tokens[place].kind == CloseParen) ++depth;
        if (tokens[place].kind == OpenParen && --depth == 0) return place;
        if (place == 0) return close;
    }
}

// The first declared name is the last identifier outside brackets in front of the first ",", but for words with
// arguments, which are attributes and macros.
Declarator splitDeclarator(TokenSpan tokens) {
    DeclaratorDepth depth;
    for (std::size_t place = firstSeparator(tokens); place-- > 0;) {
        switch (tokens[place].kind) {
            case CloseParen: {
                const std::size_t open = openingParen(tokens, place);
                const bool isMacro = open > 0 && open < place && tokens[open - 1].kind == Identifier;
                // `int NAME(a)[3]`: it makes the name.
                const bool hasBounds = place + 1 < tokens.size() && tokens[place + 1].kind == OpenBracket;
                if (isMacro) place = open - 1;
                if (isMacro && hasBounds && depth.isOutside()) return {tokens.first(place), tokens.subspan(place)};
                break;
            }
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

Declarator splitBitField(TokenSpan tokens) {
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

// `int size GUARDED_BY(lock) ORDERED(other);`: whether the last word is a macro's, behind the declared name or another
// macro.
bool endsWithMacro(TokenSpan declarator, bool hasMacros) {
    if (declarator.size() < 3) return false;
    const auto last = declarator.last(3);
    if (hasMacros && last[1].kind == CloseParen) return last[2].kind == Identifier && isUpperCase(last[2].text);
    return isMacroBehindName(last[0], last[1], last[2]);
}

// Comments and directives are left out.
LeafText textOf(TokenSpan tokens) {
    TokenText text;
    for (const Token& token : tokens) {
        if (!isTrivia(token.kind)) text.add(token);
    }
    return text.take();
}

// `A "x"d = e;`: what stands for the name is a part of the literal.
bool namesSuffix(const Declarator& declarator) {
    if (declarator.type.empty() || declarator.name.empty()) return false;
    const Token& last = declarator.type.back();
    const bool isLiteral = last.kind == StringLiteral || last.kind == CharLiteral;
    return isLiteral && last.offset + last.length == declarator.name.front().offset;
}

bool isMadeByCall(const IdNode* name) { return name && name->text().ends_with(')'); }

template <typename Node>
std::unique_ptr<Node> makeNode(TokenSpan tokens) {
    if (tokens.empty()) return nullptr;
    return std::make_unique<Node>(textOf(tokens), tokens.front().start, tokens.back().end);
}

}  // namespace

// A token that cannot be the declaration's own stays in the buffer, but for a "{".
std::unique_ptr<DataDeclNode> Parser::parseDataDecl(TokenBuffer& tokens, Scope scope) {
    // Most have no more tokens.
    constexpr std::size_t fewTokens = 4;
    std::vector<Token> declarator;
    declarator.reserve(fewTokens);
    Index previous = TokenLinks::kNone;
    const bool hasTypeInFront = followsType(tokens, tokens.place());
    bool isBraced = false;
    bool hasMacros = false;
    Index callsEnd = 0;
    while (true) {
        skipTrivia(tokens);
        const Index here = tokens.place();
        const int kind = tokens.peekKind();
        if (kind == Semicolon || kind == Assign || isAccessKeyword(kind)) break;
        if (endsTokens(kind)) {
            if (kind == Unknown) tokens.next();
            return nullptr;
        }
        if (kind == CloseBrace) return nullptr;
        // A<B>::c->d(e);
        if ((kind == Arrow || kind == Dot) && scope == Scope::Block) return nullptr;
        if (kind == OpenParen) {
            hasMacros = keepsUnrecognized_ && endsWithMacro(declarator, hasMacros);
            const bool opensTail = !hasMacros && opensInitializer(tokens, declarator, previous, callsEnd);
            if (opensTail && keepsUnrecognized_ && scope == Scope::Block && heads(tokens).hasBody(here)) return nullptr;
            if (opensTail) break;
        }
        if (kind == Colon && scope == Scope::Class) break;
        if (kind == OpenBrace) {
            isBraced = (hasTypeInFront || declarator.size() > 1) && items(tokens).holdsValues(here, previous);
            if (isBraced) break;
            tokens.next();
            return nullptr;
        }
        const Index close = links_.closing(here);
        const Index last = close == TokenLinks::kNone ? here : close;
        for (Index place = here; place <= last; place = links_.significant(place + 1)) {
            declarator.push_back(tokens.at(place));
        }
        tokens.moveTo(last + 1);
        previous = last;
    }
    const Token ending = tokens.current();
    const bool startsWithComma = !declarator.empty() && declarator.front().kind == Comma;
    const Declarator parts = ending.kind == Colon ? splitBitField(declarator) : splitDeclarator(declarator);
    auto type = makeNode<TypeNode>(parts.type);
    auto name = makeNode<IdNode>(parts.name);
    const bool isCall = !type && (!name || ending.kind == OpenParen);
    if (startsWithComma || isCall || (keepsUnrecognized_ && namesSuffix(parts))) {
        passStatement(tokens);
        return nullptr;
    }
    auto declaration = std::make_unique<DataDeclNode>(std::move(type), std::move(name));
    if (!parseTail(ending, tokens, *declaration)) return nullptr;
    return declaration;
}

// Moves behind what turned out to be no declaration.
void Parser::passStatement(TokenBuffer& tokens) {
    while (tokens.peekKind() != Semicolon && tokens.peekKind() != CloseBrace && !endsTokens(tokens.peekKind())) {
        tokens.moveTo(view(tokens).behind(tokens.place()));
    }
    if (tokens.peekKind() == Semicolon) tokens.next();
}

// At a "(": whether it begins the arguments of what is declared. The argument of an attribute or a macro has the rest
// of a declaration behind it.
bool Parser::opensInitializer(const TokenBuffer& tokens, const std::vector<Token>& declarator, Index previous,
                              Index& callsEnd) const {
    const Index open = tokens.place();
    if (!declarator.empty() && declarator.back().kind == Asterisk) return false;
    if (isArgumentOf(tokens, open, previous)) return false;
    if (keepsUnrecognized_ && view(tokens).endsWithAssign(open)) return false;
    const bool followsName = previous != TokenLinks::kNone && tokens.kindAt(previous) == Identifier;
    const Index close = links_.closing(open);
    if (!followsName || close == TokenLinks::kNone) return true;
    const Index behind = view(tokens).next(close);
    const int following = tokens.kindAt(behind);
    if (keepsUnrecognized_ && (following == OpenBracket || view(tokens).opensArguments(behind))) return false;
    if (keepsUnrecognized_ && tokens.kindAt(view(tokens).behindCalls(behind, callsEnd)) == Comma) return true;
    const bool isStorage = following == KeywordStatic || (keepsUnrecognized_ && isStorageWord(following));
    const bool continuesType = following == Identifier || following == Asterisk || following == Ampersand ||
                               startsData(following) || isClassKey(following) || isStorage;
    return !continuesType && following != Assign;
}

// Reads what `introducer` begins. Says false when the declaration cannot be made sense of.
bool Parser::parseTail(const Token& introducer, TokenBuffer& tokens, DataDeclNode& declaration) {
    std::unique_ptr<ExprNode> tail;
    switch (introducer.kind) {
        case Semicolon:
            declaration.setEnd(introducer.start);
            tokens.next();
            return true;
        case Assign:
            tail = parseInitialValue(tokens, !declaration.type() && isMadeByCall(declaration.name()));
            break;
        case OpenParen:
        case OpenBrace:
            tail = parseCallInitializer(tokens);
            break;
        case Colon:
            tail = parseBitField(tokens);
            break;
        default:
            return true;  // the access label behind a declaration without ";"
    }
    if (!tail) return false;
    declaration.setTail(std::move(tail));
    return true;
}

// "= ... ;", or "= { ... }" with a macro behind it. Where macros make the declaration, `ITEM(a) = VALUE(b)`, the one
// that ends it stands on a line of its own.
std::unique_ptr<ExprNode> Parser::parseInitialValue(TokenBuffer& tokens, bool isOfMacro) {
    Expression value;
    const auto isBehind = [&](int kind) {
        return value.previous != TokenLinks::kNone && tokens.kindAt(value.previous) == kind;
    };
    while (true) {
        skipTrivia(tokens);
        const Token token = tokens.current();
        if (endsTokens(token.kind)) {
            report(tokens.at(value.previous).start, UnexpectedEnd);
            return nullptr;
        }
        if (token.kind == CloseBrace) {
            // It closes what the declaration stands in: the ";" is missing.
            report(token.start, ExpectedDataEnd);
            return nullptr;
        }
        const bool isLater = isOfMacro && isBehind(CloseParen) && token.start.line > tokens.at(value.previous).end.line;
        const bool mayEnd = keepsUnrecognized_ && (isLater || isBehind(CloseBrace));
        if (mayEnd && items(tokens).bringsSemicolon(tokens.place())) {
            if (isLater) return value.makeLeaf();
            takeToken(tokens, value);
            takeToken(tokens, value);
            return value.makeLeaf();
        }
        noteBody(tokens, value);
        if (token.kind == OpenBrace && takeBody(tokens, value)) continue;
        takeToken(tokens, value);
        if (token.kind == Semicolon) return value.makeLeaf();
    }
}

// "( ... ) ;" or "{ ... };"
std::unique_ptr<ExprNode> Parser::parseCallInitializer(TokenBuffer& tokens) {
    const Index open = tokens.place();
    if (links_.holdsStatements(open)) {
        // A keyword may be all that there is of a statement: the ";" then stands behind the brackets, or nowhere.
        const Index close = links_.closing(open);
        Index place = open + 1;
        while (place < close && tokens.kindAt(place) != Semicolon && tokens.kindAt(place) != Trn::kEndKind) ++place;
        if (place == close) place = view(tokens).next(close);
        report(tokens.at(place).start, tokens.kindAt(place) == Semicolon ? UnexpectedSemicolon : ExpectedDataEnd);
        passStatement(tokens);
        return nullptr;
    }
    return parseInitialValue(tokens, false);
}

// ": 3, b : 4;"
std::unique_ptr<ExprNode> Parser::parseBitField(TokenBuffer& tokens) {
    Expression field;
    const auto fail = [&](const char* wanted) {
        const Token token = tokens.current();
        report(token.start,
               std::string("Bad looking bitfield. Expected ") + wanted + " Got: '" + shown(token) + "'.");
        passStatement(tokens);
        return nullptr;
    };
    while (true) {
        takeToken(tokens, field);
        skipTrivia(tokens);
        const bool followsColon = tokens.kindAt(field.previous) == Colon;
        const bool followsComma = tokens.kindAt(field.previous) == Comma;
        switch (const int kind = tokens.peekKind()) {
            case Semicolon:
            case Comma:
                if (followsColon) return fail("an identifier or an integer literal.");
                if (followsComma) return fail("an Identifier.");
                if (kind == Comma) break;
                takeToken(tokens, field);
                return field.makeLeaf();
            case CloseBrace:
            case Trn::kEndKind:
            case Unknown:
                report(tokens.current().start, ExpectedDataEnd);
                return nullptr;
            default:
                if (followsComma && kind != Identifier && kind != Colon && kind != Asterisk) {
                    return fail("an Identifier.");
                }
        }
    }
}

}  // namespace Cpp
