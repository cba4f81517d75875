#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "engine/cpp_expr_formatter_base.h"
#include "engine/declarator_places.h"
#include "engine/define_tabs.h"
#include "engine/expr_settings.h"
#include "engine/kept_indent.h"
#include "engine/kept_region.h"
#include "engine/line_splices.h"
#include "engine/list_rows.h"
#include "engine/settled_text.h"
#include "engine/source_tokens.h"

namespace Tessel {

class MacroBodies;
struct DirectiveParts;

// The blocks that stand in an expression, which are laid out elsewhere.
class BlocksInText {
public:
    virtual ~BlocksInText() = default;
    // Of each, with its braces, in the text of the expression.
    virtual std::span<const TextExtent> extents() const = 0;
    // Writes the one at the index, from its "{" on. `column` is that of the first text of the line on which what it
    // is the body of begins; `spare` is by how many columns it may go beyond the right margin, if it stays on the line,
    // because the line wrapper will begin a line with that.
    virtual void write(std::size_t index, Zelmor::OIndentBuf& out, int column, int spare) = 0;
};

// Re-spaces expressions and declaration texts, in one sweep over their tokens whatever their nesting:
//
//     f (a,b)*-c        f(a, b) * -c        calls, list commas, operators
//     char*p            char *p             marks, by their anchor
//     int a[]={1,2}     int a[] = {1, 2}    brace initializers
//
// Each operation takes a text, a view of the source, and writes it to the output.
class CppExprFormatter final : public CppExprFormatterBase {
public:
    explicit CppExprFormatter(const PropertySet& scheme, const Zelmor::TextDocument* source = nullptr,
                              LayoutLog* log = nullptr);

    // A text in parentheses is a list: lines hang under its start. That of a loop's condition knows its statement's.
    void formatExpression(std::string_view text, Zelmor::OIndentBuf& out, BlocksInText* blocks = nullptr,
                          HangingLines::Text hanging = HangingLines::Text::Statement,
                          std::optional<int> statementColumn = {});
    // The end of a function's head, which begins with the type behind "->".
    void formatReturnedType(std::string_view text, Zelmor::OIndentBuf& out);
    // A type with or without a declared name; `typeWhitespace` goes between the two where no mark stands.
    void formatDeclarationText(std::string_view text, Zelmor::OIndentBuf& out, const OptionalText& typeWhitespace,
                               HangingLines::Text hanging = HangingLines::Text::List);
    // A clause of a `for` in that column.
    void formatForClause(std::string_view text, Zelmor::OIndentBuf& out, int statementColumn, bool isFirst);
    // A type whose declared name follows the text, so that the text's trailing white space is that between the
    // two.
    void formatTypeText(std::string_view text, Zelmor::OIndentBuf& out, const OptionalText& typeWhitespace,
                        LastMarks marks = LastMarks::ByAnchor);
    // What follows the type of a data declaration.
    void formatDeclarators(std::string_view text, Zelmor::OIndentBuf& out, BlocksInText* blocks = nullptr,
                           HangingLines::Text hanging = HangingLines::Text::Declarators,
                           DeclaratorPlaces places = {});

    // Lines up the "=" of enumerators that stand one to a line, but for those in parts that are kept.
    std::string alignEnumInitializers(std::string_view text, const KeptRegions& kept,
                                      const Zelmor::IndentState& state);

    // What lays out the statements that macros stand for, borrowed; without it they are kept.
    void setMacroBodies(const MacroBodies& bodies) { macroBodies_ = &bodies; }
    // Those of the document that the texts are views of; without them the texts are lexed.
    void setSourceTokens(std::shared_ptr<const Trn::TokenList> tokens) {
        sourceTokens_ = SourceTokens(std::move(tokens));
    }

    const ExprSettings& settings() const { return settings_; }
    const KeptIndent& keptIndent() const { return keptIndent_; }
    // What the source does at lines, which are views of it, by what stands in front of them, or the first element of
    // the list that they continue. For a listener, as all that measures.
    void measureLineIndent(KeyId key, std::string_view piece, std::string_view before) const;
    void measureContinuation(std::string_view piece, std::string_view firstElement, bool leadsByComma) const;
    int sourceColumnOf(std::string_view piece) const { return sourceColumns().nearColumnOf(piece); }

    // The lists in rows that have been written so far and may come to stand in columns; some more than once.
    ListsInRows takeListsInRows() { return std::move(listsInRows_); }

private:
    // A bracket that is open. Its close place is that of the token that closes it.
    struct Group {
        enum class Kind { Parentheses, Brackets, Template, Cast, Braces, InnerBraces } kind = Kind::Parentheses;
        std::size_t close = kNoToken;
        bool isList = false;     // elements stay aligned when commas break lines
        int listColumn = 0;      // of the first element
        bool hasElements = false;
        bool holdsRows = false;  // of an initializer
        bool holdsValues = false;  // in braces
        bool holdsDeclarations = false;
        bool isShortList = false;  // the same on one line
        bool isOnOneLine = false;
        bool isRow = false;  // in braces, whose "{" begins its line, which goes by these
        FirstLine line;      // that of a "{", from which lines go on that stay where they are
        bool knowsRows = false;
        std::optional<int> rows;  // of rows that are aligned on the right, the leftmost column in the source,
        int rowsColumn = 0;       // and in the output
        struct ElementScope;
        std::unique_ptr<ElementScope> elements;

        bool isBraced() const { return kind == Kind::Braces || kind == Kind::InnerBraces; }
    };
    struct Run;

