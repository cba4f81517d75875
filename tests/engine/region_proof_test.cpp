#include "engine/region_proof.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(RegionProof, ComparesEveryRegionAndTellsWhere) {
    const std::string source = "<a  b>\n c d\n<e\n f  g>";
    const Tessel::KeptRegions regions{{0, 6}, {2, 4}, {12, source.size()}};
    EXPECT_EQ(Tessel::findChangedLine(source, regions, "<a  b>\nc\nd\n<e\nf  g>"), std::nullopt);
    EXPECT_EQ(Tessel::findChangedLine(source, regions, "<a  b>\nc\nd\n<e\nf g>"), source.find('f'));
}

}  // namespace
