#include "layout/first_wrap_token.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "cpp/token_kind.h"

namespace {

using namespace Tessel;

// The text with a "|" in front of every token that the finder breaks at.
std::string marked(std::string_view text, FirstWrapToken& finder, ExprMode mode = ExprMode::Expression) {
    std::vector<ExprToken> tokens;
    readExprTokens(text, mode, tokens);
    std::string result;
    std::size_t written = 0;
    for (std::size_t place = finder.find(tokens, 0, 0, tokens.size()); place != kNoToken;
         place = finder.find(tokens, 0, place + 1, tokens.size())) {
        const std::size_t offset = tokens[place].token.offset;
        result += text.substr(written, offset - written);
        result += '|';
        written = offset;
    }
    result += text.substr(written);
    return result;
}

TEST(FindFirstElem, LooksAtSeparatorsOutsideOfBrackets) {
    FindFirstElem commas(TokenClasses::commaTokens);
    EXPECT_EQ(marked("a, f(b, c), d[e, f], {g, h}, i", commas), "a|, f(b, c)|, d[e, f]|, {g, h}|, i");
    EXPECT_EQ(marked("a<b, c> d, e", commas, ExprMode::Declaration), "a<b, c> d|, e");
    EXPECT_EQ(marked("a < b, c", commas), "a < b|, c");
    EXPECT_EQ(commas.lastKind(), Cpp::Identifier);
}

TEST(FindFirstElem, TakesNoneOfSeveralInARowAndNoneInFrontOfWhatIsExcluded) {
    FindFirstElem commas(TokenClasses::commaTokens);
    EXPECT_EQ(marked("a,, b, c", commas), "a,, b|, c");
    FindFirstElem excluding(TokenClasses::commaTokens, TokenClasses::semicolonTokens);
    EXPECT_EQ(marked("a, b,;", excluding), "a|, b,;");
}

TEST(FindFirstElem, KnowsShiftsAndLogicalsFromBracketsMarksAndNames) {
    FindFirstElem shifts(TokenClasses::shiftTokens);
    EXPECT_EQ(marked("a << b >> c", shifts), "a |<< b |>> c");
    EXPECT_EQ(marked("a<b<c>> d << e", shifts, ExprMode::Declaration), "a<b<c>> d |<< e");
    EXPECT_EQ(marked("operator<<(a) << b", shifts), "operator<<(a) |<< b");
    FindFirstElem logicals(TokenClasses::logicalTokens);
    EXPECT_EQ(marked("a && (b || c) || d", logicals), "a |&& (b || c) ||| d");
    EXPECT_EQ(marked("T &&t", logicals, ExprMode::Declaration), "T &&t");
}

TEST(FindFirstBinaryOp, BreaksAtOperatorsBetweenOperands) {
    FindFirstBinaryOp operators;
    EXPECT_EQ(marked("a + b / c % d == e ? f : g | h", operators), "a |+ b |/ c |% d |== e |? f |: g || h");
    EXPECT_EQ(marked("a * b & c ^ d <= e && f = g", operators), "a * b & c ^ d <= e && f = g");
    EXPECT_EQ(marked("a < b", operators), "a |< b");
    EXPECT_EQ(marked("a > b", operators), "a |> b");
    EXPECT_EQ(marked("v<t>::n + (a - b)", operators), "v<t>::n |+ (a - b)");
}

TEST(FindFirstBinaryOp, TakesSignsByWhatStandsBesideThem) {
    FindFirstBinaryOp operators;
    EXPECT_EQ(marked("-a - b", operators), "-a |- b");
    EXPECT_EQ(marked("a - -1", operators), "a |- -1");
    EXPECT_EQ(marked("a - -b", operators), "a |- |-b");
}

TEST(FindFirstCast, StandsBehindTheType) {
    FindFirstCast casts;
    EXPECT_EQ(marked("static_cast<a>(b) + f(dynamic_cast<c>(d))", casts),
              "static_cast<a|>(b) + f(dynamic_cast<c>(d))");
    EXPECT_EQ(marked("static_cast<a<b>>(c) + d<e>(f)", casts), "static_cast<a<b|>>(c) + d<e>(f)");
}

TEST(FindFirstOldCast, StandsBehindTheParentheses) {
    FindFirstOldCast casts;
    EXPECT_EQ(marked("(a) b + (c *) 'd' + (e) (f)", casts), "(a|) b + (c *|) 'd' + (e|) (f)");
    EXPECT_EQ(marked("f(a) b + c<d>(e) g + (h) + (i)", casts), "f(a) b + c<d>(e) g + (h) + (i)");
    EXPECT_EQ(marked("int (*name)(int), a.operator()(b)", casts, ExprMode::Declaration),
              "int (*name)(int), a.operator()(b)");
}

}  // namespace
