#include "cpp/keyword_table.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "cpp/token_kind.h"

namespace Cpp {

namespace {

struct Keyword {
    std::string_view spelling;
    int kind;
};

// Ordered by spelling.
constexpr Keyword keywordTable[] = {
    {"asm", KeywordAsm},
    {"auto", KeywordAuto},
    {"bool", KeywordBool},
    {"break", KeywordBreak},
    {"case", KeywordCase},
    {"catch", KeywordCatch},
    {"char", KeywordChar},
    {"class", KeywordClass},
    {"const", KeywordConst},
    {"const_cast", KeywordConstCast},
    {"continue", KeywordContinue},
    {"default", KeywordDefault},
    {"delete", KeywordDelete},
    {"do", KeywordDo},
    {"double", KeywordDouble},
    {"dynamic_cast", KeywordDynamicCast},
    {"else", KeywordElse},
    {"enum", KeywordEnum},
    {"explicit", KeywordExplicit},
    {"export", KeywordExport},
    {"extern", KeywordExtern},
    {"false", KeywordFalse},
    {"float", KeywordFloat},
    {"for", KeywordFor},
    {"friend", KeywordFriend},
    {"goto", KeywordGoto},
    {"if", KeywordIf},
    {"inline", KeywordInline},
    {"int", KeywordInt},
    {"long", KeywordLong},
    {"mutable", KeywordMutable},
    {"namespace", KeywordNamespace},
    {"new", KeywordNew},
    {"operator", KeywordOperator},
    {"private", KeywordPrivate},
    {"protected", KeywordProtected},
    {"public", KeywordPublic},
    {"register", KeywordRegister},
    {"reinterpret_cast", KeywordReinterpretCast},
    {"return", KeywordReturn},
    {"short", KeywordShort},
    {"signed", KeywordSigned},
    {"sizeof", KeywordSizeof},
    {"static", KeywordStatic},
    {"static_cast", KeywordStaticCast},
    {"struct", KeywordStruct},
    {"switch", KeywordSwitch},
    {"template", KeywordTemplate},
    {"this", KeywordThis},
    {"throw", KeywordThrow},
    {"true", KeywordTrue},
    {"try", KeywordTry},
    {"typedef", KeywordTypedef},
    {"typeid", KeywordTypeid},
    {"typename", KeywordTypename},
    {"union", KeywordUnion},
    {"unsigned", KeywordUnsigned},
    {"using", KeywordUsing},
    {"virtual", KeywordVirtual},
    {"void", KeywordVoid},
    {"volatile", KeywordVolatile},
    {"wchar_t", KeywordWcharT},
    {"while", KeywordWhile},
};

static_assert(std::is_sorted(std::begin(keywordTable), std::end(keywordTable),
                             [](const Keyword& a, const Keyword& b) { return a.spelling < b.spelling; }));

constexpr std::size_t kLetters = 'z' - 'a' + 1;

// Where the keywords of each first letter begin, and where those of the last one end.
constexpr auto firstByLetter = [] {
    std::array<std::size_t, kLetters + 1> first{};
    for (std::size_t letter = 0; letter <= kLetters; ++letter) {
        while (first[letter] < std::size(keywordTable) &&
               keywordTable[first[letter]].spelling.front() < static_cast<char>('a' + letter)) {
            ++first[letter];
        }
    }
    return first;
}();

// The lengths of the keywords of each first letter, a bit for each: most names have another.
constexpr auto lengthsByLetter = [] {
    std::array<std::uint32_t, kLetters> lengths{};
    for (const Keyword& keyword : keywordTable) {
        lengths[static_cast<std::size_t>(keyword.spelling.front() - 'a')] |= 1U << keyword.spelling.size();
    }
    return lengths;
}();
constexpr std::size_t kLengths = std::numeric_limits<std::uint32_t>::digits;

constexpr std::string_view scopedOperatorWords[] = {"new", "delete", "operator"};

}  // namespace

int keywordKind(std::string_view word) {
    if (word.empty() || word.front() < 'a' || word.front() > 'z') return Identifier;
    const auto letter = static_cast<std::size_t>(word.front() - 'a');
    if (word.size() >= kLengths || (lengthsByLetter[letter] >> word.size() & 1U) == 0) return Identifier;
    for (std::size_t place = firstByLetter[letter]; place < firstByLetter[letter + 1]; ++place) {
        if (keywordTable[place].spelling == word) return keywordTable[place].kind;
    }
    return Identifier;
}

bool isScopedOperatorWord(std::string_view word) {
    return std::find(std::begin(scopedOperatorWords), std::end(scopedOperatorWords), word) !=
           std::end(scopedOperatorWords);
}

}  // namespace Cpp