    // `marksBeforeName`: of those at the end of a type that a name follows; nothing for other texts. `outerColumn`: of
    // the statement or the declarator that a text is part of which lines may hang from.
    void format(std::string_view text, Zelmor::OIndentBuf& out, ExprMode mode, const OptionalText& typeWhitespace,
                std::optional<LastMarks> marksBeforeName, BlocksInText* blocks = nullptr,
                HangingLines::Text hanging = HangingLines::Text::Statement, std::optional<int> outerColumn = {},
                MarkColumns declaratorMarks = {});
    bool writeSettled(std::string_view text, ExprMode mode, Zelmor::OIndentBuf& out) const;
    void writeCurrent(Run& run);
    void writeGapBefore(Run& run);
    bool keepsLine(const Run& run) const;
    void keepLine(Run& run);
    bool standsBelowMarks(const Run& run, std::string_view gap) const;
    std::optional<int> columnOfRow(Run& run, std::string_view gap, int hanging) const;
    KeyId keyOfKeptLine(const Run& run) const;
    bool isInType(const Run& run) const;
    bool hangsInType(const Run& run) const;
    int columnOfKeptLine(Run& run, std::string_view gap) const;
    int hangingColumn(const Run& run) const;
    void startSourceHanging(Run& run) const;
    void passToken(Run& run) const;
    bool leadsElements(const Run& run, std::size_t place) const;
    void writeToken(Run& run) const;
    bool followsSpacedComma(const Run& run) const;
    void writeBlock(Run& run);
    int columnOfBlock(const Run& run) const;
    bool standsBelowLine(const Run& run) const;
    bool joinsBody(const Run& run) const;
    int spareOfBlock(const Run& run) const;
    bool isStacked(const Run& run) const;
    static void startLiteralLine(Run& run);
    const OptionalText* joinedLine(const Run& run) const;
    bool followsCast(const Run& run) const;
    bool endsLine(const Run& run) const;
    // What is wanted between tokens (expr_gaps.cpp).
    const OptionalText* wantedAfter(const Run& run, std::size_t place) const;
    const CommaTexts* absentCommaOf(const Run& run, std::size_t place) const;
    static bool isJoinedToNext(const Run& run, std::size_t place);
    static bool namesArgument(const Run& run, std::size_t place);
    const OptionalText* otherGapOf(const Run& run) const;
    static bool introducesWidth(const Run& run, std::size_t place);
    static bool startsEllipsis(const Run& run, std::size_t place);
    const OptionalText* wantedBefore(const Run& run, std::size_t place) const;
    const OptionalText* wantedAtRole(const Run& run, std::size_t place, ExprRole role) const;
    const OptionalText* wantedBehindPrevious(const Run& run, std::size_t place) const;
    static bool followsOperatorName(const Run& run);
    static bool takesArguments(const Run& run, std::size_t open);
    static bool isWholeFunctionType(const Run& run, std::size_t open);
    const OptionalText* wantedBeforeParen(const Run& run, std::size_t place) const;
    const OptionalText* wantedBeforeBrace(const Run& run, std::size_t place) const;
    // Directives (expr_directives.cpp).
    bool layOutDirective(std::string_view directive, Zelmor::OIndentBuf& out) override;
    std::optional<int> tabSizeOf(std::string_view directive, const Zelmor::OIndentBuf& out);
    bool layOutText(std::string_view directive, Zelmor::OIndentBuf& out);
    bool layOutParts(std::string_view directive, Zelmor::OIndentBuf& out);
    bool writeParts(std::string_view directive, const DirectiveParts& parts, Zelmor::OIndentBuf& out);
    PropertySet schemeOfDirectives() const;
    // Marks, and brackets with what they hold.
    void writeMarks(Run& run);
    std::string columnOfName(const Run& run, std::size_t end) const;
    void writeTypeEnd(Run& run);
    void openGroup(Run& run);
    void noteRows(const Run& run);
    bool holdsFlushRows(const Run& run) const;
    static bool isAssignedFurther(const Run& run, std::size_t place);
    static bool isFlushLiteral(const Run& run, std::size_t place);
    static bool isSplicedComment(const Run& run, std::size_t place);
    static bool indentsContents(const Run& run);
    void startElements(Run& run, Group& group);
    void closeGroup(Run& run);
    void writeClosingGap(Run& run, const Group& group);
    bool isRow(const Group& group) const;
    bool isComma(const Run& run) const;
    void writeComma(Run& run);
    SeparatorSpacing spacingOf(const Group& group) const;
    const CommaTexts* commasOf(const Group& group) const;
    const OptionalText* inListBraces(const Run& run, const Group& group, const OptionalText* other) const;
    bool isNarrowGap(const Run& run) const;
    const OptionalText* afterOpen(const Group& group) const;
    const OptionalText* beforeClose(const Group& group) const;
    FirstLine lineOfBrace(const Run& run, std::size_t open) const;
    static FirstLine lineOfGroup(const Run& run);
    bool staysOnOneLine(const Run& run, std::size_t close) const;
    const MarkSettings& markSettings(int kind) const;
    // What the source does beside gaps (expr_measures.cpp).
    void measureMarks(const Run& run, const MarkSettings& marks, std::size_t end) const;
    void measureLine(const Run& run) const;

    const Zelmor::TextDocument* source_;
    SourceTokens sourceTokens_;
    ExprSettings settings_;
    SettledText settledText_;
    bool looksBehind_;  // at what the token in front ends
    KeptIndent keptIndent_;
    LineSplices splices_;
    const MacroBodies* macroBodies_ = nullptr;
    DefineTabs defineTabs_;
    std::unique_ptr<CppExprFormatter> inDirectives_;  // made when it is needed first
    bool isInDirective_ = false;
    ExprTokens exprTokens_;
    ListsInRows listsInRows_;
};

}  // namespace Tessel
