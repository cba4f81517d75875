#include "engine/head_words.h"

#include <algorithm>
#include <iterator>

#include "cpp/words.h"

namespace Tessel {

namespace {

bool isSpecifierWord(std::string_view word) {
    constexpr std::string_view words[] = {"explicit", "virtual", "inline",    "static",    "friend",
                                          "extern",   "constexpr", "consteval", "constinit"};
    return std::find(std::begin(words), std::end(words), word) != std::end(words);
}

std::string_view withoutSpecifiers(std::string_view type) {
    while (!type.empty()) {
        const std::string_view word = type.substr(0, type.find(' '));
        if (!isSpecifierWord(word)) break;
        type.remove_prefix(std::min(word.size() + 1, type.size()));
    }
    return type;
}

}  // namespace

bool isSpecifiers(std::string_view type) { return withoutSpecifiers(type).empty(); }

bool isItemByItself(std::string_view type, std::string_view name) {
    const std::string_view made = withoutSpecifiers(type);
    const std::string_view word = made.substr(0, made.find(' '));
    const bool hasArguments = word.size() < made.size() && made[word.size() + 1] == '(' && made.ends_with(')');
    if (hasArguments) return !Cpp::takesArgument(word) && !type.starts_with("extern ");
    if (!Cpp::isUpperCase(word) || word.size() < made.size()) return false;
    const bool isConversion = name.starts_with("operator ") || name.find("::operator ") != name.npos;
    const std::string_view firstName = name.substr(0, name.find_first_of(" ("));
    return made.size() == type.size() && (name.starts_with('~') || isConversion || Cpp::isUpperCase(firstName));
}

}  // namespace Tessel
