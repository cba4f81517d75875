#pragma once

#include <algorithm>
#include <cstdlib>
#include <string_view>

#include "engine/columns.h"

namespace Tessel {

// The line on which a construct begins.
struct FirstLine {
    int source = -1;   // the column of its first text in the source; negative where it is not known,
    int output = 0;    // and in the output
    int hanging = -1;  // the column at which further lines hang in the source, where they hang under anything
};

// Whether a line that its author began inside a construct, and that hangs under nothing in the source, stays as far
// behind the construct's first line as it is:
//
//     total = first +
//         second;
//
// Less than `least` blanks are no indentation of the style that is wanted. A line that misses by a column what it could
// hang under hangs there when that moves.
class KeptIndent {
public:
    KeptIndent(bool isWanted, int tabSize, int least) : isWanted_(isWanted), tabSize_(tabSize), least_(least) {}

    bool isWanted() const { return isWanted_; }

    // `gap` is what stands in front of the line's first text; `hanging` is its column if its author's does not count.
    int columnFor(const FirstLine& first, std::string_view gap, int hanging) const {
        if (!isWanted_ || first.source < 0) return hanging;
        const int column = sourceColumn(gap);
        const bool isMoved = hanging - first.output != first.hanging - first.source;
        const bool hangs = column == first.hanging || (isMoved && std::abs(column - first.hanging) <= kNearlyHanging);
        if (column <= first.source || column - first.source < least_ || hangs) return hanging;
        return std::min(first.output + column - first.source, kRightmostIndent);
    }
    // What may stand below the first line's first text, too: a closing bracket, or the next of several that are
    // assigned to.
    int columnBelowFirst(const FirstLine& first, std::string_view gap, int hanging) const {
        const bool standsBelow = isWanted_ && first.source >= 0 && sourceColumn(gap) == first.source;
        return standsBelow ? first.output : columnFor(first, gap, hanging);
    }

private:
    int sourceColumn(std::string_view gap) const {
        return columnBehind(gap, 0, tabSize_);
    }

    static constexpr int kNearlyHanging = 1;

    bool isWanted_;
    int tabSize_;
    int least_;
};

}  // namespace Tessel
