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

TEST(TextDocument, OffsetsAreClampedToTheirLineAndToTheText) {
    const TextDocument document("ab\n\n\tcd");
    EXPECT_EQ(document.lineCount(), 3);
    EXPECT_EQ(document.offsetOf(1, 1), 1U);
    EXPECT_EQ(document.offsetOf(1, 2), 2U);
    EXPECT_EQ(document.offsetOf(1, 99), 3U);
    EXPECT_EQ(document.offsetOf(2, 0), 3U);
    EXPECT_EQ(document.offsetOf(3, 1), 5U);
    EXPECT_EQ(document.offsetOf(3, 99), 7U);
    EXPECT_EQ(document.offsetOf(4, 0), 7U);
    EXPECT_EQ(document.offsetOf(0, 5), 0U);
    EXPECT_EQ(document.offsetOf(2, -1), 3U);
}

TEST(TextDocument, PositionsAreTheInverseOfOffsets) {
    for (const char* text : {"", "\n", "ab\n\n\tcd", "ab\n"}) {
        const TextDocument document(text);
        for (std::size_t offset = 0; offset <= document.size(); ++offset) {
            const Zelmor::TextPosition position = document.positionOf(offset);
            EXPECT_EQ(document.offsetOf(position.line, position.column), offset) << text;
        }
        EXPECT_EQ(document.positionOf(document.size()).line, document.lineCount());
    }
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
