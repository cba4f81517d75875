#include "layout/list_columns.h"

#include <utility>

#include "cpp/token_kind.h"

namespace Tessel {

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
            const std::size_t least = brackets.empty() ? ElementColumns::kLeastOutside : ElementColumns::kLeastInside;
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
    lists_.emplace_back(widths);
}

}  // namespace Tessel
