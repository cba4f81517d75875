#include <gtest/gtest.h>

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

}  // namespace
