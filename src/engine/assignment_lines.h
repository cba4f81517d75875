#pragma once

#include <cstddef>
#include <limits>
#include <string_view>
#include <vector>

#include "engine/kept_region.h"
#include "trn/token.h"

namespace Tessel {

inline constexpr std::size_t kNoSign = std::numeric_limits<std::size_t>::max();
inline constexpr std::size_t kNoLine = std::numeric_limits<std::size_t>::max();

// The "=" of a line.
struct AssignmentSign {
    std::size_t line = 0;
    std::size_t gapStart = 0;    // of the white space in front of it
    std::size_t gapEnd = 0;
    std::size_t valuePlace = 0;  // of what follows it
    int codeEnd = 0;             // the column behind the code in front of it
    int column = 0;              // where it stands
    int wanted = 0;              // where it is to stand
    int end = 0;                 // the column behind the longest line that moves with it
    int indent = 0;              // the column of the line that it stands on, or goes on with
    int commas = 0;              // in front of it, but for those between "<" and ">"
    bool isFixed = false;        // what cannot move would have to move with it

    int leastColumn() const { return codeEnd + (gapEnd > gapStart ? 1 : 0); }
    int shift() const { return wanted - column; }
};

// A line of code, and what it hangs from: the line whose text it stands below, or whose indentation it starts from.
struct HangingLine {
    std::size_t textStart = 0;
    int column = 0;                  // of its text
    std::size_t parent = kNoLine;
    std::size_t mover = kNoSign;     // that which it moves with first
    std::size_t sign = kNoSign;      // its own
    bool isBehindSign = false;       // it moves with the "=" of its parent
};

// The lines of a text, and the columns in which their "=" are to stand. Lines that follow each other in the same
// brackets, with the same indentation, are a run; what stands in brackets does not end it, but for braces of several
// lines and what begins on a line of its own:
//
//     int a   = f(x,
//                 y);
//     int bcd = 2;
//
// One pass over the tokens; each is looked at once.
class AssignmentLines {
public:
    // The text is borrowed, as are its parts that stay as they are. No margin when 0.
    AssignmentLines(std::string_view text, const KeptRegions& kept, int tabSize, int margin);

    const std::vector<HangingLine>& lines() const { return lines_; }
    const std::vector<AssignmentSign>& signs() const { return signs_; }

private:
    // What a bracket holds; the first scope is that of the text.
    struct Scope {
        int closing = 0;                      // the kind of the token that ends it
        std::size_t bracketLine = kNoLine;    // of that which begins it
        std::size_t firstPlace = kNoLine;     // of what follows that, or of what the bracket in front of it is behind
        int firstColumn = -1;                 // its column, once that is known
        bool isBehindSign = false;
        std::size_t line = kNoLine;           // the last one that begins in it
        std::size_t valueSign = kNoSign;      // that of the statement, until its ";"
        int firstKind = 0;                    // of the first token of that
        bool hasSign = false;                 // on that line, or behind it
        bool isOver = false;                  // nothing further on that line is an assignment
        bool holdsBlock = false;              // braces of several lines
        int commas = 0;                       // on that line
        int angles = 0;                       // open on that line
        std::vector<std::size_t> run;
    };

    void readCode(std::size_t start, std::size_t end);
    void readKept(const KeptRegion& region);
    void read(const Trn::Token& token, std::size_t offset);
    void beginLine(const Trn::Token& token, std::size_t offset, std::ptrdiff_t lineFeeds);
    void addLine(std::size_t offset, bool isDirective);
    void hang(HangingLine& line, Scope& scope);
    void endLine();
    void fixLine(std::size_t line);
    void readSign(const Trn::Token& token, std::size_t offset);
    bool mayBeSign(const Scope& scope, std::size_t offset) const;
    void addSign(Scope& scope, std::size_t offset);
    void open(int closing, std::size_t place);
    void close(int kind);
    void endRun(Scope& scope);
    void place(const std::vector<std::size_t>& run, std::size_t first, std::size_t end);
    int columnAt(std::size_t place) const;
    std::size_t nextOnLine(std::size_t place) const;

    std::string_view text_;
    int tabSize_;
    int margin_;
    std::vector<HangingLine> lines_;
    std::vector<AssignmentSign> signs_;
    std::vector<Scope> scopes_;
    std::size_t codeEnd_ = 0;  // of the last token, comments too
    std::size_t textEnd_ = 0;  // of the last one that is no comment
    int lastKind_ = 0;         // of that
    bool isOnNewLine_ = true;
};

}  // namespace Tessel
