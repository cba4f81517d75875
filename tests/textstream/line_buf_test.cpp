#include "textstream/line_buf.h"

#include <gtest/gtest.h>

#include <istream>
#include <ostream>
#include <sstream>
#include <string>

#include "textstream/text_document.h"

namespace {

using Zelmor::LineBuf;

std::string written(std::string_view text, int lineEndMode) {
    std::stringbuf raw;
    LineBuf lines(&raw, lineEndMode);
    std::ostream out(&lines);
    out << text.substr(0, 1) << text.substr(1);
    out.put('\n').flush();
    EXPECT_TRUE(out.good());
    return raw.str();
}

TEST(LineBuf, WritesLineEndsAsItsModeSays) {
    EXPECT_EQ(written("\na\n\nb", 1), "\r\na\r\n\r\nb\r\n");
    EXPECT_EQ(written("\na\n\nb", 2), "\na\n\nb\n");
    EXPECT_EQ(written("a\r\nb", 0), "a\r\nb\n");
}

// A carriage return may be the last character of the block that is read at once.
TEST(LineBuf, ReadsLineEndsThatStraddleItsBlocks) {
    for (const std::size_t length : {16378U, 16379U, 16380U, 16381U}) {
        for (const std::string lineEnd : {"\r\n", "\r", "\n"}) {
            std::stringbuf raw(std::string(length, 'x') + lineEnd + "tail");
            LineBuf lines(&raw);
            std::istream in(&lines);
            EXPECT_EQ(Zelmor::readAll(in), std::string(length, 'x') + "\ntail") << length;
        }
    }
}

TEST(LineBuf, KeepsFourCharactersToPutBackAcrossItsBlocks) {
    std::stringbuf raw(std::string(16378, 'x') + "abcdef");
    LineBuf lines(&raw);
    for (int i = 0; i < 16380; ++i) lines.sbumpc();
    EXPECT_EQ(lines.sgetc(), 'c');
    for (const char c : {'b', 'a', 'x'}) EXPECT_EQ(lines.sungetc(), c);
    EXPECT_EQ(lines.sputbackc('y'), 'y');
    EXPECT_EQ(lines.sungetc(), EOF);
    for (const char c : {'y', 'x', 'a', 'b', 'c'}) EXPECT_EQ(lines.sbumpc(), c);
}

}  // namespace
