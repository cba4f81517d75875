#include <gtest/gtest.h>

#include <list>
#include <sstream>
#include <string>

#include "cpp/lexer.h"
#include "cpp/nodes.h"
#include "cpp/parser.h"
#include "layout/passes.h"
#include "scheme/property_keys.h"
#include "textstream/text_document.h"

namespace {

using namespace Tessel;

PropertySet schemeWithMargin(int margin) {
    PropertySet scheme;
    scheme.setBool(Keys::LINE_WRAP, true);
    scheme.setString(Keys::LEFT_MARGIN, "");
    scheme.setInt(Keys::RIGHT_MARGIN, margin);
    scheme.setInt(Keys::WRAP_STYLE, 1);
    scheme.setInt(Keys::LIST_WRAP_STRATEGY, 1);
    scheme.setString(Keys::WS_BETWEEN_FN_PARAMS, " ");
    return scheme;
}

// What wrapping makes of a text, taken as the formatter has written it.
std::string wrapped(const PropertySet& scheme, const std::string& text) {
    const Zelmor::TextDocument formatted(text);
    Cpp::Lexer lexer(formatted.text());
    Cpp::RootNode root;
    std::list<Diagnostic> diagnostics;
    Cpp::Parser().parse(lexer, root, diagnostics);
    EXPECT_TRUE(diagnostics.empty());
    std::ostringstream out;
    Passes().wrapLines({scheme, protectedRegionMarkers()}, formatted, root, out);
    return out.str();
}

// White space that no rule of wrapping would have written.
const std::string kOddText =
    "\n\n  \t class  A\t:B {\n\n\tint\ta ;  \n  f( int b,int  c ) ;\n};\t\n\n// end  \n  \n";

TEST(LineWrapper, CopiesTextWithoutLongLines) {
    EXPECT_EQ(wrapped(schemeWithMargin(40), kOddText), kOddText);
    PropertySet off = schemeWithMargin(4);
    off.setBool(Keys::LINE_WRAP, false);
    EXPECT_EQ(wrapped(off, kOddText), kOddText);
    EXPECT_EQ(wrapped(schemeWithMargin(0), kOddText), kOddText);
    EXPECT_EQ(wrapped(schemeWithMargin(-5), kOddText), kOddText);
}

TEST(LineWrapper, ChangesNothingButTheConstructWithTheLongLine) {
    const std::string longLine = "void function(int first_one, int second_one, int c);\n";
    const std::string broken = "void function(int first_one,\n              int second_one, int c);\n";
    for (const int tabMode : {0, 1, 2}) {
        PropertySet scheme = schemeWithMargin(40);
        scheme.setInt(Keys::CONVERT_WS, tabMode);
        scheme.setInt(Keys::TAB_SIZE, 32);
        EXPECT_EQ(wrapped(scheme, kOddText + longLine + kOddText), kOddText + broken + kOddText);
    }
}

TEST(LineWrapper, MeasuresTabs) {
    PropertySet scheme = schemeWithMargin(24);
    scheme.setInt(Keys::TAB_SIZE, 8);
    EXPECT_EQ(wrapped(scheme, "\tvoid f(int a, b);\n"), "\tvoid f(int a,\n               b);\n");
    EXPECT_EQ(wrapped(scheme, "\tvoid f(int,\tint);\n"), "\tvoid f(int,\n               int);\n");
    EXPECT_EQ(wrapped(scheme, "\tvoid f(int, b);\n"), "\tvoid f(int, b);\n");
}

// The base of what follows a nested block is that of the block around.
TEST(LineWrapper, TakesTheBaseOfTheConstructAround) {
    PropertySet scheme = schemeWithMargin(24);
    scheme.setInt(Keys::WRAP_STYLE, 2);
    scheme.setString(Keys::WRAP_INDENT, "    ");
    scheme.setString(Keys::INDENT_FN_CONTENT, "  ");
    scheme.setString(Keys::GLOBAL_INDENT_CONTENT, "  ");
    EXPECT_EQ(
        wrapped(scheme,
                "void f() {\n  {\n    {\n      x = first + second;\n    }\n  }\n  int y = first + second;\n"
                "  return first + secondly;\n}\n"),
        "void f() {\n  {\n    {\n      x = first\n          + second;\n    }\n  }\n  int y = first\n"
        "      + second;\n  return first\n      + secondly;\n}\n");
}

// A template header is the start of the declaration behind it, and of that one only.
TEST(LineWrapper, UsesATemplatesColumnOnce) {
    PropertySet scheme = schemeWithMargin(30);
    scheme.setInt(Keys::WRAP_STYLE, 0);
    EXPECT_EQ(wrapped(scheme, "  template<class T> void f(T a, T b);\n    void g(int first, int second);\n"),
              "  template<class T> void f(T a,\n  T b);\n    void g(int first,\n    int second);\n");
    EXPECT_EQ(wrapped(scheme, "  template<class T> class A;\n    void g(int first, int second);\n"),
              "  template<class T> class A;\n    void g(int first,\n    int second);\n");
}

TEST(LineWrapper, MovesTheFurtherLinesOfACommentWithItsFirst) {
    PropertySet scheme = schemeWithMargin(24);
    EXPECT_EQ(
        wrapped(scheme,
                "void f() {\n  call(first_one, second); /* one\n                              two */\n}\n"),
        "void f() {\n  call(first_one,\n       second); /* one\n                   two */\n}\n");
}

}  // namespace
