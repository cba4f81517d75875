// Blocks, control statements, labels, assembler and expression statements.

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

// A token that cannot stand inside the parentheses of a control statement's head.
bool breaksCondition(int kind) {
    switch (kind) {
        case Trn::kEndKind:
        case OpenBrace:
        case CloseBrace:
        case KeywordNamespace:
        case KeywordCase:
        case KeywordDefault:
        case KeywordContinue:
        case KeywordBreak:
        case KeywordGoto:
        case KeywordReturn:
            return true;
        default:
            return isControlKeyword(kind);
    }
}

bool startsDeclarationInBlock(int kind) {
    return isClassKey(kind) || kind == KeywordStatic || kind == KeywordTypedef || kind == KeywordEnum;
}

// A token behind a name that makes the two the start of a declaration.
bool continuesDeclaration(int kind) {
    return kind == Asterisk || kind == Ampersand || kind == Less || kind == Identifier;
}

// A token that ends an expression statement in front of it.
bool endsStatement(int kind, bool isOutsideParens) {
    switch (kind) {
        case Directive:
            return true;
        case OpenBrace:
        case CloseBrace:
        case KeywordCase:
        case KeywordDefault:
            return isOutsideParens;
        default:
            return isOutsideParens && isControlKeyword(kind);
    }
}

// A keyword that belongs to an expression statement only where it is its first word.
bool isJoinedFirst(int kind) {
    return kind == KeywordThrow || kind == KeywordReturn;
}

bool startsClass(int kind) {
    return kind == KeywordClass || kind == KeywordStruct;
}

bool startsAssembler(const Trn::Token& token) {
    return token.kind == KeywordAsm || (token.kind == Identifier && isAssemblerWord(token.text));
}

}  // namespace

// A braced block, or one without braces around a single statement.
std::unique_ptr<BlockNode> Parser::parseBlock(TokenBuffer& tokens) {
    NestingScope nesting(depth_, tokens);
    auto block = std::make_unique<BlockNode>();
    skipTrivia(tokens);
    if (tokens.peekKind() == OpenBrace) {
        parseBlockContent(tokens, *block);
    } else {
        parseSingleStatement(tokens, *block);
    }
    return block;
}

void Parser::parseSingleStatement(TokenBuffer& tokens, BlockNode& block) {
    const Token token = tokens.current();
    if (token.kind == Semicolon) {
        tokens.next();
        block.setStart(token.start);
        block.setEnd(token.end);
    } else if (isControlKeyword(token.kind)) {
        block.add(parseCtrlStmt(tokens));
    } else if (token.kind == KeywordTypedef) {
        addOrdinaryDeclaration(tokens, block, InClass::No);
    } else if (startsData(token.kind) ||
               (token.kind == Identifier && continuesDeclaration(tokens.peekKind(2)))) {
        parseDataOrExpression(tokens, block);
    } else {
        block.add(parseExprStmt(tokens));
    }
}

void Parser::parseBlockContent(TokenBuffer& tokens, BlockNode& block) {
    block.setStart(tokens.next().start);
    while (parseBlockItem(tokens, block)) tokens.release();
}

// Reads the next thing in a braced block. Says false when the block has ended.
bool Parser::parseBlockItem(TokenBuffer& tokens, BlockNode& block) {
    const Token token = tokens.next();
    const Index place = tokens.place();
    const auto again = [&]() -> TokenBuffer& {
        tokens.moveTo(place - 1);
        return tokens;
    };
    if (token.kind == CloseBrace) {
        block.setEnd(token.start);
        return false;
    }
    if (endsTokens(token.kind)) {
        report(tokens.at(place - 2).start, UnexpectedEnd);
        if (token.kind == Trn::kEndKind) tokens.stepBack();
        return false;
    }
    if (isTrivia(token.kind)) {
        addTrivia(again(), block);
    } else if (token.kind == OpenBrace) {
        block.add(parseBlock(again()));
    } else if (token.kind == KeywordNamespace) {
        report(token.start, NamespaceInBlock);
    } else if (token.kind == KeywordTemplate) {
        report(token.start, TemplateInBlock);
    } else if (isAccessKeyword(token.kind)) {
        report(token.start, AccessLabelInBlock);
    } else if (token.kind == KeywordUsing) {
        skipStatement(tokens, Semicolon, &block);
    } else if (token.kind == KeywordExtern) {
        if (tokens.peekKind() == StringLiteral) tokens.next();
    } else if (isControlKeyword(token.kind)) {
        block.add(parseCtrlStmt(again()));
    } else if (token.kind == KeywordCase || token.kind == KeywordDefault) {
        block.add(parseCase(again()));
    } else if (startsDeclarationInBlock(token.kind)) {
        Declaration declaration = parseDeclaration(again(), InClass::No);
        if (declaration.node && declaration.takesSemicolon && peekSignificant(tokens).kind == Semicolon) {
            declaration.node->setEnd(skipToSemicolon(tokens));
        }
        if (!declaration.node && tokens.place() < place) tokens.moveTo(place);
        block.add(std::move(declaration.node));
    } else if (startsAssembler(token)) {
        block.add(parseAsm(again()));
    } else if (token.kind == Identifier) {
        const int following = peekSignificant(tokens).kind;
        if (following == Colon) {
            block.add(parseLabel(again()));
        } else if (following == Semicolon || continuesDeclaration(following)) {
            parseDataOrExpression(again(), block);
        } else {
            block.add(parseExprStmt(again()));
        }
    } else if (startsData(token.kind)) {
        parseDataOrExpression(again(), block);
    } else if (token.kind != Semicolon) {
        block.add(parseExprStmt(again()));
        if (tokens.place() < place) tokens.moveTo(place);
    }
    return true;
}

