#include "engine/gap.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string merged(std::string gap, std::string_view wanted) {
    Tessel::mergeWhitespace(gap, wanted);
    return gap;
}

TEST(Gap, MergingKeepsTheLineEndsThatCommentsAndDirectivesNeed) {
    EXPECT_EQ(merged("  /* a */  ", "\n"), "  /* a */\n");
    EXPECT_EQ(merged("  // a\n\n  ", ""), "  // a\n\n");
    EXPECT_EQ(merged("  // a\n    ", "\n\n"), "  // a\n\n");
    EXPECT_EQ(merged(" // a\n   ", " "), " // a\n");
    EXPECT_EQ(merged(" // a", " "), " // a");
    EXPECT_EQ(merged("\n#if A /* x\n y */ \n  ", " "), "\n#if A /* x\n y */ \n");
}

}  // namespace
