#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>

#include "layout/cpp_expr_line_wrapper.h"
#include "scheme/property_keys.h"

namespace {

using namespace Tessel;

PropertySet schemeWithMargin(int margin) {
    PropertySet scheme;
    scheme.setBool(Keys::LINE_WRAP, true);
    scheme.setInt(Keys::RIGHT_MARGIN, margin);
    scheme.setInt(Keys::WRAP_STYLE, 1);
    scheme.setInt(Keys::EXPR_WRAP_STYLE, 2);
    scheme.setInt(Keys::LIST_WRAP_STRATEGY, 1);
    return scheme;
}

std::size_t longestLine(std::string_view text) {
    std::size_t longest = 0;
    while (!text.empty()) {
        const std::size_t length = std::min(text.find('\n'), text.size());
        longest = std::max(longest, length);
        text.remove_prefix(std::min(length + 1, text.size()));
    }
    return longest;
}

// Nesting, chains and columns that grow from line to line must not make the result grow faster than the text.
TEST(ExprLineWrapper, TakesTimeAndRoomByTheLengthOfTheText) {
    CppExprLineWrapper wrapper(schemeWithMargin(80));
    constexpr int many = 30000;
    const auto nested = [](std::string_view open, std::string_view core, std::string_view close) {
        std::string result;
        for (int count = 0; count < many; ++count) result += open;
        result += core;
        for (int count = 0; count < many; ++count) result += close;
        return result;
    };
    const std::string chain = nested("", "out", " << value");
    const std::string condition = nested("a && ", "b", "");
    const std::string texts[] = {
        chain,
        condition,
        nested("(", "a + b", ")"),
        nested("f(a, ", "b", ")"),
        nested("a[g(1, 2) + ", "b", "]"),
        nested("", "x", ".f(a, b)"),
        nested("", "x", ".f(\"a\" \"b\")"),
        nested("{1, ", "2", "}"),
    };
    for (const std::string& text : texts) {
        const std::string result = wrapper.wrap(text, {});
        constexpr std::size_t growth = 60;
        EXPECT_LT(result.size(), growth * text.size()) << text.substr(0, 40);
    }
    EXPECT_LE(longestLine(wrapper.wrap(chain, {})), 80U);
    EXPECT_LE(longestLine(wrapper.wrap(condition, {})), 80U);
}

}  // namespace
