#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <list>
#include <string>
#include <utility>
#include <vector>

#include "cpp/lexer.h"
#include "cpp/nodes.h"
#include "cpp/parser.h"
#include "engine/scheme_values.h"
#include "layout/passes.h"
#include "scheme/property_keys.h"
#include "textstream/text_document.h"

namespace {

using namespace Tessel;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

// The declared names and their offsets, in the order of the source.
using Offsets = std::vector<std::pair<std::string, int>>;

class Measured {
public:
    Measured(std::string source, const PropertySet& scheme) : source_(std::move(source)) {
        Cpp::Lexer lexer(source_.text());
        std::list<Diagnostic> diagnostics;
        Cpp::Parser().parse(lexer, root_, diagnostics);
        EXPECT_THAT(diagnostics, IsEmpty());
        PropertySet completed = scheme;
        applySchemeDefaults(completed);
        columns_ = Passes().measure(completed, source_, root_);
    }

    Offsets dataNames() const { return listed(columns_.dataNames); }
    Offsets initializers() const { return listed(columns_.initializers); }

private:
    struct NameFinder : Cpp::Emitter {
        using Emitter::visit;
        void visit(Cpp::DataDeclNode* data) override { name = data->name() ? data->name()->text() : ""; }
        std::string name;
    };

    static Offsets listed(const ColumnMap& columns) {
        std::vector<std::pair<Trn::Position, std::pair<std::string, int>>> sorted;
        for (const auto& [node, offset] : columns) {
            NameFinder finder;
            const_cast<Cpp::SyntaxNode*>(node)->accept(finder);
            sorted.push_back({node->start(), {finder.name, offset}});
        }
        std::sort(sorted.begin(), sorted.end());
        Offsets offsets;
        for (auto& entry : sorted) offsets.push_back(std::move(entry.second));
        return offsets;
    }

