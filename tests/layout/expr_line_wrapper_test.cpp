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

Zelmor::IndentState stateAt(int column, std::string indent = {}) {
    Zelmor::IndentState state;
    state.column = column;
    state.indent = std::move(indent);
    return state;
}

std::string wrapped(const PropertySet& scheme, std::string_view text, const Zelmor::IndentState& state,
                    const WrapContext& context = {}) {
    return CppExprLineWrapper(scheme).wrap(text, state, context);
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

TEST(ExprLineWrapper, CountsFromTheStatesColumnAndLeavesTheStateAlone) {
    const PropertySet scheme = schemeWithMargin(20);
    const Zelmor::IndentState state = stateAt(8);
    EXPECT_EQ(wrapped(scheme, "first + seco", state), "first + seco");
    EXPECT_EQ(wrapped(scheme, "first + secon", state), "first +\n        secon");
    EXPECT_EQ(state.column, 8);
}

TEST(ExprLineWrapper, IndentsFromTheStatesIndentation) {
    PropertySet scheme = schemeWithMargin(20);
    scheme.setInt(Keys::WRAP_STYLE, 0);
    EXPECT_EQ(wrapped(scheme, "first + secon", stateAt(8, "   ")), "first +\n   secon");
    scheme.setInt(Keys::WRAP_STYLE, 2);
    scheme.setString(Keys::WRAP_INDENT, "  ");
    EXPECT_EQ(wrapped(scheme, "first + secon", stateAt(8, "   ")), "first +\n     secon");
}

TEST(ExprLineWrapper, WritesIndentationInTheTabModeAndNothingElse) {
    PropertySet scheme = schemeWithMargin(20);
    scheme.setInt(Keys::TAB_SIZE, 4);
    Zelmor::IndentState state = stateAt(10, "\t");
    state.tabSize = 4;
    state.tabMode = Zelmor::SpacesToTabs;
    EXPECT_EQ(wrapped(scheme, "x    + \"    \" + secon", state), "x    +\n\t\t  \"    \" +\n\t\t  secon");
    state.tabMode = Zelmor::KeepTabs;
    EXPECT_EQ(wrapped(scheme, "x\t+ first + secon", state), "x\t+\n\t      first +\n\t      secon");
}

TEST(ExprLineWrapper, CountsWhatHasToStayBehindTheText) {
    const PropertySet scheme = schemeWithMargin(20);
    WrapContext context;
    context.trailingWidth = 3;
    EXPECT_EQ(wrapped(scheme, "first + second", stateAt(3), context), "first + second");
    EXPECT_EQ(wrapped(scheme, "first + second", stateAt(4), context), "first +\n    second");
}

TEST(ExprLineWrapper, BreaksCallsForWhatFollowsThemInTheText) {
    const PropertySet scheme = schemeWithMargin(20);
    EXPECT_EQ(wrapped(scheme, "f(a, b)->member->next", stateAt(0)), "f(a,\n  b)->member->next");
    EXPECT_EQ(wrapped(scheme, "f(a, b)->g(first, se)", stateAt(0)), "f(a, b)->g(first,\n           se)");
    // A ";" is no place to break at here.
    EXPECT_EQ(wrapped(scheme, "{f(a, b); return 1; }", stateAt(2)), "{f(a,\n     b); return 1; }");
}

TEST(ExprLineWrapper, TriesCallsBeforeOperatorsButDropsThemWhenTheyDoNotDo) {
    const PropertySet scheme = schemeWithMargin(20);
    EXPECT_EQ(wrapped(scheme, "first + f(second, d)", stateAt(1)), "first + f(second,\n           d)");
    EXPECT_EQ(wrapped(scheme, "first + second * f(a, b)", stateAt(1)), "first +\n second * f(a, b)");
}

TEST(ExprLineWrapper, PacksAListByItsElements) {
    CppExprLineWrapper wrapper(schemeWithMargin(20));
    WrapContext context;
    context.mode = ExprMode::Declaration;
    context.trailingWidth = 1;
    EXPECT_EQ(wrapper.wrapList("int a, int b, int c", stateAt(2), context), "int a, int b,\n  int c");
    context.trailingWidth = 0;
    EXPECT_EQ(wrapper.wrapList("int a, int b, int", stateAt(2), context), "int a, int b, int");
    context.respacesCommas = true;
    EXPECT_EQ(wrapper.wrapList("int a ,int b,int c", stateAt(2), context), "int a, int b,\n  int c");
}

TEST(ExprLineWrapper, LeavesTextWithoutTokensOrWithUnknownCharacters) {
    CppExprLineWrapper wrapper(schemeWithMargin(10));
    EXPECT_EQ(wrapper.wrap("   ", stateAt(20)), "   ");
    EXPECT_EQ(wrapper.wrap("first @ + second + third", stateAt(0)), "first @ + second + third");
    EXPECT_EQ(wrapper.wrap("first + (second + third", stateAt(0)), "first +\n(second +\nthird");
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
        const std::string result = wrapper.wrap(text, stateAt(0));
        constexpr std::size_t growth = 60;
        EXPECT_LT(result.size(), growth * text.size()) << text.substr(0, 40);
    }
    EXPECT_LE(longestLine(wrapper.wrap(chain, stateAt(0))), 80U);
    EXPECT_LE(longestLine(wrapper.wrap(condition, stateAt(0))), 80U);
}

}  // namespace
