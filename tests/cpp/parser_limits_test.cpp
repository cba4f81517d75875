#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <string_view>

#include "cpp/parse_text.h"

namespace {

std::string repeated(std::string_view text, int count) {
    std::string result;
    for (int i = 0; i < count; ++i) result += text;
    return result;
}

TEST(ParserLimits, TooDeepNestsAreReported) {
    constexpr int depth = 100000;
    for (const std::string& source :
         {repeated("struct a { void f() {", depth) + repeated("} };", depth),
          "void f() {" + repeated("do {", depth) + repeated("} while (a);", depth) + "}"}) {
        Cpp::RootNode root;
        const CppTest::Messages messages = CppTest::parse(source, root);
        ASSERT_EQ(messages.size(), 1U) << source.substr(0, 30);
        EXPECT_EQ(messages.front().text, "The source is nested too deeply here.");
        EXPECT_GT(messages.front().position.column, 2000U);
    }
}

double secondsFor(const std::string& source) {
    const auto start = std::chrono::steady_clock::now();
    Cpp::RootNode root;
    CppTest::parse(source, root);
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// Texts whose parse would take minutes if a look ahead were repeated from every place.
TEST(ParserLimits, LookingAheadCostsOnce) {
    constexpr int count = 20000;
    const std::string sources[] = {
        repeated("class a { int b; };", count),
        repeated("class a {" + repeated("int b;", 100), 400) + repeated("};", 400),
        "void f() {" + repeated("if (a) ", 900) + ";" + repeated("/**/", count * 10) + "}",
        "void f() {" + repeated("a *\n#x\n", count * 3),
        "void f() {" + repeated("a <\n#x\n", count * 3) + "(;}",
        repeated("a < ", count * 3),
        repeated("b < class a : public ", count * 3) + ";",
        repeated("class a : public b < ", count * 3),
        repeated("a ( ", count * 3),
        repeated("< = ", count * 3),
        "x = " + repeated("R\"", count * 10),
    };
    for (const std::string& source : sources) EXPECT_LT(secondsFor(source), 5) << source.substr(0, 60);
}

}  // namespace
