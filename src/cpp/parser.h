#pragma once

#include <cstdint>
#include <list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cpp/conditional_groups.h"
#include "cpp/item_scanner.h"
#include "cpp/kept_item.h"
#include "cpp/nodes.h"
#include "cpp/token_links.h"
#include "cpp/token_text.h"
#include "trn/diagnostic.h"
#include "trn/parser.h"
#include "trn/token_buffer.h"

namespace Cpp {

// What a parser does with text that no rule recognises: it reports it, or, where its brackets match, keeps it as it was
// written, as one item.
enum class Unrecognized { Reported, Kept };

// Recognises the shape of C and C++ source: declarations with their heads, bodies and lists, statements with
// their parts, and the blocks that stand in expressions. What lies below that (types, expressions, parameters) stays
// text. One operation per construct; each takes the tokens it wants and leaves the others. Problems become
// diagnostics of severity 3, and parsing goes on behind them.
//
// The tokens are read once, and their brackets matched once (TokenLinks); of conditional groups whose branches leave
// different brackets open, one branch is read. What an item is, ItemScanner tells by one look ahead.
//
// Comments and directives between the parts of a list become nodes of it; those inside a construct are passed
// over, for the passes copy the source between node positions anyway. `#if 0` blocks and VANTREL-OFF regions
// become one node each, their tokens unseen.
class Parser : public Trn::Parser {
public:
    explicit Parser(Unrecognized unrecognized = Unrecognized::Reported)
        : keepsUnrecognized_(unrecognized == Unrecognized::Kept) {}

    // `lexer` must be a Cpp::Lexer, and `root` a Cpp::RootNode; its former content is replaced.
    void parse(Trn::Lexer& lexer, Trn::SyntaxNode& root, std::list<Tessel::Diagnostic>& diagnostics) override;

    // What the last parse has kept, in source order.
    const KeptItems& keptItems() const { return kept_; }
    // The tokens that the last parse has read, for whom they are wanted. Those with a text of their own, where white
    // space parts a name, have lost it.
    std::shared_ptr<const Trn::TokenList> takeTokens() { return std::move(tokens_); }
    // By which it has chosen among the branches of conditional groups.
    TakenConditions takeConditions() { return std::move(conditions_); }

private:
    using TokenBuffer = Trn::TokenBuffer;
    using Token = Trn::Token;
    using Position = Trn::Position;
    using Index = TokenBuffer::Index;
    using Scope = ItemContext::Scope;

    enum class Brackets { Parentheses, Angles };

    // A declaration, and whether a ";" that follows it is its end.
    struct Declaration {
        std::unique_ptr<SyntaxNode> node;
        bool takesSemicolon = false;
    };

    class ItemGuard;
    class BodyScope;

    // Messages (parser_messages.cpp).
    void append(Tessel::Diagnostic diagnostic);
    void report(Position position, int code);
    void report(Position position, std::string text);
    void reportMismatches(const TokenBuffer& tokens);

    // What is kept (parser_kept.cpp).
    template <typename Parse>
    void guarded(TokenBuffer& tokens, InteriorNode& list, Parse parse);
    template <typename Body, typename TakeOther, typename ParseItem>
    std::unique_ptr<Body> parseItems(TokenBuffer& tokens, TakeOther takeOther, ParseItem parseItem);
    Index endOfItem(const TokenBuffer& tokens, Index start) const;
    Index endOfKept(const TokenBuffer& tokens, Index start) const;
    Index endOfFailed(const TokenBuffer& tokens, Index start);
    std::unique_ptr<KeptNode> makeKeptNode(TokenBuffer& tokens, Index start, Index end, bool isMacro);
    std::unique_ptr<KeptNode> makeVerbatimNode(TokenBuffer& tokens, Index start, Index end);
    void addAlias(TokenBuffer& tokens, InteriorNode& list, InteriorNode* comments = nullptr);

