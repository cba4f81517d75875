// Function heads, parameter lists, constructor initializers and pointers to functions.

#include <utility>

#include "cpp/parser.h"
#include "cpp/parser_messages.h"
#include "cpp/qualified_name.h"
#include "cpp/token_kind.h"
#include "cpp/token_sets.h"

namespace Cpp {

namespace {

// Counts brackets of all kinds. Angle brackets only count outside the others, where they enclose template
// arguments; inside they compare.
struct BracketDepth {
    int round = 0;
    int angle = 0;

    bool isOutside() const { return round == 0 && angle == 0; }

    void take(int kind) {
        switch (kind) {
            case OpenParen:
            case OpenBracket:
            case OpenBrace:
                ++round;
                break;
            case CloseParen:
            case CloseBracket:
            case CloseBrace:
                round -= round > 0;
                break;
            case Less:
                angle += round == 0;
                break;
            case Greater:
                angle -= round == 0 && angle > 0;
                break;
            case ShiftRight:
                if (round == 0 && angle > 1) angle -= 2;
                break;
            default:
                break;
        }
    }
};

bool isPunctuator(int kind) {
    return kind >= Semicolon && kind <= ArrowAsterisk;
}

}  // namespace

// `head` holds the declaration up to its body or its ";", where `tokens` stands.
std::unique_ptr<FunctionDeclNode> Parser::parseFunctionDecl(TokenBuffer& head, TokenBuffer& tokens) {
    auto functionHead = parseFunctionHead(head);
    skipTrivia(head);
    std::unique_ptr<InitializerListNode> initializers;
    if (head.peekKind() == Colon) {
        head.next();
        initializers = parseCtorInitializers(head);
    }
    skipTrivia(tokens);
    std::unique_ptr<BlockNode> body;
    if (tokens.peekKind() == OpenBrace) body = parseBlock(tokens);
    if (initializers && initializers->size() > 0) {
        return std::make_unique<CtorDeclNode>(std::move(functionHead), std::move(body),
                                              std::move(initializers));
    }
    return std::make_unique<FunctionDeclNode>(std::move(functionHead), std::move(body));
}

std::unique_ptr<FunctionHeadNode> Parser::parseFunctionHead(TokenBuffer& tokens) {
    auto head = std::make_unique<FunctionHeadNode>();
    const Index start = tokens.place();
    auto name = parseFunctionName(tokens);
    if (name) {
        const Index afterName = tokens.place();
        TokenText returnType;
        tokens.moveTo(start);
        while (true) {
            skipTrivia(tokens);
            const Token token = tokens.current();
            if (tokens.place() >= afterName || token.start >= name->start()) break;
            returnType.add(token);
            tokens.next();
        }
        head->setReturnType(returnType.makeLeaf<FunctionReturnNode>());
        tokens.moveTo(afterName);
    }
    head->setName(std::move(name));
    head->setParameters(parseParameterList(tokens, Brackets::Parentheses));
    while (true) {
        skipTrivia(tokens);
        switch (tokens.peekKind()) {
            case KeywordConst:
            case KeywordVolatile:
                head->setQualifiers(parseQualifiers(tokens));
                break;
            case KeywordThrow:
                head->setExceptionSpec(parseExceptionClause(tokens));
                break;
            case Assign:
                head->setPureSpec(parsePureClause(tokens));
                break;
            default:
                return head;
        }
    }
}

// Finds the name in front of the parameter list and moves behind it. Where there is none the buffer is left
// at the list's "(".
std::unique_ptr<IdNode> Parser::parseFunctionName(TokenBuffer& tokens) {
    const Index start = tokens.place();
    BracketDepth depth;
    Index nameStart = start;  // of the last identifier outside brackets
    bool sawName = false;
    while (true) {
        skipTrivia(tokens);
        const Token token = tokens.current();
        if (token.kind == Trn::kEndKind) break;
        if (token.kind == KeywordOperator) {
            nameStart = tokens.place();
            sawName = true;
            if (!takeOperatorName(tokens)) return nullptr;
            break;
        }
        // What stands just in front of the "(" is the name, or a template's arguments behind it.
        if (token.kind == OpenParen && depth.isOutside()) break;
        depth.take(token.kind);
        sawName = token.kind == Identifier || (sawName && !depth.isOutside()) || token.kind == Greater ||
                  token.kind == ShiftRight;
        if (token.kind == Identifier && depth.isOutside()) nameStart = tokens.place();
        tokens.next();
        if (token.kind == Identifier && isAttributeWord(token.text) && tokens.peekKind() == OpenParen) {
            skipBracketed(tokens, OpenParen, CloseParen);
            sawName = false;
        }
    }
    const Index end = tokens.place();
    if (!sawName || tokens.kindAt(nameStart) == Trn::kEndKind) {
        const Token found = tokens.current();
        report(found.start, "Expected function name. Got: " + shown(found));
        return nullptr;
    }
    if (const Token last = tokens.at(nameStart); last.kind == Identifier && last.text.ends_with("::")) {
        const Token found = tokens.current();
        report(found.start, "Expected \"operator\". Got: " + shown(found));
        return nullptr;
    }
    tokens.moveTo(start);
    tokens.moveTo(start + findQualifiedNameStart(tokens, nameStart - start + 1) - 1);
    TokenText name;
    while (tokens.place() < end) {
        if (isTrivia(tokens.peekKind())) {
            takeTrivia(tokens);
        } else {
            name.add(tokens.next());
        }
    }
    return name.makeLeaf<IdNode>();
}

// Takes "operator" and what belongs to it, up to the parameter list's "(". Says false, having reported it,
// when that is no operator.
bool Parser::takeOperatorName(TokenBuffer& tokens) {
    tokens.next();
    const Token first = nextSignificant(tokens);
    switch (first.kind) {
        case OpenParen:
            if (const Token close = peekSignificant(tokens); close.kind != CloseParen) {
                report(close.start, "Expected ')'. As part of overloaded function call operator.");
                return false;
            }
            nextSignificant(tokens);
            return true;
        case OpenBracket:
            if (const Token close = peekSignificant(tokens); close.kind != CloseBracket) {
                report(close.start, "Expected [.");
                return false;
            }
            nextSignificant(tokens);
            return true;
        case KeywordNew:
        case KeywordDelete:
            if (peekSignificant(tokens).kind == OpenBracket) {
                nextSignificant(tokens);
                nextSignificant(tokens);
            }
            return true;
        case Semicolon:
        case OpenBrace:
        case CloseBrace:
        case CloseParen:
        case Trn::kEndKind:
            tokens.stepBack();
            report(first.start, "Could not recognize overloaded operator.");
            return false;
        default:
            break;
    }
    if (isPunctuator(first.kind)) {
        // A specialisation carries its arguments behind the operator.
        return peekSignificant(tokens).kind != Less || takeClosingAngle(tokens);
    }
    // A conversion: the words of a type.
    BracketDepth depth;
    depth.take(first.kind);
    while (true) {
        const Token token = peekSignificant(tokens);
        if (token.kind == Trn::kEndKind || (token.kind == OpenParen && depth.isOutside())) return true;
        depth.take(token.kind);
        nextSignificant(tokens);
    }
}

// Takes template arguments from their "<" to the ">" that closes them.
bool Parser::takeClosingAngle(TokenBuffer& tokens) {
    BracketDepth depth;
    do {
        const Token token = nextSignificant(tokens);
        if (token.kind == Trn::kEndKind) {
            report(token.start, "Expected \"<\".");
            return false;
        }
        depth.take(token.kind);
    } while (!depth.isOutside());
    return true;
}

// The list's own closing bracket may be the second half of a ">>".
std::unique_ptr<ParameterListNode> Parser::parseParameterList(TokenBuffer& tokens, Brackets brackets) {
    const bool isAngled = brackets == Brackets::Angles;
    const int closeKind = isAngled ? Greater : CloseParen;
    skipTrivia(tokens);
    const Token open = tokens.next();
    if (open.kind != (isAngled ? Less : OpenParen)) {
        tokens.stepBack();
        report(open.start, std::string("Expected '") + (isAngled ? "<" : "(") + "' Got: " + shown(open));
        return nullptr;
    }
    auto list = std::make_unique<ParameterListNode>();
    list->setStart(open.start);
    TokenText parameter;
    BracketDepth depth;
    while (true) {
        skipTrivia(tokens);
        Token token = tokens.next();
        if (token.kind == Trn::kEndKind ||
            (isAngled && (token.kind == Semicolon || token.kind == OpenBrace))) {
            tokens.stepBack();
            if (token.kind == Trn::kEndKind) {
                report(token.start, UnexpectedEnd);
            } else {
                report(token.start, "Expected '>'. Got: " + shown(token));
            }
            list->add(parameter.makeLeaf<ParameterNode>());
            return list;
        }
        const bool endsList = token.kind == closeKind && depth.round == 0 && (!isAngled || depth.angle == 0);
        const bool endsTwoLists =
            isAngled && token.kind == ShiftRight && depth.round == 0 && depth.angle == 1;
        if (endsTwoLists) {
            token.text.remove_suffix(1);
            token.end = token.start;
            parameter.add(token);
            ++token.start.column;
        }
        if (endsList || endsTwoLists || (token.kind == Comma && depth.isOutside())) {
            list->add(parameter.makeLeaf<ParameterNode>());
            parameter = TokenText();
            if (token.kind == Comma) continue;
            list->setEnd(token.start);
            return list;
        }
        depth.take(token.kind);
        parameter.add(token);
    }
}

std::unique_ptr<TextNode> Parser::parseQualifiers(TokenBuffer& tokens) {
    TokenText qualifiers;
    while (isQualifier(peekSignificant(tokens).kind)) qualifiers.add(nextSignificant(tokens));
    return qualifiers.makeLeaf<TextNode>();
}

// throw( ... )
std::unique_ptr<ExprNode> Parser::parseExceptionClause(TokenBuffer& tokens) {
    TokenText clause;
    clause.add(tokens.next());
    if (const Token open = peekSignificant(tokens); open.kind != OpenParen) {
        report(open.start, "Expected '(' as part of a 'throw()' clause. Got: " + shown(open));
        return clause.makeLeaf<ExprNode>();
    }
    BracketDepth depth;
    do {
        const Token token = nextSignificant(tokens);
        if (token.kind == OpenBrace || token.kind == Trn::kEndKind) {
            tokens.stepBack();
            report(token.start, UnexpectedEnd);
            break;
        }
        depth.take(token.kind);
        clause.add(token);
    } while (depth.round > 0);
    return clause.makeLeaf<ExprNode>();
}

// = 0
std::unique_ptr<ExprNode> Parser::parsePureClause(TokenBuffer& tokens) {
    TokenText clause;
    clause.add(tokens.next());
    const Token zero = nextSignificant(tokens);
    if (zero.kind != Number || zero.text != "0") {
        report(zero.start, "Expected '= 0' to indicate a pure virtual function. Got: " + shown(zero));
        return nullptr;
    }
    clause.add(zero);
    return clause.makeLeaf<ExprNode>();
}

std::unique_ptr<InitializerListNode> Parser::parseCtorInitializers(TokenBuffer& tokens) {
    auto list = std::make_unique<InitializerListNode>();
    while (true) {
        addTrivia(tokens, *list);
        switch (tokens.peekKind()) {
            case Identifier:
                list->add(parseInitializer(tokens));
                break;
            case Comma:
                tokens.next();
                break;
            default:
                return list;
        }
    }
}

std::unique_ptr<InitializerNode> Parser::parseInitializer(TokenBuffer& tokens) {
    TokenText member;
    BracketDepth depth;
    while (true) {
        const Token token = peekSignificant(tokens);
        if (depth.isOutside() && (token.kind == OpenParen || token.kind == OpenBrace || token.kind == Comma))
            break;
        if (token.kind == Trn::kEndKind) break;
        depth.take(token.kind);
        member.add(nextSignificant(tokens));
    }
    if (const Token open = peekSignificant(tokens); open.kind != OpenParen) {
        report(open.start, "Expected a (. Got: \"" + shown(open) + "\"");
        skipTrivia(tokens);
        return nullptr;
    }
    skipTrivia(tokens);
    auto name = member.makeLeaf<IdNode>();
    auto arguments = parseArguments(tokens);
    return std::make_unique<InitializerNode>(std::move(name), std::move(arguments));
}

std::unique_ptr<ArgListNode> Parser::parseArguments(TokenBuffer& tokens) {
    auto list = std::make_unique<ArgListNode>();
    list->setStart(tokens.next().start);
    TokenText argument;
    BracketDepth depth;
    const auto finish = [&] {
        list->add(argument.makeLeaf<ArgNode>());
        argument = TokenText();
    };
    while (true) {
        if (isTrivia(tokens.peekKind())) {
            if (argument.empty()) {
                addTrivia(tokens, *list);
            } else {
                skipTrivia(tokens);
            }
            continue;
        }
        const Token token = tokens.next();
        if (token.kind == OpenBrace || token.kind == Trn::kEndKind) {
            tokens.stepBack();
            report(token.start, UnexpectedEnd);
            finish();
            return list;
        }
        if (depth.round == 0 && token.kind == CloseParen) {
            finish();
            list->setEnd(token.start);
            return list;
        }
        if (depth.round == 0 && token.kind == Comma) {
            finish();
            continue;
        }
        depth.take(token.kind);
        argument.add(token);
    }
}

std::unique_ptr<FunctionPtrDeclNode> Parser::parseFunctionPtrDecl(TokenBuffer& tokens) {
    TokenText returnType;
    BracketDepth depth;
    while (true) {
        const Token token = nextSignificant(tokens);
        if (token.kind == OpenParen && depth.isOutside()) break;
        if (token.kind == Semicolon) {
            report(token.start, "Expected \"(\" as part of pointer-to-function declaration. Got ';'");
            return nullptr;
        }
        if (token.kind == Trn::kEndKind) {
            report(token.start, UnexpectedEnd);
            return nullptr;
        }
        returnType.add(token);
        if (token.kind == Identifier && isAttributeWord(token.text) && tokens.peekKind() == OpenParen) {
            BracketDepth argument;
            do {
                const Token part = nextSignificant(tokens);
                argument.take(part.kind);
                returnType.add(part);
            } while (!argument.isOutside() && tokens.peekKind() != Trn::kEndKind);
            continue;
        }
        depth.take(token.kind);
    }

    // The name is the last one in front of what shows that the declared thing is a pointer, an array or a
    // function. In front of `::operator` the lexer sees one without a text.
    TokenText name;
    bool sawName = false;
    for (int nesting = 0; nesting >= 0;) {
        const Token token = nextSignificant(tokens);
        if (token.kind == Trn::kEndKind) {
            report(token.start, UnexpectedEnd);
            return nullptr;
        }
        sawName |= token.kind == CloseParen || (token.kind == OpenParen && !name.empty()) ||
                   token.kind == OpenBracket;
        if (token.kind == OpenParen || token.kind == OpenBracket) ++nesting;
        if (token.kind == CloseParen || token.kind == CloseBracket) --nesting;
        if (token.kind == Identifier && !token.text.empty() && !sawName) {
            name = TokenText();
            name.add(token);
        }
    }
    auto declaration = std::make_unique<FunctionPtrDeclNode>();
    declaration->setReturnType(returnType.makeLeaf<TypeNode>());
    declaration->setName(name.makeLeaf<IdNode>());
    // A pointer to an array has bounds there.
    if (peekSignificant(tokens).kind != OpenBracket) {
        declaration->setParameters(parseParameterList(tokens, Brackets::Parentheses));
    }
    if (isQualifier(peekSignificant(tokens).kind)) declaration->setQualifiers(parseQualifiers(tokens));
    // An initializer has no node of its own, but it is the declaration's.
    while (tokens.peekKind() != Trn::kEndKind) {
        if (const Token token = nextSignificant(tokens); token.kind == Semicolon)
            declaration->setEnd(token.end);
    }
    return declaration;
}

}  // namespace Cpp
