#include "cpp/token_joining.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "cpp/characters.h"
#include "textstream/char_set.h"

namespace Cpp {

namespace {

// Two characters that mean something else together; the digraphs among them.
constexpr std::string_view kJoiningPairs[] = {
    "++", "--", "&&", "||", "<<", ">>", "==", "+=", "-=", "*=", "/=", "%=", "&=", "|=", "^=", "<=",
    ">=", "!=", "->", ".*", "//", "/*", "*/", "::", "<:", ":>", "<%", "%>", "%:", "..", "##", "\\\n",
};

// What the first of two such characters may be.
constexpr Zelmor::CharSet kStartsOfPairs = [] {
    std::array<char, std::size(kJoiningPairs)> starts{};
    std::ranges::transform(kJoiningPairs, starts.begin(), [](std::string_view pair) { return pair.front(); });
    return Zelmor::CharSet({starts.data(), starts.size()});
}();

bool endsExponent(std::string_view number) {
    return isDigit(number.front()) && std::string_view("eEpP").find(number.back()) != std::string_view::npos;
}

}  // namespace

bool wouldJoin(std::string_view left, std::string_view right) {
    if (left.empty() || right.empty()) return false;
    const char last = left.back();
    const char first = right.front();
    if (isNamePart(last) && (isNamePart(first) || isQuote(first) || right.starts_with("::"))) return true;
    if (isQuote(last) && isNamePart(first)) return true;
    if (last == '~' && isNamePart(first) && !isDigit(first)) return true;
    if ((isDigit(left.front()) && first == '.') || (last == '.' && isDigit(first))) return true;
    if ((first == '+' || first == '-') && endsExponent(left)) return true;
    if (left.ends_with("->") && first == '*') return true;
    if (!kStartsOfPairs.holds(last)) return false;
    const char pair[] = {last, first};
    return std::find(std::begin(kJoiningPairs), std::end(kJoiningPairs), std::string_view(pair, 2)) !=
           std::end(kJoiningPairs);
}

}  // namespace Cpp
