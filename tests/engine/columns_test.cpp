#include "engine/columns.h"

#include <gtest/gtest.h>

#include "textstream/oindent_stream.h"

namespace {

using Zelmor::IndentState;
using Zelmor::OIndentBuf;

OIndentBuf outputWith(std::string indent, int tabMode, int tabSize = 4, int column = 0) {
    IndentState state;
    state.indent = std::move(indent);
    state.tabMode = tabMode;
    state.tabSize = tabSize;
    state.column = column;
    return OIndentBuf(state);
}

std::string indentTo(int column, std::string indent, int tabMode) {
    const OIndentBuf out = outputWith(std::move(indent), tabMode);
    return Tessel::indentToColumn(out, column);
}

std::string padding(int count, int column, int tabMode) {
    OIndentBuf out = outputWith("", tabMode, 4, column);
    Tessel::padColumns(out, count);
    return out.takeText();
}

TEST(Columns, TabsReachToTheNextStop) {
    EXPECT_EQ(Tessel::charWidth('\t', 5, 4), 3);
    EXPECT_EQ(Tessel::charWidth('\t', 8, 4), 4);
    EXPECT_EQ(Tessel::charWidth('\t', 5, 0), 1);
    EXPECT_EQ(Tessel::columnAfter("\tab", 0, 4), 6);
    EXPECT_EQ(Tessel::columnAfter("\tab", 0, 0), 3);
    EXPECT_EQ(Tessel::columnBefore("ab", 6, 4), 4);
    EXPECT_EQ(Tessel::columnBefore("abc", 2, 4), 0);
}

TEST(Columns, MultiplesOfNothingAreTheirOwn) {
    EXPECT_EQ(Tessel::roundUpToMultiple(5, 4), 8);
    EXPECT_EQ(Tessel::roundUpToMultiple(8, 4), 8);
    EXPECT_EQ(Tessel::roundUpToMultiple(0, 4), 0);
    EXPECT_EQ(Tessel::roundUpToMultiple(5, 0), 5);
    EXPECT_TRUE(Tessel::isMultipleOf(0, 4));
    EXPECT_FALSE(Tessel::isMultipleOf(6, 4));
}

TEST(Columns, PaddingGoesToTabStops) {
    EXPECT_EQ(Tessel::alignmentPadding(6, 3, 0, 1), 3);
    EXPECT_EQ(Tessel::alignmentPadding(6, 3, 0, 4), 5);
    EXPECT_EQ(Tessel::alignmentPadding(6, 9, 0, 4), 3);
    EXPECT_EQ(Tessel::alignmentPadding(6, 12, 0, 4), 0);
    EXPECT_EQ(Tessel::alignmentPadding(6, 0, 4, 4), 8);
    EXPECT_EQ(Tessel::alignmentPadding(-1, 3, 0, 4), 1);
}

TEST(Columns, IndentationIsBuiltOnTheCurrentOne) {
    EXPECT_EQ(indentTo(10, "\t", Zelmor::SpacesToTabs), "\t\t  ");
    EXPECT_EQ(indentTo(10, "\t", Zelmor::KeepTabs), "\t      ");
    EXPECT_EQ(indentTo(6, "     ", Zelmor::SpacesToTabs), "      ");
    EXPECT_EQ(indentTo(3, "     ", Zelmor::KeepTabs), "   ");
    EXPECT_EQ(indentTo(3, "     ", Zelmor::SpacesToTabs), "   ");
    EXPECT_EQ(indentTo(5, "     ", Zelmor::SpacesToTabs), "     ");
    EXPECT_EQ(indentTo(0, "     ", Zelmor::KeepTabs), "");
}

TEST(Columns, PaddingUsesTabsWhereTheModeAllowsThem) {
    EXPECT_EQ(padding(6, 2, Zelmor::KeepTabs), "\t\t");
    EXPECT_EQ(padding(5, 2, Zelmor::KeepTabs), "\t   ");
    EXPECT_EQ(padding(1, 3, Zelmor::KeepTabs), "\t");
    EXPECT_EQ(padding(6, 2, Zelmor::TabsToSpaces), "      ");
    EXPECT_EQ(padding(-2, 2, Zelmor::KeepTabs), "");
}

}  // namespace
