#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/column_layout.h"
#include "engine/expr_tokens.h"

namespace Tessel {

// A list in braces whose rows hold as many elements each, the last one as many or fewer.
struct ListRows {
    struct Element {
        std::size_t start = 0;
        std::size_t end = 0;  // with the comma behind it
    };
    std::vector<Element> elements;  // in the source
    std::size_t columns = 0;        // elements of a row
};

using ListsInRows = std::vector<ListRows>;

// The list that the "{" at the place opens, if it is such a one, of at least so many elements; `start` is that of the
// tokens' text in the source. Costs one look at each element, and none at what stands in brackets in them.
std::optional<ListRows> readListRows(const ExprTokens& tokens, std::size_t open, std::size_t least, std::size_t start);

// The elements of these lists come to stand in columns where their rows are those that such columns would have in the
// margin:
//
//     {"red", "orange", "yellow", "green",        {"red",  "orange", "yellow", "green",
//      "blue", "indigo", "violet"}                 "blue", "indigo", "violet"}
//
// `result` is the source with other white space. Wider gaps in it are its author's, and stay.
std::string withListColumns(const ColumnLayout& layout, std::string_view source, ListsInRows lists,
                            std::string result);

}  // namespace Tessel
