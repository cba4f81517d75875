#include "cpp/words.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <limits>

#include "cpp/characters.h"
#include "cpp/keyword_table.h"
#include "cpp/token_sets.h"

namespace Cpp {

namespace {

// Most of what is asked for has a length that none of the words has.
template <std::size_t kCount>
class WordSet {
public:
    constexpr explicit WordSet(const std::string_view (&words)[kCount]) {
        std::ranges::copy(words, words_);
        for (const std::string_view word : words_) lengths_ |= std::uint32_t{1} << word.size();
    }
    bool contains(std::string_view word) const {
        const bool isShort = word.size() < std::numeric_limits<std::uint32_t>::digits;
        return isShort && (lengths_ >> word.size() & 1) != 0 && std::ranges::find(words_, word) != std::end(words_);
    }

private:
    std::string_view words_[kCount];
    std::uint32_t lengths_ = 0;  // a bit for each
};

constexpr WordSet kArgumentWords({"_Alignas", "_Atomic", "_BitInt", "__assume", "__attribute", "__attribute__",
                                  "__based", "__declspec", "__typeof", "__typeof__", "_based", "_declspec", "alignas",
                                  "decltype", "noexcept", "typeof", "typeof_unqual"});
constexpr WordSet kTypeWords(
    {"_Atomic", "_BitInt", "__typeof", "__typeof__", "decltype", "typeof", "typeof_unqual"});
constexpr std::string_view kInfixWords[] = {"and",    "and_eq", "bitand", "bitor", "not_eq",
                                            "or",     "or_eq",  "xor",    "xor_eq"};
constexpr int kInfixKinds[] = {LogicalAnd, AmpersandAssign, Ampersand, Bar,        NotEqual,
                               LogicalOr,  BarAssign,       Caret,     CaretAssign};
static_assert(std::size(kInfixWords) == std::size(kInfixKinds));
constexpr WordSet kInfixSet(kInfixWords);
constexpr WordSet kPrefixSet({"compl", "not"});

}  // namespace

bool takesArgument(const Trn::Lexeme& word) {
    if (word.kind == KeywordExplicit) return true;
    return word.kind == Identifier && takesArgument(word.text);
}

bool takesArgument(std::string_view name) { return kArgumentWords.contains(name); }

bool namesType(const Trn::Lexeme& word) { return word.kind == Identifier && kTypeWords.contains(word.text); }

bool isOperatorWord(std::string_view word) {
    return isCoroutineWord(word) || kInfixSet.contains(word) || kPrefixSet.contains(word);
}

int infixKind(std::string_view word) {
    if (!kInfixSet.contains(word)) return Trn::kEndKind;
    return kInfixKinds[std::ranges::find(kInfixWords, word) - std::begin(kInfixWords)];
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

bool isSingleWord(std::string_view text) {
    return !text.empty() && std::ranges::all_of(text, isNamePart) && keywordKind(text) == Identifier;
}

bool isUpperCase(std::string_view word) {
    const auto isOther = [](char c) { return (c >= 'a' && c <= 'z') || static_cast<signed char>(c) < 0; };
    return std::ranges::none_of(word, isOther);
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