    Zelmor::TextDocument source_;
    Cpp::RootNode root_;
    DeclarationColumns columns_;
};

class Scheme {
public:
    explicit Scheme(std::initializer_list<std::string_view> switches) {
        for (const std::string_view key : switches) scheme_.setBool(key, true);
    }
    Scheme& with(std::string_view key, int value) {
        scheme_.setInt(key, value);
        return *this;
    }
    Scheme& with(std::string_view key, std::string_view value) {
        scheme_.setString(key, value);
        return *this;
    }
    operator const PropertySet&() const { return scheme_; }

private:
    PropertySet scheme_;
};

Scheme alignedNames() {
    return Scheme{Keys::ALIGN_DD_NAMES_LEFT};
}
Scheme alignedInitializers() {
    return Scheme{Keys::ALIGN_DD_INITIALIZERS};
}

// The offset of the only or the first data name.
int nameOffset(const std::string& source, const PropertySet& scheme) {
    const Offsets offsets = Measured(source, scheme).dataNames();
    return offsets.empty() ? -1 : offsets.front().second;
}

int initializerOffset(const std::string& source, const PropertySet& scheme) {
    const Offsets offsets = Measured(source, scheme).initializers();
    return offsets.empty() ? -1 : offsets.front().second;
}

TEST(NameOffsets, StatementsAndBodiesEndRunsButCommentsDoNot) {
    EXPECT_THAT(Measured("int a;\n\n// comment\n#define X\nlong b;\n", alignedNames()).dataNames(),
                ElementsAre(Pair("a", 5), Pair("b", 5)));
    for (const char* between : {"void f() { }", "struct S { };", "enum E { One };", "namespace n { }",
                                "extern \"C\" { }", "void f();"}) {
        EXPECT_THAT(Measured(std::string("int a;\n") + between + "\nlong b;\n", alignedNames()).dataNames(),
                    ElementsAre(Pair("a", 4), Pair("b", 5)))
            << between;
    }
    const char* const block = "void f() {\nint a;\ng();\nlong b;\nif (a) {\nlong long c;\n}\nint d;\n}\n";
    EXPECT_THAT(Measured(block, alignedNames()).dataNames(),
                ElementsAre(Pair("a", 4), Pair("b", 5), Pair("c", 10), Pair("d", 4)));
}

// A class body leaves its run open: what follows directly still belongs to it.
TEST(NameOffsets, TheRunOfAClassGoesOnBehindItsBody) {
    const Measured measured("struct S {\nlong f();\nint a;\n};\nint b;\nvoid g() { }\nint c;\n",
                            Scheme{Keys::ALIGN_CLASS_MEMBER_NAMES_LEFT, Keys::ALIGN_DD_NAMES_LEFT});
    EXPECT_THAT(measured.dataNames(), ElementsAre(Pair("a", 5), Pair("b", 5), Pair("c", 4)));
}

TEST(NameOffsets, MarksCountByTheirAnchor) {
    const std::string marked = "int a;\nchar  **p;\n";
    const auto offset = [&](int anchor, const char* gap) {
        Scheme scheme = alignedNames().with(Keys::ASTERISK_ANCHOR, anchor);
        if (gap) scheme.with(Keys::WS_BETWEEN_ASTERISK_ANCHOR, gap);
        return nameOffset(marked, scheme);
    };
    EXPECT_EQ(offset(-1, nullptr), 8);
    EXPECT_EQ(offset(-1, " "), 8);
    EXPECT_EQ(offset(0, nullptr), 6);
    EXPECT_EQ(offset(0, " "), 8);
    EXPECT_EQ(offset(1, nullptr), 5);
    EXPECT_EQ(offset(1, " "), 5);
    EXPECT_EQ(nameOffset("int& r;\n", alignedNames().with(Keys::AMPERSAND_ANCHOR, 1)), 4);
    EXPECT_EQ(nameOffset("char *&r;\n", alignedNames().with(Keys::AMPERSAND_ANCHOR, 1)), 5);
    EXPECT_EQ(nameOffset("char *const p;\n", alignedNames().with(Keys::ASTERISK_ANCHOR, 1)), 12);
}

TEST(NameOffsets, HangingMarksLeaveRoomInFrontOfTheName) {
    const auto offset = [](const std::string& source, int tabSize) {
        Scheme scheme{Keys::ALIGN_DD_NAMES_LEFT, Keys::HANGING_ASTERISK};
        return nameOffset(source, scheme.with(Keys::ASTERISK_ANCHOR, 1).with(Keys::TAB_SIZE, tabSize));
    };
    EXPECT_EQ(offset("char *p;\n", 1), 6);
    EXPECT_EQ(offset("char **p;\n", 1), 7);
    EXPECT_EQ(offset("char *p;\n", 4), 8);
    EXPECT_EQ(offset("Builder *p;\n", 4), 12);
    EXPECT_EQ(offset("Planet **p;\n", 4), 12);
}

TEST(InitializerOffsets, CountFromAlignedNames) {
    const Scheme scheme{Keys::ALIGN_DD_INITIALIZERS, Keys::ALIGN_DD_NAMES_LEFT};
    const char* const source = "int a = 1;\nunsigned long long bbb = 2;\nchar *p = 0;\n";
    EXPECT_EQ(initializerOffset(source, scheme), 3);

    Scheme anchored = scheme;
    anchored.with(Keys::ASTERISK_ANCHOR, 1);
    EXPECT_EQ(initializerOffset("char **pp = 0;\n", anchored), 4);

    const Scheme members{Keys::ALIGN_DD_INITIALIZERS, Keys::ALIGN_CLASS_MEMBER_NAMES_LEFT};
    EXPECT_THAT(Measured("struct S {\nstatic const int a = 1;\n};\nlong b = 2;\n", members).initializers(),
                ElementsAre(Pair("a", 1), Pair("b", 6)));
}

// The gaps that will be written count, not those of the source.
TEST(InitializerOffsets, MeasureWhatWillBeWritten) {
    EXPECT_EQ(initializerOffset("int    a = 1;\n", alignedInitializers()), 8);
    EXPECT_EQ(
        initializerOffset("int    a = 1;\n", alignedInitializers().with(Keys::WS_AFTER_DD_TYPE_ID, " ")), 5);
    EXPECT_EQ(initializerOffset("int\na = 1;\n", alignedInitializers()), 1);
    EXPECT_EQ(initializerOffset("int\na = 1;\n", alignedInitializers().with(Keys::WS_AFTER_DD_TYPE_ID, "\n")),
              5);
    EXPECT_EQ(initializerOffset(
                  "int a[ 4 ] = {1};\n",
                  alignedInitializers().with(Keys::WS_AFTER_LBRACKET, "").with(Keys::WS_BEFORE_RBRACKET, "")),
              8);
    EXPECT_EQ(initializerOffset(
                  "map<int,T>::x  *p = 0;\n",
                  alignedInitializers().with(Keys::WS_BETWEEN_TP_PARAMS, " ").with(Keys::ASTERISK_ANCHOR, 0)),
              17);
    for (const char* source : {"char*  p = 0;\n", "char *p = 0;\n", "char  *  p = 0;\n"}) {
        for (const int anchor : {0, 1}) {
            Scheme scheme = alignedInitializers().with(Keys::ASTERISK_ANCHOR, anchor);
            EXPECT_EQ(initializerOffset(source, scheme.with(Keys::WS_BETWEEN_ASTERISK_ANCHOR, " ")), 7)
                << source;
        }
    }
    for (const char* source : {"char* p = 0;\n", "char *p = 0;\n"}) {
        EXPECT_EQ(initializerOffset(source, alignedInitializers()), 7);
    }
}

TEST(Offsets, OneLongRunTakesLinearTime) {
    const auto secondsFor = [](int count) {
        std::string source;
        for (int i = 0; i < count; ++i) source += "unsigned long name" + std::to_string(i) + " = 1;\n";
        const auto start = std::chrono::steady_clock::now();
        const Measured measured(source, Scheme{Keys::ALIGN_DD_NAMES_LEFT, Keys::ALIGN_DD_INITIALIZERS});
        EXPECT_EQ(measured.dataNames().size(), static_cast<std::size_t>(count));
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    };
    EXPECT_LT(secondsFor(50000), 30 * secondsFor(5000) + 1);
}

}  // namespace
