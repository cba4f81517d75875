#include "textstream/text_document.h"

#include <gtest/gtest.h>

namespace {

using Zelmor::TextDocument;

TEST(TextDocument, EveryLineEndBecomesOneLineFeed) {
    for (const char* text : {"a\r\nb", "a\rb", "a\nb"}) EXPECT_EQ(TextDocument(text).text(), "a\nb");
    EXPECT_EQ(TextDocument("\r\n\r\r\n\n\r").text(), "\n\n\n\n\n");
    EXPECT_EQ(TextDocument("ab\r\ncd\r\nef").text(), "ab\ncd\nef");
}

}  // namespace
