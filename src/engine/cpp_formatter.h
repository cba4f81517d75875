#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cpp/nodes.h"
#include "cpp/opaque_tokens.h"
#include "engine/cpp_expr_formatter.h"
#include "engine/declaration_columns.h"
#include "engine/formatter_settings.h"
#include "engine/kept_indent.h"
#include "engine/kept_region.h"
#include "engine/layout_passes.h"
#include "engine/macro_bodies.h"
#include "engine/namespace_indent.h"
#include "engine/same_lines.h"
#include "engine/source_writer.h"
#include "engine/text_pool.h"

namespace Tessel {

// Rewrites the white space of a source as the scheme says, in one forward sweep: each visit copies its node's
// text and replaces the white space at the places that the scheme governs.
//
//  - Rules never write indentation; they set the output's indent for the span that they format.
//  - A rule that wants white space in front of a token that another rule copies leaves it pending. The visit
//    that reaches the token merges it with what the input has there, so that comments in between survive.
//  - Where the scheme has no value, the input's white space stays.
//
// One object formats one tree, once. The rules stand in a file for each family of constructs: *_rules.cpp.
class CppFormatter : public Cpp::Emitter {
public:
    // `source`, with its opaque tokens, is borrowed, as are `passes`, and `observer`, which may be null.
    CppFormatter(const Zelmor::TextDocument& source, const Cpp::OpaqueTokens& opaque, const FormatOptions& options,
                 const LayoutPasses& passes, LayoutObserver* observer);

    // Null where the source has not been lexed.
    void setSourceTokens(std::shared_ptr<const Trn::TokenList> tokens) {
        exprFormatter_.setSourceTokens(std::move(tokens));
    }
    // What nobody looks into; borrowed.
    void setUnreadBlocks(const KeptRegions& blocks) { writer_.setUnreadBlocks(blocks); }
    // What need not be formatted: it is copied. Borrowed.
    void setSettledLines(const SameLines& lines) { settledLines_ = &lines; }
    // The function in the first line is a frame around statements, which are indented by that; borrowed.
    void indentFrameBy(std::string_view indent) { frameIndent_ = indent; }
    // How bodies of control statements are laid out whose "{" stands behind something on its line; borrowed.
    void setBracesBehindHeads(const BraceSettings& braces) { bracesBehindHeads_ = &braces; }

    // The regions that have been kept inside of expressions and declarators; some more than once.
    const KeptRegions& regionsInExpressions() const { return exprFormatter_.keptRegions(); }

    // The same of the lists that may come to stand in columns.
    ListsInRows takeListsInRows() { return exprFormatter_.takeListsInRows(); }

    // The result, once the root has been visited.
    std::string takeText();

