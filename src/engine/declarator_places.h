#pragma once

#include <optional>

namespace Tessel {

// Where the first of several declarators stands, for those behind it to hang from.
struct DeclaratorPlaces {
    std::optional<int> name;  // where the text begins with its value: all stand below
    int marksInSource = -1;   // the column of the marks in front of it; negative where there are none
    int marks = 0;            // the same in the output: of those whose author has put them below, too
};

}  // namespace Tessel
