#include "cpp/token_classes.h"

#include "cpp/keyword_table.h"
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

std::string typeText(std::span<const Trn::Token> tokens) {
    std::string text;
    for (const Trn::Token& token : tokens) {
        if (isTrivia(token.kind)) continue;
        if (!text.empty()) text += ' ';
        text += isIntegralTypeKeyword(token.kind) ? keywordSpelling(token.kind) : token.text;
    }
    return text;
}

std::string removeWhitespace(std::string_view text) {
    std::string result;
    for (const char c : text) {
        if (c != ' ' && (c < '\t' || c > '\r')) result += c;
    }
    return result;
}

}  // namespace Cpp
