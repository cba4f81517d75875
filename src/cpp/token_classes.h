#pragma once

#include <span>
#include <string>
#include <string_view>

#include "cpp/token_kind.h"
#include "trn/token.h"

namespace Cpp {

// "char" to "long", but not "float", "double" or "void".
constexpr bool isIntegralTypeKeyword(int kind) {
    return kind >= KeywordChar && kind <= KeywordLong;
}

constexpr bool isTypeModifierKeyword(int kind) {
    switch (kind) {
        case KeywordConst:
        case KeywordMutable:
        case KeywordVolatile:
        case KeywordSigned:
        case KeywordUnsigned:
        case KeywordRegister:
        case KeywordExtern:
            return true;
        default:
            return false;
    }
}

// A name that begins or ends with "::", and so is only a part of the whole name.
bool isScopedName(const Trn::Token& token);

std::string removeWhitespace(std::string_view text);

}  // namespace Cpp