    // Comments, directives and regions, and tokens up to a place (parser_trivia.cpp).
    std::unique_ptr<PreprocDirectiveNode> makeDirectiveNode(TokenBuffer& tokens);
    std::unique_ptr<CommentNode> makeCommentNode(TokenBuffer& tokens);
    bool isComplete(const Token& trivia);
    void skipTrivia(TokenBuffer& tokens);
    void addTrivia(TokenBuffer& tokens, InteriorNode& list);
    Token peekSignificant(const TokenBuffer& tokens) const;
    int peekSignificantKind(const TokenBuffer& tokens) const {
        return tokens.kindAt(links_.significant(tokens.place()));
    }
    Token nextSignificant(TokenBuffer& tokens);
    bool skipBracketed(TokenBuffer& tokens);
    Position skipToSemicolon(TokenBuffer& tokens);
    void skipStatement(TokenBuffer& tokens, int kind, InteriorNode* comments = nullptr);
    bool collectUntilKind(TokenBuffer& tokens, int kind);
    void addThrough(TokenBuffer& tokens, Index end, TokenText& text);
    static void addRun(TokenBuffer& tokens, Index end, TokenText& text);
    TokenView view(const TokenBuffer& tokens) const { return {tokens, links_}; }
    HeadScanner heads(const TokenBuffer& tokens) const { return {tokens, links_}; }
    MacroScanner macros(const TokenBuffer& tokens) const { return {tokens, links_}; }
    ItemScanner items(const TokenBuffer& tokens) const { return {tokens, links_, keepsUnrecognized_}; }
    Index endPlace() const { return links_.size() - 1; }  // of the token that ends the text
    bool isArgumentOf(const TokenBuffer& tokens, Index openParen, Index previous) const;

    // Declarations (parser_declarations.cpp).
    void parseTopLevel(TokenBuffer& tokens, RootNode& root);
    void parseTopLevelItem(TokenBuffer& tokens, RootNode& root);
    void parseNamedBlock(TokenBuffer& tokens, RootNode& root);
    void addDeclaration(TokenBuffer& tokens, InteriorNode& list, Scope scope);
    void addOrdinaryDeclaration(TokenBuffer& tokens, InteriorNode& list, Scope scope);
    void addHandlers(TokenBuffer& tokens, InteriorNode& list);
    Declaration parseDeclaration(TokenBuffer& tokens, Scope scope);
    Declaration parseFunctionShape(TokenBuffer& tokens, Index start, const Item& item);
    bool isWholeInitializer(const TokenBuffer& tokens) const;
    Declaration parseFunctionPointerShape(TokenBuffer& tokens, Index start, Index open);
    Declaration parseBracedShape(TokenBuffer& tokens, Index start, const Item& item);
    Declaration failAtEnd(TokenBuffer& tokens, Index end);

    // Namespaces, linkage blocks and template headers (parser_namespaces.cpp).
    bool isMacroNamespace(const TokenBuffer& tokens) const;
    void addNamespace(TokenBuffer& tokens, InteriorNode& list);
    bool startsCallChain(const TokenBuffer& tokens) const;
    Index endOfModuleLine(const TokenBuffer& tokens) const;
    bool followsType(const TokenBuffer& tokens, Index place) const;
    bool isNamespaceAlias(const TokenBuffer& tokens) const;
    std::unique_ptr<NamespaceHeadNode> parseNamespaceHead(TokenBuffer& tokens);
    std::unique_ptr<NamespaceBodyNode> parseNamespaceBody(TokenBuffer& tokens);
    void addTemplate(TokenBuffer& tokens, InteriorNode& list);
    void parseLinkage(TokenBuffer& tokens, InteriorNode& list, Scope scope);
    std::unique_ptr<LinkageBlockNode> parseLinkageBlock(TokenBuffer& tokens, Index brace);
    std::unique_ptr<LinkageBlockBodyNode> parseLinkageBody(TokenBuffer& tokens, bool hasCLinkage);
    bool reportIllegalInLinkage(TokenBuffer& tokens, bool hasCLinkage);

