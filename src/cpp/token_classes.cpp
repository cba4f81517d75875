#include "cpp/token_classes.h"

#include "cpp/token_sets.h"

namespace Cpp {

bool isScopedName(const Trn::Token& token) {
    constexpr std::size_t scopeLength = 2;
    switch (token.kind) {
        case Identifier:
        case KeywordOperator:
        case KeywordNew:
        case KeywordDelete:
            return token.text.size() > scopeLength &&
                   (token.text.starts_with("::") || token.text.ends_with("::"));
        default:
            return false;
    }
}

std::string removeWhitespace(std::string_view text) {
    std::string result;
    for (const char c : text) {
        if (c != ' ' && (c < '\t' || c > '\r')) result += c;
    }
    return result;
}

}  // namespace Cpp
