#include <gtest/gtest.h>

#include <string_view>

#include "cpp/parse_text.h"

// What the language has gained since its grammar was written down, and what stands in unpreprocessed source.
namespace {

using CppTest::treeOf;

std::string keptTreeOf(std::string_view source) {
    Cpp::RootNode root;
    const CppTest::Messages messages = CppTest::parse(source, root, Cpp::Unrecognized::Kept);
    return '\n' + (messages.empty() ? CppTest::TreeDump::of(root) : CppTest::shown(messages));
}

TEST(ParserLanguage, HeadsHaveTails) {
    EXPECT_EQ(treeOf("int private = 1;"), "\ndata int | private | = 1 ;\n") << "a name in C";
    EXPECT_EQ(treeOf("struct private a; int catch(int b); void throw();"),
              "\ndata struct private | a | -\nfunction int | catch (int b)\nfunction void | throw ()\n");
    EXPECT_EQ(treeOf("NsPtr namespace; T *template;"), "\ndata NsPtr | namespace | -\ndata T * | template | -\n");
    EXPECT_EQ(treeOf("void f() const noexcept(true) override = 0; A::A(int a) : a_{a}, B<int>(1)... { }\n"
                     "auto g(int x) -> std::vector<int> { } [[a]] API(2) static int h() = delete;\n"
                     "int k(a, b) int a; char *b; { } int (*l(int a))(int) { } int NAME(m)(int a) { }\n"
                     "template <class T> requires C<T> && (sizeof(T) > 2) T n(T t);"),
              R"(
function void | f () const noexcept ( true ) override = 0
constructor - | A::A (int a)
  initializer a_
    argument a
  initializer B < int >
    argument 1
  block
function auto | g (int x) -> std::vector < int >
  block
function [ [ a ] ] API ( 2 ) static int | h () = delete
function int | k (a; b) int a ; char * b ;
  block
function int | ( * l ( int a ) ) (int)
  block
function int | NAME ( m ) (int a)
  block
template (class T)
expr requires C < T > && ( sizeof ( T ) > 2 )
function T | n (T t)
)");
}

TEST(ParserLanguage, BlocksInExpressionsAreBodies) {
    EXPECT_EQ(treeOf("void f() { g([&](int a) mutable -> int { if (a) return [] { }(); return 1; }, {1, 2}); c();\n"
                     "int x{1}; auto [p, q] = h(); for (int i : {1, 2}) if constexpr (i) y = ({ z(); 1; }); }"),
              R"(
function void | f ()
  block
    expr g [ & ] int a mutable -> int { } , { 1 , 2 };
      block
        control
          part if
            statement
              expr return [ ] { };
                block
        expr return 1;
    expr c;
    data int | x | { 1 } ;
    data - | auto [ p , q ] | = h ( ) ;
    control
      part for
        statement
          control
            part if
              statement
                expr y = { };
                  block
                    expr z;
                    expr 1;
)");
}

TEST(ParserLanguage, OneBranchIsReadWhereBranchesSplitBrackets) {
    EXPECT_EQ(treeOf("#ifdef A\nvoid f() {\n#else\nvoid f(int a) {\n#endif\nx();\n#ifndef A\nif (a) {\n#else\nif (b) "
                     "{\n#endif\n} }\nint y;"),
              R"(
directive #ifdef A
function void | f ()
  block
    unused block
    directive #endif
    expr x;
    unused block
    directive #else
    control
      part if
        block
          directive #endif
data int | y | -
)");
}

TEST(ParserLanguage, OneOfSeveralHeadsIsReadWhereOneBodyFollows) {
    EXPECT_EQ(treeOf("#if defined (A)\nint f(int a)\n#else\nint f(a)\nint a;\n#endif\n/* */\n{\n#ifndef A\nif (b) {\n"
                     "#endif\nc();\n#ifndef A\n}\n#endif\n}"),
              R"(
directive #if defined (A)
function int | f (int a)
  block
    unused block
    directive #endif
    expr c;
    unused block
    directive #endif
)");
}

TEST(ParserLanguage, MacrosAndWhatIsNotRecognisedAreKept) {
    EXPECT_EQ(keptTreeOf("void f() {\nA\n#if B\nc();\n#endif\n}"), R"(
function void | f ()
  block
    kept A
    directive #if B
    expr c;
    directive #endif
)");
    EXPECT_EQ(keptTreeOf("BEGIN_DECLS\nREGISTER(a)\nint x;\nMACRO namespace n {\n}\nint f(a) + 3;\nstruct S {\n"
                         "OBJECT\nint ? y() + 1;\n};\nvoid g() {\nFOREACH(a, b)\n  c();\nLock\nd();\nif (a) {\nM(b)\n}\n}\nEND"),
              R"(
kept BEGIN_DECLS
kept REGISTER ( a )
data int | x | -
kept MACRO
namespace n
kept int f ( a ) + 3 ;
1 struct S
  kept OBJECT int ? y ( ) + 1 ;
function void | g ()
  block
    control
      part 
        statement
          expr c;
    kept Lock
    expr d;
    control
      part if
        block
          kept M ( b )
kept END
)");
    EXPECT_EQ(keptTreeOf("M(struct)\nA {\nint a;\n};\nCLASS(B) : public C {\n};\nM(*, a)\nchar c[4] ALIGNED(4) = {1};\n"
                         "T(d) = e;\ntypedef int (CALL* f) OF((g h));\nj::j() noexcept : k(1) { }\nSTACK(l)\n*m();\n"
                         "void n(o, p) int o; MORE { for (try = 0;;) ; }\nclass Q {\npublic slots R(1):\nEND\nEND\n};"),
              R"(
1 M ( struct ) A
  data int | a | -
0 CLASS ( B )
  base 1 C
kept M ( * , a )
data char | c [ 4 ] ALIGNED ( 4 ) | = { 1 } ;
data - | T ( d ) | = e ;
pointer typedef int | f -
constructor - | j::j () noexcept
  initializer k
    argument 1
  block
function STACK ( l ) * | m ()
function void | n (o; p) int o ; MORE
  block
    control
      part for
        block
0 class Q
  access 1
  kept END
  kept END
)");
    // What is wrong with the whole text stays an error, told where it begins.
    EXPECT_EQ(keptTreeOf("void f() {\n  g(h(a);\n}\n"),
              "\n2:4 0 The \"(\" that begins here is not closed: a \"}\" comes first, in line 3.\n");
    EXPECT_EQ(keptTreeOf("a: b(c for d), e"), "\nkept a : b ( c for d ) , e\n");
    EXPECT_EQ(keptTreeOf("@class A;\n@interface B\n@end\n"), "\n2:2 0 This is Objective-C, which is not read.\n");
    EXPECT_EQ(keptTreeOf("package a;\npublic class B {\n}\n"),
              "\n2:1 0 Only classes of other languages begin with an access keyword; C and C++ are read.\n");
    EXPECT_EQ(keptTreeOf("world()->size = 1;\n"), "\nexpr world -> size = 1;\n");
    EXPECT_EQ(keptTreeOf("private struct s { int a; } b;\npublic static int f(void);\nprivate struct t { }\n"),
              "\n3:1 0 Only classes of other languages begin with an access keyword; C and C++ are read.\n");
    EXPECT_EQ(keptTreeOf("void f() { namespace n { } }"),
              "\n1:12 10 Namespace declarations are not allowed inside block statements.\n");
}

}  // namespace
