#include "trn/token_buffer.h"

#include <gtest/gtest.h>

#include <string>

#include "cpp/lexer.h"
#include "cpp/token_kind.h"

namespace {

using Trn::TokenBuffer;

TEST(TokenBuffer, LooksAheadAndStepsBack) {
    Cpp::Lexer lexer("a b c d");
    TokenBuffer tokens(&lexer);
    EXPECT_EQ(tokens.peek(3).text, "c");
    EXPECT_EQ(tokens.peek(1).text, "a");
    EXPECT_EQ(tokens.next().text, "a");
    EXPECT_EQ(tokens.current().text, "b");
    tokens.next();
    tokens.stepBack();
    EXPECT_EQ(tokens.next().text, "b");
    EXPECT_EQ(tokens.peek(9).kind, Cpp::End);
    EXPECT_EQ(tokens.next().text, "c");
}

TEST(TokenBuffer, GivesTheEndAsOftenAsAsked) {
    Cpp::Lexer lexer("a");
    TokenBuffer tokens(&lexer);
    tokens.stepBack();
    tokens.next();
    EXPECT_EQ(tokens.next().kind, Cpp::End);
    EXPECT_EQ(tokens.next().kind, Cpp::End);
    EXPECT_EQ(tokens.current().start, (Trn::Position{1, 1}));
    tokens.stepBack();
    tokens.stepBack();
    tokens.stepBack();
    EXPECT_EQ(tokens.current().text, "a");
}

TEST(TokenBuffer, SlicesEndInFrontOfTheNextToken) {
    Cpp::Lexer lexer("a b c d");
    TokenBuffer tokens(&lexer);
    tokens.peek(4);
    TokenBuffer slice = tokens.slice(1, 3);
    slice.stepBack();
    EXPECT_EQ(slice.next().text, "b");
    EXPECT_EQ(slice.next().text, "c");
    const Trn::Token end = slice.next();
    EXPECT_EQ(end.kind, Cpp::End);
    EXPECT_EQ(end.start, (Trn::Position{1, 7}));
    EXPECT_EQ(tokens.next().text, "a");
}

// Places stay valid when the tokens before them are forgotten.
TEST(TokenBuffer, ForgetsAllButItsHistory) {
    std::string source;
    for (int i = 0; i < 10000; ++i) source += std::to_string(i) += ' ';
    Cpp::Lexer lexer(source);
    TokenBuffer tokens(&lexer);
    for (int i = 0; i < 10000; ++i) {
        tokens.release();
        ASSERT_EQ(tokens.place(), static_cast<std::size_t>(i));
        ASSERT_EQ(tokens.next().text, std::to_string(i));
    }
    EXPECT_GT(tokens.begin(), 5000U);
    for (int i = 0; i < 3; ++i) tokens.stepBack();
    EXPECT_EQ(tokens.current().text, "9997");
}

}  // namespace
