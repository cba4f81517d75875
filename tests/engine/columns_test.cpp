#include "engine/columns.h"

#include <gtest/gtest.h>

namespace {

TEST(Columns, PaddingGoesToTabStops) {
    EXPECT_EQ(Tessel::alignmentPadding(6, 3, 0, 1), 3);
    EXPECT_EQ(Tessel::alignmentPadding(6, 3, 0, 4), 5);
    EXPECT_EQ(Tessel::alignmentPadding(6, 9, 0, 4), 3);
    EXPECT_EQ(Tessel::alignmentPadding(6, 12, 0, 4), 0);
    EXPECT_EQ(Tessel::alignmentPadding(6, 0, 4, 4), 8);
    EXPECT_EQ(Tessel::alignmentPadding(-1, 3, 0, 4), 1);
}

}  // namespace
