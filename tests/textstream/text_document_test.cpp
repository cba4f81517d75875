#include "textstream/text_document.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace {

using Zelmor::TextDocument;

TEST(TextDocument, EveryLineEndBecomesOneLineFeed) {
    for (const char* text : {"a\r\nb", "a\rb", "a\nb"}) EXPECT_EQ(TextDocument(text).text(), "a\nb");
    EXPECT_EQ(TextDocument("\r\n\r\r\n\n\r").text(), "\n\n\n\n\n");
    EXPECT_EQ(TextDocument("ab\r\ncd\r\nef").text(), "ab\ncd\nef");
}

TEST(ReadAll, TakesWhatRemainsWhateverItsSize) {
    std::string text;
    for (int i = 0; text.size() < 300000; ++i) text += std::to_string(i) + '\0';
    std::istringstream in("x" + text);
    in.get();
    EXPECT_EQ(Zelmor::readAll(in), text);
    EXPECT_FALSE(in.bad());
    EXPECT_EQ(Zelmor::readAll(in), "");
}

}  // namespace