    using Cpp::Emitter::visit;
    // The frame (formatter_frame.cpp).
    void visit(Cpp::RootNode* root) override;
    void visit(Cpp::CommentNode* comment) override;
    void visit(Cpp::PreprocDirectiveNode* directive) override;
    // What is text (text_rules.cpp).
    void visit(Cpp::KeptNode* item) override;
    void visit(Cpp::ExprNode* expression) override;
    void visit(Cpp::AsmNode* statement) override;
    void visit(Cpp::TextNode* text) override;
    void visit(Cpp::KeywordNode* keyword) override;
    void visit(Cpp::TypeNode* type) override;
    void visit(Cpp::IdNode* name) override;
    void visit(Cpp::NamespaceHeadNode* head) override;
    void visit(Cpp::ClassNameNode* name) override;
    // Blocks (block_rules.cpp).
    void visit(Cpp::BlockNode* block) override;
    void visit(Cpp::LinkageBlockNode* linkage) override;
    void visit(Cpp::LinkageBlockBodyNode* body) override;
    // Namespaces and classes (class_rules.cpp).
    void visit(Cpp::NamespaceDeclNode* declaration) override;
    void visit(Cpp::NamespaceBodyNode* body) override;
    void visit(Cpp::ClassDeclNode* declaration) override;
    void visit(Cpp::ClassHeadNode* head) override;
    void visit(Cpp::ClassBodyNode* body) override;
    void visit(Cpp::BaseClauseListNode* list) override;
    void visit(Cpp::BaseClauseNode* clause) override;
    void visit(Cpp::AccessSpecNode* label) override;
    // Functions (function_rules.cpp), pointers to them (function_pointer_rules.cpp) and template headers
    // (template_rules.cpp).
    void visit(Cpp::FunctionDeclNode* declaration) override;
    void visit(Cpp::CtorDeclNode* declaration) override;
    void visit(Cpp::InitializerListNode* list) override;
    void visit(Cpp::InitializerNode* initializer) override;
    void visit(Cpp::ParameterNode* parameter) override;
    void visit(Cpp::FunctionPtrDeclNode* declaration) override;
    void visit(Cpp::TemplateNode* header) override;
    // Data (data_rules.cpp) and enums (enum_rules.cpp).
    void visit(Cpp::DataDeclNode* declaration) override;
    void visit(Cpp::EnumDeclNode* declaration) override;
    void visit(Cpp::EnumHeadNode* head) override;
    void visit(Cpp::EnumBodyNode* body) override;
    // Statements (statement_rules.cpp) and their labels (label_rules.cpp).
    void visit(Cpp::CtrlStmtNode* statement) override;
    void visit(Cpp::CtrlSubStmtNode* part) override;
    void visit(Cpp::CtrlSubStmtHeadNode* head) override;
    void visit(Cpp::CaseNode* label) override;
    void visit(Cpp::LabelNode* label) override;

private:
    using Position = Trn::Position;
    class LogScope;
    class BaseColumnScope;
    class ContentScope;
    class LabelScope;
    class BodiesInText;
    class BodyState;
    // The frame.
    Zelmor::OIndentBuf& out() { return writer_.out(); }
    Zelmor::IndentState state() { return Zelmor::IndentState(writer_.out()); }
    void writeRendered(const std::string& text);
    void writeName(const Cpp::SyntaxNode& name);
    void writeNamePart(std::string_view text);
    void writeConversion(std::string_view text);
    bool hangsWithinName(std::string_view name) const;
    void copyThrough(const Cpp::SyntaxNode& node);
    std::string_view writeGapBeforeEnd(std::string_view text);
    int baseColumn() const { return baseColumns_.empty() ? 0 : baseColumns_.back(); }
    int indentColumn();
    // Copies up to the node and tells the column at which its first character will stand.
    int copyUpTo(const Cpp::SyntaxNode& node);
    int copyUpToConstruct(const Cpp::SyntaxNode& node);
    void pend(const OptionalText& whitespace);
    OptionalText takePending();
    WantedText asOutputStands(const WantedText& wanted);
    void placeBefore(const Cpp::SyntaxNode& node, const WantedText& wanted);
    bool isLedByComment(const Cpp::SyntaxNode& node);
    void applyPendingWhitespace(const Cpp::SyntaxNode& node);
    void writeGapBefore(const Cpp::SyntaxNode& node, const OptionalText& wanted);
    int sourceColumnOf(const Cpp::SyntaxNode& node) const;
    bool goesByLabel(const Cpp::BlockNode& block) const;
    bool standsBehindLabel(const Cpp::BlockNode& block) const;
    std::string indentOf(const Cpp::LabelNode& label);
    bool standsInFirstColumn(const Cpp::LabelNode& label) const;
    void placeBlock(const Cpp::BlockNode& block);
    std::string_view lineBefore(const Cpp::SyntaxNode& node) const;
    std::string_view sourceFrom(const Cpp::SyntaxNode& node) const;
    std::string contentIndent(const OptionalText& indent);
    std::string labelIndent(const OptionalText& indent);
    const OptionalText& caseIndent() const;
    const OptionalText& beforeBrace(const Cpp::ClassHeadNode& head) const;
    void formatContent(Cpp::InteriorNode& node, const OptionalText& indent);
    void formatContent(Cpp::InteriorNode& node, Cpp::InteriorNode::iterator first, const OptionalText& indent);
    void formatChild(Cpp::SyntaxNode& child, bool followsCaseBlock);
    static Cpp::InteriorNode::iterator findFirstLabel(Cpp::InteriorNode::iterator first,
                                                      Cpp::InteriorNode::iterator end);
    void formatByLabel(Cpp::SyntaxNode& statement);
    Cpp::InteriorNode::iterator findEndOfComments(Cpp::InteriorNode::iterator child,
                                                  Cpp::InteriorNode::iterator end);
    bool goesWithLabel(const Cpp::CommentNode& comment) const;
    std::string commentIndent(const Cpp::CommentNode& comment);
    bool indentsInSource(const Cpp::InteriorNode& node) const;
    bool staysFlush(const Cpp::SyntaxNode& node) const;
    bool staysInItsColumn(const Cpp::SyntaxNode& node) const;
    bool goesWithDirective(const Cpp::SyntaxNode& node);
    void writeStatementGap(const Cpp::SyntaxNode& previous, const Cpp::SyntaxNode& next);
    bool placesItself(const Cpp::SyntaxNode& node) const;
    void formatBlock(Cpp::BracketedNode& node, const BraceSettings& braces);
    // With contents indented by `indent` instead.
    void formatBlock(Cpp::BracketedNode& node, const BraceSettings& braces, const OptionalText& indent);
    void writeGapBehindOpen(const Cpp::BracketedNode& node, const Cpp::SyntaxNode& first,
                            const BraceSettings& braces, const OptionalText& indent);
    void writeWithBlankLines(std::string_view gap, const OptionalText& afterOpen, std::string_view kept);
    static bool standsOnOneLine(const Cpp::SyntaxNode& node);
    const OptionalText& afterOpenOf(const BraceSettings& braces);
    bool writesCallOfStatements(const Cpp::KeptNode& item);
    void writeAsBlock(const Cpp::SyntaxNode& node);
    void writeAssemblerBlock(std::string_view head, std::string_view rest);
    void writeLinesAsBlock(std::string_view text);
    void writeRequiresClause(Cpp::ExprNode& clause);
    void copyPackDots(std::string_view gap);
    LastMarks lastMarksOf(const Cpp::DataDeclNode& declaration, std::string_view type) const;
    void writeGapBehindBody(const Cpp::DataDeclNode& declaration);
    void copyStray(std::string_view gap);
    void formatEmptyBlock(Cpp::BracketedNode& node, const BraceSettings& braces, const OptionalText& indent);
    bool standsAgainstCode(const Cpp::CommentNode& comment);
    bool isCommentAtLineEnd(const Cpp::SyntaxNode& node) const;
    bool staysBehindBrace(const Cpp::SyntaxNode& first, const OptionalText& afterOpen) const;
    void writeClosingGap(Cpp::BracketedNode& node, const BraceSettings& braces, const OptionalText& indent);
    void formatHeadAndBody(Cpp::SyntaxNode* head, Cpp::BracketedNode* body, const OptionalText& beforeOpen,
                           const Keyed<bool>& isKept);

