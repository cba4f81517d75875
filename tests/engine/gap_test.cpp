#include "engine/gap.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string merged(std::string gap, std::string_view wanted) {
    Tessel::mergeWhitespace(gap, wanted);
    return gap;
}

TEST(Gap, TellsWhichTokensStandAtItsEnds) {
    EXPECT_TRUE(Tessel::startsWithLineEndToken(" // a\n b"));
    EXPECT_TRUE(Tessel::startsWithLineEndToken("\n#if A\n"));
    EXPECT_FALSE(Tessel::startsWithLineEndToken(" /* a */ // b\n"));
    EXPECT_TRUE(Tessel::endsWithLineEndToken(" /* a */ // b\n  "));
    EXPECT_FALSE(Tessel::endsWithLineEndToken("// a\n /* b */"));
    EXPECT_TRUE(Tessel::endsWithLineEndToken("\n#if A /* x\n y */ /* z */\n "));
    EXPECT_FALSE(Tessel::endsWithLineEndToken("\n#if A /* x\n y */\n/* z */\n "));
}

TEST(Gap, MergingKeepsTheLineEndsThatCommentsAndDirectivesNeed) {
    EXPECT_EQ(merged("  /* a */  ", "\n"), "  /* a */\n");
    EXPECT_EQ(merged("  // a\n\n  ", ""), "  // a\n\n");
    EXPECT_EQ(merged("  // a\n    ", "\n\n"), "  // a\n\n");
    EXPECT_EQ(merged(" // a\n   ", " "), " // a\n");
    EXPECT_EQ(merged(" // a", " "), " // a");
    EXPECT_EQ(merged("\n#if A /* x\n y */ \n  ", " "), "\n#if A /* x\n y */ \n");
}

TEST(Gap, ReplacesCharactersOnlyWhereNoLineHasToEnd) {
    for (const std::string text : {"\n a\n", "\n// a\n"}) {
        std::string gap = text;
        Tessel::replaceCharOutsideComments(gap, '\n', ' ');
        EXPECT_EQ(gap, text.size() > 4 ? text : "  a ");
    }
}

}  // namespace
