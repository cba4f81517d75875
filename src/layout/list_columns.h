#pragma once

#include <cstddef>
#include <vector>

#include "engine/element_columns.h"
#include "engine/expr_tokens.h"

namespace Tessel {

// Which lists in braces stand in columns once they are broken, and where these are: those of many elements without
// comments, and of more where they stand in other brackets.
//
//     {"red",  "orange", "yellow", "green",
//      "blue", "indigo", "violet"}
class ListColumns {
public:
    // `gaps` and `widths` are those of the tokens; no list has columns whose rows stay (`staying` tokens).
    void read(const ExprTokens& tokens, const std::vector<int>& gaps, const std::vector<int>& widths,
              const std::vector<bool>& staying);

    // Which element of such a list begins with the token, from 0 on; kNoToken where none does.
    std::size_t indexOf(std::size_t place) const { return places_[place].index; }
    // How many columns the list of an element has room for: as few as make as few lines. 0 where it fits on one line.
    std::size_t countWithin(std::size_t place, int room) const { return listOf(place).countWithin(room); }
    // Where the column of an element stands behind the first one, of so many.
    int offsetOf(std::size_t place, std::size_t columns) const {
        return listOf(place).offsetOf(places_[place].index, columns);
    }

private:
    struct Place {
        std::size_t index = kNoToken;
        std::size_t list = kNoToken;
    };
    const ElementColumns& listOf(std::size_t place) const { return lists_[places_[place].list]; }
    void readList(const ExprTokens& tokens, std::size_t open, const std::vector<std::size_t>& starts,
                  const std::vector<int>& ends, const std::vector<int>& gaps);

    std::vector<Place> places_;
    std::vector<ElementColumns> lists_;
};

}  // namespace Tessel
