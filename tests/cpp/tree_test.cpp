#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>

#include "cpp/nodes.h"
#include "cpp/tree_dump.h"

namespace {

using namespace Cpp;
using Trn::Position;

std::unique_ptr<ExprNode> expr(const char* text, Position start, Position end) {
    return std::make_unique<ExprNode>(LeafText(text), start, end);
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

}  // namespace
