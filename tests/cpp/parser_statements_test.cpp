#include <gtest/gtest.h>

#include <string>

#include "cpp/parse_text.h"

namespace {

// The items of a function's block.
std::string itemsOf(const std::string& statements) {
    const std::string tree = CppTest::treeOf("void f() {\n" + statements + "\n}");
    const std::string frame = "\nfunction void | f ()\n  block\n";
    if (!tree.starts_with(frame)) return tree;
    std::string items = "\n";
    std::istringstream lines(tree.substr(frame.size()));
    for (std::string line; std::getline(lines, line);) items += line.substr(4) + '\n';
    return items;
}

TEST(ParserStatements, TellsDeclarationsFromExpressions) {
    EXPECT_EQ(
        itemsOf("T * p = 0; a * b; A &c = d; A<int> e; A f(3); const int g = 1; auto h = 2; int i[2] = { 1 "
                "}, j;\n"
                "static int k = 0; struct S { int a; } s; enum E { X } e; typedef int U; extern int q; k;"),
        R"(
data T * | p | = 0 ;
data a * | b | -
data A & | c | = d ;
data A < int > | e | -
data A | f | ( 3 ) ;
data const int | g | = 1 ;
data auto | h | = 2 ;
data int | i [ 2 ] | = { 1 } , j ;
data static int | k | = 0 ;
1 struct S
  data int | a | -
data - | s | -
enum E
  expr X
data - | e | -
data typedef int | U | -
data int | q | -
data - | k | -
)");
    EXPECT_EQ(
        itemsOf(
            "f(x); f(a, b); *p = 3; ++i; A::f(); f<3>(x); unsigned l; a < b > (c); ::new T; x = (T) { 1 };"),
        R"(
expr f x;
expr f a , b;
expr * p = 3;
expr ++ i;
expr A::f;
expr f 3 x;
data unsigned | l | -
expr a b c;
expr ::new T;
expr x = T { 1 };
)");
}

TEST(ParserStatements, EndWhereNoSemicolonDoes) {
    EXPECT_EQ(itemsOf("__asm mov eax, 1\nf(); __asm { mov a, { b } } MACRO struct A { } a; x = y ? throw 1 : 2;"), R"(
asm __asm
  block
expr f;
asm __asm
  block
    text mov a , { b }
expr MACRO
1 struct A
data - | a | -
expr x = y ?
expr throw 1 : 2;
)");
    EXPECT_EQ(itemsOf("x =\n#if Y\nf(a);"), "\nexpr x =\ndirective #if Y\nexpr f a;\n") << "unless it is kept";
}

}  // namespace
