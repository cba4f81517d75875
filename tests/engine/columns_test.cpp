#include "engine/columns.h"

#include <gtest/gtest.h>

#include "textstream/oindent_stream.h"

namespace {

using Zelmor::IndentState;
using Zelmor::OIndentBuf;

std::string padding(int count, int column, int tabMode) {
    IndentState state;
    state.tabMode = tabMode;
    state.tabSize = 4;
    state.column = column;
    OIndentBuf out(state);
    Tessel::padColumns(out, count);
    return out.takeText();
}

TEST(Columns, PaddingGoesToTabStops) {
    EXPECT_EQ(Tessel::alignmentPadding(6, 3, 0, 1), 3);
    EXPECT_EQ(Tessel::alignmentPadding(6, 3, 0, 4), 5);
    EXPECT_EQ(Tessel::alignmentPadding(6, 9, 0, 4), 3);
    EXPECT_EQ(Tessel::alignmentPadding(6, 12, 0, 4), 0);
    EXPECT_EQ(Tessel::alignmentPadding(6, 0, 4, 4), 8);
    EXPECT_EQ(Tessel::alignmentPadding(-1, 3, 0, 4), 1);
}

TEST(Columns, PaddingUsesTabsWhereTheModeAllowsThem) {
    EXPECT_EQ(padding(6, 2, Zelmor::KeepTabs), "\t\t");
    EXPECT_EQ(padding(5, 2, Zelmor::KeepTabs), "\t   ");
    EXPECT_EQ(padding(1, 3, Zelmor::KeepTabs), "\t");
    EXPECT_EQ(padding(6, 2, Zelmor::TabsToSpaces), "      ");
    EXPECT_EQ(padding(-2, 2, Zelmor::KeepTabs), "");
}

}  // namespace
