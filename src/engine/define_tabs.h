#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

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
    // Of the lines among which that place is.
    int sizeAt(std::size_t place);

private:
    struct Lines {
        std::size_t start;
        std::size_t end;
    };

    void readText();
    std::size_t readLines(std::size_t start);

    std::string_view text_;
    int tabSize_;
    bool isRead_ = false;
    std::vector<Lines> wide_;  // those that have been written with wider tabs than the scheme's
};

}  // namespace Tessel