    // What stays on one line (one_line_rules.cpp).
    struct Place;
    class OneLineSettingsScope;
    bool mayFitOnLine(const Cpp::SyntaxNode& node) const;
    bool runsOver(int margin, int end, std::string_view text);
    int widthBehind();
    int joiningMargin(Trn::Position end);
    std::string_view gapBefore(const Cpp::SyntaxNode& node);
    Keyed<bool> keepsFunction(const Cpp::BracketedNode& body) const;
    Keyed<bool> standsOnLine(const Cpp::BracketedNode& body, const Keyed<int>& setting) const;
    bool joinsFunction(const Cpp::BracketedNode& body);
    bool tryJoined(Cpp::BracketedNode& body, const OptionalText& beforeOpen, std::size_t start);
    const Keyed<bool>& keepsStatement(const Cpp::CtrlStmtNode& statement) const;
    bool joinsStatement(const Cpp::CtrlStmtNode& statement) const;
    template <typename Format>
    bool tryOnOneLine(const Cpp::SyntaxNode& node, KeyId keptBy, const Format& format);
    template <typename Format>
    bool tryLine(int margin, KeyId keptBy, const Format& format);
    template <typename Format>
    void formatBody(Cpp::BracketedNode& body, const OptionalText& ahead, const Keyed<bool>& isKept,
                    const Format& format);

    OptionalText withLinesInFront(const Cpp::BracketedNode& body, const OptionalText& ahead);

