// Function heads, parameter lists, constructor initializers and pointers to functions.

#include <algorithm>
#include <utility>

#include "cpp/expression_text.h"
#include "cpp/parser.h"
#include "cpp/parser_messages.h"
#include "cpp/qualified_name.h"
#include "cpp/token_kind.h"
#include "cpp/token_sets.h"

namespace Cpp {

namespace {

// The first ">" of a ">>" goes to the text; the token is the second one from here on.
void takeHalf(Trn::Token& token, TokenText& text) {
    Trn::Token half = token;
    half.text.remove_suffix(1);
    half.end = half.start;
    text.add(half);
    ++token.start.column;
}

}  // namespace

// `head` holds the declaration up to its body or its ";", where `tokens` stands.
std::unique_ptr<FunctionDeclNode> Parser::parseFunctionDecl(TokenBuffer& head, Index parameters,
                                                            const HeadTail& tail, TokenBuffer& tokens) {
    auto functionHead = parseFunctionHead(head, parameters, tail);
    std::unique_ptr<InitializerListNode> initializers;
    if (tail.initializers != TokenLinks::kNone) {
        head.moveTo(tail.initializers + 1);
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

std::unique_ptr<FunctionHeadNode> Parser::parseFunctionHead(TokenBuffer& tokens, Index parameters,
                                                            const HeadTail& tail) {
    auto head = std::make_unique<FunctionHeadNode>();
    const Index start = tokens.place();
    auto name = parseFunctionName(tokens, parameters);
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
    if (tail.oldParameters != TokenLinks::kNone) {
        TokenText declarations;
        addThrough(tokens, tail.end, declarations);
        head->setOldParameters(declarations.makeLeaf<KeptNode>());
        return head;
    }
    parseHeadTail(tokens, std::min(tail.initializers, tail.end), *head);
    return head;
}

// `const throw() noexcept override = 0`
void Parser::parseHeadTail(TokenBuffer& tokens, Index end, FunctionHeadNode& head) {
    skipTrivia(tokens);
    if (isQualifier(tokens.peekKind())) head.setQualifiers(parseQualifiers(tokens));
    skipTrivia(tokens);
    if (tokens.peekKind() == KeywordThrow) head.setExceptionSpec(parseExceptionClause(tokens));
    TokenText words;
    while (true) {
        skipTrivia(tokens);
        if (tokens.place() >= end || tokens.peekKind() == Trn::kEndKind) break;
        if (tokens.peekKind() == Assign && tokens.kindAt(view(tokens).next(tokens.place())) == Number) break;
        words.add(tokens.next());
    }
    head.setTail(words.makeLeaf<ExprNode>());
    if (tokens.place() < end && tokens.peekKind() == Assign) head.setPureSpec(parsePureClause(tokens));
}

// Finds the name in front of the parameter list and moves behind it. Where there is none the buffer is left
// at the list's "(".
std::unique_ptr<IdNode> Parser::parseFunctionName(TokenBuffer& tokens, Index parameters) {
    const Index start = tokens.place();
    Index nameStart = start;  // of the last identifier outside brackets
    bool sawName = false;
    bool isWrapped = false;
    while (true) {
        skipTrivia(tokens);
        const Token token = tokens.current();
        if (tokens.place() >= parameters || token.kind == Trn::kEndKind) break;
        if (token.kind == KeywordOperator) {
            nameStart = tokens.place();
            sawName = true;
            if (!takeOperatorName(tokens)) return nullptr;
            break;
        }
        const Index here = tokens.place();
        const Index behind = view(tokens).behind(here);
        // `int (f)(int)`, `int NAME(f)(int)`: the name stands in parentheses.
        if (token.kind == OpenParen && behind == parameters) {
            nameStart = wrappedNameStart(tokens, here);
            sawName = isWrapped = true;
        } else if (token.kind == OpenParen && behind > parameters) {
            // `int (&f(int a))[3]`
            nameStart = here;
            sawName = isWrapped = true;
            tokens.moveTo(parameters);
            break;
        } else if (token.kind == Identifier) {
            // `~_A()`
            const bool isDestructor = keepsUnrecognized_ && here > start && tokens.kindAt(here - 1) == Tilde;
            nameStart = isDestructor ? here - 1 : here;
            sawName = true;
        } else {
            sawName = sawName && (token.kind == Less || view(tokens).opensAttribute(here));
        }
        tokens.moveTo(behind);
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
    tokens.moveTo(isWrapped ? nameStart : start + findQualifiedNameStart(tokens, nameStart - start + 1) - 1);
    TokenText name;
    addThrough(tokens, end, name);
    return name.makeLeaf<IdNode>();
}

// Where a name begins that stands in parentheses: a macro's call has its own name joined to these.
Parser::Index Parser::wrappedNameStart(const TokenBuffer& tokens, Index openParen) const {
    if (openParen == tokens.begin() || tokens.kindAt(openParen - 1) != Identifier) return openParen;
    const Token open = tokens.at(openParen);
    const Token word = tokens.at(openParen - 1);
    const bool isJoined = word.end.line == open.start.line && word.end.column + 1 == open.start.column;
    return isJoined || openParen - 1 == tokens.begin() ? openParen - 1 : openParen;
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
            return takeArguments(tokens);
        case OpenBracket:
            if (const Token close = peekSignificant(tokens); close.kind != CloseBracket) {
                report(close.start, "Expected [.");
                return false;
            }
            nextSignificant(tokens);
            return takeArguments(tokens);
        case KeywordNew:
        case KeywordDelete:
            if (peekSignificantKind(tokens) == OpenBracket) {
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
    if (isPunctuation(first.kind)) return takeArguments(tokens);
    // A conversion: the words of a type.
    while (true) {
        const Token token = peekSignificant(tokens);
        if (token.kind == Trn::kEndKind || token.kind == OpenParen) return true;
        skipTrivia(tokens);
        tokens.moveTo(view(tokens).behind(tokens.place()));
    }
}

// Takes the template arguments that a specialisation of an operator has behind the operator, if there are any.
bool Parser::takeArguments(TokenBuffer& tokens) {
    if (peekSignificantKind(tokens) != Less) return true;
    skipTrivia(tokens);
    if (skipBracketed(tokens)) return true;
    tokens.moveTo(endPlace());
    report(tokens.current().start, "Expected \"<\".");
    return false;
}

// The list's own closing bracket may be the second half of a ">>".
std::unique_ptr<ParameterListNode> Parser::parseParameterList(TokenBuffer& tokens, Brackets brackets) {
    const bool isAngled = brackets == Brackets::Angles;
    skipTrivia(tokens);
    const Token open = tokens.next();
    if (open.kind != (isAngled ? Less : OpenParen)) {
        tokens.stepBack();
        report(open.start, std::string("Expected '") + (isAngled ? "<" : "(") + "' Got: " + shown(open));
        return nullptr;
    }
    const Index close = links_.closing(tokens.place() - 1);
    auto list = std::make_unique<ParameterListNode>();
    list->setStart(open.start);
    TokenText parameter;
    const auto finish = [&] {
        list->add(parameter.makeLeaf<ParameterNode>());
        parameter = TokenText();
    };
    while (true) {
        skipTrivia(tokens);
        Token token = tokens.current();
        if (tokens.place() == close) {
            if (token.kind == ShiftRight) takeHalf(token, parameter);
            finish();
            list->setEnd(token.start);
            tokens.next();
            return list;
        }
        const bool isBehind = token.kind == Semicolon || token.kind == OpenBrace ||
                              (keepsUnrecognized_ && token.kind == CloseBrace);
        const bool isCutOff = close == TokenLinks::kNone && isAngled && isBehind;
        if (token.kind == Trn::kEndKind || isCutOff) {
            if (token.kind == Trn::kEndKind) {
                report(token.start, UnexpectedEnd);
            } else {
                report(token.start, "Expected '>'. Got: " + shown(token));
            }
            finish();
            return list;
        }
        const Index inner = links_.closing(tokens.place());
        if (inner != TokenLinks::kNone && inner > tokens.place()) {
            // The ">>" that ends two lists is both this list's and the inner one's.
            addThrough(tokens, inner == close ? close : inner + 1, parameter);
        } else if (tokens.next(); token.kind == Comma) {
            finish();
        } else {
            parameter.add(token);
        }
    }
}

std::unique_ptr<TextNode> Parser::parseQualifiers(TokenBuffer& tokens) {
    TokenText qualifiers;
    while (isQualifier(peekSignificantKind(tokens))) qualifiers.add(nextSignificant(tokens));
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
    skipTrivia(tokens);
    const Index close = links_.closing(tokens.place());
    if (close == TokenLinks::kNone) {
        report(tokens.current().start, UnexpectedEnd);
    } else {
        addThrough(tokens, close + 1, clause);
    }
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
            case KeywordTypename:
                list->add(parseInitializer(tokens));
                break;
            case Comma:
            case Colon:  // of another branch
            case Dot:
                tokens.next();
                break;
            default:
                return list;
        }
    }
}

std::unique_ptr<InitializerNode> Parser::parseInitializer(TokenBuffer& tokens) {
    TokenText member;
    Index previous = TokenLinks::kNone;
    while (true) {
        skipTrivia(tokens);
        const Index here = tokens.place();
        const int kind = tokens.kindAt(here);
        const bool isOpen = kind == OpenParen || kind == OpenBrace;
        if ((isOpen && !isArgumentOf(tokens, here, previous)) || kind == Comma || kind == Trn::kEndKind) break;
        const Index close = links_.closing(here);
        addThrough(tokens, (close == TokenLinks::kNone ? here : close) + 1, member);
        previous = here;
    }
    if (const Token open = tokens.current(); open.kind != OpenParen && open.kind != OpenBrace) {
        report(open.start, "Expected a (. Got: \"" + shown(open) + "\"");
        return nullptr;
    }
    auto name = member.makeLeaf<IdNode>();
    ExprBodies bodies;
    auto arguments = parseArguments(tokens, bodies);
    auto initializer = std::make_unique<InitializerNode>(std::move(name), std::move(arguments));
    initializer->setBodies(std::move(bodies));
    return initializer;
}

// "(…)" or "{…}"
std::unique_ptr<ArgListNode> Parser::parseArguments(TokenBuffer& tokens, ExprBodies& bodies) {
    auto list = std::make_unique<ArgListNode>();
    const Index close = links_.closing(tokens.place());
    list->setStart(tokens.next().start);
    Expression argument;
    argument.bodies = std::move(bodies);
    const auto finish = [&] {
        list->add(argument.text.makeLeaf<ArgNode>());
        argument.text = TokenText();
    };
    while (true) {
        if (isTrivia(tokens.peekKind())) {
            if (argument.text.empty()) {
                addTrivia(tokens, *list);
            } else {
                skipTrivia(tokens);
            }
            continue;
        }
        const Token token = tokens.current();
        if (token.kind == Trn::kEndKind) report(token.start, UnexpectedEnd);
        if (tokens.place() == close || token.kind == Trn::kEndKind) {
            finish();
            bodies = std::move(argument.bodies);
            if (tokens.place() == close) list->setEnd(tokens.next().start);
            return list;
        }
        if (token.kind == Comma) {
            tokens.next();
            finish();
            continue;
        }
        noteBody(tokens, argument);
        if (token.kind != OpenBrace || !takeBody(tokens, argument)) takeToken(tokens, argument);
    }
}

// The declarator's parentheses begin at `open`.
std::unique_ptr<FunctionPtrDeclNode> Parser::parseFunctionPtrDecl(TokenBuffer& tokens, Index open) {
    TokenText returnType;
    while (true) {
        skipTrivia(tokens);
        const Token token = tokens.current();
        const Index here = tokens.place();
        if (here == open) break;
        if (token.kind == Semicolon) {
            report(token.start, "Expected \"(\" as part of pointer-to-function declaration. Got ';'");
            return nullptr;
        }
        if (token.kind == Trn::kEndKind) {
            report(token.start, UnexpectedEnd);
            return nullptr;
        }
        const Index close = links_.closing(here);
        addThrough(tokens, (close == TokenLinks::kNone ? here : close) + 1, returnType);
    }
    tokens.next();

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
    // A pointer to an array has bounds there, one to data, and an array of pointers, nothing.
    const int following = peekSignificantKind(tokens);
    const bool isNothing = keepsUnrecognized_ && following == Semicolon;
    if (following != OpenBracket && following != Assign && following != Identifier && !isNothing) {
        declaration->setParameters(parseParameterList(tokens, Brackets::Parentheses));
    }
    // `(*)[2];` declares nothing.
    if (keepsUnrecognized_ && returnType.empty() && name.empty() && !declaration->parameters()) {
        report(tokens.at(open).start, CannotParse);
        return nullptr;
    }
    if (isQualifier(peekSignificantKind(tokens))) declaration->setQualifiers(parseQualifiers(tokens));
    // An initializer has no node of its own, but it is the declaration's.
    while (tokens.peekKind() != Trn::kEndKind) {
        if (const Token token = nextSignificant(tokens); token.kind == Semicolon)
            declaration->setEnd(token.end);
    }
    return declaration;
}

}  // namespace Cpp
