#include <gtest/gtest.h>

#include "cpp/parse_text.h"

namespace {

using CppTest::treeOf;

TEST(ParserDeclarations, SplitsDataIntoTypeNameAndTail) {
    EXPECT_EQ(
        treeOf("int a[10], *p; int a, b = 5; const A::B<int, 2> *q = new A; unsigned char c[(N + 1) / 2];"),
        R"(
data int | a [ 10 ] , * p | -
data int | a , b | = 5 ;
data const A::B < int , 2 > * | q | = new A ;
data unsigned char | c [ ( N + 1 ) / 2 ] | -
)");
    EXPECT_EQ(
        treeOf(
            "int d, e[] = { 1, { 2 } }; int a[] = { 1 }; A<B<int>> m, n; typedef X *Y; class F; x; a < b;"),
        R"(
data int | d , e [ ] | = { 1 , { 2 } } ;
data int | a [ ] | = { 1 } ;
data A < B < int >> | m , n | -
data typedef X * | Y | -
data class | F | -
data - | x | -
data a < | b | -
)");
    EXPECT_EQ(treeOf("function<void(int, char)> f; vector<int, A ? 4 : 1> g; extern int n; int x = a < b;"),
              R"(
data function < void ( int , char ) > | f | -
data vector < int , A ? 4 : 1 > | g | -
data extern int | n | -
data int | x | = a < b ;
)");
}

TEST(ParserDeclarations, ReadsOperatorNames) {
    EXPECT_EQ(
        treeOf("bool operator()(int a) const; void *operator new[](size_t n); A &operator=(const A &);"
               "int operator->*(A); A operator,(B); T &operator[](int); friend bool operator< <>(A, B);"),
        R"(
function bool | operator ( ) (int a) const
function void * | operator new [ ] (size_t n)
function A & | operator = (const A &)
function int | operator ->* (A)
function A | operator , (B)
function T & | operator [ ] (int)
function friend bool | operator < < > (A; B)
)");
    EXPECT_EQ(
        treeOf(
            "operator const char *() const; A<B>::operator std::vector<int>() { } void *::operator delete(p);"
            "bool A::operator==(A) { } void (A::*b)(int) const;"),
        R"(
function - | operator const char * () const
function - | A < B > ::operator std::vector < int > ()
  block
function void * | ::operator delete (p)
function bool | A ::operator == (A)
  block
pointer void | b (int) const
)");
}

TEST(ParserDeclarations, ShutsUnusedBlocksAndRegions) {
    EXPECT_EQ(
        treeOf(
            "# if 0\nint (\n#ifdef X\n#endif\n#if Y\n#endif\n#else\n#endif\nint a; // VANTREL-OFF\n } ( {\n"
            "// VANTREL-OFF again\n/* VANTREL-ON */ \" \n//  VANTREL-ON\nint b;",
            CppTest::TreeDump::Positions::Shown),
        R"(
unused block @1:1-9:0
data int | a | - @9:1-9:6
region @9:8-14:0
data int | b | - @14:1-14:6
)");
    // What they hold counts nowhere.
    EXPECT_EQ(
        treeOf("class A /*VANTREL-OFF*/ : { /*VANTREL-ON*/ { int a; } /*VANTREL-OFF*/ ; /*VANTREL-ON*/ ;"
               "enum E { A /*VANTREL-OFF*/ } /*VANTREL-ON*/ }; f(/*VANTREL-OFF*/ ) /*VANTREL-ON*/ int "
               "a)\n#if 0\n;\n#endif\n{ }"
               "int c /*VANTREL-OFF*/ ; = { /*VANTREL-ON*/ = 3;"),
        R"(
0 class A
  data int | a | -
enum E
  expr A
  region
function - | f (int a)
  block
data int | c | = 3 ;
)");
}

TEST(ParserDeclarations, KnowsWhereThingsStand) {
    EXPECT_EQ(treeOf("class A :\n  B { int x\t: 3; } ;\ntemplate <class T>\nint f(int a) ;\nint (*g)(int) = "
                     "0;\nint h[2] ;\n"
                     "enum { C } ;\nnamespace N\n{\n}",
                     CppTest::TreeDump::Positions::Shown),
              R"(
0 class A @1:1-2:20
  base 0 B @2:3-2:3
  data int | x | : 3 ; @2:7-2:16
template (class T) @3:1-3:18
function int | f (int a) @4:1-4:14
pointer int | g (int) @5:1-5:18
data int | h [ 2 ] | - @6:1-6:10
enum @7:1-7:12
  expr C @7:8-7:8
namespace N @8:1-10:1
)");
    EXPECT_EQ(treeOf("A::A() : x(1) ;", CppTest::TreeDump::Positions::Shown),
              "\nconstructor - | A::A () @1:1-1:15\n  initializer x @1:10-1:13\n    argument 1 @1:12-1:12\n");
    EXPECT_EQ(
        treeOf("A::A ( int x ) : B ( x ) ,\n c ( 1 ) { }\nextern \"C\"\n{ class D { public : D ( ) ; } ; }",
               CppTest::TreeDump::Positions::Shown),
        R"(
constructor - | A::A (int x) @1:1-2:12
  initializer B @1:18-1:24
    argument x @1:22-1:22
  initializer c @2:2-2:8
    argument 1 @2:6-2:6
  block @2:10-2:12
linkage extern "C" @3:1-4:34
  0 class D @4:3-4:32
    access 1 @4:13-4:20
    function - | D () @4:22-4:28
)");
}

}  // namespace
