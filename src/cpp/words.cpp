#include "cpp/words.h"

#include <algorithm>
#include <iterator>

namespace Cpp {

namespace {

constexpr std::string_view kArgumentWords[] = {
    "_Alignas", "_Atomic",    "_BitInt",  "__assume",   "__attribute",  "__attribute__",
    "__based",  "__declspec", "__typeof", "__typeof__", "_based",       "_declspec",
    "alignas",  "decltype",   "noexcept", "typeof",     "typeof_unqual"};

}  // namespace

bool takesArgument(const Trn::Token& word) {
    if (word.kind == KeywordExplicit) return true;
    if (word.kind != Identifier) return false;
    return std::ranges::find(kArgumentWords, word.text) != std::end(kArgumentWords);
}

bool isUpperCase(std::string_view word) {
    return std::ranges::none_of(word, [](char c) { return c >= 'a' && c <= 'z'; });
}

}  // namespace Cpp
