#pragma once

#include <algorithm>
#include <cstddef>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "engine/expr_tokens.h"
#include "engine/source_columns.h"

namespace Tessel {

// A part of a text: tokens [first, last).
struct TokenRange {
    std::size_t first = 0;
    std::size_t last = 0;

    bool empty() const { return first >= last; }
};

// Whether string literals that follow each other stand on one line, or each on its own.
enum class Literals { Joined, Stacked };

// Where the line begins that a token has been put at the start of.
struct LineStart {
    int column = 0;                // of the token
    bool takesWrapIndent = false;  // WRAP_INDENT fills the last columns in front of it, from `indent` on
    int indent = 0;
};

// What a piece of text comes to when it is written: the column behind it, and whether all of its lines but
// the last end within the margin.
struct Extent {
    int column = 0;
    bool fits = true;
};

// One text as the wrapper sees it: its tokens, where lines begin in it, and how wide its pieces are. Pieces
// that hold no tabs and line ends are measured by a table, others by walking them.
//
// Columns given for a piece are those at which its first token stands. A comment that ends a line is never
// counted: no line break would make it shorter.
class WrapText {
public:
    // `countsShown`: columns are those that people see, not bytes.
    WrapText(int tabSize, int rightMargin, bool countsShown)
        : tabSize_(tabSize), rightMargin_(rightMargin), countsShown_(countsShown) {}

    // Replaces the text. `trailingWidth` columns of what follows it have to stay on its last line. The text
    // is borrowed; `source` tells where its comments stand. The blocks, in order, are a token each.
    void read(std::string_view text, ExprMode mode, int trailingWidth, const SourceColumns& source,
              std::span<const TextExtent> blocks, LambdaParameters parameters);

    std::string_view text() const { return text_; }
    const std::vector<ExprToken>& tokens() const { return tokens_; }
    std::size_t size() const { return tokens_.size(); }
    int kindAt(std::size_t place) const;
    // The white space in front of a token; behind the last one for size().
    std::string_view gap(std::size_t place) const { return gaps_[place]; }
    std::string_view tokenText(std::size_t place) const;
    // By how many columns the token is counted as less than its bytes.
    int hiddenColumnsOf(std::size_t place) const;
    // Something that is neither a token nor white space stands between the tokens.
    bool holdsUnknownText() const { return holdsUnknownText_; }

    // Gives the commas outside of brackets `before` in front of them and a blank behind.
    void respaceCommas(std::string_view before);

    // Puts the lines of the text, but for those in braces, onto one, as far as comments let it.
    void joinLines();
    // The same, with those in braces (wrap_text_rows.cpp). The text stands at the column.
    void joinLinesAndRows(int column);
    // Whether that can be done, of no more tokens than that.
    bool hasRows(std::size_t mostTokens) const;
    // Whether a line that has been joined began with the token, or with a separator in front of it.
    bool beganLine(std::size_t place) const;

    // Whether the token stands on another line than the one before, whatever the wrapper does.
    bool startsOwnLine(std::size_t place) const { return has(place, OwnLine); }
    // Whether nothing but comments stands in front of the token on its line, and does so wherever the line
    // has come to begin.
    bool followsComments(std::size_t place) const;
    // A block of several lines.
    bool isLongBlock(std::size_t place) const {
        return tokens_[place].role == ExprRole::Block && tokenText(place).find('\n') != std::string_view::npos;
    }
    // A block on one line, of which several can be made.
    bool isPartable(std::size_t place) const {
        return tokens_[place].role == ExprRole::Block && !isLongBlock(place) &&
               tokenText(place).find_first_of(";}") + 1 < tokenText(place).size();
    }
    // The blocks come in their order.
    void part(std::size_t block) { parted_.push_back(block); }
    bool isParted(std::size_t block) const { return std::ranges::binary_search(parted_, block); }
    // A name that goes on in another line.
    struct Split {
        std::size_t place;
        std::size_t offset;  // in the name
        int column;
    };
    // The names come in their order.
    void split(Split name) { splits_.push_back(name); }
    // Puts so many blanks in front of a token.
    void pad(std::size_t place, int blanks);
    // Null for a token that is none.
    const Split* splitAt(std::size_t place) const;
    // A string literal behind another one.
    bool continuesLiteral(std::size_t place) const { return has(place, ContinuesLiteral); }

