// The level of declarations: what a file holds, and the shape of each declaration.

#include <algorithm>
#include <optional>
#include <utility>

#include "cpp/access_words.h"
#include "cpp/conditional_groups.h"
#include "cpp/lexer.h"
#include "cpp/parser.h"
#include "cpp/parser_messages.h"
#include "cpp/parser_nesting.h"
#include "cpp/parser_scopes.h"
#include "cpp/token_kind.h"
#include "cpp/token_reader.h"
#include "cpp/token_sets.h"

namespace Cpp {

namespace {

// Where all else can be kept, what is reported is wrong with the whole text, and further messages follow from the
// first.
constexpr std::size_t kMaximumCauses = 3;

constexpr const char* kObjectiveC = "This is Objective-C, which is not read.";
constexpr const char* kOtherLanguage =
    "Only classes of other languages begin with an access keyword; C and C++ are read.";

// The first word that only Objective-C has. Forward declarations stand in headers of C++ too, and are none.
std::optional<Trn::Position> findObjectiveC(const Trn::TokenList& tokens) {
    for (Trn::TokenList::Index place = 0; place < tokens.size(); ++place) {
        if (tokens.kind(place) != Identifier) continue;
        const Trn::Token token = tokens[place];
        const std::string_view word = token.text;
        const bool isWord = word == "interface" || word == "implementation" || word == "end";
        if (isWord && token.offset > 0 && word.data()[-1] == '@') return token.start;
    }
    return std::nullopt;
}

}  // namespace

void Parser::parse(Trn::Lexer& lexer, Trn::SyntaxNode& root, std::list<Tessel::Diagnostic>& diagnostics) {
    diagnostics_ = diagnostics;
    depth_ = chainDepth_ = itemMessages_ = 0;
    noDeclarationBefore_ = noBraceBefore_ = typeEnd_ = 0;
    readInVain_ = 0;
    className_ = {};
    kept_.clear();
    using Words = KeywordNames::Words;
    Trn::TokenList text = readTokens(dynamic_cast<Lexer&>(lexer), keepsUnrecognized_ ? Words::All : Words::Some);
    const std::optional<Position> foreign = keepsUnrecognized_ ? findObjectiveC(text) : std::nullopt;
    conditions_ = foldUnreadBranches(text);
    links_ = TokenLinks(text);
    if (keepsUnrecognized_) nameAccessWords(text, links_);
    TokenBuffer tokens(std::move(text));
    tokens_ = tokens.list();
    RootNode tree;
    try {
        if (foreign) throw ParseEnded{*foreign, kObjectiveC};
        const bool isBalanced = links_.mismatches().empty();
        if (isBalanced || !keepsUnrecognized_) parseTopLevel(tokens, tree);
        if (!isBalanced && diagnostics_.size() == diagnostics.size()) reportMismatches(tokens);
    } catch (const ParseEnded& ended) {
        diagnostics_.push_back({Tessel::Error, ended.position, 0, ended.reason});
    }
    links_ = {};
    if (keepsUnrecognized_) diagnostics_.resize(std::min(diagnostics_.size(), diagnostics.size() + kMaximumCauses));
    dynamic_cast<RootNode&>(root).swap(tree);
    diagnostics = diagnostics_;
}

void Parser::parseTopLevel(TokenBuffer& tokens, RootNode& root) {
    while (tokens.peekKind() != Trn::kEndKind) {
        const int kind = tokens.peekKind();
        if (kind == Unknown || kind == Semicolon || kind == CloseBrace) {
            tokens.next();
        } else if (isTrivia(kind)) {
            addTrivia(tokens, root);
        } else {
            guarded(tokens, root, [&] { parseTopLevelItem(tokens, root); });
        }
    }
}

void Parser::parseTopLevelItem(TokenBuffer& tokens, RootNode& root) {
    const Token token = tokens.current();
    const Index rowEnd = keepsUnrecognized_ ? macros(tokens).behindRow(tokens.place()) : TokenLinks::kNone;
    if (rowEnd != TokenLinks::kNone) {
        root.add(makeKeptNode(tokens, tokens.place(), rowEnd, true));
    } else if (token.kind == OpenBrace) {
        root.add(parseBlock(tokens));
    } else if (isControlKeyword(token.kind)) {
        root.add(parseCtrlStmt(tokens));
    } else if (isJumpKeyword(token.kind)) {
        const Index start = tokens.place();
        if (!collectUntilKind(tokens, Semicolon)) return;
        TokenBuffer statement = tokens.slice(start, tokens.place());
        root.add(parseExprStmt(statement));
    } else if (token.kind == KeywordAsm || (token.kind == Identifier && isAssemblerWord(token.text))) {
        root.add(parseAsm(tokens));
    } else if (token.kind == Identifier && !isMacroNamespace(tokens)) {
        parseNamedBlock(tokens, root);
    } else if (token.kind == KeywordUsing) {
        addAlias(tokens, root);
    } else {
        addDeclaration(tokens, root, Scope::Outside);
    }
}

// An identifier in front of a block, which is a macro's call, or else the start of a declaration.
void Parser::parseNamedBlock(TokenBuffer& tokens, RootNode& root) {
    const Index place = tokens.place();
    const Token name = tokens.next();
    const bool isDeclared =
        followsType(tokens, place) && items(tokens).holdsValues(view(tokens).next(place), place);
    if (peekSignificantKind(tokens) == OpenBrace && !isDeclared) {
        root.add(std::make_unique<ExprNode>(LeafText(name), name.start, name.end));
        skipTrivia(tokens);
        root.add(parseBlock(tokens));
        return;
    }
    tokens.stepBack();
    addOrdinaryDeclaration(tokens, root, Scope::Outside);
}

// What a file, a namespace body, a linkage block and a class body have in common.
void Parser::addDeclaration(TokenBuffer& tokens, InteriorNode& list, Scope scope) {
    const Index following = view(tokens).next(tokens.place());
    const bool isForeign = isAccessKeyword(tokens.peekKind()) && scope == Scope::Outside &&
                           (isClassKey(tokens.kindAt(following)) || tokens.kindAt(following) == KeywordStatic);
    if (keepsUnrecognized_ && isForeign) throw ParseEnded{tokens.current().start, kOtherLanguage};
    if (keepsUnrecognized_ && scope == Scope::Outside && isControlKeyword(tokens.peekKind())) {
        list.add(parseCtrlStmt(tokens));
        return;
    }
    if (scope == Scope::Outside && isMacroNamespace(tokens)) return addNamespace(tokens, list);
    switch (tokens.peekKind()) {
        case KeywordNamespace: addNamespace(tokens, list); return;
        case KeywordTemplate: addTemplate(tokens, list); return;
        case KeywordExtern: parseLinkage(tokens, list, scope); return;
        case KeywordInline:
        case KeywordExport:
            if (tokens.kindAt(following) == KeywordNamespace) return addNamespace(tokens, list);
            if (tokens.kindAt(following) == KeywordTemplate) return addTemplate(tokens, list);
            if (tokens.kindAt(following) == OpenBrace) {
                list.add(parseLinkageBlock(tokens, following));
                return;
            }
            break;
        default: break;
    }
    addOrdinaryDeclaration(tokens, list, scope);
}

void Parser::addOrdinaryDeclaration(TokenBuffer& tokens, InteriorNode& list, Scope scope) {
    const Index startPlace = tokens.place();
    const Position start = tokens.current().start;
    if (keepsUnrecognized_ && scope == Scope::Outside && startsCallChain(tokens)) {
        list.add(parseExprStmt(tokens));
        return;
    }
    if (const Index end = scope == Scope::Outside ? endOfModuleLine(tokens) : TokenLinks::kNone;
        end != TokenLinks::kNone) {
        list.add(makeVerbatimNode(tokens, startPlace, end + 1));
        return;
    }
    Declaration declaration = parseDeclaration(tokens, scope);
    if (!declaration.node) {
        report(start, CannotParse);
        if (tokens.place() == startPlace) tokens.next();
        return;
    }
    if (declaration.takesSemicolon && peekSignificantKind(tokens) == Semicolon) {
        declaration.node->setEnd(skipToSemicolon(tokens));
    }
    list.add(std::move(declaration.node));
    addHandlers(tokens, list);
}

// `FLAG(name, "text").onUpdate(f);`, `world()->size = 1;`: a call of which something is called, or a member taken. Behind
// an arrow may also stand what a deduction guide gives, `A(int) -> A<int>;`.
bool Parser::startsCallChain(const TokenBuffer& tokens) const {
    const TokenView look = view(tokens);
    const Index open = look.next(tokens.place());
    if (tokens.peekKind() != Identifier || tokens.kindAt(open) != OpenParen) return false;
    const Index close = links_.closing(open);
    if (close == TokenLinks::kNone) return false;
    const Index access = look.next(close);
    if (tokens.kindAt(access) != Arrow) return tokens.kindAt(access) == Dot;
    const Index member = look.next(access);
    const int following = tokens.kindAt(look.next(member));
    const bool isUsed = isMemberAccess(following) || following == OpenParen || following == OpenBracket;
    return tokens.kindAt(member) == Identifier && (isUsed || following == Assign);
}

// `export module a.b:c;`, `import <vector>;`: the place of the ";". Elsewhere the words are names.
Parser::Index Parser::endOfModuleLine(const TokenBuffer& tokens) const {
    const TokenView look = view(tokens);
    Index place = tokens.place();
    if (tokens.kindAt(place) == KeywordExport) place = look.next(place);
    const Token word = tokens.at(place);
    if (!keepsUnrecognized_ || (word.text != "module" && word.text != "import")) return TokenLinks::kNone;
    const int first = tokens.kindAt(look.next(place));
    const bool isHeader = word.text == "import" && (first == Less || first == StringLiteral);
    if (!isHeader && first != Identifier && first != Colon && first != Semicolon) return TokenLinks::kNone;
    while (true) {
        place = look.next(place);
        switch (tokens.kindAt(place)) {
            case Semicolon: return place;
            case Identifier:
            case Dot:
            case Colon: break;
            default:
                if (!isHeader || tokens.kindAt(place) == OpenBrace || endsTokens(tokens.kindAt(place))) {
                    return TokenLinks::kNone;
                }
        }
    }
}

// Those of a function whose body is a "try" block.
void Parser::addHandlers(TokenBuffer& tokens, InteriorNode& list) {
    while (peekSignificantKind(tokens) == KeywordCatch) {
        addTrivia(tokens, list);
        list.add(parseCtrlStmt(tokens));
    }
}

Parser::Declaration Parser::parseDeclaration(TokenBuffer& tokens, Scope scope) {
    using Shape = Item::Shape;
    NestingScope nesting(depth_, tokens);
    skipTrivia(tokens);
    const Index start = tokens.place();
    const ItemContext context{scope, className_, followsType(tokens, start)};
    const Item item = items(tokens).scanDeclaration(start, context, noBraceBefore_);
    switch (item.shape) {
        case Shape::Function: return parseFunctionShape(tokens, start, item);
        case Shape::FunctionPointer: return parseFunctionPointerShape(tokens, start, item.place);
        case Shape::Class:
        case Shape::Enum: return parseBracedShape(tokens, start, item);
        case Shape::Data: return {parseDataDecl(tokens, scope), false};
        case Shape::Statement: return {parseExprStmt(tokens), false};
        case Shape::Macro: return {makeKeptNode(tokens, start, item.place, true), false};
        case Shape::MacroHead:
        case Shape::None: break;
    }
    if (tokens.kindAt(item.place) == Trn::kEndKind) return failAtEnd(tokens, item.place);
    tokens.moveTo(item.place);
    return {};
}

// The end of the text inside a declaration.
Parser::Declaration Parser::failAtEnd(TokenBuffer& tokens, Index end) {
    tokens.moveTo(end);
    report(tokens.current().start, UnexpectedEnd);
    return {};
}

// A declaration with parameters. Its head ends with the tail behind these; then head and body are parsed.
Parser::Declaration Parser::parseFunctionShape(TokenBuffer& tokens, Index start, const Item& item) {
    if (links_.closing(item.parameters) == TokenLinks::kNone) return failAtEnd(tokens, endPlace());
    const HeadTail tail = heads(tokens).scanTailOf(item.parameters);
    if (tail.brokenThrow != TokenLinks::kNone) {
        const Token found = tokens.at(view(tokens).next(tail.brokenThrow));
        report(found.start, "Expected '(' as part of exception specification clause 'throw()'. Got: " + shown(found));
    }
    if (tail.initializers != TokenLinks::kNone && tokens.kindAt(tail.end) == Trn::kEndKind) {
        return failAtEnd(tokens, tail.end);
    }
    TokenBuffer head = tokens.slice(start, tail.end);
    tokens.moveTo(tail.end);
    if (!tail.isComplete) report(tokens.current().start, ExpectedFunctionEnd);
    auto declaration = parseFunctionDecl(head, item.parameters, tail, tokens);
    // "= 1" begins nothing.
    if (!tail.isComplete && tokens.peekKind() == Assign) skipToSemicolon(tokens);
    const bool hasBody = declaration->body() != nullptr;
    return {std::move(declaration), !hasBody};
}

// `int (*f)(int){a};`: whether the values of what is declared stand in the braces.
bool Parser::isWholeInitializer(const TokenBuffer& tokens) const {
    const Index brace = tokens.place();
    return !links_.holdsStatements(brace) && tokens.kindAt(view(tokens).behind(brace)) == Semicolon;
}

// A declaration with a declarator in parentheses, up to its ";".
Parser::Declaration Parser::parseFunctionPointerShape(TokenBuffer& tokens, Index start, Index open) {
    bool sawDeclarator = false;  // a "," before it separates a template's arguments
    bool sawAssign = false;
    while (true) {
        skipTrivia(tokens);
        const Token token = tokens.current();
        if (token.kind == Trn::kEndKind) return failAtEnd(tokens, tokens.place());
        if ((token.kind == Comma && sawDeclarator) || isAccessKeyword(token.kind)) break;
        // Only an initializer may have braces; a body means that this is no pointer after all.
        const bool isBody = token.kind == OpenBrace && !sawAssign && !isWholeInitializer(tokens);
        if (isBody || token.kind == CloseBrace) {
            report(token.start, ExpectedFunctionEnd);
            return {};
        }
        if (token.kind == Semicolon) {
            tokens.next();  // comments behind it are not the declaration's
            break;
        }
        tokens.moveTo(view(tokens).behind(tokens.place()));
        sawDeclarator |= token.kind == OpenParen;
        sawAssign |= token.kind == Assign;
    }
    TokenBuffer declaration = tokens.slice(start, tokens.place());
    return {parseFunctionPtrDecl(declaration, open), false};
}

// A class or an enum with its body, up to the "}" that closes it.
Parser::Declaration Parser::parseBracedShape(TokenBuffer& tokens, Index start, const Item& item) {
    if (item.shape == Item::Shape::Class && tokens.kindAt(item.place) != OpenBrace) {
        return {parseMacroClass(tokens, start, item.place), true};
    }
    const Index close = links_.closing(item.place);
    if (close == TokenLinks::kNone) return failAtEnd(tokens, endPlace());
    tokens.moveTo(close + 1);
    TokenBuffer declaration = tokens.slice(start, close + 1);
    Declaration type;
    if (item.shape == Item::Shape::Enum) {
        type.node = parseEnumDecl(declaration);
    } else {
        type.node = parseClassDecl(declaration);
    }
    type.takesSemicolon = true;
    typeEnd_ = close;
    return type;
}

// `struct A { int b; } c{1}, d{2};`: whether what is declared has its type in front of it on the line.
bool Parser::followsType(const TokenBuffer& tokens, Index place) const {
    if (!keepsUnrecognized_ || place == 0 || place != typeEnd_ + 1) return false;
    return tokens.at(place).start.line == tokens.at(typeEnd_).end.line;
}

}  // namespace Cpp
