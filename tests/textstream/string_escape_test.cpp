#include "textstream/string_escape.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string escaped(std::string text) {
    Zelmor::escape(text);
    return text;
}

std::string unescaped(std::string text) {
    Zelmor::unescape(text);
    return text;
}

TEST(StringEscape, UnescapeUndoesEscapeForEveryPairOfBytes) {
    for (int first = 0; first < 256; ++first) {
        for (int second = 0; second < 256; ++second) {
            const std::string text{static_cast<char>(first), static_cast<char>(second)};
            ASSERT_EQ(unescaped(escaped(text)), text) << first << ' ' << second;
        }
    }
}

}  // namespace
