#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "layout/break_weights.h"
#include "layout/list_columns.h"
#include "layout/operand_scopes.h"
#include "layout/wrap_settings.h"
#include "layout/wrap_text.h"

namespace Tessel {

// Decides where the lines of one text begin by weighing the ways to lay it out against each other, from its first token
// to its last: what each line costs that begins (BreakWeights), and, far more, each column beyond the margin.
//
//     value = first(a, b).second(
//         c);                            the lightest of
//     value =
//         first(a, b).second(c);         the two is taken
//
// Lines hang as kept ones do (HangingLines). Of the ways up to a token, only the kMostWays lightest are gone on with,
// so that the time is linear in the length of the text.
class LineSearch {
public:
    static constexpr std::size_t kMostTokens = 4000;

    // The text and the settings are borrowed.
    LineSearch(WrapText& text, const WrapSettings& settings, const WeighedExtent& extent);

    // Begins the lines of the text, whose first token stands at the column. Returns false, with nothing begun, for a
    // text that is not suited: with lines or tabs in it that stay, or very long. What stands behind it stays on its
    // last line, and a comment behind that does where it can be within the margin.
    bool lay(int column, int trailingWidth, int commentWidth);

private:
    static constexpr std::size_t kMostWays = 12;
    static constexpr std::uint32_t kNone = 0xffffffff;
    static constexpr std::int64_t kColumnBeyondMargin = 1'000'000;
    static constexpr std::int64_t kCommentBeyondMargin = 100;  // for each column
    // By LITERALS_BEYOND_MARGIN, for each, and its columns with those of the brackets that close behind it.
    static constexpr std::int64_t kLiteralBeyondMargin = 60;
    static constexpr std::int64_t kLiteralColumnBeyondMargin = 2;
    // Columns of what is no line:
    static constexpr int kParted = -1;  // a block that has been broken
    static constexpr int kPadded = -2;  // an element in a column

    // What is known of the lines between two brackets, or of the operands of one rank.
    struct Scope {
        int indent = 0;         // where its lines begin
        int last = 0;           // from where lines hang behind the indentation
        int member = -1;        // the column of the first "." that began a line
        int shift = -1;         // of the first "<<"
        int row = -1;           // of the first of the macros that stand in rows
        int question = -1;      // of the "?"
        int call = 0;           // of the operand that calls are part of
        int lineColumn = 0;     // of the line with the brace
        int columns = 0;        // that its elements stand in
        std::uint64_t outerHash = 0;
        bool isBroken = false;       // further elements and operands begin lines
        bool hasLine = false;        // a line has begun between its elements,
        bool holdsLine = false;      // or inside them
        bool isWhole = false;        // no line begins in it,
        bool isOperandWhole = false; // or in the current operand
        bool brokeOperator = true;   // the last operator began a line, or stood behind one that did
        bool isParted = false;       // its elements stand on one line, or on one each
        bool keepsMembers = false;   // a call stands behind another one on a line
        bool holdsQuestions = false; // a ? b : c ? d : e: its lines begin with each ":", or none
        bool followsElement = false; // on the line of the element in front
        bool isBraced = false;       // what stands in a brace, but for what is inside its elements

        bool operator==(const Scope&) const = default;
    };
    struct Way {
        Scope top;
        std::uint32_t outer = kNone;  // what that stands in
        int column = 0;      // behind the last token
        int lineColumn = 0;  // of the line
        int lead = -1;       // of a comment in front of the token to come
        int literal = -1;    // of the first of the literals in a row
        int lineDepth = 0;   // of the first token of the line
        int lowestDepth = 0; // of the line
        int declarator = -1; // of the first one, where those behind it stand below,
        int later = -1;      // and of the last of these
        std::int64_t cost = 0;
        std::uint32_t lines = kNone;  // the last of those that have begun
    };
    struct Outer {
        Scope scope;
        std::uint32_t outer;
    };
    struct Line {
        std::uint32_t before;
        std::uint32_t place;
        int column;
        int split = 0;  // where a name goes on in the line, or how many blanks stand in front of an element
    };

