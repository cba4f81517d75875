#pragma once

#include <array>

// What characters may stand for, in the source's own encoding and in any locale.
namespace Cpp {

enum CharClass : unsigned char { Other = 0, Space = 1, Letter = 2, Digit = 4, Underscore = 8 };

// Bytes above 127 and "$" count as letters: compilers accept them in names.
constexpr auto kCharClasses = [] {
    std::array<unsigned char, 256> classes{};
    for (unsigned c = 0; c < classes.size(); ++c) {
        if (c == ' ' || (c >= '\t' && c <= '\r')) classes[c] = Space;
        if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '$' || c > 127) classes[c] = Letter;
        if (c >= '0' && c <= '9') classes[c] = Digit;
    }
    classes['_'] = Underscore;
    return classes;
}();

constexpr bool hasClass(char c, int classes) {
    return (kCharClasses[static_cast<unsigned char>(c)] & classes) != 0;
}
constexpr bool isSpace(char c) {
    return hasClass(c, Space);
}
constexpr bool isLetter(char c) {
    return hasClass(c, Letter);
}
constexpr bool isDigit(char c) {
    return hasClass(c, Digit);
}
constexpr bool isNameStart(char c) {
    return hasClass(c, Letter | Underscore);
}
constexpr bool isNamePart(char c) {
    return hasClass(c, Letter | Digit | Underscore);
}
constexpr bool isQuote(char c) {
    return c == '"' || c == '\'';
}

}  // namespace Cpp
