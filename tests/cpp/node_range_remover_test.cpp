#include "cpp/node_range_remover.h"

#include <gtest/gtest.h>

#include <list>
#include <map>
#include <string>
#include <string_view>

#include "cpp/lexer.h"
#include "cpp/parser.h"
#include "cpp/tree_dump.h"

namespace {

// Finds the comments of a tree by their letter: /*a*/.
class CommentFinder : public CppTest::TreeDump {
public:
    using TreeDump::visit;
    void visit(Cpp::CommentNode* node) override { comments[node->body()] = node; }

    std::map<std::string, Cpp::CommentNode*> comments;
};

// What is left of a source when the ranges between the named comments are removed: "ab" from /*a*/ up to
// /*b*/.
std::string without(std::string_view source, std::initializer_list<std::string_view> ranges) {
    Cpp::Lexer lexer(source);
    Cpp::RootNode root;
    std::list<Tessel::Diagnostic> diagnostics;
    Cpp::Parser().parse(lexer, root, diagnostics);
    EXPECT_TRUE(diagnostics.empty());
    CommentFinder finder;
    root.accept(finder);
    const auto named = [&](char name) -> const Cpp::SyntaxNode* {
        return finder.comments[std::string(1, name)];
    };
    Cpp::NodeRangeRemover::Ranges removed;
    for (const std::string_view range : ranges) removed.emplace_back(named(range[0]), named(range[1]));
    Cpp::NodeRangeRemover remover(std::move(removed));
    root.accept(remover);
    return CppTest::TreeDump::of(root);
}

TEST(NodeRangeRemover, RemovesSeveralRangesInOneWalk) {
    EXPECT_EQ(without("void f() { /*a*/ x(); /*b*/ y(); /*c*/ z(); /*d*/ } /*e*/ int g(); /*f*/",
                      {"ab", "cd", "ef"}),
              "function void | f ()\n"
              "  block\n"
              "    comment /*b*/\n"
              "    expr y;\n"
              "    comment /*d*/\n"
              "comment /*f*/\n");
}

// What holds the end of a range stays, without the parts in front of it.
TEST(NodeRangeRemover, EmptiesTheSlotsOfWhatHoldsTheEnd) {
    Cpp::Lexer lexer("/*a*/ class A { int x; /*b*/ int y; };");
    Cpp::RootNode root;
    std::list<Tessel::Diagnostic> diagnostics;
    Cpp::Parser().parse(lexer, root, diagnostics);
    auto& declaration = dynamic_cast<Cpp::ClassDeclNode&>(*root.children()[1]);
    Cpp::NodeRangeRemover remover(root.children()[0].get(), declaration.body()->children()[1].get());
    root.accept(remover);
    ASSERT_EQ(root.size(), 1U);
    EXPECT_EQ(declaration.head(), nullptr);
    EXPECT_EQ(CppTest::TreeDump::of(*declaration.body()), "comment /*b*/\ndata int | y | -\n");
}

// What holds only the beginning of a range goes, as its own mark lies inside.
TEST(NodeRangeRemover, RemovesWhatEndsInsideTheRange) {
    EXPECT_EQ(without("int w; namespace N { int x; /*a*/ int y; } void f() { } /*b*/ int z;", {"ab"}),
              "data int | w | -\n"
              "comment /*b*/\n"
              "data int | z | -\n");
    EXPECT_EQ(without("void f() { if (x) { y(); } else { z(); /*a*/ } w(); /*b*/ v(); }", {"ab"}),
              "function void | f ()\n"
              "  block\n"
              "    comment /*b*/\n"
              "    expr v;\n");
    EXPECT_EQ(without("A() : /*a*/ x(1), /*b*/ y(2) { }", {"ab"}),
              "constructor - | A ()\n"
              "  comment /*b*/\n"
              "  initializer y\n"
              "    argument 2\n"
              "  block\n");
}

}  // namespace