    // Bodies in expressions (expr_body_rules.cpp).
    void writeExpression(std::string_view text, const Cpp::ExprBodies& bodies,
                         HangingLines::Text hanging = HangingLines::Text::Statement);
    void writeDeclarators(std::string_view text, const Cpp::ExprBodies& bodies, HangingLines::Text hanging,
                          DeclaratorPlaces places = {});
    void formatExprBody(Cpp::BlockNode& body, Zelmor::OIndentBuf& target, int column, int spare);
    bool formatOnLine(Cpp::BlockNode& body, Zelmor::OIndentBuf& target, int spare);

    // Lines that are kept (kept_lines.cpp).
    bool keepsLines() const { return settings_.keepsLineBreaks; }
    bool hangsLines() { return keepsLines() && !out().keepLeadingSpace(); }
    bool keepsBreak(std::string_view gap, const WantedText& wanted) const;
    OptionalText keptBreak(std::string_view gap);
    FirstLine lineInFront();
    FirstLine lineOf(std::string_view piece);
    void keepBreaks(std::string_view gap, OptionalText& before, OptionalText& behind);
    void writeKeptBreak(std::string_view gap);
    void writeKeptBreakAt(std::string_view gap, int column);

    // Lists (list_rules.cpp).
    // What has been written in front of a list's first element.
    struct ListStart {
        bool startsLine;             // that is kept: the element, or the comment
        std::string_view comment;    // in front of the element, if there is one,
        int column;                  // and its column,
        bool hangsFromLine;          // or the one of the elements that begin further lines
    };
    void formatSeparatedList(Cpp::InteriorNode& list, const CommaTexts& commas, const ListStart& start = {});
    void formatHangingList(Cpp::InteriorNode& list, const CommaTexts& commas, const ListStart& start = {});
    void formatElements(Cpp::InteriorNode& list, const CommaTexts& commas);
    int columnOfLeadingComma(const CommaTexts& commas);
    std::optional<int> columnOfLineWithComma(std::string_view gap, const Cpp::SyntaxNode& first,
                                             const CommaTexts& commas);
    bool standsAsFirst(std::string_view piece, const Cpp::SyntaxNode& first);
    void writeListSeparator(std::string_view gap, const Cpp::SyntaxNode& previous, const Cpp::SyntaxNode& next,
                            const CommaTexts& commas);
    void startKeptLine(std::string_view gap);
    void writeComma(std::string_view gap, const WantedText& before, const WantedText& after);
    ListStart writeListStart(const Cpp::ParameterListNode& list, const OptionalText& afterOpen,
                             const CommaTexts& commas);
    std::string_view commentsOfElement(std::string_view gap) const;
    ListStart writeCommentInFront(std::string_view gap, const OptionalText& afterOpen);
    void writeListEnd(const Cpp::ParameterListNode& list, const OptionalText& beforeClose, int column);
    void formatBracketedList(Cpp::ParameterListNode& list, const OptionalText& afterOpen,
                             const CommaTexts& commas, const OptionalText& beforeClose);
    void formatParenList(Cpp::ParameterListNode& list);
    void formatParametersOf(const Cpp::FunctionHeadNode& head);
    std::string_view hangOfComments(std::string_view gap, std::string_view ahead) const;
    void writeColon(std::string_view gap, const OptionalText& before, const OptionalText& after);

    // Functions.
    // What is left to be written of a head.
    struct HeadRest {
        std::string_view text;
        bool isReturnedType = false;  // begins with the type behind "->"
        bool startsLine = false;      // in the line below that
    };
    int formatFunctionHead(Cpp::FunctionDeclNode& declaration);
    void writeOldParameters(Cpp::KeptNode& parameters);
    void writeOldDeclaration(std::string_view declaration);
    void writeOldComment(std::string_view blanks, std::string_view comment, int sourceColumn);
    HeadRest writeGapBehindParameters(const Cpp::FunctionHeadNode& head, std::string_view rest);
    bool standsAsDefinition(const Cpp::FunctionDeclNode& declaration) const;
    int formatReturnType(const Cpp::FunctionDeclNode& declaration);
    std::string_view breakBehindType(const Cpp::FunctionHeadNode& head, std::string_view type);
    bool hangsFurther(const Cpp::SyntaxNode& name, const Cpp::SyntaxNode& type, std::string_view text) const;
    KeyId nameAlignment() const;
    bool copySettled(Cpp::FunctionDeclNode& declaration);
    bool isSettled(const Cpp::SyntaxNode& node) const;
    bool copySettledNode(const Cpp::SyntaxNode& node);
    bool startsSettledLine(const Cpp::SyntaxNode& node);
    bool copySettledStatement(const Cpp::SyntaxNode& node);
    bool alignsName(const Cpp::FunctionDeclNode& declaration, std::string_view type) const;
    void formatInitializers(Cpp::InitializerListNode& list);
    void formatBodyOf(Cpp::FunctionDeclNode& declaration, const OptionalText& beforeAny, std::size_t start);
    std::optional<int> takeTemplateColumn();

