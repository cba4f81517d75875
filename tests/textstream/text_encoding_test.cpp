#include "textstream/text_encoding.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace std::string_literals;

TEST(TextEncoding, MostLineEndsDecide) {
    for (const char* text : {"a\r\n", "a\r\nb\r\nc\n", "a\r\r\nb\r\n"}) {
        EXPECT_TRUE(Zelmor::detectEncoding(text).hasCarriageReturns) << text;
    }
    for (const char* text : {"", "a\n", "a\r\nb\n", "a\r\n\r", "a\rb\rc", "a\r"}) {
        EXPECT_FALSE(Zelmor::detectEncoding(text).hasCarriageReturns) << text;
    }
}

TEST(TextEncoding, Utf16IsKnownByItsMarkOrItsNuls) {
    for (const std::string& text : {"\xFF\xFE"s, "\xFE\xFF\0a"s, "i\0n\0t\0"s, "\0i\0n\0t\0"s,
                                    "i\0n\0t\0 \0\x16\x04\n\0"s}) {
        EXPECT_TRUE(Zelmor::isUtf16(text)) << text;
    }
    for (const std::string& text : {""s, "int a;"s, "a\0"s, std::string(100, '\0'), "int a; // a \0 and \0"s,
                                    "\xEF\xBB\xBFint"s}) {
        EXPECT_FALSE(Zelmor::isUtf16(text)) << text;
    }
}

}  // namespace
