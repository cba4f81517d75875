#include "engine/gap.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using Edit = void (*)(std::string&, std::string_view);

std::string edited(Edit edit, std::string gap, std::string_view wanted) {
    edit(gap, wanted);
    return gap;
}

std::string stripped(void (*strip)(std::string&), std::string gap) {
    strip(gap);
    return gap;
}

TEST(Gap, TellsWhichTokensStandAtItsEnds) {
    EXPECT_TRUE(Tessel::startsWithLineEndToken(" // a\n b"));
    EXPECT_TRUE(Tessel::startsWithLineEndToken("\n#if A\n"));
    EXPECT_FALSE(Tessel::startsWithLineEndToken(" /* a */ // b\n"));
    EXPECT_TRUE(Tessel::endsWithLineEndToken(" /* a */ // b\n  "));
    EXPECT_FALSE(Tessel::endsWithLineEndToken("// a\n /* b */"));
    EXPECT_FALSE(Tessel::containsLineComment(" /* // */ "));
    EXPECT_TRUE(Tessel::containsCommentOrDirective(" /* a */ "));
    EXPECT_TRUE(Tessel::isDirectiveText("  #a"));
    EXPECT_FALSE(Tessel::isDirectiveText("  #"));
    EXPECT_FALSE(Tessel::isDirectiveText(""));
}

TEST(Gap, MergingReplacesTrailingWhiteSpace) {
    EXPECT_EQ(edited(Tessel::mergeWhitespace, "  \n\t", " "), " ");
    EXPECT_EQ(edited(Tessel::mergeWhitespace, "  /* a */  ", "\n"), "  /* a */\n");
    EXPECT_EQ(edited(Tessel::mergeWhitespace, "  // a\n    ", " "), "  // a\n");
    EXPECT_EQ(edited(Tessel::mergeWhitespace, "  // a\n\n  ", ""), "  // a\n\n");
    EXPECT_EQ(edited(Tessel::mergeWhitespace, "  // a\n    ", "\n\n"), "  // a\n\n");
    EXPECT_EQ(edited(Tessel::mergeWhitespace, " // a", " "), " // a");
}

TEST(Gap, DirectivesEndBehindTheCommentsThatFollowThem) {
    EXPECT_TRUE(Tessel::endsWithLineEndToken("\n#if A /* x\n y */ /* z */\n "));
    EXPECT_FALSE(Tessel::endsWithLineEndToken("\n#if A /* x\n y */\n/* z */\n "));
    EXPECT_EQ(edited(Tessel::mergeWhitespace, "\n#if A /* x\n y */ \n  ", " "), "\n#if A /* x\n y */ \n");
    EXPECT_EQ(edited(Tessel::mergeWhitespace, "\n#if A /* x\n y */ ", ""), "\n#if A /* x\n y */ ");
}

TEST(Gap, PrependingReplacesLeadingWhiteSpace) {
    EXPECT_EQ(edited(Tessel::prependWhitespace, "  \n", "\n"), "\n");
    EXPECT_EQ(edited(Tessel::prependWhitespace, "  /* a */ ", "\n"), "\n/* a */ ");
    EXPECT_EQ(edited(Tessel::prependWhitespace, "  // a\n   /* b */", "\n"), "  // a\n\n/* b */");
    EXPECT_EQ(edited(Tessel::prependWhitespace, "\n#if A \\\n B\n  c", ""), "\n#if A \\\n B\nc");
}

TEST(Gap, SurroundingDoesBoth) {
    std::string gap = "  /* a */  ";
    Tessel::surroundWithWhitespace(gap, "", " ");
    EXPECT_EQ(gap, "/* a */ ");
    gap = " /* a */ // b\n  ";
    Tessel::surroundWithWhitespace(gap, "\n", "");
    EXPECT_EQ(gap, "\n/* a */ // b\n");
}

TEST(Gap, StrippingKeepsTheLineEndsThatCommentsNeed) {
    EXPECT_EQ(stripped(Tessel::stripLeadingSpace, " // a\n  b"), " // a\nb");
    EXPECT_EQ(stripped(Tessel::stripTrailingSpace, " // a\n"), " // a\n");
    EXPECT_EQ(stripped(Tessel::stripTrailingSpace, "   "), "");
    EXPECT_EQ(stripped(Tessel::stripSurroundingSpace, " /* a */ "), "/* a */");
    EXPECT_EQ(stripped(Tessel::stripSurroundingSpace, " /* a */ // b\n "), " /* a */ // b\n ");
}

TEST(Gap, ReplacesCharactersOnlyWhereNoLineHasToEnd) {
    std::string gap = "\n a\n";
    Tessel::replaceCharOutsideComments(gap, '\n', ' ');
    EXPECT_EQ(gap, "  a ");
    gap = "\n// a\n";
    Tessel::replaceCharOutsideComments(gap, '\n', ' ');
    EXPECT_EQ(gap, "\n// a\n");
}

}  // namespace