// A declaration as far as its first words tell; where that turns out wrong, an expression statement, or
// several where a directive or a keyword parts them.
void Parser::parseDataOrExpression(TokenBuffer& tokens, BlockNode& block) {
    const Index start = tokens.place();
    if (start >= noDeclarationBefore_) {
        TokenBuffer list = collectDeclaration(tokens);
        noDeclarationBefore_ = tokens.place();
        if (auto declaration = parseDataDecl(list, tokens, InClass::No)) {
            block.add(std::move(declaration));
            return;
        }
        tokens.moveTo(start);
    }
    block.add(parseExprStmt(tokens));
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
            while (peekSignificant(tokens).kind == KeywordCatch) addPart();
            break;
        case KeywordDo:
            addPart();
            break;
        default:
            break;
    }
    return statement;
}

// An "if" with its "else". Where that goes on with an "if", which is a statement inside the "else", the loop
// goes on with that statement, so that long chains do not nest calls.
void Parser::parseIfChain(TokenBuffer& tokens, CtrlStmtNode& first) {
    ChainScope chain(chainDepth_);
    CtrlStmtNode* statement = &first;
    while (true) {
        statement->add(parseCtrlSubStmt(tokens));
        if (peekSignificant(tokens).kind != KeywordElse) return;
        addTrivia(tokens, *statement);
        auto part = std::make_unique<CtrlSubStmtNode>();
        part->setHead(parseCtrlHead(tokens));
        if (peekSignificant(tokens).kind != KeywordIf) {
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
    if (head->keyword()->keyword() == KeywordWhile && peekSignificant(tokens).kind == Semicolon) {
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
    auto head = std::make_unique<CtrlSubStmtHeadNode>();
    head->setKeyword(std::make_unique<KeywordNode>(keyword.kind, keyword.start, keyword.end));
    if (!hasCondition(keyword.kind)) return head;
    if (const Token open = peekSignificant(tokens); open.kind != OpenParen) {
        report(open.start, ExpectedOpenParen);
        return head;
    }
    skipTrivia(tokens);
    auto condition = parseCondition(tokens);
    if (!condition) return nullptr;
    head->setEnd(condition->end());
    head->setCondition(std::move(condition));
    return head;
}

// From "(" to the ")" that closes it.
std::unique_ptr<ExprNode> Parser::parseCondition(TokenBuffer& tokens) {
    const Position start = tokens.current().start;
    int depth = 0;
    while (true) {
        const Token token = nextSignificant(tokens);
        if (breaksCondition(token.kind)) {
            tokens.stepBack();
            report(token.start, ExpectedCloseParen);
            return nullptr;
        }
        if (token.kind == OpenParen) ++depth;
        if (token.kind == CloseParen && --depth == 0) {
            return std::make_unique<ExprNode>(std::string(), start, token.end);
        }
    }
}

std::unique_ptr<CaseNode> Parser::parseCase(TokenBuffer& tokens) {
    skipTrivia(tokens);
    const Token keyword = tokens.next();
    if (keyword.kind != KeywordCase && keyword.kind != KeywordDefault) {
        tokens.stepBack();
        report(keyword.start, "Expected either 'case' or 'default'. Got: " + shown(keyword));
        return nullptr;
    }
    auto node = std::make_unique<CaseNode>();
    node->setKeyword(std::make_unique<KeywordNode>(keyword.kind, keyword.start, keyword.end));
    if (keyword.kind == KeywordDefault) {
        if (const Token colon = nextSignificant(tokens); colon.kind == Colon) {
            node->setEnd(colon.end);
        } else {
            tokens.stepBack();
            report(colon.start, "Expected a : immediately following 'default'. Got: " + shown(colon));
        }
        return node;
    }
    TokenText value;
    int depth = 0;  // of parentheses and of "?" without its ":"
    while (true) {
        const Token token = nextSignificant(tokens);
        if (token.kind == Colon && depth == 0) {
            node->setEnd(token.end);
            break;
        }
        if (token.kind == OpenParen || token.kind == Question) ++depth;
        if ((token.kind == CloseParen || token.kind == Colon) && depth > 0) --depth;
        if (endsTokens(token.kind)) {
            tokens.stepBack();
            break;
        }
        value.add(token);
    }
    node->setValue(value.makeLeaf<ExprNode>());
    return node;
}

std::unique_ptr<LabelNode> Parser::parseLabel(TokenBuffer& tokens) {
    const Token name = tokens.next();
    const Token colon = peekSignificant(tokens);
    if (colon.kind != Colon) {
        tokens.stepBack();
        return nullptr;
    }
    nextSignificant(tokens);
    auto label = std::make_unique<LabelNode>();
    label->setName(std::make_unique<IdNode>(std::string(name.text), name.start, name.end));
    label->setEnd(colon.end);
    return label;
}

std::unique_ptr<AsmNode> Parser::parseAsm(TokenBuffer& tokens) {
    skipTrivia(tokens);
    const Token word = tokens.next();
    if (!isAssemblerWord(word.text)) {
        report(word.start, "Expected 'asm'. Got: " + shown(word));
        return nullptr;
    }
    auto body = std::make_unique<BlockNode>();
    if (peekSignificant(tokens).kind == OpenBrace) {
        skipTrivia(tokens);
        parseAsmBlock(tokens, *body);
    } else {
        parseAsmLine(tokens, word.end.line, *body);
        if (!Trn::isSet(body->start())) body = nullptr;
    }
    return std::make_unique<AsmNode>(std::make_unique<TextNode>(std::string(word.text), word.start, word.end),
                                     std::move(body));
}

// { ... }
void Parser::parseAsmBlock(TokenBuffer& tokens, BlockNode& body) {
    body.setStart(tokens.next().start);
    TokenText text;
    int depth = 1;
    while (depth > 0) {
        const Token token = nextSignificant(tokens);
        if (token.kind == Trn::kEndKind) {
            tokens.stepBack();
            report(token.start, UnexpectedEnd);
            break;
        }
        if (token.kind == OpenBrace) ++depth;
        if (token.kind == CloseBrace) --depth;
        if (depth > 0) {
            text.add(token);
        } else {
            body.setEnd(token.start);
        }
    }
    body.add(text.makeLeaf<TextNode>());
}

// Assembler up to its ";" or the end of its line, where that does not stand in parentheses.
void Parser::parseAsmLine(TokenBuffer& tokens, std::uint32_t line, BlockNode& body) {
    int depth = 0;
    while (true) {
        const Token token = tokens.current();
        const bool isOnLaterLine = depth == 0 && token.start.line > line && token.kind != Semicolon;
        if (token.kind == Trn::kEndKind || isOnLaterLine) return;
        if (!Trn::isSet(body.start())) body.setStart(token.start);
        body.setEnd(token.end);
        tokens.next();
        if (token.kind == OpenParen) ++depth;
        if (token.kind == CloseParen && depth > 0) --depth;
        if (token.kind == Semicolon && depth == 0) return;
    }
}

// A statement that is no declaration, down to its ";". Null when nothing of one stands here.
std::unique_ptr<ExprNode> Parser::parseExprStmt(TokenBuffer& tokens) {
    skipTrivia(tokens);
    TokenText text;
    Position previous;
    int parenDepth = 0;
    int angleDepth = 0;
    bool sawTemplate = false;
    while (true) {
        if (isComment(tokens.peekKind())) {
            takeTrivia(tokens);
            continue;
        }
        const Token token = tokens.current();
        const bool isOutside = parenDepth == 0;
        bool endsBefore = false;
        bool isCounted = true;  // and not part of the text
        switch (token.kind) {
            case OpenParen:
                ++parenDepth;
                break;
            case CloseParen:
                parenDepth -= parenDepth > 0;
                break;
            case Less:
                ++angleDepth;
                break;
            case Greater:
                angleDepth -= angleDepth > 0;
                break;
            case KeywordTemplate:
                sawTemplate = true;
                break;
            case Semicolon:
                if (isOutside) {
                    text.append(token);
                    tokens.next();
                    return text.makeLeaf<ExprNode>();
                }
                isCounted = false;
                break;
            case Trn::kEndKind:
            case Unknown:
                report(Trn::isSet(previous) ? previous : token.start, UnexpectedEnd);
                endsBefore = true;
                break;
            default:
                isCounted = false;
                endsBefore = endsStatement(token.kind, isOutside) ||
                             (isJoinedFirst(token.kind) && !text.empty()) ||
                             (startsClass(token.kind) && isOutside && angleDepth == 0 && !sawTemplate);
        }
        if (endsBefore) return text.makeLeaf<ExprNode>();
        if (isCounted) {
            text.extend(token);
        } else {
            text.add(token);
        }
        previous = token.start;
        tokens.next();
    }
}

}  // namespace Cpp
