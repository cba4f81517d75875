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

TEST(ParserDeclarations, ReadsFunctionHeads) {
    EXPECT_EQ(
        treeOf(
            "virtual void f() const throw(int) = 0; int A<T>::g(int a = h(1, 2), B<int, 3> b) volatile { }"),
        R"(
function virtual void | f () const throw ( int ) = 0
function int | A < T > ::g (int a = h ( 1 , 2 ); B < int , 3 > b) volatile
  block
)");
    EXPECT_EQ(treeOf("A<B<C>>::~A(); MACRO(x, y) { } int f(int), g(char); __declspec(dllexport) T *e(void);"),
              R"(
function - | A < B < C >> ::~A ()
function - | MACRO (x; y)
  block
function int | f (int)
function , | g (char)
function __declspec ( dllexport ) T * | e (void)
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
            "bool A::operator==(A) { }"),
        R"(
function - | operator const char * () const
function - | A < B > ::operator std::vector < int > ()
  block
function void * | ::operator delete (p)
function bool | A ::operator == (A)
  block
)");
}

TEST(ParserDeclarations, ReadsConstructorInitializers) {
    EXPECT_EQ(treeOf("A::A(int x) : B<int>(x), /* c */ c(1, d(2, 3)), e() { f(); }"), R"(
constructor - | A::A (int x)
  initializer B < int >
    argument x
  comment /* c */
  initializer c
    argument 1
    argument d ( 2 , 3 )
  initializer e
  block
    expr f;
)");
}

TEST(ParserDeclarations, ReadsPointersToFunctions) {
    EXPECT_EQ(
        treeOf("int (*a)(int) = 0; void (A::*b)(int, char) const; int (*c[N])(int) = { f, g }; int *(*d)();"
               "typedef void (WINAPI *e)(); std::pair<int, int> (*f)(int); char *(*(*g)(int))(char); int "
               "(*h)[3];"),
        R"(
pointer int | a (int)
pointer void | b (int; char) const
pointer int | c (int)
pointer int * | d ()
pointer typedef void | e ()
pointer std::pair < int , int > | f (int)
pointer char * | g (char)
pointer int | h -
)");
    EXPECT_EQ(treeOf("void (*a)(int), (*b)(int);"), R"(
pointer void | a (int)
pointer , | b (int)
)");
}

TEST(ParserDeclarations, ReadsClasses) {
    EXPECT_EQ(treeOf("class A : public virtual B, private C<int, 2>, D { public: int x; };"), R"(
0 class A
  base 1 virtual B
  base 3 C < int , 2 >
  base 0 D
  access 1
  data int | x | -
)");
    EXPECT_EQ(
        treeOf(
            "class EXPORT A { Q_OBJECT\npublic slots: void f() { }; signals: A(); ~A(); using B::x; ;\n"
            "friend class C; template <class T> void g(T); extern int e; MACRO(x) private: struct { } s; };"),
        R"(
0 class EXPORT A
  data - | Q_OBJECT | -
  access 1
  function void | f ()
    block
  access 4
  function - | A ()
  function - | ~A ()
  data friend class | C | -
  template (class T)
  function void | g (T)
  data extern int | e | -
  function - | MACRO (x)
  access 3
  1 struct
  data - | s | -
)");
    EXPECT_EQ(treeOf("typedef union { int a; } A, *B; struct C { } c = { 1 };"), R"(
2 typedef union
  data int | a | -
data - | A , * B | -
1 struct C
data - | c | = { 1 } ;
)");
}

TEST(ParserDeclarations, ReadsBitFields) {
    EXPECT_EQ(treeOf("struct A { unsigned int f : 3; int a : 3, b : N; unsigned : 2; const T g : 1; };"), R"(
1 struct A
  data unsigned int | f | : 3 ;
  data int | a | : 3 , b : N ;
  data unsigned | - | : 2 ;
  data const T | g | : 1 ;
)");
}

TEST(ParserDeclarations, ReadsEnums) {
    EXPECT_EQ(treeOf("enum E { A, /* c */ B = f(1, 2), // d\n C\n#endif\n // e\n }; enum { D, } x; enum F;"),
              R"(
enum E
  expr A
  comment /* c */
  expr B = f ( 1 , 2 )
  comment // d
  expr C
  directive #endif
  comment // e
enum
  expr D
data - | x | -
data enum | F | -
)");
}

TEST(ParserDeclarations, ReadsTemplates) {
    EXPECT_EQ(
        treeOf("template <class T> class X { }; template <class T> class X; template <> class A<int> { };"
               "template <template <class> class T, int N = (3 > 2), class U = A<B>> void f(); template "
               "class A<int>;"),
        R"(
template (class T)
0 class X
template (class T)
data class | X | -
template ()
0 class A < int >
template (template < class > class T; int N = ( 3 > 2 ); class U = A < B >)
function void | f ()
expr class A int;
)");
}

TEST(ParserDeclarations, ReadsNamespacesAndLinkage) {
    EXPECT_EQ(
        treeOf("namespace A = B; using namespace std; namespace A::B { using C::x; namespace { int y; } }"
               "extern \"C\" { int x; void f(); } extern \"C\" void g(); extern \"C\" int h = 1;"),
        R"(
namespace A::B
  namespace 
    data int | y | -
linkage extern "C"
  data int | x | -
  function void | f ()
function extern "C" void | g ()
data extern "C" int | h | = 1 ;
)");
}

TEST(ParserDeclarations, TakesStatementsAtTheTopLevel) {
    EXPECT_EQ(treeOf("LOOP { a(); } if (x) y(); asm(\"nop\"); __asm__ { x } return 3; ; } { int b; }"), R"(
expr LOOP
block
  expr a;
control
  part if
    statement
      expr y;
asm asm
  block
asm __asm__
  block
    text x
expr return 3;
block
  data int | b | -
)");
}

TEST(ParserDeclarations, KeepsCommentsAndDirectivesBetweenDeclarations) {
    EXPECT_EQ(treeOf("#include <a> // x\nint f(/* a */ int a,\n#ifdef X\nint b,\n#endif\nint c) /* d */ "
                     "const // e\n{ } /* f */"),
              R"(
directive #include <a>
comment // x
function int | f (int a; int b; int c) const
  block
comment /* f */
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
}

}  // namespace
