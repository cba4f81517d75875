#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "cpp/position_map.h"
#include "engine/same_lines.h"
#include "engine/side_by_side.h"
#include "textstream/text_document.h"

namespace Tessel {

// The places of a source in what has become of it, where all that differs is white space. What is told of a place is
// told by the character in front of it.
class MovedPositions : public Cpp::PositionMap {
public:
    // Both are borrowed.
    MovedPositions(const Zelmor::TextDocument& source, const Zelmor::TextDocument& result);

    Trn::Position moved(Trn::Position position) override;
    // The lines of the result that have stayed as they were.
    SameLines takeSameLines() {
        sameLines_.forgetLinesAfter();
        return std::move(sameLines_);
    }
    // An offset behind a character.
    std::size_t movedEnd(std::size_t end);
    // That of a character which is no white space.
    std::size_t movedStart(std::size_t start) { return movedEnd(start + 1) - 1; }

private:
    std::size_t movedEndByText(std::size_t end);
    void passUpTo(std::size_t offset);

    const Zelmor::TextDocument& source_;
    const Zelmor::TextDocument& result_;
    SameLines sameLines_;  // in which no more than the indentation is another
    SideBySide sides_;
    std::vector<SideBySide> passed_;  // the states that `sides_` had every so often, in order
    int line_ = 1;                    // of the result, where the search for the next place starts
    int sourceLine_ = 1;              // the same of the source
};

}  // namespace Tessel
