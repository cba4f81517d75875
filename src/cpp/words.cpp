#include "cpp/words.h"

#include <algorithm>
#include <span>

#include "cpp/characters.h"
#include "cpp/token_sets.h"

namespace Cpp {

namespace {

constexpr std::string_view kArgumentWords[] = {
    "_Alignas", "_Atomic",    "_BitInt",  "__assume",   "__attribute",  "__attribute__",
    "__based",  "__declspec", "__typeof", "__typeof__", "_based",       "_declspec",
    "alignas",  "decltype",   "noexcept", "typeof",     "typeof_unqual"};
constexpr std::string_view kTypeWords[] = {"_Atomic",    "_BitInt",  "__typeof",     "__typeof__",
                                           "decltype", "typeof", "typeof_unqual"};
constexpr std::string_view kOperatorWords[] = {"and",    "and_eq", "bitand", "bitor", "compl", "not",
                                               "not_eq", "or",     "or_eq",  "xor",   "xor_eq"};

bool isAmong(std::span<const std::string_view> words, std::string_view word) {
    return std::ranges::find(words, word) != words.end();
}

}  // namespace

bool takesArgument(const Trn::Lexeme& word) {
    if (word.kind == KeywordExplicit) return true;
    return word.kind == Identifier && takesArgument(word.text);
}

bool takesArgument(std::string_view name) { return isAmong(kArgumentWords, name); }

bool namesType(const Trn::Lexeme& word) { return word.kind == Identifier && isAmong(kTypeWords, word.text); }

bool isOperatorWord(std::string_view word) {
    return isCoroutineWord(word) || isAmong(kOperatorWords, word);
}

std::size_t operatorSymbol(std::string_view name) {
    constexpr std::string_view keyword = "operator";
    const std::size_t start = name.rfind(keyword);
    if (start == std::string_view::npos || (start > 0 && isNamePart(name[start - 1]))) return name.size();
    const std::size_t next = name.find_first_not_of(" \t", start + keyword.size());
    if (next == std::string_view::npos) return name.size();
    const std::string_view rest = name.substr(next);
    const bool isComment = rest.starts_with("/*") || rest.starts_with("//");
    const bool isSymbol = std::string_view("+-*/%^&|~!=<>([,").find(rest.front()) != std::string_view::npos;
    return isSymbol && !isComment ? next : name.size();
}

bool isUpperCase(std::string_view word) {
    return std::ranges::none_of(word, [](char c) { return c >= 'a' && c <= 'z'; });
}

bool isMacroBehindName(const Trn::Token& type, const Trn::Token& name, const Trn::Token& macro) {
    const auto isName = [](const Trn::Lexeme& word) { return word.kind == Identifier && !isUpperCase(word.text); };
    if (!isName(name) || macro.kind != Identifier || !isUpperCase(macro.text)) return false;
    switch (type.kind) {
        case Less:
        case Greater:
        case Asterisk:
        case Ampersand: return true;
        default: return isName(type) || isBuiltinTypeKeyword(type.kind);
    }
}

}  // namespace Cpp
