// Which lines stay of lists in braces whose text is broken anew.
//
//     {{"first", 1},       rows of one element each, and rows that are all within the margin, stay
//      {"second", 2}}
//     {1, 2, 3,            of other lists the lines are joined, where one of them runs over: no more than one
//      4}                  of their lines would be full
#include <algorithm>

#include "cpp/token_kind.h"
#include "engine/columns.h"
#include "layout/line_text.h"
#include "layout/wrap_text.h"

namespace Tessel {

namespace {

bool isBrace(const ExprTokens& tokens, std::size_t place) {
    return tokens[place].kind == Cpp::OpenBrace && opensBracket(tokens, place);
}

bool isComma(const ExprTokens& tokens, std::size_t place) {
    return tokens[place].role == ExprRole::Separator && tokens[place].kind == Cpp::Comma;
}

std::ptrdiff_t lineEndsIn(std::string_view text) { return std::count(text.begin(), text.end(), '\n'); }

}  // namespace

// Whether nothing stands in the text that no line can be joined with.
bool WrapText::hasRows(std::size_t mostTokens) const {
    if (tokens_.size() > mostTokens || text_.find('\t') != std::string_view::npos) return false;
    bool holdsBrace = false;
    for (std::size_t place = 0; place < tokens_.size(); ++place) {
        const int kind = kindAt(place);
        if (kind == Cpp::Directive || (kind == Cpp::BlockComment && holdsLineEnd(tokenText(place)))) return false;
        if (!isBrace(tokens_, place)) continue;
        if (opensBlock(tokens_, place)) return false;
        holdsBrace = true;
    }
    return holdsBrace;
}

// For each token, how many tokens in front of it end beyond the margin, comments not counted.
std::vector<std::size_t> WrapText::countBeyondMargin(int column) const {
    std::vector<std::size_t> counts{0};
    for (std::size_t place = 0; place < tokens_.size(); ++place) {
        const std::string_view gap = gaps_[place];
        const bool startsLine = holdsLineEnd(gap) || (place > 0 && tokenText(place - 1).ends_with('\n'));
        column = startsLine ? lengthOf(lastLine(gap)) : column + lengthOf(gap);
        column = columnBehind(place, column);
        const bool isBeyond = kindAt(place) != Cpp::LineComment && !isWithinMargin(column);
        counts.push_back(counts.back() + (isBeyond ? 1 : 0));
    }
    return counts;
}

void WrapText::joinRows(int column) {
    const std::vector<std::size_t> beyond = countBeyondMargin(column);
    std::vector<bool> holdsSeveral(tokens_.size(), false);  // of the braces: two elements stand on a line
    std::vector<std::size_t> brackets;
    const auto enter = [&](std::size_t place) {
        while (!brackets.empty() && tokens_[brackets.back()].partner < place) brackets.pop_back();
    };
    for (std::size_t place = 0; place < tokens_.size(); ++place) {
        enter(place);
        const bool isInside = !brackets.empty() && tokens_[brackets.back()].partner != place;
        const bool isSecond = place > 0 && isComma(tokens_, place - 1) && tokens_[place].role != ExprRole::Trivia;
        if (isInside && isSecond && !holdsLineEnd(gaps_[place])) holdsSeveral[brackets.back()] = true;
        if (opensBracket(tokens_, place)) brackets.push_back(place);
    }
    brackets.clear();
    for (std::size_t place = 1; place < tokens_.size(); ++place) {
        enter(place);
        if (brackets.empty() || !staysInBrace(place, brackets.back())) {
            joinAt(place);
        } else if (isComma(tokens_, place - 1) && place != tokens_[brackets.back()].partner) {
            const std::size_t open = brackets.back();
            const bool runsOver = beyond[tokens_[open].partner] > beyond[open + 1];
            if (runsOver && holdsSeveral[open]) refillAt(place);
        }
        if (opensBracket(tokens_, place)) brackets.push_back(place);
    }
}

// Between two elements, which may have stood in columns.
void WrapText::refillAt(std::size_t place) {
    if (lineEndsIn(gaps_[place]) == 1) joinAt(place);
    const bool isColumn = gaps_[place].size() > 1 && !holdsLineEnd(gaps_[place]);
    if (isColumn && tokens_[place].role != ExprRole::Trivia) gaps_[place] = " ";
}

// Whether a line may go on beginning at the token between the brackets: at an element, or at the "}".
bool WrapText::staysInBrace(std::size_t place, std::size_t open) const {
    if (!isBrace(tokens_, open)) return false;
    const std::size_t close = tokens_[open].partner;
    const bool isBlock = holdsLineEnd(gaps_[open + 1]) && holdsLineEnd(gaps_[close]);
    if (place == open + 1 || place == close) return isBlock;
    const bool areNames = kindAt(place) == Cpp::Identifier && kindAt(place - 1) == Cpp::Identifier;  // of macros
    return isComma(tokens_, place - 1) || startsMacro(place) || areNames;
}

}  // namespace Tessel
