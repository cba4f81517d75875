#include "cpp/lexer.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "cpp/token_classes.h"
#include "cpp/token_kind.h"
#include "textstream/text_document.h"

namespace {

using Cpp::Lexer;
using Trn::Token;

std::vector<Token> tokensOf(Lexer& lexer) {
    std::vector<Token> tokens;
    for (Token token = lexer.nextToken(); token.kind != Cpp::End; token = lexer.nextToken())
        tokens.push_back(token);
    return tokens;
}

// The tokens' texts, each in brackets.
std::string texts(std::string_view source) {
    Lexer lexer(source);
    std::string result;
    for (const Token& token : tokensOf(lexer)) result += '[' + std::string(token.text) + ']';
    return result;
}

std::size_t offsetOf(const Zelmor::TextDocument& source, Trn::Position position) {
    return source.offsetOf(static_cast<int>(position.line), static_cast<int>(position.column));
}

TEST(Lexer, CutsOperatorWordsOffQualifiedNames) {
    EXPECT_EQ(texts("A::operator+ ::new A:: delete A::operators"),
              "[A][::operator][+][][::new][A][::delete][A::operators]");
    Lexer lexer("x A::B:: operator");
    const std::vector<Token> tokens = tokensOf(lexer);
    ASSERT_EQ(tokens.size(), 3U);
    EXPECT_EQ(tokens[1].kind, Cpp::Identifier);
    EXPECT_EQ(tokens[1].stringValue(), "A::B");
    EXPECT_EQ(tokens[1].end, (Trn::Position{1, 6}));
    EXPECT_EQ(tokens[2].kind, Cpp::KeywordOperator);
    EXPECT_EQ(tokens[2].start, (Trn::Position{1, 7}));
    EXPECT_EQ(tokens[2].end, (Trn::Position{1, 17}));
}

TEST(Lexer, EndsCommentsAndDirectives) {
    EXPECT_EQ(texts("// a\n/* b\n*/// c"), "[// a\n][/* b\n*/][// c]");
    EXPECT_EQ(texts("// a \\\n b\nc"), "[// a \\\n b\n][c]");
    EXPECT_EQ(texts("/* a"), "[/* a]");
    EXPECT_EQ(texts("#include <a> // x\n"), "[#include <a> ][// x\n]");
    EXPECT_EQ(texts("#define A \\\n b\nc"), "[#define A \\\n b\n][c]");
    EXPECT_EQ(texts("#define A \\ \t\n b\n// c \\ \n d\ne"), "[#define A \\ \t\n b\n][// c \\ \n d\n][e]");
    EXPECT_EQ(texts("#if a /* b */ + c\n#x"), "[#if a /* b */ + c\n][#x]");
    EXPECT_EQ(texts("#if a /* b\n */\nc"), "[#if a ][/* b\n */][c]");
    EXPECT_EQ(texts("#if a /* b\n */ + c\nd"), "[#if a /* b\n */ + c\n][d]");
    EXPECT_EQ(texts("#define A \\\n /* b\n */\nc"), "[#define A \\\n /* b\n */\n][c]");
    EXPECT_EQ(texts("#define A \"//\" '\"' // x\n"), "[#define A \"//\" '\"' ][// x\n]");
    EXPECT_EQ(texts("#error don't // x\n"), "[#error don't ][// x\n]");
}

TEST(Lexer, GoesOnGivingTheEnd) {
    Lexer lexer("a\n ");
    lexer.nextToken();
    for (int i = 0; i < 2; ++i) {
        const Token end = lexer.nextToken();
        EXPECT_EQ(end.kind, Cpp::End);
        EXPECT_EQ(end.start, (Trn::Position{2, 1}));
        EXPECT_EQ(end.end, end.start);
        EXPECT_TRUE(end.text.empty());
    }
    std::ostringstream out;
    lexer.printPosition(out);
    EXPECT_EQ(out.str(), "line:\t2\tcol:\t1\tlastlinecol:\t1\n");
}

// A token's text is what the source holds between its positions, but for white space behind a "::".
TEST(Lexer, KnowsWhereTokensStand) {
    const Zelmor::TextDocument source(
        "#define A \\\n 1\n\tint\tx = a::b::\n  operator ( ::\t c ); // d \\\n e\n"
        "/* f\n */ \"g\\\n h\" R\"(\n)\" i\\\nj @ '\\n' \"k\n~l ... <<= A :: new\n#if 1 /* m\n */ n\n  "
        "\\\no");
    Lexer lexer(source.text());
    Trn::Position last{1, 0};
    for (const Token& token : tokensOf(lexer)) {
        const std::size_t start = offsetOf(source, token.start) - 1;
        const std::size_t end = offsetOf(source, token.end);
        EXPECT_EQ(start, token.offset) << token.text;
        EXPECT_EQ(end, token.offset + token.length) << token.text;
        EXPECT_GE(token.start, last) << token.text;
        EXPECT_EQ(Cpp::removeWhitespace(source.text().substr(start, end - start)), Cpp::removeWhitespace(token.text));
        last = token.end;
    }
}

}  // namespace
