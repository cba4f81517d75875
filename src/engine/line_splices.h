#pragma once

#include <string>
#include <string_view>

#include "engine/column_layout.h"
#include "engine/optional_text.h"
#include "scheme/property_set.h"

namespace Tessel {

// Where the backslashes stand that go on with a directive in the next line, as ALIGN_LINE_SPLICES says: a blank behind
// the text, behind the longest line, or at the right margin. Where it is absent, they stay in the column that they have
// in common, if it is far enough to the right, or a blank behind the text if all are.
class LineSplices {
public:
    explicit LineSplices(const PropertySet& scheme);

    bool areAligned() const { return alignment_.value != kAsTheyAre; }
    // Of a directive that has been laid out as `text`, in the same lines, and begins at a column.
    std::string placed(std::string_view directive, std::string_view text, int firstColumn) const;

private:
    static constexpr int kAsTheyAre = -1;
    enum Alignment { BehindText, BehindLongest, AtMargin };

    // Where the lines have moved, what stood behind them may be a column then, or stand behind the text.
    std::string place(std::string_view directive, std::string_view text, int firstColumn) const;
    std::string blanksTo(int column, int from, bool takesTabs) const;

    Keyed<int> alignment_;
    int margin_;
    ColumnLayout layout_;
};

}  // namespace Tessel