    // Classes and enums (parser_classes.cpp).
    std::unique_ptr<ClassDeclNode> parseClassDecl(TokenBuffer& tokens);
    std::unique_ptr<ClassDeclNode> parseMacroClass(TokenBuffer& tokens, Index start, Index last);
    std::string_view declaredClassName(const TokenBuffer& tokens) const;
    std::unique_ptr<ClassHeadNode> parseClassHead(TokenBuffer& tokens);
    std::unique_ptr<ClassNameNode> parseClassName(TokenBuffer& tokens);
    bool hasMacroKey(const TokenBuffer& tokens, bool isNamed) const;
    std::unique_ptr<BaseClauseListNode> parseBaseClauseList(TokenBuffer& tokens);
    std::unique_ptr<BaseClauseNode> parseBaseClause(TokenBuffer& tokens);
    std::unique_ptr<ClassBodyNode> parseClassBody(TokenBuffer& tokens);
    void parseMember(TokenBuffer& tokens, ClassBodyNode& body);
    bool isAccessLabel(const TokenBuffer& tokens) const;
    std::unique_ptr<AccessSpecNode> parseAccessSpec(TokenBuffer& tokens);
    std::unique_ptr<EnumDeclNode> parseEnumDecl(TokenBuffer& tokens);
    std::unique_ptr<EnumHeadNode> parseEnumHead(TokenBuffer& tokens);
    std::unique_ptr<EnumBodyNode> parseEnumBody(TokenBuffer& tokens);
    std::unique_ptr<ExprNode> parseEnumerator(TokenBuffer& tokens);

    // Functions (parser_functions.cpp).
    std::unique_ptr<FunctionDeclNode> parseFunctionDecl(TokenBuffer& head, Index parameters, const HeadTail& tail,
                                                        TokenBuffer& tokens);
    std::unique_ptr<FunctionHeadNode> parseFunctionHead(TokenBuffer& tokens, Index parameters, const HeadTail& tail);
    void parseHeadTail(TokenBuffer& tokens, Index end, FunctionHeadNode& head);
    std::unique_ptr<IdNode> parseFunctionName(TokenBuffer& tokens, Index parameters);
    Index wrappedNameStart(const TokenBuffer& tokens, Index openParen) const;
    bool takeOperatorName(TokenBuffer& tokens);
    bool takeArguments(TokenBuffer& tokens);
    std::unique_ptr<ParameterListNode> parseParameterList(TokenBuffer& tokens, Brackets brackets);
    std::unique_ptr<TextNode> parseQualifiers(TokenBuffer& tokens);
    std::unique_ptr<ExprNode> parseExceptionClause(TokenBuffer& tokens);
    std::unique_ptr<ExprNode> parsePureClause(TokenBuffer& tokens);
    std::unique_ptr<InitializerListNode> parseCtorInitializers(TokenBuffer& tokens);
    std::unique_ptr<InitializerNode> parseInitializer(TokenBuffer& tokens);
    std::unique_ptr<ArgListNode> parseArguments(TokenBuffer& tokens, ExprBodies& bodies);
    std::unique_ptr<FunctionPtrDeclNode> parseFunctionPtrDecl(TokenBuffer& tokens, Index open);

    // Data (parser_data.cpp).
    std::unique_ptr<DataDeclNode> parseDataDecl(TokenBuffer& tokens, Scope scope);
    bool opensInitializer(const TokenBuffer& tokens, const std::vector<Token>& declarator, Index previous,
                          Index& callsEnd) const;
    void passStatement(TokenBuffer& tokens);
    bool parseTail(const Token& introducer, TokenBuffer& tokens, DataDeclNode& declaration);
    std::unique_ptr<ExprNode> parseInitialValue(TokenBuffer& tokens, bool isOfMacro);
    std::unique_ptr<ExprNode> parseCallInitializer(TokenBuffer& tokens);
    std::unique_ptr<ExprNode> parseBitField(TokenBuffer& tokens);

