#pragma once

#include <iosfwd>
#include <string_view>

struct ParagraphShape {
    int indent = 0;      // columns before the title, or before the text when there is no title
    int titleWidth = 0;  // columns of the title; the text begins behind them
    int lineWidth = 0;   // the last column that may be written
};

// Writes a title and a wrapped text beside it:
//
//         -v|--verbose  say what is being done, step
//                       by step
//
// A title as wide as its column or wider has the text on the next line. Line ends in the text stay; a tab
// counts as 8 columns. Ends with a line feed.
void printParagraph(std::ostream& out, const ParagraphShape& shape, std::string_view title,
                    std::string_view text);
