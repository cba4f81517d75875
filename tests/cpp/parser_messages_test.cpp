#include <gtest/gtest.h>

#include <string>

#include "cpp/parse_text.h"

namespace {

using CppTest::messagesOf;

TEST(ParserMessages, AboutDeclarations) {
    EXPECT_EQ(messagesOf("int f(a, b) int c; { }\nvoid g() + 1;\nvoid h() = 1;"), R"(
1:13 2 Unexpected token. Was expecting to find ";" or "{".
2:10 2 Unexpected token. Was expecting to find ";" or "{".
3:10 2 Unexpected token. Was expecting to find ";" or "{".
)");
    EXPECT_EQ(messagesOf("int f(a) int (((a;"), R"(
1:10 2 Unexpected token. Was expecting to find ";" or "{".
1:18 1 Unexpected EOF found.
1:10 7 The statement cannot be parsed.
)");
    EXPECT_EQ(messagesOf("int (x);\nint A::(int);\noperator[(x);\nA() : b(1), c { }\nvoid f() throw;"), R"(
1:5 0 Expected function name. Got: (
2:8 0 Expected "operator". Got: (
3:10 0 Expected [.
4:15 0 Expected a (. Got: "{"
5:15 0 Expected '(' as part of exception specification clause 'throw()'. Got: ;
5:15 0 Expected '(' as part of a 'throw()' clause. Got: ;
)");
    EXPECT_EQ(
        messagesOf("int (*p)(int) { }\nint a, ;\nint (*p);\ntemplate <class T; int x;\nnamespace N int a;"),
        R"(
1:15 2 Unexpected token. Was expecting to find ";" or "{".
1:1 7 The statement cannot be parsed.
3:9 0 Expected '(' Got: ;
4:18 0 Expected '>'. Got: ;
5:13 0 Expected:: "{".
)");
}

TEST(ParserMessages, AboutClassesAndEnums) {
    EXPECT_EQ(
        messagesOf("class A : public public B, virtual 3 virtual C {\nnamespace N { }\npublic int x; };"), R"(
1:18 0 Not expecting to find keyword "public"
1:36 0 Unexpected Token: "3"
1:38 0 Not expecting to find keyword "virtual"
2:1 0 Namespace declaration illegal inside class declaration.
)");
    EXPECT_EQ(messagesOf("class A { private int x; int a : ; int d : 1, 2 : 3; };"), R"(
1:11 0 Expected ':' Found: private
1:34 0 Bad looking bitfield. Expected an identifier or an integer literal. Got: ';'.
1:26 7 The statement cannot be parsed.
1:47 0 Bad looking bitfield. Expected an Identifier. Got: '2'.
1:36 7 The statement cannot be parsed.
)");
    EXPECT_EQ(messagesOf("inline N { }\nenum E { A, class B };\nclass C { int x };"), R"(
1:8 0 Expected an identifier for the class name.
1:1 7 The statement cannot be parsed.
2:13 0 Expected "}" first to close enum declaration.
3:11 7 The statement cannot be parsed.
)");
}

TEST(ParserMessages, AboutLinkageBlocks) {
    EXPECT_EQ(messagesOf("extern \"C\" {\ntemplate <class T> void f();\npublic\nif\n}"), R"(
2:1 0 templates cannot be declared to have 'C' linkage.
3:1 0 public: protected: private: labels are illegal inside linkage blocks.
4:1 0 control statements (e.g. if, else, while) are illegal inside linkage blocks.
)");
}

TEST(ParserMessages, AboutStatements) {
    EXPECT_EQ(messagesOf("void f() {\npublic: ;\ntemplate ;\nnamespace ;\nif x;\nif (b { }\ndo "
                         "x(); y;\ndefault 3;\n}"),
              R"text(
2:1 8 public: protected: private: labels are not allowed inside block statements.
3:1 9 template declarations are not allowed inside block statements.
4:1 10 Namespace declarations are not allowed inside block statements.
5:4 13 Expected "(".
6:7 12 Expected ")". Possible unbalanced parentheses.
7:9 11 Expected: if, else, for, do, while, try, catch, switch.
8:9 0 Expected a : immediately following 'default'. Got: 3
)text");
    EXPECT_EQ(messagesOf("void f() { A b(1; c); int d = 3 }"), R"(
1:17 5 An unexpected semicolon was found.
1:33 3 Unexpected token. Was expecting to find ";", "(" or "=".
)");
}

TEST(ParserMessages, AboutTheEndOfTheText) {
    EXPECT_EQ(messagesOf("namespace N { int x;"), "\n1:20 1 Unexpected EOF found.\n");
    EXPECT_EQ(messagesOf("void f() { x; {"), "\n1:15 1 Unexpected EOF found.\n1:15 1 Unexpected EOF found.\n");
    EXPECT_EQ(messagesOf("#if 0\n x"), "\n2:2 1 Unexpected EOF found.\n");
    EXPECT_EQ(messagesOf("void f() { g(\"h\n); }"), "\n1:13 1 Unexpected EOF found.\n1:13 1 Unexpected EOF found.\n");
    EXPECT_EQ(messagesOf("// VANTREL-OFF\n x"), "\n2:2 1 Unexpected EOF found.\n");
    EXPECT_EQ(messagesOf("int x = 3"), "\n1:9 1 Unexpected EOF found.\n1:1 7 The statement cannot be parsed.\n");
    for (const char* source :
         {"int x", "int f(", "class A {", "class A : B", "f() : a(1)", "enum E { A", "int (*f)(int)",
          "x:", "extern \"C\" {", "using namespace N", "return 3", "void f() { asm { x", "template <class T",
          "void f() { g(", "void f() { a b /* VANTREL-OFF */; }"}) {
        EXPECT_NE(messagesOf(source).find(" 1 Unexpected EOF found."), std::string::npos) << source;
    }
}

}  // namespace
