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

struct Nest {
    const char* before;
    const char* open;
    const char* close;
    const char* after;
};

constexpr Nest kNests[] = {
    {"", "namespace a {", "}", ""},
    {"", "class a {", "};", ""},
    {"", "extern \"C\" {", "}", ""},
    {"", "struct a { void f() {", "} };", ""},
    {"void f() {", "{", "}", "}"},
    {"void f() {", "if (a) {", "}", "}"},
    {"void f() {", "if (a)", "", ";}"},
    {"void f() {", "do {", "} while (a);", "}"},
    {"void f() {", "try {", "} catch (a) { }", "}"},
    {"void f() {", "if (a) { } else {", "}", "}"},
};

TEST(ParserLimits, DeepNestsParse) {
    for (const Nest& nest : kNests) {
        const std::string source =
            nest.before + repeated(nest.open, 500) + repeated(nest.close, 500) + nest.after;
        Cpp::RootNode root;
        EXPECT_EQ(CppTest::shown(CppTest::parse(source, root)), "") << nest.open;
        EXPECT_EQ(root.size(), 1U) << nest.open;
    }
}

TEST(ParserLimits, TooDeepNestsAreReported) {
    for (const Nest& nest : kNests) {
        const std::string source =
            nest.before + repeated(nest.open, 100000) + repeated(nest.close, 100000) + nest.after;
        Cpp::RootNode root;
        const CppTest::Messages messages = CppTest::parse(source, root);
        ASSERT_EQ(messages.size(), 1U) << nest.open;
        EXPECT_EQ(messages.front().text, "The source is nested too deeply here.");
        EXPECT_GT(messages.front().position.column, 2000U);
    }
}

TEST(ParserLimits, LongChainsParse) {
    Cpp::RootNode root;
    EXPECT_TRUE(CppTest::parse("void f() { " + repeated("if (a) b(); else ", 5000) + "c(); }", root).empty());
    const CppTest::Messages messages =
        CppTest::parse("void f() { " + repeated("if (a) b(); else ", 100000) + "c(); }", root);
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_EQ(messages.front().text, "The source is nested too deeply here.");
}

// Depth that needs no calls may be any.
TEST(ParserLimits, BracketsMayNestAnyDepth) {
    for (const auto& [open, close] :
         {std::pair("(", ")"), std::pair("[", "]"), std::pair("a<", ">"), std::pair("a ? b : ", "")}) {
        const std::string source =
            "void f() { x = " + repeated(open, 100000) + 'x' + repeated(close, 100000) + "; }";
        Cpp::RootNode root;
        EXPECT_EQ(CppTest::shown(CppTest::parse(source, root)), "") << open;
    }
    Cpp::RootNode root;
    EXPECT_TRUE(CppTest::parse(repeated("#if 0\n", 100000) + repeated("#endif\n", 100000), root).empty());
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
