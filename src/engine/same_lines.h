#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "textstream/text_document.h"
#include "trn/position.h"

namespace Tessel {

// The lines that two texts have in common, where all that differs is white space: those with the same content between
// the same characters.
class SameLines {
public:
    // None.
    SameLines() = default;
    SameLines(const Zelmor::TextDocument& before, const Zelmor::TextDocument& after);

    // A line of the second text that has all that stands in one of the first, maybe behind another indentation.
    struct Line {
        std::uint32_t number = 0;  // 0 when there is none
        std::int32_t shift = 0;    // by how many characters what is no indentation has moved to the right
    };

    // What has become of a line of the first text.
    Line lineAfter(std::uint32_t line) const { return line < linesAfter_.size() ? linesAfter_[line] : Line(); }
    // Nobody will ask that any more.
    void forgetLinesAfter() { std::vector<Line>().swap(linesAfter_); }
    // Whether all lines of the second text from that of one position to that of the other stood in the first.
    bool contain(Trn::Position start, Trn::Position end) const;

private:
    void addEqual(std::size_t count);

    std::vector<Line> linesAfter_;       // of each line
    std::vector<std::uint32_t> others_;  // of each line of the second text, the number of new ones in front of it
};

}  // namespace Tessel
