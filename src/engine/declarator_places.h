#pragma once

#include <optional>

namespace Tessel {

// The column of the pointer marks in front of the first of several declarators: of those that their author has put
// below it, too.
struct MarkColumns {
    int source = -1;  // negative where there are none
    int output = 0;
};

// Where the first of several declarators stands, for those behind it to hang from.
struct DeclaratorPlaces {
    std::optional<int> name;  // where the text begins with its value: all stand below
    MarkColumns marks;
};

}  // namespace Tessel
