#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "cpp/parse_text.h"
#include "engine/cpp_pre_formatter.h"
#include "engine/format_options.h"

namespace {

using CppTest::TreeDump;

// The tree once its protected regions are closed, with a line feed in front.
std::string closed(std::string_view source, TreeDump::Positions positions = TreeDump::Positions::Hidden) {
    Cpp::RootNode root;
    EXPECT_TRUE(CppTest::parse(source, root).empty());
    Tessel::CppPreFormatter pass(Tessel::protectedRegionMarkers());
    root.accept(pass);
    return '\n' + TreeDump::of(root, positions);
}

TEST(PreFormatter, KnowsTheMarkers) {
    const Tessel::MarkerPairs& markers = Tessel::protectedRegionMarkers();
    ASSERT_EQ(markers.size(), 13U);
    std::string source;
    for (const auto& [start, end] : markers) source += "/*" + start + "*/ int x; //" + end + '\n';
    std::string expected = "\n";
    for (std::size_t i = 0; i < markers.size(); ++i) expected += "region\n";
    EXPECT_EQ(closed(source), expected);
    EXPECT_EQ(markers.front().first, "VT-FORMAT-OFF");
    EXPECT_EQ(markers[2], (std::pair<std::string, std::string>("{{AFX_MSG", "AFX_MSG}}")));
    EXPECT_EQ(markers.back(), (std::pair<std::string, std::string>("{{{AFX_DISP_MAP", "AFX_DISP_MAP}}}")));
}

TEST(PreFormatter, LetsTheClosingCommentStandForTheRegion) {
    EXPECT_EQ(closed("void f() {\n  a();\n  // VT-FORMAT-OFF \n  b(); if (c) { }\n  /*VT-FORMAT-ON*/ d();\n}",
                     TreeDump::Positions::Shown),
              R"(
function void | f () @1:1-6:1
  block @1:10-6:1
    expr a; @2:3-2:6
    region @3:3-5:18
    expr d; @5:20-5:23
)");
}

TEST(PreFormatter, GoesByTheWholeBodyOfAComment) {
    const std::string_view unmarked =
        "// vt-format-off\n/* VT-FORMAT-OFF now */ /*VT-FORMAT-OFF int x; // VT-FORMAT-ON\n*/ int y; // "
        "VT-FORMAT-ON\n";
    EXPECT_EQ(closed(unmarked).find("region"), std::string::npos);
    EXPECT_EQ(closed("// VT-FORMAT-OFF\nint x;"), "\ncomment // VT-FORMAT-OFF\ndata int | x | -\n");
}

TEST(PreFormatter, DoesNotNestRegions) {
    EXPECT_EQ(
        closed("//{{AFX_MSG\nint a; // VT-FORMAT-OFF\nint b; // VT-FORMAT-ON\nint c; //AFX_MSG}}\nint d;"
               "//VT-FORMAT-OFF\n//VT-FORMAT-ON\n// VT-FORMAT-ON\n"),
        R"(
region
data int | d | -
region
comment // VT-FORMAT-ON
)");
}

TEST(PreFormatter, LeavesWhatIsBehindARegionThatEndsInABody) {
    EXPECT_EQ(closed("int a; // VT-FORMAT-OFF\nclass B : C {\n  // VT-FORMAT-ON\n int b; /*{{AFX_MSG*/ /*AFX_MSG}}*/ } "
                     "; int c;\nnamespace N { // VT-FORMAT-OFF\n} namespace M { // VT-FORMAT-ON\n class D { }; }",
                     TreeDump::Positions::Shown),
              R"(
data int | a | - @1:1-1:6
class - @1:8-4:39
  region @1:8-4:0
  data int | b | - @4:2-4:7
  region @4:9-4:35
data int | c | - @4:41-4:46
namespace - @5:1-7:15
  region @5:1-7:0
  0 class D @7:2-7:13
)");
    EXPECT_EQ(closed("int a; // VT-FORMAT-OFF\nnamespace M { class A { /* VT-FORMAT-ON */ int d; }; int b; } int c;"), R"(
data int | a | -
namespace -
  region
  class -
    data int | d | -
  data int | b | -
data int | c | -
)");
}

// Where the marks stand in other constructs, these become the region's as a whole.
TEST(PreFormatter, TakesInAConstructThatARegionEndsIn) {
    EXPECT_EQ(closed("A() : /*{{AFX_MSG*/ a(1), /*AFX_MSG}}*/ b(2) /* VT-FORMAT-OFF */ { { /* VT-FORMAT-ON "
                     "*/ } } int c;\n// VT-FORMAT-OFF\nint d; // VT-FORMAT-ON\n",
                     TreeDump::Positions::Shown),
              R"(
region @1:1-1:91
data int | c | - @1:93-1:98
region @2:1-4:0
)");
    EXPECT_EQ(closed("void f() { if (a) { /* VT-FORMAT-OFF */ } else { b(); /* VT-FORMAT-ON */ } c(); }"), R"(
function void | f ()
  block
    region
    expr c;
)");
}

TEST(PreFormatter, TakesInAConstructThatARegionBeginsIn) {
    EXPECT_EQ(
        closed(
            "int a;\nnamespace N {\n  class B {\n  // VT-FORMAT-OFF\n  };\n}\nint c; // VT-FORMAT-ON\nint d;",
            TreeDump::Positions::Shown),
        R"(
data int | a | - @1:1-1:6
region @2:1-8:0
data int | d | - @8:1-8:6
)");
    EXPECT_EQ(closed("void f() { x(); if (a) { // VT-FORMAT-OFF\n} else { } y(); /* VT-FORMAT-ON */ z(); }",
                     TreeDump::Positions::Shown),
              R"(
function void | f () @1:1-2:41
  block @1:10-2:41
    expr x; @1:12-1:15
    region @1:17-2:34
    expr z; @2:36-2:39
)");
}

}  // namespace
