#pragma once

#include <cstdint>
#include <list>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "cpp/nodes.h"
#include "cpp/token_text.h"
#include "trn/diagnostic.h"
#include "trn/parser.h"
#include "trn/token_buffer.h"

namespace Cpp {

// Recognises the shape of C and C++ source: declarations with their heads, bodies and lists, statements with
// their parts. What lies below that (types, expressions, parameters) stays text. One operation per construct;
// each takes the tokens it wants and leaves the others. Problems become diagnostics of severity 3, and
// parsing goes on behind them.
//
// Comments and directives between the parts of a list become nodes of it; those inside a construct are passed
// over, for the passes copy the source between node positions anyway. `#if 0` blocks and VANTREL-OFF regions
// become one node each, their tokens unseen.
class Parser : public Trn::Parser {
public:
    // `root` must be a Cpp::RootNode; its former content is replaced.
    void parse(Trn::Lexer& lexer, Trn::SyntaxNode& root, std::list<Tessel::Diagnostic>& diagnostics) override;

private:
    using TokenBuffer = Trn::TokenBuffer;
    using Token = Trn::Token;
    using Position = Trn::Position;
    using Index = TokenBuffer::Index;

    enum class InClass : bool { No, Yes };
    enum class Brackets { Parentheses, Angles };

    // A declaration, and whether a ";" that follows it is its end.
    struct Declaration {
        std::unique_ptr<SyntaxNode> node;
        bool takesSemicolon = false;
    };

    // What the tokens of a declaration look like, and the token that told.
    enum class Shape { None, Function, FunctionPointer, Class, Enum, Data };
    struct Scan {
        Shape shape = Shape::None;
        Index place = 0;
    };

    // One comment or directive, or a region that begins with it. `isComplete` is false when the text ended
    // before the region did.
    struct Trivia {
        Token token;
        Position end;
        bool isRegion = false;
        bool isComplete = true;
    };

    // Messages (parser_messages.cpp).
    void append(Tessel::Diagnostic diagnostic);
    void report(Position position, int code);
    void report(Position position, std::string text);

    // Comments, directives and protected text (parser_trivia.cpp).
    Trivia takeTrivia(TokenBuffer& tokens);
    std::unique_ptr<PreprocDirectiveNode> makeDirectiveNode(TokenBuffer& tokens);
    std::unique_ptr<CommentNode> makeCommentNode(TokenBuffer& tokens);
    void skipTrivia(TokenBuffer& tokens);
    void addTrivia(TokenBuffer& tokens, InteriorNode& list);
    Token peekSignificant(TokenBuffer& tokens);
    Token nextSignificant(TokenBuffer& tokens);
    bool skipBracketed(TokenBuffer& tokens, int open, int close);
    Position skipToSemicolon(TokenBuffer& tokens);
    void skipStatement(TokenBuffer& tokens, int kind, InteriorNode* comments = nullptr);
    bool collectUntilKind(TokenBuffer& tokens, int kind);

    // Declarations (parser_declarations.cpp).
    void parseTopLevel(TokenBuffer& tokens, RootNode& root);
    void parseNamedBlock(TokenBuffer& tokens, RootNode& root);
    void addDeclaration(TokenBuffer& tokens, InteriorNode& list, InClass inClass);
    void addOrdinaryDeclaration(TokenBuffer& tokens, InteriorNode& list, InClass inClass);
    Declaration parseDeclaration(TokenBuffer& tokens, InClass inClass);
    Scan scanDeclaration(TokenBuffer& tokens);
    bool opensPointerDeclarator(TokenBuffer& tokens, bool isInName, int previousKind);
    Declaration parseFunctionShape(TokenBuffer& tokens, Index start, Index openParen);
    Declaration parseFunctionPointerShape(TokenBuffer& tokens, Index start);
    bool scanFunctionQualifiers(TokenBuffer& tokens);
    void scanFunctionEnd(TokenBuffer& tokens);
    Declaration parseBracedShape(TokenBuffer& tokens, Index start, const Scan& scan);
    std::optional<Index> behindClosingBrace(TokenBuffer& tokens, Index open);
    Declaration failAtEnd(TokenBuffer& tokens, Index end);
    std::unique_ptr<SyntaxNode> parseNamespace(TokenBuffer& tokens);
    std::unique_ptr<NamespaceHeadNode> parseNamespaceHead(TokenBuffer& tokens);
    std::unique_ptr<NamespaceBodyNode> parseNamespaceBody(TokenBuffer& tokens);
    std::unique_ptr<SyntaxNode> parseTemplate(TokenBuffer& tokens);
    void parseLinkage(TokenBuffer& tokens, InteriorNode& list, InClass inClass);
    std::unique_ptr<LinkageBlockNode> parseLinkageBlock(TokenBuffer& tokens);
    std::unique_ptr<LinkageBlockBodyNode> parseLinkageBody(TokenBuffer& tokens);