    void startLine(std::size_t place, LineStart start);
    // Keeps the first `count` of the line starts.
    void undoLineStarts(std::size_t count);
    std::size_t lineStartCount() const { return started_.size(); }
    // Null where none has been put.
    const LineStart* lineStart(std::size_t place) const;

    // The column of a token whose predecessor ends at `column`. One that starts a line does so where it was
    // put.
    int columnOf(std::size_t place, int column) const;
    // The range must hold no lines that the wrapper has started, but for tokens that stand on lines of their
    // own.
    Extent measure(TokenRange range, int column, Literals literals = Literals::Stacked);
    // Whether every line of the range ends within the margin, the last one with `tail` columns behind it.
    bool fits(TokenRange range, int column, int tail, Literals literals = Literals::Stacked);
    bool isWithinMargin(int column) const { return column <= rightMargin_; }
    // Whether a literal is put below the one that it follows, which stands at the column: not beyond the
    // margin, where nothing would be gained.
    bool isStacked(std::size_t place, int column) const {
        return continuesLiteral(place) && column < rightMargin_;
    }

    // Tells the text's tail widths from where lines may begin.
    void setLineChances(const std::vector<bool>& mayStartLine);
    // The columns from the end of the token before `place` to the first place behind it where a line may
    // begin or the line ends anyway.
    int tailWidth(std::size_t place) const { return tailWidths_[place]; }

    // The range holds no tabs, line ends or literals in a row.
    bool isEven(TokenRange range) const;

    // Tells where a token has come to stand. When it is the bracket of a list, the elements that stand in
    // lines below the first one of its list come to stand as far behind it as they did.
    void placeBracket(std::size_t place, int column);
    // Whether the token is such an element, and its bracket has moved.
    bool hasMoved(std::size_t place) const;

private:
    static constexpr int kNone = -1;  // no column
    enum Trait : unsigned char { UnevenText = 1, UnevenGap = 2, OwnLine = 4, ContinuesLiteral = 8 };
    // A token in a line below the first element of a list, as far behind the list's bracket as that stands or
    // further. The bracket that closes the list may be one.
    struct Element {
        std::size_t place;
        std::size_t bracket;
        int column;
        int offset;  // behind the bracket
    };

    void measureGaps();
    bool startsMacro(std::size_t place) const;
    void joinAt(std::size_t place);
    void joinRows(int column);
    void refillAt(std::size_t place);
    void endJoining();
    bool staysInBrace(std::size_t place, std::size_t open) const;
    std::vector<std::size_t> countBeyondMargin(int column) const;
    void readTraits();
    void readComments(const SourceColumns& source);
    void readElements(const SourceColumns& source);
    const Element* elementAt(std::size_t place) const;
    int columnBehind(std::size_t place, int column) const;
    int columnBehindText(std::string_view text, int column) const;
    int widthOf(std::string_view text) const;
    bool has(std::size_t place, unsigned traits) const { return (traits_[place] & traits) != 0; }
    Extent walk(TokenRange range, int column, Literals literals, bool untilTooLong);

    int tabSize_;
    int rightMargin_;
    bool countsShown_;
    std::string_view text_;
    ExprMode mode_ = ExprMode::Expression;
    std::vector<ExprToken> tokens_;
    std::vector<std::string_view> gaps_;
    std::vector<unsigned char> traits_;
    std::vector<int> offsets_;  // of the tokens, were the text one line without tabs
    std::vector<std::size_t>
        nextUneven_;                 // the first token from here on with a tab or line end in it or its gap
    // Of the comments of several lines, in their order, the columns from their start to that of their last
    // line.
    std::vector<std::pair<std::size_t, int>> lastLines_;
    std::vector<bool> joined_;         // to the line in front
    std::vector<Element> elements_;    // in the order of their places
    std::vector<int>
        bracketColumns_;  // of every token, where there are elements; kNone for those not placed yet
    std::vector<LineStart> starts_;  // of every token; kNone where it does not start a line
    std::vector<std::size_t> started_;  // the tokens that do, in the order in which they came to it
    std::vector<int> tailWidths_;
    std::vector<std::size_t> parted_;
    std::vector<Split> splits_;
    int trailingWidth_ = 0;
    bool startsLine_ = false;  // nothing stands in front of the text on its line
    bool holdsUnknownText_ = false;
};

}  // namespace Tessel
