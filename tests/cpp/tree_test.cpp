#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>

#include "cpp/nodes.h"
#include "cpp/tree_dump.h"

namespace {

using namespace Cpp;
using Trn::Position;

TEST(Leaves, GiveACommentsBody) {
    EXPECT_EQ(CommentNode("// x\n").body(), " x\n");
    EXPECT_EQ(CommentNode("/* y */").body(), " y ");
    EXPECT_EQ(CommentNode("/* z").body(), "/* z");
    EXPECT_EQ(CommentNode(" \t/**/").body(), "");
    EXPECT_EQ(CommentNode("/*/").body(), "/*/");
    EXPECT_EQ(CommentNode("/").body(), "");
}

std::unique_ptr<ExprNode> expr(const char* text, Position start, Position end) {
    return std::make_unique<ExprNode>(text, start, end);
}

TEST(Lists, TakeTheirExtentFromBracketsOrChildren) {
    RootNode root;
    EXPECT_EQ(root.start(), Position{});
    root.add(expr("a", {1, 1}, {1, 2}));
    root.add(expr("b", {2, 1}, {2, 2}));
    EXPECT_EQ(root.start(), (Position{1, 1}));
    EXPECT_EQ(root.end(), (Position{2, 2}));
    root.setEnd({3, 3});
    EXPECT_EQ((*root.childBegin())->end(), (Position{1, 2}));
    EXPECT_EQ(root.children().back()->end(), (Position{3, 3}));

    ClassBodyNode body;
    body.setStart({3, 5});
    body.setEnd({9, 1});
    body.add(expr("a", {4, 1}, {4, 2}));
    EXPECT_EQ(body.start(), (Position{3, 5}));
    EXPECT_EQ(body.end(), (Position{9, 1}));

    BlockNode block;
    EXPECT_EQ(block.end(), Position{});
    block.add(expr("a", {4, 1}, {4, 2}));
    EXPECT_EQ(block.start(), (Position{4, 1}));
    EXPECT_EQ(block.end(), (Position{4, 2}));
}

TEST(Composites, TakeTheirExtentFromThePartsTheyHave) {
    ClassDeclNode declaration;
    EXPECT_EQ(declaration.start(), Position{});
    auto head = std::make_unique<ClassHeadNode>();
    head->setName(std::make_unique<ClassNameNode>(0, "class A", Position{1, 1}, Position{1, 7}));
    declaration.setHead(std::move(head));
    EXPECT_EQ(declaration.end(), (Position{1, 7}));
    auto body = std::make_unique<ClassBodyNode>();
    body->setStart({1, 9});
    body->setEnd({1, 10});
    declaration.setBody(std::move(body));
    EXPECT_EQ(declaration.start(), (Position{1, 1}));
    EXPECT_EQ(declaration.end(), (Position{1, 10}));
    declaration.setEnd({1, 11});
    EXPECT_EQ(declaration.end(), (Position{1, 11}));
    declaration.setHead(nullptr);
    EXPECT_EQ(declaration.start(), (Position{1, 9}));

    CaseNode label;
    label.setEnd({2, 8});
    EXPECT_EQ(label.start(), (Position{2, 8}));

    CtorDeclNode constructor;
    auto initializers = std::make_unique<InitializerListNode>();
    initializers->add(expr("a", {1, 5}, {1, 6}));
    constructor.setInitializers(std::move(initializers));
    EXPECT_EQ(constructor.start(), (Position{1, 5}));
    EXPECT_EQ(constructor.end(), (Position{1, 6}));
}

TEST(Tree, IsCopiedWhole) {
    auto root = std::make_unique<RootNode>();
    auto head = std::make_unique<FunctionHeadNode>();
    head->setName(std::make_unique<IdNode>("f", Position{1, 5}, Position{1, 5}));
    head->setEnd({1, 9});
    auto body = std::make_unique<BlockNode>();
    body->setStart({1, 9});
    body->add(expr("a ;", {1, 11}, {1, 12}));
    body->setEnd({1, 14});
    root->add(std::make_unique<FunctionDeclNode>(std::move(head), std::move(body)));

    const std::string dump = CppTest::TreeDump::of(*root, CppTest::TreeDump::Positions::Shown);
    const std::unique_ptr<SyntaxNode> copy = root->clone();
    root.reset();
    EXPECT_EQ(CppTest::TreeDump::of(*copy, CppTest::TreeDump::Positions::Shown), dump);
}

}  // namespace
