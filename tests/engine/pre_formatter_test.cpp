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

}  // namespace
