// Long texts are laid out in stretches, as they would be as a whole.
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "engine/layout_observer.h"
#include "engine/text_stretches.h"
#include "support/format_text.h"

namespace {

// Who is told of a layout is told of the whole text.
class Listener : public Tessel::LayoutObserver {
public:
    void begin(const Zelmor::TextDocument&) override {}
    void decided(const Tessel::DecidedGap&) override {}
    void measured(const Tessel::Measured&) override {}
};

constexpr std::size_t kLongText = 150'000;

std::string repeated(const std::string& text) {
    std::string result;
    while (result.size() < kLongText) result += text;
    return result;
}

const std::string kFunction =
    "// Has a {\n"
    "static int f(int a) // of what\n"
    "{\n"
    "  const char *s = \"}\"; int c = '{', n = 1'000;\n"
    "#if A\n"
    "  if (a > 1) {\n"
    "#else\n"
    "  if (a > 0 && a_long_name_of_something(a, s, c) && another_long_name_of_something(a, n) && a < n) {\n"
    "#endif\n"
    "    return   a; } return R\"(}\n}\n\n)\"[0]; /* {\n}\n\n*/\n"
    "}\n"
    "\n"
    "int  g( void );\n"
    "unsigned  long h(int x);\n";

const std::string kTypes =
    "typedef struct\n{\n  int  a; unsigned  long b;\n} pair;\n\n"
    "enum kinds {\n  one, two\n};\n\n"
    "long long last;\n"
    "struct row first = {\n  1\n};\n\n"
    "int  of( struct row* );\n";

Tessel::StretchCutter cutterOf(const std::string& text) { return {text, {}}; }

struct LongText {
    const char* what;
    std::string text;
    bool isCut;
};

std::vector<LongText> longTexts() {
    const std::string functions = repeated(kFunction);
    return {
        {"functions", functions, true},
        {"in namespaces, a group and a linkage block",
         "#ifndef A_H\n#define A_H\nnamespace a { namespace b\n{\n#ifdef C\nextern \"C\" {\n#endif\n" + functions +
             "#ifdef C\n}\n#endif\n}}\n#endif\n",
         true},
        {"namespaces, one behind the other", repeated("namespace a {\n" + kFunction + "}\n\n"), true},
        {"types", repeated(kTypes), true},
        {"types with comments in their heads", repeated("struct A // one\n{\n  int  a;\n};\n\n"), false},
        {"in a class", "class A {\n" + functions + "};\n", false},
        {"in another branch", "#if B\nint b;\n#else\n" + functions + "#endif\n", false},
        {"below a condition with a comment of two lines",
         "#ifdef C /* one,\n  two */\n" + functions + "#endif\n", true},
        {"behind a scope that one of two branches opens",
         "#ifdef A\nnamespace a {\n#else\nextern \"C\" {\n#endif\n" + functions + "}\n", false},
        {"between conditions of which one decides for the other",
         "void a() {\n#ifdef B\nif (a) {\n#else\nif (b) {\n#endif\n}\n}\n\n" + functions +
             "void b() {\n#ifndef B\nif  (a) {\n#else\nif  (b) {\n#endif\n}\n}\n",
         true},
        {"in a region that is kept", "// clang-format off\n" + functions, true},
        {"classes whose objects stand below an empty line", repeated("struct A\n{\n  int a;\n}\n\n a;\n"), true},
        {"brackets that do not match", functions + "int a[3;\n", true},
    };
}

TEST(Stretches, LongTextsAreLaidOutAsTheyAreAsAWhole) {
    for (const char* name : {"google", "gnu", "aligned", "allman-100"}) {
        const Tessel::PropertySet scheme = TestSupport::shippedScheme(name);
        for (const LongText& text : longTexts()) {
            SCOPED_TRACE(std::string(text.what) + ", " + name);
            Listener listener;
            const TestSupport::Formatted whole = TestSupport::formatText(scheme, text.text, &listener);
            const TestSupport::Formatted parts = TestSupport::formatText(scheme, text.text);
            EXPECT_TRUE(parts.text == whole.text);
            EXPECT_EQ(parts.refusal, whole.refusal);
            EXPECT_EQ(!cutterOf(text.text).next()->isLast, text.isCut);
        }
    }
}

TEST(Stretches, ShortTextsAreOne) {
    const std::string text = kFunction + '\n' + kFunction;
    Tessel::StretchCutter cutter = cutterOf(text);
    const std::optional<Tessel::Stretch> stretch = cutter.next();
    ASSERT_TRUE(stretch && stretch->isLast && !cutter.next());
    EXPECT_EQ(stretch->ahead + stretch->behind, "");
}

TEST(LongLists, HaveTheRowsOfShortOnes) {
    const std::string row = "{17, rows<>(first_of_them)(second_of_them,90)(third,0)(fourth,1)(fifth,0)(sixth)},\n";
    const std::string laidOut =
        "    {17, rows<>(first_of_them)(second_of_them, 90)(third, 0)(fourth, 1)(\n"
        "             fifth, 0)(sixth)},\n";
    const Tessel::PropertySet scheme = TestSupport::shippedScheme("google");
    for (const int count : {5, 400}) {
        std::string list = "Row rows[] = {\n";
        std::string expected = list;
        for (int number = 0; number < count; ++number) {
            list += row;
            expected += laidOut;
        }
        EXPECT_TRUE(TestSupport::formatText(scheme, list + "};\n").text == expected + "};\n") << count;
    }
}

}  // namespace
