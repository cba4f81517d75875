#include <gtest/gtest.h>

#include <random>
#include <stdexcept>

#include "edits/line_set.h"
#include "edits/replacement.h"
#include "edits/unified_diff.h"

namespace {

using Edits::LineSet;

std::string inLines(const std::string& before, const std::string& after, std::vector<LineSet::Range> lines) {
    return replaced(before, replacementsInLines(before, after, LineSet(std::move(lines))));
}

TEST(Replacements, AreTheSmallestPieces) {
    EXPECT_EQ(Edits::replacementsBetween("int  a;  \n\n\nb; \nc", "int a;\n\n    b;\nc"), (Edits::Replacements{
                  {4, 1, ""}, {7, 2, ""}, {11, 1, ""}, {12, 0, "    "}, {14, 1, ""}}));
    EXPECT_THROW(Edits::replacementsBetween("a b", "a c"), std::invalid_argument);
    EXPECT_THROW(Edits::replacementsBetween("a b", "a b c"), std::invalid_argument);
    EXPECT_THROW(Edits::replacementsBetween("a b c", "a b"), std::invalid_argument);
}

TEST(Replacements, LinesThatAreNotNamedStay) {
    const std::string before = "if(a) { \nb( ); }\n\n\n\n  c( );\n";
    const std::string after = "if (a)\n{\n    b();\n}\n\nc();\n";
    EXPECT_EQ(inLines(before, after, {{1, 1}}), "if (a)\n{\nb( ); }\n\n\n\n  c( );\n");
    EXPECT_EQ(inLines(before, after, {{2, 2}}), "if(a) { \n    b();\n}\n\n\n\n  c( );\n");
    EXPECT_EQ(inLines(before, after, {{3, 3}}), "if(a) { \nb( ); }\n\n\n  c( );\n");
    EXPECT_EQ(inLines(before, after, {{5, 6}}), "if(a) { \nb( ); }\n\n\nc();\n");
    EXPECT_EQ(inLines(before, after, {{4, 9}, {1, 3}}), after);
    EXPECT_EQ(inLines("a\n{", "a {", {{1, 1}}), "a\n{") << "the second line would go";
    EXPECT_EQ(inLines("a\n{", "a {", {{2, 2}, {1, 1}}), "a {");
    EXPECT_EQ(inLines("a\nb", "a\n\nb", {{2, 2}}), "a\n\nb");
    EXPECT_EQ(inLines("a\r\n \r\n \nb\n", "a\r\n\r\n\r\nb\r\n", {{2, 2}}), "a\r\n\r\n \nb\n");
}

// A text as formatters see it, and the same with other white space.
TEST(Replacements, GiveTheOtherTextAndADiffOfIt) {
    std::mt19937 random(1);
    const std::string pieces[] = {" ", "\n", "\n\n", "  ", "\t", "\r\n", "", "\n    "};
    for (int round = 0; round < 2000; ++round) {
        std::string before;
        std::string after;
        for (int word = 0; word < 12; ++word) {
            before += pieces[random() % 8];
            after += pieces[random() % 8];
            if (word < 11) before += 'x', after += 'x';
        }
        const Edits::Replacements replacements = Edits::replacementsBetween(before, after);
        ASSERT_EQ(replaced(before, replacements), after);
        ASSERT_EQ(inLines(before, after, {{1, 99}}), after);
        const std::size_t line = 1 + random() % 6;
        const std::string partly = inLines(before, after, {{line, line}});
        ASSERT_EQ(inLines(partly, after, {{1, 999}}), after) << "the rest of the way leads to the same text";
    }
}

TEST(UnifiedDiff, HasHunksThatToolsTake) {
    const auto diff = [](const std::string& name, const std::string& before, const std::string& after) {
        return Edits::unifiedDiff(name, before, Edits::replacementsBetween(before, after));
    };
    EXPECT_EQ(diff("a.c", "x", "x"), "");
    EXPECT_EQ(diff("a b.c", "x ", "x\n"),
              "--- a/a b.c\t\n+++ b/a b.c\t\n@@ -1 +1 @@\n-x \n\\ No newline at end of file\n+x\n");
    EXPECT_EQ(diff("\"", "1\n2\n3\n4\n\n5\n6\n", "1\n2\n3\n4\n5\n6\n"),
              "--- \"a/\\\"\"\n+++ \"b/\\\"\"\n@@ -2,6 +2,5 @@\n 2\n 3\n 4\n-\n 5\n 6\n");
    EXPECT_EQ(diff("a", "1\n2\n", "1\n\n2\n\n"), "--- a/a\n+++ b/a\n@@ -1,2 +1,4 @@\n 1\n+\n 2\n+\n");
    EXPECT_EQ(diff("a", "\n\n", ""), "--- a/a\n+++ b/a\n@@ -1,2 +0,0 @@\n-\n-\n");
}

}  // namespace
