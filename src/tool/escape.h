#pragma once

#include <string>
#include <string_view>

namespace Tool {

// The text with the characters that mean something to a reader put as that reader wants them: `codeOf` has the code of
// a character, or an empty one for what stays.
template <typename CodeOf>
std::string escaped(std::string_view text, CodeOf codeOf) {
    std::string result;
    for (const char c : text) {
        const std::string_view code = codeOf(c);
        if (code.empty()) {
            result += c;
        } else {
            result += code;
        }
    }
    return result;
}

constexpr std::string_view markupCode(char c) {
    switch (c) {
        case '&': return "&amp;";
        case '<': return "&lt;";
        case '>': return "&gt;";
        case '"': return "&quot;";
        default: return {};
    }
}

inline std::string markup(std::string_view text) { return escaped(text, markupCode); }

}  // namespace Tool
