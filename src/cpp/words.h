#pragma once

#include <cstddef>
#include <string_view>

#include "cpp/token_kind.h"
#include "cpp/token_sets.h"
#include "trn/token.h"

// What is told by a single word of a declaration.
namespace Cpp {

// A name or a keyword.
constexpr bool isWord(int kind) {
    return kind == Identifier || (kind >= KeywordClass && kind <= KeywordVoid);
}

constexpr bool isTypeWord(int kind) {
    return startsData(kind) || isClassKey(kind) || kind == KeywordEnum;
}

// A word that says how something is declared, and not of which type.
constexpr bool isStorageWord(int kind) {
    switch (kind) {
        case KeywordStatic:
        case KeywordInline:
        case KeywordExtern:
        case KeywordVirtual:
        case KeywordExplicit:
        case KeywordFriend:
        case KeywordExport:
        case KeywordTypedef:
            return true;
        default:
            return false;
    }
}

// A name that the language gives an argument in parentheses, which belongs to it: decltype, alignas,
// noexcept, …
bool takesArgument(const Trn::Lexeme& word);
bool takesArgument(std::string_view name);  // that is no keyword

// One of these that makes a type of its argument.
bool namesType(const Trn::Lexeme& word);

// A word of a coroutine, when what it stands in front of is no declarator.
constexpr bool isCoroutineWord(std::string_view word) {
    return word == "co_return" || word == "co_await" || word == "co_yield";
}

// A word that stands for an operator, or works as one: an operand follows.
bool isOperatorWord(std::string_view word);
// The kind of the sign that a word between two operands stands for, `and`; kEndKind for other words.
int infixKind(std::string_view word);

// The place in a function's name of what stands behind "operator" and is no word; the name's length where nothing does.
std::size_t operatorSymbol(std::string_view name);

// Whether the text is one word that is no keyword, or a number without signs, and nothing else.
bool isSingleWord(std::string_view text);

// Whether no letter of the word is a small one, as in the names of macros.
bool isUpperCase(std::string_view word);

// `int size GUARDED_BY(lock);`: whether a macro's name stands behind one that is declared. `type` is what that stands
// behind.
bool isMacroBehindName(const Trn::Token& type, const Trn::Token& name, const Trn::Token& macro);

}  // namespace Cpp
