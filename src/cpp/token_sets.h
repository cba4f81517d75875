#pragma once

#include <string_view>

#include "cpp/token_kind.h"
#include "trn/token.h"

// The sets of token kinds that the parser's decisions rest on.
namespace Cpp {

constexpr bool isComment(int kind) {
    return kind == LineComment || kind == BlockComment;
}

constexpr bool isRegion(int kind) {
    return kind == UnreadBlock || kind == ProtectedRegion || kind == OpenRegion;
}

constexpr bool isTrivia(int kind) {
    return kind == Directive || isComment(kind) || isRegion(kind);
}

constexpr bool isBuiltinTypeKeyword(int kind) {
    return kind >= KeywordChar && kind <= KeywordVoid;
}

// The same, or what stands with such a keyword or for it.
constexpr bool isBuiltinTypeWord(int kind) {
    return isBuiltinTypeKeyword(kind) || kind == KeywordUnsigned || kind == KeywordSigned;
}

// A sign of the language: brackets, separators, operators.
constexpr bool isPunctuation(int kind) {
    return kind >= Semicolon && kind <= ArrowAsterisk;
}

// What a member stands behind.
constexpr bool isMemberAccess(int kind) {
    return kind == Dot || kind == Arrow;
}

constexpr bool isKeyword(int kind) {
    return kind >= KeywordClass && kind <= KeywordVoid;
}

constexpr bool isBracket(int kind) {
    return (kind >= OpenParen && kind <= CloseBrace) || kind == OpenBracket || kind == CloseBracket;
}

// No more tokens can be made sense of: the end, or a malformed literal.
constexpr bool endsTokens(int kind) {
    return kind == Trn::kEndKind || kind == Unknown;
}

constexpr bool isAccessKeyword(int kind) {
    return kind == KeywordPublic || kind == KeywordPrivate || kind == KeywordProtected;
}

constexpr bool isControlKeyword(int kind) {
    switch (kind) {
        case KeywordIf:
        case KeywordElse:
        case KeywordFor:
        case KeywordDo:
        case KeywordWhile:
        case KeywordTry:
        case KeywordCatch:
        case KeywordSwitch:
            return true;
        default:
            return false;
    }
}

constexpr bool isJumpKeyword(int kind) {
    switch (kind) {
        case KeywordThrow:
        case KeywordContinue:
        case KeywordBreak:
        case KeywordGoto:
        case KeywordReturn:
            return true;
        default:
            return false;
    }
}

constexpr bool isClassKey(int kind) {
    return kind == KeywordClass || kind == KeywordStruct || kind == KeywordUnion;
}

// A keyword that a name follows, of a type that it declares or names: `struct a b;`
constexpr bool isTagKey(int kind) { return isClassKey(kind) || kind == KeywordEnum; }

constexpr bool isQualifier(int kind) {
    return kind == KeywordConst || kind == KeywordVolatile;
}

// A token behind the "}" of a list of values.
constexpr bool followsValue(int kind) {
    return (isPunctuation(kind) && kind != OpenBrace && kind != CloseBrace &&
            kind != Tilde && kind != Exclamation) ||
           kind == CloseBrace;
}

// A keyword that begins a data declaration inside a block.
constexpr bool startsData(int kind) {
    switch (kind) {
        case KeywordAuto:
        case KeywordRegister:
        case KeywordTypename: return true;
        default: return isQualifier(kind) || isBuiltinTypeWord(kind);
    }
}

constexpr bool isAssemblerWord(std::string_view word) {
    constexpr std::string_view words[] = {"asm",   "_asm",  "__asm",   "asm_",
                                          "asm__", "_asm_", "__asm__", "___asm"};
    for (const std::string_view known : words) {
        if (word == known) return true;
    }
    return false;
}

}  // namespace Cpp