    // Types in front of names (declared_type_rules.cpp).
    bool formatsArgumentsOf(std::string_view type) const;
    void writeType(std::string_view type, const OptionalText& whitespace, bool formatsMarks,
                   LastMarks marks = LastMarks::ByAnchor);
    void writeAlignedType(std::string_view type, KeyId alignment, int offset);
    void writeOnOneLine(std::string_view text);
    void pad(std::string_view found, KeyId alignment, int offset, std::string_view before, int hanging = 0);
    void writeDeclarator(std::string_view declarator);
    void writeGapBehindDeclarator(std::string_view blanks);
    bool isNamedByCall(const Cpp::FunctionPtrDeclNode& declaration, std::string_view type);
    void writeNamingCall(const Cpp::FunctionPtrDeclNode& declaration, std::string_view type);
    void writePointerValue(const Cpp::FunctionPtrDeclNode& declaration);
    void writeDeclaratorOpening(std::string_view type, std::string_view opening);

    // Data.
    bool alignsName(const Cpp::DataDeclNode& declaration, std::string_view type) const;
    char lastCharacterOf(const Cpp::SyntaxNode& node) const;
    void formatDeclarators(const Cpp::DataDeclNode& declaration, bool isAligned, HangingLines::Text hanging);
    void writeLoneNames(const Cpp::DataDeclNode& declaration, bool isAligned, MarkColumns marks);
    bool hangsFromName(const Cpp::DataDeclNode& declaration, std::string_view name) const;
    bool startsLineWithMarks(std::string_view type);
    void writeDataName(std::string_view name, bool isAligned, bool hasTail, MarkColumns marks);
    MarkColumns columnsOfMarks(const Cpp::DataDeclNode& declaration);
    void writeTailGap(const Cpp::DataDeclNode& declaration, std::string_view name, std::string_view gap,
                      bool isAligned);
    void padInitializer(const Cpp::DataDeclNode& declaration, std::string_view gap, int offset,
                        std::string_view name, bool isAligned);

    // Templates and enums.
    void pendBehindHeader();
    void formatTemplateParameters(Cpp::ParameterListNode& list);
    void formatEnumerators(Cpp::EnumBodyNode& body);
    void formatEnumeratorList(Cpp::EnumBodyNode& body, const CommaTexts& commas);
    void writeEnumEnd(Cpp::EnumBodyNode& body);

    // Statements.
    WantedText betweenParts(const Cpp::CtrlStmtNode& statement) const;
    void writeTypeName(std::string_view statement);
    bool goesOnLineOfHead(const Cpp::CtrlStmtNode& statement, int lineColumn);
    void formatParts(Cpp::CtrlStmtNode& statement);
    void writeEmptyBody(const Cpp::CtrlSubStmtHeadNode& head);
    void placePart(const Cpp::SyntaxNode& part, const WantedText& between);
    const BraceSettings& bracesOf(const Cpp::BlockNode& body) const;
    const OptionalText& indentOfBody(int keyword, const OptionalText& indent, bool hasBraces) const;
    void writeCaseValue(const Cpp::CaseNode& label);
    void writeLabel(const Cpp::SyntaxNode& label);
    void formatCaseBlock(Cpp::BlockNode& block, const Cpp::SyntaxNode& previous);
    void writeElseIfGap(std::string_view gap);
    void formatParenthesised(std::string_view inside, const Cpp::ExprNode& condition, int keyword);
    WantedText writeCondition(std::string_view inside, int keyword, const Cpp::ExprBodies& bodies);
    WantedText writeForClauses(std::string_view inside, std::size_t first, std::size_t last);
    std::string_view writeCommentsOfClause(std::string_view clause);
    Cpp::InteriorNode::iterator formatBehindLabel(Cpp::InteriorNode::iterator label,
                                                  Cpp::InteriorNode::iterator end);

