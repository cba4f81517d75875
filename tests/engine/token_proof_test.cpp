#include "engine/token_proof.h"

#include <gtest/gtest.h>

#include <string>

#include "cpp/lexer.h"

namespace {

// Whether the proof accepts `result` as `source` with other white space.
bool accepts(const std::string& source, const std::string& result) {
    return !Tessel::findLostToken(source, Cpp::opaqueTokensOf(source), result).has_value();
}

TEST(TokenProof, AcceptsOtherWhiteSpace) {
    EXPECT_TRUE(accepts("int  a;\nint b ;", "int a;int\tb;\n\n"));
    EXPECT_TRUE(accepts("a=b+++c;", "a = b++ + c;"));
    EXPECT_TRUE(accepts("x = ('a'-'b')*1.5e-3;", "x = ('a' - 'b') * 1.5e-3;"));
    EXPECT_TRUE(accepts("p=&*q;a=-1;v<::T>w;", "p = & *q; a = - 1; v< ::T > w;"));
    EXPECT_TRUE(accepts("9e-=b;", "9e- =b;"));
    EXPECT_TRUE(accepts("x=A:: B::c;", "x = A::B::\n    c;"));
    EXPECT_TRUE(accepts("", "\n"));
}

TEST(TokenProof, AcceptsOtherWhiteSpaceAroundLinesOfComments) {
    EXPECT_TRUE(accepts("a; // x  \nb;", "a;// x\n  b;"));
    EXPECT_TRUE(accepts("/* a\n    b\n*/ c", "/* a\n b  \n  */ c"));
    EXPECT_TRUE(accepts("  #define A \\\n  1\nb", "#define A \\\n1\n b"));
    EXPECT_TRUE(accepts("a // x", "a // x\n"));
    EXPECT_TRUE(accepts("a /* x */*/ b", "a /* x */ * / b"));
}

TEST(TokenProof, SeesWhatIsLostAddedOrMoved) {
    EXPECT_FALSE(accepts("a; b;", "a;"));
    EXPECT_FALSE(accepts("a;", "a; b;"));
    EXPECT_FALSE(accepts("a b;", "b a;"));
    EXPECT_FALSE(accepts("f(a, b);", "f(a b,);"));
}

TEST(TokenProof, SeesTokensThatJoinOrFallApart) {
    EXPECT_FALSE(accepts("else return;", "elsereturn;"));
    EXPECT_FALSE(accepts("elsereturn;", "else return;"));
    EXPECT_FALSE(accepts("a - -b;", "a --b;"));
    EXPECT_FALSE(accepts("a --b;", "a - -b;"));
    EXPECT_FALSE(accepts("a / *b;", "a /*b;"));
    EXPECT_FALSE(accepts("A<B<C> >d;", "A<B<C>>d;"));
    EXPECT_FALSE(accepts("x = 1e +1;", "x = 1e+1;"));
    EXPECT_FALSE(accepts("x = 1e+1;", "x = 1e +1;"));
    EXPECT_FALSE(accepts("x = 1e+1;", "x = 1e+ 1;"));
    EXPECT_FALSE(accepts("L \"a\";", "L\"a\";"));
    EXPECT_FALSE(accepts("L \"a b\";", "L\"a b\";"));
    EXPECT_FALSE(accepts("\"a b\"U\"c d\";", "\"a b\" U\"c d\";"));
    EXPECT_FALSE(accepts("a / /* b */ c;", "a //* b */ c;"));
    EXPECT_TRUE(accepts("a*/* b */c;", "a * /* b */ c;"));
    EXPECT_TRUE(accepts("/* a *//* b */", "/* a */ /* b */"));
    EXPECT_TRUE(accepts("f(\"a b\"\"c d\"/* e */);", "f(\"a b\" \"c d\" /* e */);"));
}

TEST(TokenProof, SeesBlanksThatHoldALineEndOrACommentApart) {
    EXPECT_FALSE(accepts("#define A b/ /* c */\n", "#define A b//* c */\n"));
    EXPECT_TRUE(accepts("#define A\tb\t\n", "#define A b\n"));
    EXPECT_FALSE(accepts("#define A\tb\\\t\n", "#define A b\\\n"));
    EXPECT_FALSE(accepts("#define A\tb/\t/* c */\n", "#define A b//* c */\n"));
    EXPECT_TRUE(accepts("a; // b/ \n", "a; // b/\n"));
    EXPECT_FALSE(accepts("// a \\ \n b", "// a \\\n b"));
    EXPECT_TRUE(accepts("#define A b  // c\n", "#define A b// c\n"));
}

TEST(TokenProof, SeesTokensThatSplicesJoin) {
    EXPECT_FALSE(accepts("struct \\\nA;", "struct\\\nA;"));
    EXPECT_FALSE(accepts("struct \\\n\\ \nA;", "struct\\\n\\ \nA;"));
    EXPECT_FALSE(accepts("a+\\\n +b;", "a+\\\n+b;"));
    EXPECT_FALSE(accepts("a\\\nb ::c;", "a\\\nb::c;"));
    EXPECT_TRUE(accepts("struct \\\nA;", "struct\\\n A;"));
    EXPECT_TRUE(accepts("a \\\n+b;", "a\\\n+b;"));
    EXPECT_FALSE(accepts("#if a &\\\n& b\n", "#if a & \\\n    &b\n"));
    EXPECT_FALSE(accepts("#define A a## &\\\n  & b\n", "#define A a##&\\\n& b\n"));
    EXPECT_FALSE(accepts("#pragma L\\\n\"a\"\n", "#pragma L\\\n  \"a\"\n"));
    EXPECT_FALSE(accepts("#pragma a\\ \nb\n", "#pragma a\\ \n  b\n"));
    EXPECT_TRUE(accepts("#pragma a\\\n{\n", "#pragma a\\\n  {\n"));
}

TEST(TokenProof, SeesWhiteSpaceInsideLiterals) {
    EXPECT_FALSE(accepts("s = \"a-b\";", "s = \"a- b\";"));
    EXPECT_FALSE(accepts("s = \"(\";", "s = \"(\n\";"));
    EXPECT_FALSE(accepts("s = R\"(\"-b)\";", "s = R\"(\"- b)\";"));
    EXPECT_FALSE(accepts("c = L'-';", "c = L'- ';"));
    EXPECT_TRUE(accepts("' ''/''", "' ''/''"));
    EXPECT_TRUE(accepts("f(.1'0){}", "f(.1'0) {}"));
    EXPECT_FALSE(accepts("x=5.'5;", "x=5. '5;"));
    EXPECT_FALSE(accepts("x=0e+d.;", "x=0e+d .;"));
    EXPECT_FALSE(accepts("x=0x1'0 .a;", "x=0x1'0.a;"));
    EXPECT_TRUE(accepts("x=0x1'0e+5;", "x=0x1'0e + 5;"));
    EXPECT_TRUE(accepts("do\"\";while('a');", "do \"\"; while ('a');"));
    EXPECT_FALSE(accepts("R\"a\" (b);", "R\"a\"(b);"));
    EXPECT_FALSE(accepts("R\"a\" b(c);", "R\"a\"b(c);"));
    EXPECT_FALSE(accepts("u8R\"\"\"\" (b);", "u8R\"\"\"\"(b);"));
    EXPECT_TRUE(accepts("R\"a\" + b(c);", "R\"a\"+ b(c);"));
    EXPECT_TRUE(accepts("ER\"a\"b(c);", "ER\"a\"b (c);"));
    EXPECT_TRUE(accepts("n=1'000-2'000;s=\"\\\"\"-'a'-'\"'-b;", "n = 1'000 - 2'000; s = \"\\\"\" - 'a' - '\"' - b;"));
}

TEST(TokenProof, SeesChangedLiteralsCommentsAndDirectives) {
    EXPECT_FALSE(accepts("s = \"a  b\";", "s = \"a b\";"));
    EXPECT_FALSE(accepts("s = \"a\\\n  b\";", "s = \"a\\\nb\";"));
    EXPECT_FALSE(accepts("c = ' ';", "c = '\t';"));
    EXPECT_FALSE(accepts("/* a  b */", "/* a b */"));
    EXPECT_FALSE(accepts("/* a\n\nb */", "/* a\nb */"));
    EXPECT_FALSE(accepts("#error A(x)  x\n", "#error A(x) x\n"));
    EXPECT_TRUE(accepts("#define A\tx \\\n\ty\t// b\n", "#define A   x \\\n    y    // b\n"));
    EXPECT_FALSE(accepts("#define A\t(x)\n", "#define A(x)\n"));
    EXPECT_FALSE(accepts("#define A\t\"\t\"\n", "#define A   \" \"\n"));
    EXPECT_FALSE(accepts("#define A \\\n1\n", "#define A 1\n"));
    EXPECT_FALSE(accepts("#define A \"a\\\n  b\"\n", "#define A \"a\\\nb\"\n"));
}

TEST(TokenProof, TakesWhiteSpaceBetweenTheTokensOfConditionsAndMacros) {
    EXPECT_TRUE(accepts("#if ( A )&&!B \\\n||C\n", "#if (A) && !B \\\n    || C\n"));
    EXPECT_TRUE(accepts("#define A(x,y) ( x )+y\n", "#define A(x, y) (x) + y\n"));
    EXPECT_TRUE(accepts("#define A(x) b+#x\n", "#define A(x) b + #x\n"));
    EXPECT_FALSE(accepts("#define A(x) b##x\n", "#define A(x) b# #x\n"));
    EXPECT_FALSE(accepts("#if A- -B\n", "#if A--B\n"));
    EXPECT_FALSE(accepts("#if A&&B\n", "#if A && C\n"));
    EXPECT_FALSE(accepts("#define A(x)\n", "#define A (x)\n"));
    EXPECT_FALSE(accepts("#define A (x)\n", "#define A(x)\n"));
    EXPECT_FALSE(accepts("#define A(x) x+1\nb;", "#define A(x) x + 1 b;"));
    EXPECT_FALSE(accepts("#define A(x) f(\" \"+x)\n", "#define A(x) f(\"\" + x)\n"));
    EXPECT_FALSE(accepts("#include <a  b>\n", "#include <a b>\n"));
}

TEST(TokenProof, SeesLinesThatDoNotEndOrBegin) {
    EXPECT_FALSE(accepts("a;\n#if X\nb;", "a; #if X\nb;"));
    EXPECT_FALSE(accepts("a; // x\nb;", "a; // x b;"));
    EXPECT_FALSE(accepts("a;\n#if X\nb;", "a;\n#if X b;"));
    EXPECT_FALSE(accepts("f('\n)", "f(')"));
    EXPECT_FALSE(accepts("{\\}", "{\\\n}"));
    EXPECT_FALSE(accepts("int\\\n a;", "int\\\na;"));
    EXPECT_TRUE(accepts("f\\\n (a);", "f\\\n(a);"));
    EXPECT_FALSE(accepts("{\\ }", "{\\ \n}"));
    EXPECT_TRUE(accepts("f('\n)", "f( '\n\n)"));
    EXPECT_TRUE(accepts("f(''\n)", "f('')"));
    EXPECT_FALSE(accepts("a;\n/* b */ #if X\nc;", "a; /* b */ #if X\nc;"));
}

TEST(TokenProof, SeesDirectivesThatDoNotEndBehindTheirComments) {
    EXPECT_FALSE(accepts("#if A /* x\n y */\nb;", "#if A /* x\n y */ b;"));
    EXPECT_FALSE(accepts("#if A /* x\n y */ /* z */\nb;", "#if A /* x\n y */ /* z */ b;"));
    EXPECT_TRUE(accepts("#if A /* x\n y */\n/* z */\nb;", "#if A /* x\n y */\n/* z */ b;"));
    EXPECT_TRUE(accepts("#if A /* x\n y */\n", "#if A /* x\n y */"));
}

TEST(TokenProof, TellsWhereTheFirstDifferenceIs) {
    Cpp::OpaqueTokens opaque;
    EXPECT_EQ(Tessel::findLostToken("a;\nb;", opaque, "a;\nc;"), 3u);
}

}  // namespace
