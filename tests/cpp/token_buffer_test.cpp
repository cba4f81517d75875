#include "trn/token_buffer.h"

#include <gtest/gtest.h>

#include <string_view>

#include "cpp/lexer.h"
#include "cpp/token_kind.h"
#include "cpp/token_reader.h"

namespace {

using Trn::TokenBuffer;

TokenBuffer tokensOf(std::string_view text) {
    Cpp::Lexer lexer(text);
    return TokenBuffer(Cpp::readTokens(lexer));
}

TEST(TokenBuffer, LooksAheadAndStepsBack) {
    TokenBuffer tokens = tokensOf("a b c d");
    EXPECT_EQ(tokens.peek(3).text, "c");
    EXPECT_EQ(tokens.next().text, "a");
    EXPECT_EQ(tokens.current().text, "b");
    tokens.next();
    tokens.stepBack();
    EXPECT_EQ(tokens.next().text, "b");
    EXPECT_EQ(tokens.peek(9).kind, Cpp::End);
    EXPECT_EQ(tokens.next().text, "c");
}

TEST(TokenBuffer, GivesTheEndAsOftenAsAsked) {
    TokenBuffer tokens = tokensOf("a");
    tokens.stepBack();
    tokens.next();
    EXPECT_EQ(tokens.next().kind, Cpp::End);
    EXPECT_EQ(tokens.next().kind, Cpp::End);
    EXPECT_EQ(tokens.current().start, (Trn::Position{1, 1}));
    for (int i = 0; i < 3; ++i) tokens.stepBack();
    EXPECT_EQ(tokens.current().text, "a");
}

TEST(TokenBuffer, SlicesEndInFrontOfTheNextToken) {
    TokenBuffer tokens = tokensOf("a b c d");
    TokenBuffer slice = tokens.slice(1, 3);
    slice.stepBack();
    EXPECT_EQ(slice.next().text, "b");
    EXPECT_EQ(slice.next().text, "c");
    const Trn::Token end = slice.next();
    EXPECT_EQ(end.kind, Cpp::End);
    EXPECT_EQ(end.start, (Trn::Position{1, 7}));
    EXPECT_EQ(tokens.next().text, "a");
}

}  // namespace