    // Expressions and the blocks in them (parser_expressions.cpp).
    struct Expression;
    void takeToken(TokenBuffer& tokens, Expression& expression);
    void takeGroup(TokenBuffer& tokens, Index close, Expression& expression);
    void takeRun(TokenBuffer& tokens, Index end, Expression& expression) const;
    bool mayConcernBodies(const TokenBuffer& tokens, Index place) const;
    bool takeBody(TokenBuffer& tokens, Expression& expression);
    void noteBody(const TokenBuffer& tokens, Expression& expression) const;
    std::unique_ptr<BlockNode> parseRequirements(TokenBuffer& tokens);
    std::unique_ptr<ExprNode> parseExprStmt(TokenBuffer& tokens);
    bool goesOn(const TokenBuffer& tokens, const Expression& statement) const;
    bool endsExpression(const TokenBuffer& tokens, const Expression& expression) const;
    enum class HeadOf { Statement, Macro };
    std::unique_ptr<ExprNode> parseCondition(TokenBuffer& tokens, HeadOf head = HeadOf::Statement);

    // Statements (parser_statements.cpp).
    std::unique_ptr<BlockNode> parseBlock(TokenBuffer& tokens);
    void parseSingleStatement(TokenBuffer& tokens, BlockNode& block);
    void parseLabelledStatement(TokenBuffer& tokens, BlockNode& block);
    void parseBlockContent(TokenBuffer& tokens, BlockNode& block);
    bool parseBlockItem(TokenBuffer& tokens, BlockNode& block);
    void addTemplateInBlock(TokenBuffer& tokens, BlockNode& block);
    bool definesFunction(const TokenBuffer& tokens);
    void parseStatement(TokenBuffer& tokens, BlockNode& block);
    void parseNamedStatement(TokenBuffer& tokens, BlockNode& block, Index word);
    bool parseMacroStatement(TokenBuffer& tokens, BlockNode& block);
    void parseDeclarationInBlock(TokenBuffer& tokens, BlockNode& block);
    void parseDataOrExpression(TokenBuffer& tokens, BlockNode& block);
    std::unique_ptr<CaseNode> parseCase(TokenBuffer& tokens);
    std::unique_ptr<LabelNode> parseLabel(TokenBuffer& tokens);
    std::unique_ptr<AsmNode> parseAsm(TokenBuffer& tokens);
    void parseAsmBlock(TokenBuffer& tokens, BlockNode& body);
    void parseAsmLine(TokenBuffer& tokens, std::uint32_t line, BlockNode& body);

    // Control statements (parser_control.cpp).
    std::unique_ptr<CtrlStmtNode> parseCtrlStmt(TokenBuffer& tokens);
    std::unique_ptr<CtrlStmtNode> parseMacroCtrlStmt(TokenBuffer& tokens);
    void addBranches(TokenBuffer& tokens, CtrlStmtNode& statement);
    void parseIfChain(TokenBuffer& tokens, CtrlStmtNode& first);
    std::unique_ptr<CtrlSubStmtNode> parseCtrlSubStmt(TokenBuffer& tokens);
    std::unique_ptr<BlockNode> parseBody(TokenBuffer& tokens);
    std::unique_ptr<CtrlSubStmtHeadNode> parseCtrlHead(TokenBuffer& tokens);
    void takeAttribute(TokenBuffer& tokens, CtrlSubStmtHeadNode& head);
    Position takeHeadWords(TokenBuffer& tokens, Position end);

    bool keepsUnrecognized_;
    std::list<Tessel::Diagnostic> diagnostics_;
    TokenLinks links_;
    KeptItems kept_;
    std::shared_ptr<const Trn::TokenList> tokens_;
    TakenConditions conditions_;
    std::string_view className_;  // of the class whose body is read
    Index typeEnd_ = 0;           // the "}" of the last class or enum that was read
    int itemMessages_ = 0;        // about the item that is read, but for those about the items in its body
    int depth_ = 0;               // of constructs inside constructs
    int chainDepth_ = 0;          // of "else if" parts, each inside the one before it

    std::size_t readInVain_ = 0;  // tokens that items which failed had read beyond what was kept of them

    // What looking ahead has found, so that it need not look twice.
    Index noBraceBefore_ = 0;        // behind the last declaration that was scanned for one
    Index noDeclarationBefore_ = 0;  // up to here stands a statement that has turned out to be no declaration
};

}  // namespace Cpp
