#include "cli/text_encoding.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace std::string_literals;

TEST(TextEncoding, MostLineEndsDecide) {
    struct Case {
        const char* text;
        bool expected;
    };
    for (const Case& one : {Case{"", false},
                            {"a", false},
                            {"a\n", false},
                            {"a\r\n", true},
                            {"a\r\nb\r\nc\n", true},
                            {"a\r\nb\n", false},
                            {"a\r\n\r", false},
                            {"a\rb\rc", false},
                            {"a\r", false},
                            {"a\r\r\nb\r\n", true}}) {
        EXPECT_EQ(Cli::detectEncoding(one.text).hasCarriageReturns, one.expected) << one.text;
    }
}

TEST(TextEncoding, ByteOrderMark) {
    EXPECT_TRUE(Cli::detectEncoding("\xEF\xBB\xBFint a;").hasByteOrderMark);
    EXPECT_TRUE(Cli::detectEncoding("\xEF\xBB\xBF").hasByteOrderMark);
    EXPECT_FALSE(Cli::detectEncoding("\xEF\xBB").hasByteOrderMark);
    EXPECT_FALSE(Cli::detectEncoding(" \xEF\xBB\xBF").hasByteOrderMark);
}

TEST(TextEncoding, Utf16IsKnownByItsMarkOrItsNuls) {
    EXPECT_TRUE(Cli::isUtf16("\xFF\xFE"s));
    EXPECT_TRUE(Cli::isUtf16("\xFE\xFF\0a"s));
    EXPECT_TRUE(Cli::isUtf16("i\0n\0t\0"s));
    EXPECT_TRUE(Cli::isUtf16("\0i\0n\0t\0"s));
    EXPECT_TRUE(Cli::isUtf16("i\0n\0t\0 \0\x16\x04\n\0"s)) << "one letter that is not ASCII";

    EXPECT_FALSE(Cli::isUtf16(""));
    EXPECT_FALSE(Cli::isUtf16("int a;"));
    EXPECT_FALSE(Cli::isUtf16("a\0"s));
    EXPECT_FALSE(Cli::isUtf16(std::string(100, '\0')));
    EXPECT_FALSE(Cli::isUtf16("int a; // a \0 and \0"s));
    EXPECT_FALSE(Cli::isUtf16("\xEF\xBB\xBFint"));
}

TEST(TextEncoding, CarriageReturnsAreAddedAtEveryLineEnd) {
    EXPECT_EQ(Cli::addCarriageReturns(""), "");
    EXPECT_EQ(Cli::addCarriageReturns("\n\na\nb"), "\r\n\r\na\r\nb");
}

}  // namespace
