// Texts that are deep, long or many, through the whole job: each is formatted, or refused with a message that
// says where. One whose time grew with the square of its length would run into ctest's timeout.
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <string>
#include <string_view>

#include "support/format_text.h"

namespace TestSupport {

namespace {

constexpr int kDeep = 10'000;
// Time is for the release to show: under sanitizers, a share of the length does.
constexpr int kShare = VANTREL_SHARE_OF_LENGTH;
constexpr int kVeryDeep = 200'000 / kShare;
constexpr int kMany = 100'000 / kShare;

constexpr const char* kTooDeep = "The source is nested too deeply here.";

// Of the calls that the deepest accepted text takes, sanitizers make the stack's usual size too little; the
// program sees to that itself.
class DeepStack : public testing::Environment {
public:
    void SetUp() override {
        rlimit limit{};
        ASSERT_EQ(::getrlimit(RLIMIT_STACK, &limit), 0);
        limit.rlim_cur = limit.rlim_max;
        ASSERT_EQ(::setrlimit(RLIMIT_STACK, &limit), 0);
    }
};

[[maybe_unused]] const testing::Environment* const deepStack = testing::AddGlobalTestEnvironment(new DeepStack);

std::string repeated(std::string_view text, int count) {
    std::string result;
    result.reserve(text.size() * static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) result += text;
    return result;
}

// Formats the text, and checks that the tokens stay as they are. Says why it was refused.
std::string refusalOf(const std::string& scheme, const std::string& text) {
    const Formatted result = formatText(shippedScheme(scheme), text);
    if (result.accepted()) {
        EXPECT_EQ(brokenPromise({}, text, result, false), "");
    }
    return result.refusal;
}

struct Nest {
    const char* name;
    std::string_view before;
    std::string_view open;
    std::string_view close;
    std::string_view after;
};

std::string textOf(const Nest& nest, int depth) {
    std::string text(nest.before);
    text += repeated(nest.open, depth);
    text += repeated(nest.close, depth);
    return text += nest.after;
}

std::string nameOf(const testing::TestParamInfo<Nest>& tested) {
    return tested.param.name;
}

// ---- what calls nest for

class NestsOfConstructs : public testing::TestWithParam<Nest> {};

TEST_P(NestsOfConstructs, AreFormattedOrRefusedAtAPlace) {
    for (const char* scheme : {"aligned", "google"}) {
        EXPECT_EQ(refusalOf(scheme, textOf(GetParam(), 900)), "");
        for (const int depth : {kDeep, kVeryDeep}) {
            const std::string refusal = refusalOf(scheme, textOf(GetParam(), depth));
            EXPECT_TRUE(refusal.starts_with("(1, ")) << refusal;
            EXPECT_NE(refusal.find(kTooDeep), std::string::npos) << refusal;
        }
    }
}

constexpr Nest kConstructs[] = {
    {"blocks", "void f(){", "{", "}", "}"},
    {"controls", "void f(){", "if(a){", "}", "}"},
    {"bodies", "void f(){", "while(a)", "", ";}"},
    {"elses", "void f(){", "if(a);else{", "}", "}"},
    {"tries", "void f(){", "try{", "}catch(...){}", "}"},
    {"classes", "", "class A{", "};", ""},
    {"namespaces", "", "namespace a{", "}", ""},
    {"linkages", "", "extern \"C\"{", "}", ""},
    {"lambdas", "void f(){x=", "[]{", "}", ";}"},
};

INSTANTIATE_TEST_SUITE_P(, NestsOfConstructs, testing::ValuesIn(kConstructs), nameOf);

// ---- what may nest to any depth

class NestsOfText : public testing::TestWithParam<Nest> {};

TEST_P(NestsOfText, AreFormatted) {
    for (const char* scheme : {"aligned", "google"}) {
        for (const int depth : {kDeep, kVeryDeep})
            EXPECT_EQ(refusalOf(scheme, textOf(GetParam(), depth)), "");
    }
}

constexpr Nest kTexts[] = {
    {"parentheses", "void f(){x=", "(", ")", ";}"},
    {"brackets", "void f(){x=a", "[", "]", ";}"},
    {"braces", "int a[]=", "{", "}", ";"},
    {"calls", "void f(){", "g(", ")", ";}"},
    {"templates", "A", "<B", ">", " c;"},
    {"arguments", "void f(){g<", "a<", " >", " >();}"},
    {"ternaries", "void f(){x=", "a?b:", "", "c;}"},
    {"unaries", "void f(){x=", "- ", "", "c;}"},
    {"marks", "int ", "*", "", "a;"},
    {"bases", "class A:B", ",public C", "", "{};"},
    {"unused", "", "#if 0\n", "#endif\n", ""},
    {"conditions", "", "#ifdef A\n", "#endif\n", ""},
    {"markers", "", "// VT-FORMAT-OFF\n", "// VT-FORMAT-ON\n", ""},
    {"shifts", "void f(){cout", "<<a", "", ";}"},
};

INSTANTIATE_TEST_SUITE_P(, NestsOfText, testing::ValuesIn(kTexts), nameOf);

// ---- chains and lengths

TEST(Limits, AnElseIfChain) {
    for (const char* scheme : {"aligned", "google"}) {
        EXPECT_EQ(refusalOf(scheme, "void f(){" + repeated("if(a){b();}else ", 2000) + ";}"), "");
        const std::string refusal = refusalOf(scheme, "void f(){" + repeated("if(a)b();else ", kVeryDeep) + ";}");
        EXPECT_NE(refusal.find(kTooDeep), std::string::npos) << refusal;
    }
}

TEST(Limits, OneTokenOfMegabytes) {
    constexpr int length = 10'000'000 / kShare;
    const std::string blanks(length, ' ');
    const std::string name(length, 'a');
    for (const std::string& text : {name + ';', "int " + name + ';', "// " + name, "/*" + blanks + "*/",
                                    blanks, "char* a = \"" + name + "\";", "#define A " + name}) {
        EXPECT_EQ(refusalOf("google", text), "") << text.substr(0, 20);
    }
}

TEST(Limits, OneLineOfManyThings) {
    for (const std::string& text :
         {repeated("int a;", kMany), "void f(){" + repeated("x=a+b;", kMany) + '}',
          "int a[]={" + repeated("1,", kMany) + "0};", "enum{" + repeated("a,", kMany) + "b};",
          "void f(){g(" + repeated("a,", kMany) + "b);}", "void f(" + repeated("int a,", kMany) + "int b);",
          "void f(){x=" + repeated("a+", kMany) + "b;}", "void f(){" + repeated(". a ", kMany) + "}",
          "void f(){A " + repeated("B(c) ", kMany) + ";}", repeated("/**/", kMany)}) {
        for (const char* scheme : {"aligned", "google"})
            EXPECT_EQ(refusalOf(scheme, text), "") << text.substr(0, 20);
    }
}

TEST(Limits, ManyLines) {
    for (const char* line :
         {"int a;\n", "int a=1;// c\n", "void f();\n", "class A{int b;};\n", "#define A\n", "A\n", "A(b)\n", "a() const ",
          "\n", ";\n"}) {
        for (const char* scheme : {"aligned", "google"})
            EXPECT_EQ(refusalOf(scheme, repeated(line, kMany)), "") << line;
    }
    EXPECT_EQ(refusalOf("aligned", "void f(){switch(a){" + repeated("case 1: b();\n", kMany) + "}}"), "");
    // No item, up to the end of the class, and so for each of its lines.
    EXPECT_EQ(formatText(shippedScheme("llvm"), "class A{" + repeated("if a.b\n", kMany) + "};").refusal, "");
}

// What does not end has messages, and not one for every place that it might have ended at.
TEST(Limits, TextsThatDoNotEnd) {
    for (const char* piece : {"(", "[", "{", "<", "a<", "\"", "'", "R\"(", "/*", "class A{", "if(", "case a",
                              "#if 0\n", "template<", "= {", "::", "\\\n"}) {
        const std::string refusal = refusalOf("google", "void f(){" + repeated(piece, kMany));
        EXPECT_LT(refusal.size(), 1'000'000u) << piece;
    }
}

}  // namespace

}  // namespace TestSupport