    // What the source does beside gaps, and gaps that no rule writes (measured_layout.cpp). Without a listener they do
    // nothing.
    class MeasuredRun;
    void leaveGapBehindOpen(const Cpp::BracketedNode& node, const Cpp::SyntaxNode& first,
                            const BraceSettings& braces, const OptionalText& indent);
    void measureIndent(const Cpp::SyntaxNode& node, KeyId key);
    void measureContent(Cpp::InteriorNode& node, Cpp::InteriorNode::iterator first, KeyId indent);
    void measureNamespace(const Cpp::NamespaceBodyNode& body);
    void measureEnumerators(const Cpp::EnumBodyNode& body);
    void measureBlankLines(std::string_view blanks, const BraceSettings& braces);
    void measureOneLine(const Cpp::BracketedNode& body, KeyId key);
    void leaveDeclarator(std::string_view name, bool hasTail);
    void leaveForClauses(std::string_view inside);
    void measureListBreak(std::string_view gap, const Cpp::SyntaxNode& first, const Cpp::SyntaxNode& next);

    PropertySet scheme_;
    FormatterSettings settings_;
    std::optional<FormatterSettings> oneLineSettings_;  // without line ends; made when they are needed first
    const LayoutPasses& passes_;
    const Zelmor::TextDocument& source_;
    const SameLines* settledLines_ = nullptr;
    std::optional<std::string_view> frameIndent_;
    const BraceSettings* bracesBehindHeads_ = nullptr;
    std::optional<LayoutLog> log_;
    Zelmor::OIndentBuf result_;
    std::optional<MacroBodies> macroBodies_;
    CppExprFormatter exprFormatter_;
    SourceWriter writer_;

    TextPool madeTexts_;  // that rules want in place of those of the scheme
    // Copies: the settings that these come from may be exchanged for those of one line before they are taken.
    std::vector<OptionalText> pendingWhitespace_;
    KeyId absentPending_;  // of what was asked for last, if the scheme has nothing for it
    std::vector<int> baseColumns_;
    std::optional<int> templateColumn_;  // of the header whose declaration has not come yet,
    std::size_t templateStart_ = 0;      // and its place in the output
    std::size_t headStart_ = 0;          // the place of the function in it whose head has been written last
    bool isOnOneLine_ = false;           // what is written stays on one line; the settings are those for it
    NamespaceIndents namespaceIndents_{settings_, source_};
    bool inClassBody_ = false;
    FirstLine listLine_;  // on which the innermost list begins
    bool isAmongElements_ = false;  // of a list of several
    const Cpp::SyntaxNode* previousSibling_ = nullptr;  // of the node being visited, in its container
    const Cpp::SyntaxNode* lastClosedClass_ = nullptr;  // the class whose body ended last
    const Cpp::SyntaxNode* directiveBehind_ = nullptr;  // the comments that are being written end in front of it
    bool inIndentedBlock_ = false;                      // whose comments in the first column stay in it
    const Cpp::SyntaxNode* labelBehind_ = nullptr;      // or in front of this label
    const Cpp::SyntaxNode* lastLabel_ = nullptr;        // the case label written last
    bool chainingElseIf_ = false;
    bool hasBareLabels_ = false;  // the body that is being written, without braces around them
    bool joinsBody_ = false;  // of the statement that is being written, with the line of its head
    bool followsPart_ = false;  // of a control statement: another part of it stands in front
    bool joinsNextPart_ = false;  // of the control statement: it goes on behind the "}" of the part that comes next
    int rightMargin_;  // where lines are wrapped; else beyond all columns
    KeptRegions keptParts_;  // the protected regions among the enumerators written last
    DeclarationColumns columns_;
};

}  // namespace Tessel
