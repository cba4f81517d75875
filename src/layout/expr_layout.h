#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "layout/first_wrap_token.h"
#include "layout/wrap_settings.h"
#include "layout/wrap_text.h"

namespace Tessel {

// Decides where the lines of one text begin.
//
// A region is the whole text, or what stands between a pair of parentheses or braces. One that does not fit is
// broken at its weakest separators: at all of its commas; a part that does not fit by itself then at its shift
// operators, "&&" and "||", other operators, and casts, in this order; and what still does not fit, in the
// regions inside it. All lines that begin in a region begin in one column.
//
//     call(first,                         commas
//          second + third                 an operator, for the second argument alone did not fit
//          + inner(fourth,                the region inside
//                  fifth))
//
// Calls come first: where the arguments of the calls in a region can be broken so that everything fits, the
// region itself stays in one piece.
//
// What cannot leave the line that a piece ends on (closing brackets, a separator, ";") is measured with it. Every
// token is looked at a bounded number of times whatever the nesting; regions nested too deep stay as they are.
class ExprLayout {
public:
    // `indentColumn` is that of the indentation. The text is borrowed.
    ExprLayout(WrapText& text, const WrapSettings& settings, int indentColumn);

    // The regions may start no lines at WRAP_INDENT, for the indentation is all that the text's lines need.
    void setContentIndented() { contentIndented_ = true; }
    // The lines of the text itself begin at the indentation, whatever the style.
    void setAtIndent() { atIndent_ = true; }

    // Each of these takes the column at which the first token of the range stands. The range reaches to the end
    // of the text.
    bool isTooLong(TokenRange range, int column) const;
    void breakExpression(TokenRange range, int column);
    void packList(TokenRange range, int column);
    void breakForClauses(TokenRange range, int column);

private:
    enum class Class { Comma, Shift, Logical, Binary, Cast, OldCast, None };

    struct Region {
        TokenRange range;
        int indent = 0;     // the column from which its lines are indented
        int alignment = 0;  // that of its first token
        int depth = 0;
    };

    // How separators let lines begin: with the separator, or with the token behind it.
    struct Separators {
        FirstWrapToken& finder;
        bool leadsLine = false;
    };

    void findLineChances();
    bool mayBreakAt(std::size_t place, std::vector<std::size_t>& open);
    Separators separatorsOf(Class separatorClass);
    std::size_t lineBehind(std::size_t separator, std::size_t last) const;
    std::size_t nextLine(Separators separators, TokenRange piece, std::size_t from, std::size_t& separator) const;

    int layRegion(Region region, int column);
    int layPiece(const Region& region, TokenRange piece, int column, Class from);
    std::optional<int> breakAll(const Region& region, TokenRange piece, int column, Separators separators,
                                Class inside);
    std::optional<int> packShifts(const Region& region, TokenRange piece, int column);
    std::optional<int> packPieces(const Region& region, TokenRange piece, int column, Separators separators,
                                  bool followsSecondPiece, Class inside);
    int layGroups(const Region& region, TokenRange piece, int column);
    int layGroup(const Region& region, std::size_t open, int nameColumn, int column);
    bool breakCallsOnly(const Region& region, int column);
    void alignOwnLines(const Region& region);

    LineStart lineStart(const Region& region, std::size_t place, bool leadsLine) const;
    int begin(std::size_t place, LineStart start);
    int tailBehind(const Region& region, std::size_t place) const;
    bool fits(const Region& region, TokenRange piece, int column) const;
    bool isCall(std::size_t open, std::size_t first) const;
    std::size_t nextGroup(std::size_t from, std::size_t last) const;

    WrapText& text_;
    const WrapSettings& settings_;
    int indentColumn_;
    bool contentIndented_ = false;
    bool atIndent_ = false;
    bool callsOnly_ = false;  // trying what breaking calls comes to
    bool overflows_ = false;  // some line came out too long

    FindFirstElem commas_;
    FindFirstElem shifts_;
    FindFirstElem logicals_;
    FindFirstElem semicolons_;
    FindFirstBinaryOp binaries_;
    FindFirstCast casts_;
    FindFirstOldCast oldCasts_;
};

}  // namespace Tessel
