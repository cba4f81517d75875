#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "layout/line_places.h"
#include "layout/wrap_settings.h"
#include "layout/wrap_text.h"

namespace Tessel {

// Decides where the lines of one text begin, of the places where they may (LinePlaces).
//
// A region is the whole text, or what stands between a pair of parentheses or braces. One that does not fit
// is broken at its weakest separators: at all of its commas; a part that does not fit by itself then at its
// shift operators, "&&" and "||", other operators, and casts, in this order; and what still does not fit, in
// the regions inside it. All lines that begin in a region begin in one column.
//
//     call(first,                         commas
//          second + third                 an operator, for the second argument alone did not fit
//          + inner(fourth,                the region inside
//                  fifth))
//
// Calls come first, but with WRAP_WHOLE_PARTS: where the arguments of the calls in a region can be broken so that all
// of it fits, the region itself stays in one piece.
//
// What cannot leave the line that a piece ends on (closing brackets, a separator, ";") is measured with it.
// Every token is looked at a bounded number of times whatever the nesting; regions nested too deep stay as
// they are.
class ExprLayout {
public:
    using Clauses = LinePlaces::Clauses;

    // `indentColumn` is that of the indentation. The text is borrowed.
    ExprLayout(WrapText& text, const WrapSettings& settings, int indentColumn,
               Clauses clauses = Clauses::None);

    // The lines of the text itself, as opposed to those of regions inside, take no WRAP_INDENT.
    void setContentIndented() { contentIndented_ = true; }
    // They begin at the indentation, whatever the style, and so do those of the braces in it.
    void setAtIndent() { atIndent_ = true; }
    // Aligned lines of the text itself begin at the column.
    void setAlignment(int column) { alignment_ = column; }

    // Each of these takes the column at which the first token of the range stands. The range reaches to the
    // end of the text.
    bool isTooLong(TokenRange range, int column) const;
    // Whether a comma outside of brackets lets a line begin.
    bool holdsElements(TokenRange range);
    void breakExpression(TokenRange range, int column);
    void packList(TokenRange range, int column);
    // At all commas of the list itself, before anything else.
    void partList(TokenRange range, int column);
    // With WRAP_LAST_RESORT, and, behind an assignment, WRAP_WHOLE_PARTS.
    void breakWithLastResort(TokenRange range, int column, bool followsAssignment);
    void packWithLastResort(TokenRange range, int column);
    void breakForClauses(TokenRange range, int column);

private:
    using Class = LinePlaces::Class;
    using Separators = LinePlaces::Separators;

    // So many parts of a text are laid out anew, in another way, where the first does not serve.
    static constexpr int kMostAttempts = 32;

    struct Region {
        TokenRange range;
        int indent = 0;     // the column from which its lines are indented
        int alignment = 0;  // that of its first token
        int depth = 0;
        bool startsAtIndent = false;  // whatever the style
        bool isRow = false;           // of an initialiser that keeps its rows
        bool isCall = false;          // its elements are the arguments of a call
    };

    int layRegion(Region region, int column);
    int alignmentOf(const Region& region, int column) const;
    int layParentheses(const Region& inside, const Region& around, int column);
    LineStart indentedStart(int column) const;
    std::optional<int> layOperands(const Region& region, int column);
    std::optional<int> layCalls(const Region& region, int column);
    int layCallsOrRegion(Region region, int column);
    int layPiece(const Region& region, TokenRange piece, int column, Class from);
    std::optional<int> breakElements(const Region& region, int column);
    std::optional<int> breakAtFirst(const Region& region, TokenRange piece, int column, Class from, Class last);
    int layGroupsOrWeak(const Region& region, TokenRange piece, int column);
    std::optional<int> breakAt(const Region& region, TokenRange piece, int column, Class separatorClass);
    std::optional<int> breakAll(const Region& region, TokenRange piece, int column, Separators separators);
    std::optional<int> packShifts(const Region& region, TokenRange piece, int column);
    std::optional<int> packPieces(const Region& region, TokenRange whole, int column, Separators separators,
                                  std::optional<LineStart> start, bool alignsToSecond);
    int layGroups(const Region& region, TokenRange piece, int column);
    int layGroupAt(const Region& region, std::size_t open, std::size_t at, int column);
    bool staysBehindDirective(std::size_t place) const;
    void alignOwnLines(const Region& region);

    bool canBreak(const Region& region) const;
    LineStart lineStart(const Region& region, std::size_t place, bool leadsLine) const;
    int begin(std::size_t place, LineStart start);
    int tailBehind(const Region& region, std::size_t place) const;
    bool fits(const Region& region, TokenRange piece, int column) const;
    bool fitsWhole(const Region& region, int column) const;
    bool servesNothing(const Region& region, TokenRange piece, LineStart start) const;
    int measured(TokenRange range, int column);
    bool isCall(std::size_t open, std::size_t from) const;
    std::size_t nextGroup(std::size_t from, std::size_t last) const;
    std::size_t nextCall(std::size_t from, std::size_t last) const;

    WrapText& text_;
    const WrapSettings& settings_;
    int indentColumn_;
    int lineColumn_;  // of the line that the text begins on
    LinePlaces places_;
    std::vector<int> chances_;  // how many lines may begin in front of each token
    bool contentIndented_ = false;
    bool atIndent_ = false;
    std::optional<int> alignment_;
    bool callsOnly_ = false;  // finding out what breaking the calls, or the operators, of a region comes to
    bool overflows_ = false;  // some line came out too long
    bool breaksCasts_ = true;
    bool opensLines_ = false;  // lines may begin behind parentheses
    int attempts_ = kMostAttempts;
};

}  // namespace Tessel
