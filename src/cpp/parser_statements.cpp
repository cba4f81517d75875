// Blocks, what statements in them are, labels and assembler.

#include <string_view>
#include <utility>

#include "cpp/parser.h"
#include "cpp/parser_messages.h"
#include "cpp/parser_nesting.h"
#include "cpp/parser_scopes.h"
#include "cpp/token_kind.h"
#include "cpp/token_sets.h"
#include "cpp/words.h"

namespace Cpp {

namespace {

bool isCaseKeyword(int kind) { return kind == KeywordCase || kind == KeywordDefault; }

bool startsDeclarationInBlock(int kind) {
    return isClassKey(kind) || kind == KeywordStatic || kind == KeywordTypedef || kind == KeywordEnum;
}

// A token behind a name that makes the two the start of a declaration.
bool continuesDeclaration(int kind) {
    return kind == Asterisk || kind == Ampersand || kind == Less || kind == Identifier;
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
        return;
    }
    guarded(tokens, block, [&] {
        if (isControlKeyword(token.kind)) {
            block.add(parseCtrlStmt(tokens));
        } else if (keepsUnrecognized_ && isCaseKeyword(token.kind)) {
            parseLabelledStatement(tokens, block);
        } else if (token.kind == KeywordTypedef) {
            addOrdinaryDeclaration(tokens, block, Scope::Block);
        } else if (keepsUnrecognized_ && startsAssembler(token) && tokens.peekKind(2) == OpenBrace) {
            block.add(parseAsm(tokens));
        } else if (parseMacroStatement(tokens, block)) {
            return;
        } else if (startsData(token.kind) ||
                   (token.kind == Identifier && continuesDeclaration(tokens.peekKind(2)))) {
            parseDataOrExpression(tokens, block);
        } else {
            block.add(parseExprStmt(tokens));
        }
    });
}

// switch (a) case 0: default: b();
void Parser::parseLabelledStatement(TokenBuffer& tokens, BlockNode& block) {
    while (isCaseKeyword(tokens.peekKind())) {
        block.add(parseCase(tokens));
        addTrivia(tokens, block);
    }
    const int kind = tokens.peekKind();
    if (kind == CloseBrace || endsTokens(kind)) return;
    if (kind == OpenBrace) {
        block.add(parseBlock(tokens));
    } else if (kind == Semicolon) {
        block.add(parseExprStmt(tokens));
    } else {
        parseSingleStatement(tokens, block);
    }
}

void Parser::parseBlockContent(TokenBuffer& tokens, BlockNode& block) {
    BodyScope scope(*this);
    block.setStart(tokens.next().start);
    while (parseBlockItem(tokens, block)) {
    }
}

// Reads the next thing in a braced block. Says false when the block has ended.
bool Parser::parseBlockItem(TokenBuffer& tokens, BlockNode& block) {
    const Token token = tokens.current();
    if (isTrivia(token.kind)) {
        addTrivia(tokens, block);
        return true;
    }
    if (endsTokens(token.kind)) {
        report(tokens.at(tokens.place() - 1).start, UnexpectedEnd);
        if (token.kind == Unknown) tokens.next();
        return false;
    }
    switch (token.kind) {
        case CloseBrace:
            tokens.next();
            block.setEnd(token.start);
            return false;
        case OpenBrace: block.add(parseBlock(tokens)); return true;
        case Semicolon: tokens.next(); return true;
        case KeywordNamespace:
            if (isNamespaceAlias(tokens)) {
                addAlias(tokens, block, &block);
                return true;
            }
            tokens.next();
            report(token.start, NamespaceInBlock);
            return true;
        case KeywordTemplate:
            if (keepsUnrecognized_) {
                guarded(tokens, block, [&] { addTemplateInBlock(tokens, block); });
                return true;
            }
            tokens.next();
            report(token.start, TemplateInBlock);
            return true;
        case KeywordPublic:
        case KeywordPrivate:
        case KeywordProtected:
            tokens.next();
            report(token.start, AccessLabelInBlock);
            return true;
        case KeywordUsing: addAlias(tokens, block, &block); return true;
        case KeywordExtern:
            tokens.next();
            if (tokens.peekKind() == StringLiteral) tokens.next();
            return true;
        default: guarded(tokens, block, [&] { parseStatement(tokens, block); }); return true;
    }
}

void Parser::parseStatement(TokenBuffer& tokens, BlockNode& block) {
    const Index start = tokens.place();
    const Index word = view(tokens).behindAnnotations(start);
    const Token token = tokens.at(word);
    const bool isControl = isControlKeyword(token.kind) || isCaseKeyword(token.kind);
    if (isControl && word != start) {
        TokenText annotations;
        addThrough(tokens, word, annotations);
        block.add(annotations.makeLeaf<ExprNode>());
    }
    if (isControlKeyword(token.kind)) {
        block.add(parseCtrlStmt(tokens));
    } else if (isControl) {
        block.add(parseCase(tokens));
    } else if (startsDeclarationInBlock(token.kind)) {
        parseDeclarationInBlock(tokens, block);
    } else if (startsAssembler(token)) {
        block.add(parseAsm(tokens));
    } else if (token.kind == Identifier) {
        parseNamedStatement(tokens, block, word);
    } else if (startsData(token.kind)) {
        parseDataOrExpression(tokens, block);
    } else {
        block.add(parseExprStmt(tokens));
        if (tokens.place() == start) tokens.next();
    }
}

void Parser::parseDeclarationInBlock(TokenBuffer& tokens, BlockNode& block) {
    const Index start = tokens.place();
    Declaration declaration = parseDeclaration(tokens, Scope::Block);
    if (declaration.node && declaration.takesSemicolon && peekSignificantKind(tokens) == Semicolon) {
        declaration.node->setEnd(skipToSemicolon(tokens));
    }
    if (!declaration.node && tokens.place() == start) tokens.next();
    block.add(std::move(declaration.node));
}

// A statement whose first word, behind annotations, is the name at `word`.
void Parser::parseNamedStatement(TokenBuffer& tokens, BlockNode& block, Index word) {
    const ItemScanner look = items(tokens);
    const Index following = look.next(word);
    const int kind = tokens.kindAt(following);
    const bool isAnnotated = word != tokens.place();
    if (kind == Colon && !isAnnotated) {
        block.add(parseLabel(tokens));
        return;
    }
    if (!isAnnotated && parseMacroStatement(tokens, block)) return;
    const bool startsType = startsData(kind) || isClassKey(kind) || kind == KeywordStatic || kind == KeywordInline;
    const bool isReference = kind == LogicalAnd && tokens.kindAt(look.next(following)) == Identifier &&
                             tokens.kindAt(look.next(look.next(following))) == Assign;
    const bool isTyped = isAnnotated && !look.opensAttribute(tokens.place());
    // EMIT a->b();
    const int behind = tokens.kindAt(look.next(following));
    const bool isAccess = kind == Identifier && (behind == Arrow || behind == Dot);
    const bool isDeclaration = kind == Semicolon || continuesDeclaration(kind) || startsType || isReference ||
                               isTyped || look.startsWithSpecifier(word);
    if (isDeclaration && !isAccess && !isCoroutineWord(tokens.at(word).text)) {
        parseDataOrExpression(tokens, block);
    } else {
        block.add(parseExprStmt(tokens));
    }
}

// A macro that stands by itself, or governs a statement. Says false where there is none.
bool Parser::parseMacroStatement(TokenBuffer& tokens, BlockNode& block) {
    if (!keepsUnrecognized_) return false;
    const Item item = macros(tokens).scanStatement(tokens.place());
    switch (item.shape) {
        case Item::Shape::Macro: block.add(makeKeptNode(tokens, tokens.place(), item.place, true)); return true;
        case Item::Shape::MacroHead: block.add(parseMacroCtrlStmt(tokens)); return true;
        default: return false;
    }
}

// A declaration as far as its first words tell; where that turns out wrong, an expression statement, or
// several where a directive or a keyword parts them.
void Parser::parseDataOrExpression(TokenBuffer& tokens, BlockNode& block) {
    const Index start = tokens.place();
    if (start >= noDeclarationBefore_) {
        auto declaration = parseDataDecl(tokens, Scope::Block);
        noDeclarationBefore_ = tokens.place();
        if (declaration) {
            block.add(std::move(declaration));
            return;
        }
        tokens.moveTo(start);
        const bool isFunction = keepsUnrecognized_ && definesFunction(tokens);
        if (isFunction) return addOrdinaryDeclaration(tokens, block, Scope::Block);
    }
    block.add(parseExprStmt(tokens));
}

// What a template header belongs to is read as outside of blocks: no statement has such a header.
void Parser::addTemplateInBlock(TokenBuffer& tokens, BlockNode& block) {
    addTemplate(tokens, block);
    if (!as<TemplateNode>(block.children().back().get())) return;
    addTrivia(tokens, block);
    const int kind = tokens.peekKind();
    const bool isDeclared = kind != CloseBrace && kind != KeywordTemplate && kind != KeywordUsing && !endsTokens(kind);
    if (isDeclared) addOrdinaryDeclaration(tokens, block, Scope::Outside);
}

// One inside of another, or in the block of a macro that makes a namespace of it, `SUITE(a) { void f() {} }`.
bool Parser::definesFunction(const TokenBuffer& tokens) {
    const Item item = items(tokens).scanDeclaration(tokens.place(), {Scope::Block, className_}, noBraceBefore_);
    return item.shape == Item::Shape::Function && heads(tokens).hasBody(item.parameters);
}

std::unique_ptr<CaseNode> Parser::parseCase(TokenBuffer& tokens) {
    skipTrivia(tokens);
    const Token keyword = tokens.next();
    if (!isCaseKeyword(keyword.kind)) {
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
    int depth = 0;  // of "?" without its ":"
    while (true) {
        skipTrivia(tokens);
        const Index close = links_.closing(tokens.place());
        const Token token = tokens.current();
        if (endsTokens(token.kind)) break;
        if (close != TokenLinks::kNone) {
            addThrough(tokens, close + 1, value);
            continue;
        }
        tokens.next();
        if (token.kind == Colon && depth == 0) {
            node->setEnd(token.end);
            break;
        }
        if (token.kind == Question) ++depth;
        if (token.kind == Colon) --depth;
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
    label->setName(std::make_unique<IdNode>(LeafText(name), name.start, name.end));
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
    if (peekSignificantKind(tokens) == OpenBrace) {
        skipTrivia(tokens);
        parseAsmBlock(tokens, *body);
    } else {
        parseAsmLine(tokens, word.end.line, *body);
        if (!Trn::isSet(body->start())) body = nullptr;
    }
    return std::make_unique<AsmNode>(std::make_unique<TextNode>(LeafText(word), word.start, word.end),
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

}  // namespace Cpp