    bool isSuited();
    bool standsApart(std::size_t place) const;
    bool followsRowOfMacros(std::size_t place) const;
    int widthOfComment(std::size_t place) const;
    void takeWidths();
    std::size_t firstDeclarator() const;
    bool startsDeclarator(std::size_t place) const;
    void weighWays(int column, int trailingWidth);
    const Way& lightest() const { return *std::ranges::min_element(ways_, {}, &Way::cost); }
    void part(std::size_t place);
    void beginApart(Way& way, std::size_t place);
    void goOn(Way& way, std::size_t place);
    void keepLightest();
    void putLines(const Way& way);
    void note(Way& way, std::size_t place, int column, int split = 0);
    bool endsInLiteral(std::size_t place) const;
    void payOverflow(Way& way, int before, std::size_t place) const;

    // line_search_choices.cpp
    bool keepsBases(const Way& way, std::size_t place) const;
    bool isQuestionInRow(const Scope& scope, std::size_t place) const;
    bool mayBegin(const Way& way, std::size_t place) const;
    bool mustBegin(const Way& way, std::size_t place, int lineColumn) const;
    bool mustBeginMember(const Way& way, std::size_t place, int lineColumn) const;
    bool mustBeginOperand(const Scope& scope, std::size_t place) const;
    bool isInColumns(const Scope& scope, std::size_t place) const;
    bool startsRow(const Scope& scope, std::size_t place) const;
    int columnOfLine(const Way& way, std::size_t place) const;
    int continuation(const Scope& scope) const;
    bool endsOutputLine(std::size_t place) const;
    bool standsBetweenLiterals(std::size_t place) const;
    bool followsOperator(std::size_t place) const;

    // line_search_scopes.cpp
    void beginLine(Way& way, std::size_t place, int column);
    int costOfShift(const Way& way, std::size_t place) const;
    void stayOnLine(Way& way, std::size_t place);
    int stayInColumn(Way& way, std::size_t place);
    void stayBehindCall(Way& way, std::size_t place);
    bool keepsOperandWhole(const Scope& scope, std::size_t place) const;
    bool hangsFurther(const Way& way, std::size_t place) const;
    void pass(Way& way, std::size_t place, bool beginsLine);
    void passToken(Way& way, std::size_t place, bool beginsLine);
    void splitName(Way& way, std::size_t place, int start);
    bool partsBlock(Way& way, std::size_t place);
    bool hangsBlock(const Way& way, std::size_t place) const;
    void openScopes(Way& way, std::size_t place);
    void openBracket(Way& way, std::size_t place);
    static std::uint64_t hashOf(const Scope& scope);
    void push(Way& way, Scope inside);
    void pop(Way& way);

    bool isOpen(std::size_t place) const { return opensBracket(tokens_, place); }
    bool isClose(std::size_t place) const { return closesBracket(tokens_, place); }
    bool isTrivia(std::size_t place) const { return tokens_[place].role == ExprRole::Trivia; }
    std::size_t before(std::size_t place) const { return before_[place]; }

    WrapText& text_;
    const ExprTokens& tokens_;
    const WrapSettings& settings_;
    WeighedText kind_;
    int indentColumn_;
    std::size_t name_;
    bool partsElements_;  // the outermost ones stand on one line, or on one each
    OperandScopes scopes_;
    BreakWeights weights_;
    std::size_t declarator_ = kNoToken;  // the name of the first one, where a value and no mark is at it
    std::size_t bases_ = kNoToken;  // of a class, from their ":" on
    std::vector<std::size_t> before_;  // the token in front that is no comment
    std::vector<int> gaps_;            // widths
    std::vector<int> widths_;
    ListColumns listColumns_;
    std::vector<Outer> outer_;  // scopes that others stand in
    std::vector<Line> lines_;
    std::vector<Way> ways_;
    std::vector<Way> next_;
    std::vector<const Way*> order_;
};

}  // namespace Tessel
