#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>
#include <utility>

#include "cpp/nodes.h"
#include "cpp/token_kind.h"
#include "cpp/tree_dump.h"

namespace {

using namespace Cpp;
using Trn::Position;

TEST(Leaves, TellCommentsApart) {
    EXPECT_TRUE(CommentNode("// x\n").isLineComment());
    EXPECT_FALSE(CommentNode("// x\n").isBlockComment());
    EXPECT_TRUE(CommentNode("/* x */").isBlockComment());
    CommentNode region("/* x */");
    region.setProtectedRegion(true);
    EXPECT_FALSE(region.isBlockComment());
    EXPECT_FALSE(CommentNode("").isLineComment());
}

TEST(Leaves, GiveACommentsBody) {
    EXPECT_EQ(CommentNode("// x\n").body(), " x\n");
    EXPECT_EQ(CommentNode("/* y */").body(), " y ");
    EXPECT_EQ(CommentNode("/* z").body(), "/* z");
    EXPECT_EQ(CommentNode(" \t/**/").body(), "");
    EXPECT_EQ(CommentNode("/*/").body(), "/*/");
    EXPECT_EQ(CommentNode("/").body(), "");
}

TEST(Leaves, RejectWhatTheyCannotHold) {
    EXPECT_THROW(IdNode(""), InvalidId);
    for (const int kind : {int{Identifier}, int{KeywordContinue}, int{KeywordVoid}, int{ArrowAsterisk}}) {
        EXPECT_THROW(KeywordNode{kind}, InvalidKeyword);
    }
    KeywordNode keyword(KeywordDefault);
    EXPECT_THROW(keyword.setKeyword(KeywordReturn), InvalidKeyword);
    EXPECT_EQ(keyword.keyword(), KeywordDefault);
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

TEST(Lists, HoldANodeOnce) {
    RootNode root;
    auto comment = std::make_unique<CommentNode>("// x\n");
    CommentNode* const same = comment.get();
    root.add(std::move(comment));
    EXPECT_THROW(root.add(std::unique_ptr<CommentNode>(same)), Trn::AlreadyExistsException);
    EXPECT_EQ(root.size(), 1U);
    root.add(nullptr);
    EXPECT_EQ(root.size(), 1U);

    RootNode other;
    other.swap(root);
    EXPECT_THROW(other.add(std::unique_ptr<CommentNode>(same)), Trn::AlreadyExistsException);
    EXPECT_EQ(other.size(), 1U);
}

TEST(Lists, EraseARange) {
    RootNode root;
    for (std::uint32_t column = 1; column <= 4; ++column) root.add(expr("a", {1, column}, {1, column}));
    const auto behind = root.erase(root.childBegin() + 1, root.childBegin() + 3);
    EXPECT_EQ((*behind)->start(), (Position{1, 4}));
    EXPECT_EQ(root.size(), 2U);
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

class NodeCollector : public Emitter {
public:
    using Emitter::visit;
    void visit(RootNode* node) override { list(node); }
    void visit(BlockNode* node) override { list(node); }
    void visit(ExprNode* node) override { seen.insert(node); }
    void visit(FunctionDeclNode* node) override {
        seen.insert(node);
        seen.insert(node->head());
        node->body()->accept(*this);
    }
    void visit(SyntaxNode* node) override { others.insert(node); }

    std::set<const SyntaxNode*> seen;
    std::set<const SyntaxNode*> others;

private:
    void list(InteriorNode* node) {
        seen.insert(node);
        for (const auto& child : node->children()) child->accept(*this);
    }
};

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
    NodeCollector nodes;
    root->accept(nodes);
    NodeCollector copies;
    copy->accept(copies);
    EXPECT_EQ(nodes.seen.size(), 5U);
    EXPECT_EQ(copies.seen.size(), 5U);
    for (const SyntaxNode* node : copies.seen) EXPECT_FALSE(nodes.seen.contains(node));
    root.reset();
    EXPECT_EQ(CppTest::TreeDump::of(*copy, CppTest::TreeDump::Positions::Shown), dump);
}

TEST(Emitter, ReachesArgumentsByItsLastVisit) {
    ArgListNode list;
    ArgNode argument("a");
    NodeCollector collector;
    list.accept(collector);
    argument.accept(collector);
    EXPECT_EQ(collector.others.size(), 2U);
    Emitter nothing;
    list.accept(nothing);
}

}  // namespace
