#include "layout/list_columns.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "cpp/token_kind.h"

namespace Tessel {

namespace {

constexpr std::size_t kLeastOutside = 6;  // elements, outside of other brackets
constexpr std::size_t kLeastInside = 20;  // in them
constexpr std::size_t kMostColumns = 40;
constexpr int kWidestGap = 10;  // in a column: there are fewer where the elements of one differ more

// Where so many columns begin, and the end behind them; nothing where the elements of one differ too much.
std::vector<int> offsetsOf(std::size_t columns, const std::vector<int>& widths) {
    std::vector<int> widest(columns, 0);
    std::vector<int> narrowest(columns, std::numeric_limits<int>::max());
    for (std::size_t index = 0; index < widths.size(); ++index) {
        int& most = widest[index % columns];
        int& least = narrowest[index % columns];
        most = std::max(most, widths[index]);
        least = std::min(least, widths[index]);
    }
    std::vector<int> offsets(1, 0);
    for (std::size_t column = 0; column < columns; ++column) {
        if (column + 1 < columns && widest[column] - narrowest[column] > kWidestGap) return {};
        offsets.push_back(offsets.back() + widest[column] + 1);
    }
    return offsets;
}

}  // namespace

void ListColumns::read(const ExprTokens& tokens, const std::vector<int>& gaps, const std::vector<int>& widths,
                       const std::vector<bool>& staying) {
    struct Open {
        std::size_t place;
        std::vector<std::size_t> starts;
        bool isSuited;
        bool holdsSpecial = false;  // a comment, a block or a line that stays
    };
    places_.assign(tokens.size(), {});
    lists_.clear();
    std::vector<int> ends{0};  // of the tokens in front, were the text one line
    std::vector<Open> brackets;
    for (std::size_t place = 0; place < tokens.size(); ++place) {
        ends.push_back(ends.back() + gaps[place] + widths[place]);
        const bool isElement = !brackets.empty() && brackets.back().place + 1 == place;
        const bool isNext = !brackets.empty() && place > 0 && tokens[place - 1].role == ExprRole::Separator;
        bool closes = false;
        for (; !brackets.empty() && tokens[brackets.back().place].partner == place; closes = true) {
            const Open list = std::move(brackets.back());
            brackets.pop_back();
            const std::size_t least = brackets.empty() ? kLeastOutside : kLeastInside;
            const bool isSuited = list.isSuited && !list.holdsSpecial;
            if (isSuited && list.starts.size() >= least) readList(tokens, list.place, list.starts, ends, gaps);
            if (!brackets.empty()) brackets.back().holdsSpecial |= list.holdsSpecial;
        }
        if (closes) continue;
        if (isElement || isNext) brackets.back().starts.push_back(place);
        const bool isSpecial = tokens[place].role == ExprRole::Trivia || tokens[place].role == ExprRole::Block;
        if (!brackets.empty() && (isSpecial || (staying[place] && !isElement))) brackets.back().holdsSpecial = true;
        if (!opensBracket(tokens, place)) continue;
        brackets.push_back({place, {}, tokens[place].kind == Cpp::OpenBrace});
    }
}

void ListColumns::readList(const ExprTokens& tokens, std::size_t open, const std::vector<std::size_t>& starts,
                           const std::vector<int>& ends, const std::vector<int>& gaps) {
    List list;
    list.elements = starts.size();
    std::vector<int> widths;
    for (std::size_t index = 0; index < starts.size(); ++index) {
        places_[starts[index]] = {index, lists_.size()};
        const bool isLast = index + 1 == starts.size();
        std::size_t last = isLast ? tokens[open].partner - 1 : starts[index + 1] - 2;
        if (isLast && tokens[last].role == ExprRole::Separator) --last;
        widths.push_back(ends[last + 1] - ends[starts[index]] - gaps[starts[index]]);
    }
    const bool endsWithComma = tokens[tokens[open].partner - 1].role == ExprRole::Separator;
    for (int& width : widths) ++width;
    if (!endsWithComma) --widths.back();
    for (const int width : widths) list.width += width + 1;
    for (std::size_t columns = 1; columns <= std::min(starts.size(), kMostColumns); ++columns) {
        list.offsets.push_back(offsetsOf(columns, widths));
    }
    lists_.push_back(std::move(list));
}

std::size_t ListColumns::countWithin(std::size_t place, int room) const {
    const List& list = lists_[places_[place].list];
    if (list.width <= room) return 0;
    std::size_t best = 1;
    std::size_t fewestLines = list.elements;
    for (std::size_t columns = list.offsets.size(); columns > 0; --columns) {
        const std::vector<int>& offsets = list.offsets[columns - 1];
        if (offsets.empty() || offsets.back() - 1 > room) continue;
        const std::size_t lines = (list.elements + columns - 1) / columns;
        if (lines > fewestLines) break;
        fewestLines = lines;
        best = columns;
    }
    return best;
}

int ListColumns::offsetOf(std::size_t place, std::size_t columns) const {
    return lists_[places_[place].list].offsets[columns - 1][places_[place].index % columns];
}

}  // namespace Tessel
