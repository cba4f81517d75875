#pragma once

#include <string_view>

#include "textstream/char_set.h"

namespace Cpp {

// A comment's text without its delimiters, as a view of it: white space before the comment goes, then "/*"
// and "*/" (only together) or "//".
constexpr std::string_view commentBody(std::string_view text);
// The same without white space at either end.
constexpr std::string_view trimmedCommentBody(std::string_view text);

namespace Detail {

inline constexpr Zelmor::CharSet kWhitespace(" \t\n\v\f\r");

constexpr std::string_view trimLeft(std::string_view text) { return text.substr(kWhitespace.skipIn(text)); }

constexpr std::string_view trimRight(std::string_view text) { return text.substr(0, kWhitespace.skipBackIn(text)); }

}  // namespace Detail

constexpr std::string_view commentBody(std::string_view text) {
    constexpr std::size_t delimiter = 2;
    if (text.size() < delimiter) return {};
    text = Detail::trimLeft(text);
    if (text.starts_with("//")) return text.substr(delimiter);
    if (text.size() >= 2 * delimiter && text.starts_with("/*") && text.ends_with("*/")) {
        return text.substr(delimiter, text.size() - 2 * delimiter);
    }
    return text;
}

constexpr std::string_view trimmedCommentBody(std::string_view text) {
    return Detail::trimRight(Detail::trimLeft(commentBody(text)));
}

}  // namespace Cpp
