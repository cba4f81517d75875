#include "engine/region_proof.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// Whether `result` keeps what stands between the first "<" and the first ">" of the source, both included.
bool keeps(const std::string& source, const std::string& result) {
    const Tessel::KeptRegion region{source.find('<'), source.find('>') + 1};
    return !Tessel::findChangedLine(source, {region}, result).has_value();
}

TEST(RegionProof, LetsOnlyTheStartsOfLinesChange) {
    EXPECT_TRUE(keeps("a  b;\n  <c  d;\n\te;>  f;", "a b;\n<c  d;\n    e;> f;"));
    EXPECT_TRUE(keeps("<a\n\n  \nb>", "<a\n  \n\n\tb>\n"));
    EXPECT_FALSE(keeps("<c  d;>", "<c d;>"));
    EXPECT_FALSE(keeps("<c;  \nd;>", "<c;\nd;>"));
    EXPECT_FALSE(keeps("<c;\td;>", "<c;    d;>"));
    EXPECT_FALSE(keeps("<c; d;>", "<c;\nd;>"));
    EXPECT_FALSE(keeps("<c;\nd;>", "<c; d;>"));
    EXPECT_FALSE(keeps("<c;\n\nd;>", "<c;\nd;>"));
    EXPECT_FALSE(keeps("<c;\nd;>", "<c;\n\nd;>"));
}

TEST(RegionProof, ComparesEveryRegionAndTellsWhere) {
    const std::string source = "<a  b>\n c d\n<e\n f  g>";
    const Tessel::KeptRegions regions{{0, 6}, {2, 4}, {12, source.size()}};
    EXPECT_EQ(Tessel::findChangedLine(source, regions, "<a  b>\nc\nd\n<e\nf  g>"), std::nullopt);
    EXPECT_EQ(Tessel::findChangedLine(source, regions, "<a  b>\nc\nd\n<e\nf g>"), source.find('f'));
    const Tessel::KeptRegions inOneAnother{{0, 6}, {0, 11}};
    EXPECT_EQ(Tessel::findChangedLine(source, inOneAnother, "<a  b>\nc d\n<e f g>"), std::nullopt);
    EXPECT_EQ(Tessel::findChangedLine(source, inOneAnother, "<a  b>\nc  d\n<e f g>"), source.find('c'));
}

}  // namespace
