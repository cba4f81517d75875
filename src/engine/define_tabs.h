#pragma once

#include <cstddef>
#include <string_view>

namespace Tessel {

// How wide the tabs are that lines of macros have been written with which follow each other:
//
//     #define READ→→1             with tabs of 8 the values stand in one column,
//     #define TRUNCATE_FILE→2     and they do not with those of 4
//
// A scheme's tabs are those of its indentation, which need not be the ones of the source. The text is borrowed.
class DefineTabs {
public:
    DefineTabs(std::string_view text, int tabSize) : text_(text), tabSize_(tabSize) {}

    // A macro that no tab indents behind its "#": those are the scheme's.
    static bool mayTell(std::string_view directive);
    // Of the lines around the one in which that place is. They are read once for all places in them.
    int sizeAt(std::size_t place);

private:
    void readLinesAround(std::size_t place);

    std::string_view text_;
    int tabSize_;
    int size_ = 0;  // that of the lines, which begin and end there
    std::size_t linesStart_ = 0;
    std::size_t linesEnd_ = 0;
};

}  // namespace Tessel