    // Classes and enums (parser_classes.cpp).
    std::unique_ptr<ClassDeclNode> parseClassDecl(TokenBuffer& tokens);
    std::unique_ptr<ClassHeadNode> parseClassHead(TokenBuffer& tokens);
    std::unique_ptr<ClassNameNode> parseClassName(TokenBuffer& tokens);
    std::unique_ptr<BaseClauseListNode> parseBaseClauseList(TokenBuffer& tokens);
    std::unique_ptr<BaseClauseNode> parseBaseClause(TokenBuffer& tokens);
    std::unique_ptr<ClassBodyNode> parseClassBody(TokenBuffer& tokens);
    std::unique_ptr<AccessSpecNode> parseAccessSpec(TokenBuffer& tokens);
    std::unique_ptr<EnumDeclNode> parseEnumDecl(TokenBuffer& tokens);
    std::unique_ptr<EnumHeadNode> parseEnumHead(TokenBuffer& tokens);
    std::unique_ptr<EnumBodyNode> parseEnumBody(TokenBuffer& tokens);
    std::unique_ptr<ExprNode> parseEnumerator(TokenBuffer& tokens);

    // Functions (parser_functions.cpp).
    std::unique_ptr<FunctionDeclNode> parseFunctionDecl(TokenBuffer& head, TokenBuffer& tokens);
    std::unique_ptr<FunctionHeadNode> parseFunctionHead(TokenBuffer& tokens);
    std::unique_ptr<IdNode> parseFunctionName(TokenBuffer& tokens);
    bool takeOperatorName(TokenBuffer& tokens);
    bool takeClosingAngle(TokenBuffer& tokens);
    std::unique_ptr<ParameterListNode> parseParameterList(TokenBuffer& tokens, Brackets brackets);
    std::unique_ptr<TextNode> parseQualifiers(TokenBuffer& tokens);
    std::unique_ptr<ExprNode> parseExceptionClause(TokenBuffer& tokens);
    std::unique_ptr<ExprNode> parsePureClause(TokenBuffer& tokens);
    std::unique_ptr<InitializerListNode> parseCtorInitializers(TokenBuffer& tokens);
    std::unique_ptr<InitializerNode> parseInitializer(TokenBuffer& tokens);
    std::unique_ptr<ArgListNode> parseArguments(TokenBuffer& tokens);
    std::unique_ptr<FunctionPtrDeclNode> parseFunctionPtrDecl(TokenBuffer& tokens);

    // Data (parser_data.cpp).
    TokenBuffer collectDeclaration(TokenBuffer& tokens);
    std::unique_ptr<DataDeclNode> parseDataDecl(TokenBuffer& list, TokenBuffer& tokens, InClass inClass);
    bool endsTemplateArguments(TokenBuffer& tokens);
    bool parseTail(const Token& introducer, TokenBuffer& list, TokenBuffer& tokens,
                   DataDeclNode& declaration);
    std::unique_ptr<ExprNode> parseInitialValue(const Token& assign, TokenBuffer& list, TokenBuffer& tokens);
    std::unique_ptr<ExprNode> parseCallInitializer(const Token& open, TokenBuffer& list);
    std::unique_ptr<ExprNode> parseBitField(const Token& colon, TokenBuffer& list);

    // Statements (parser_statements.cpp).
    std::unique_ptr<BlockNode> parseBlock(TokenBuffer& tokens);
    void parseSingleStatement(TokenBuffer& tokens, BlockNode& block);
    void parseBlockContent(TokenBuffer& tokens, BlockNode& block);
    bool parseBlockItem(TokenBuffer& tokens, BlockNode& block);
    void parseDataOrExpression(TokenBuffer& tokens, BlockNode& block);
    bool startsWithName(TokenBuffer& tokens, BlockNode& block, const Token& name, int following);
    std::unique_ptr<CtrlStmtNode> parseCtrlStmt(TokenBuffer& tokens);
    void parseIfChain(TokenBuffer& tokens, CtrlStmtNode& first);
    std::unique_ptr<CtrlSubStmtNode> parseCtrlSubStmt(TokenBuffer& tokens);
    std::unique_ptr<BlockNode> parseBody(TokenBuffer& tokens);
    std::unique_ptr<CtrlSubStmtHeadNode> parseCtrlHead(TokenBuffer& tokens);
    std::unique_ptr<ExprNode> parseCondition(TokenBuffer& tokens);
    std::unique_ptr<CaseNode> parseCase(TokenBuffer& tokens);
    std::unique_ptr<LabelNode> parseLabel(TokenBuffer& tokens);
    std::unique_ptr<AsmNode> parseAsm(TokenBuffer& tokens);
    void parseAsmBlock(TokenBuffer& tokens, BlockNode& body);
    void parseAsmLine(TokenBuffer& tokens, std::uint32_t line, BlockNode& body);
    std::unique_ptr<ExprNode> parseExprStmt(TokenBuffer& tokens);

    std::list<Tessel::Diagnostic> diagnostics_;
    int depth_ = 0;       // of constructs inside constructs
    int chainDepth_ = 0;  // of "else if" parts, each inside the one before it

    // What looking ahead has found, so that it need not look twice.
    Index triviaBegin_ = 0;  // the last run of comments and directives
    Index triviaEnd_ = 0;
    std::vector<std::pair<Index, Index>>
        braces_;                     // each "{" of the outermost class, and the place behind its "}"
    Index noBraceBefore_ = 0;        // behind the last declaration that was scanned for one
    Index noDeclarationBefore_ = 0;  // up to here stands a statement that has turned out to be no declaration
};

}  // namespace Cpp
