#pragma once

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <sstream>
#include <string>
#include <string_view>

#include "cpp/comment_text.h"
#include "cpp/keyword_table.h"
#include "cpp/nodes.h"

namespace CppTest {

inline std::ostream& operator<<(std::ostream& out, Trn::Position position) {
    return out << position.line << ':' << position.column;
}

// Of the keywords that the tree keeps; empty for another kind.
inline std::string_view keywordSpelling(int kind) {
    for (const std::string_view word :
         {"if", "else", "for", "do", "while", "try", "catch", "switch", "case", "default"}) {
        if (Cpp::keywordKind(word) == kind) return word;
    }
    return {};
}

// Writes a tree as text: a line for each node, indented below the node that holds it, what is missing as "-".
//
//     namespace N
//       data unsigned int | f | : 3 ;
//
// Checks the positions on its way: where a node ends before it begins, stands in front of its elder sibling
// or outside its parent, its line ends in "MISPLACED".
class TreeDump : public Cpp::Emitter {
public:
    enum class Positions { Hidden, Shown };

    // Texts are written as they stand, or without their white space: then trees of the same tokens compare.
    enum class Texts { Whole, Squeezed };

    explicit TreeDump(Positions positions = Positions::Hidden, Texts texts = Texts::Whole)
        : positions_(positions), texts_(texts) {}

    static std::string of(Cpp::SyntaxNode& node, Positions positions = Positions::Hidden,
                          Texts texts = Texts::Whole) {
        TreeDump dump(positions, texts);
        node.accept(dump);
        return dump.out_.str();
    }

    using Emitter::visit;
    void visit(Cpp::RootNode* node) override { children(*node); }
    void visit(Cpp::TextNode* node) override { line(*node, {"text ", node->text()}); }
    void visit(Cpp::ExprNode* node) override {
        line(*node, {"expr ", node->text()});
        bodies(node->bodies());
    }
    void visit(Cpp::PreprocDirectiveNode* node) override {
        line(*node, {node->text().empty() ? "unused block" : "directive ", trimmed(node->text())});
    }
    void visit(Cpp::CommentNode* node) override {
        line(*node, {node->protectedRegion() ? "region" : "comment ", trimmed(node->text())});
    }
    void visit(Cpp::KeptNode* node) override { line(*node, {"kept ", node->text()}); }
    void visit(Cpp::AccessSpecNode* node) override {
        line(*node, {"access ", std::to_string(node->access())});
    }
    void visit(Cpp::LabelNode* node) override { line(*node, {"label ", text(node->name())}); }
    void visit(Cpp::CaseNode* node) override {
        line(*node, {keywordSpelling(node->keyword()->keyword()), " ", text(node->value())});
    }
    void visit(Cpp::AsmNode* node) override {
        line(*node, {"asm ", text(node->keyword())});
        parts(node->body());
    }
    void visit(Cpp::TemplateNode* node) override {
        line(*node, {"template ", parameters(node->parameters())});
    }
    void visit(Cpp::DataDeclNode* node) override {
        line(*node, {"data ", text(node->type()), " | ", text(node->name()), " | ", text(node->tail())});
        ordered(*node, {node->type(), node->name(), node->tail()});
        if (node->tail()) bodies(node->tail()->bodies());
    }
    void visit(Cpp::FunctionPtrDeclNode* node) override {
        line(*node, {"pointer ", text(node->returnType()), " | ", text(node->name()), " ",
                     parameters(node->parameters()), optional(node->qualifiers())});
        ordered(*node, {node->returnType(), node->name(), node->parameters(), node->qualifiers()});
    }
    void visit(Cpp::FunctionDeclNode* node) override { headed(*node, {"function ", head(node->head())}, node->head()); }
    void visit(Cpp::CtorDeclNode* node) override {
        line(*node, {"constructor ", head(node->head())});
        ordered(*node, {node->head(), node->initializers(), node->body()});
        parts(node->initializers(), node->body());
    }
    void visit(Cpp::InitializerListNode* node) override { children(*node); }
    void visit(Cpp::InitializerNode* node) override {
        line(*node, {"initializer ", text(node->member())});
        ordered(*node, {node->member(), node->arguments()});
        parts(node->arguments());
        bodies(node->bodies());
    }
    void visit(Cpp::NamespaceDeclNode* node) override {
        headed(*node, {"namespace ", node->head() ? node->head()->name() : "-"}, node->head());
    }
    void visit(Cpp::NamespaceBodyNode* node) override { children(*node); }
    void visit(Cpp::LinkageBlockNode* node) override {
        headed(*node, {"linkage ", text(node->linkage())}, node->linkage());
    }
    void visit(Cpp::LinkageBlockBodyNode* node) override { children(*node); }
    void visit(Cpp::EnumDeclNode* node) override { headed(*node, {node->head()->name()}, node->head()); }
    void visit(Cpp::EnumBodyNode* node) override { children(*node); }
    // The head may lie in a protected region.
    void visit(Cpp::ClassDeclNode* node) override {
        const Cpp::ClassNameNode* name = node->head() ? node->head()->name() : nullptr;
        line(*node, {name ? std::to_string(name->classKey()) : "class", " ", name ? name->name() : "-"});
        ordered(*node, {node->head(), node->body()});
        parts(node->head() ? node->head()->baseClauses() : nullptr, node->body());
    }
    void visit(Cpp::ClassBodyNode* node) override { children(*node); }
    void visit(Cpp::BaseClauseListNode* node) override { children(*node); }
    void visit(Cpp::BaseClauseNode* node) override {
        line(*node, {"base ", std::to_string(node->access()), node->isVirtual() ? " virtual " : " ", node->name()});
    }
    void visit(Cpp::BlockNode* node) override {
        line(*node, {Trn::isSet(node->open()) ? "block" : "statement"});
        indented([&] { children(*node); });
    }
    void visit(Cpp::CtrlStmtNode* node) override {
        line(*node, {"control"});
        indented([&] { children(*node); });
    }
    void visit(Cpp::CtrlSubStmtNode* node) override {
        const Cpp::CtrlSubStmtHeadNode& subHead = *node->head();
        line(*node, {"part ", subHead.keyword() ? keywordSpelling(subHead.keyword()->keyword()) : "-"});
        if (positions_ == Positions::Shown && subHead.condition()) {
            indented([&] { line(*subHead.condition(), {"condition"}); });
        }
        ordered(*node, {subHead.keyword(), subHead.condition(), node->body()});
        if (subHead.condition()) bodies(subHead.condition()->bodies());
        parts(node->body());
    }
    void visit(Cpp::SyntaxNode* node) override {
        if (auto* argument = dynamic_cast<Cpp::ArgNode*>(node)) {
            line(*node, {"argument ", argument->text()});
        } else {
            children(dynamic_cast<Cpp::InteriorNode&>(*node));
        }
    }

private:
    template <typename Node, typename Head>
    void headed(Node& node, std::initializer_list<std::string_view> words, Head* nodeHead) {
        line(node, words);
        ordered(node, {nodeHead, node.body()});
        parts(node.body());
    }

    static std::string trimmed(std::string_view text) {
        return std::string(Cpp::Detail::trimRight(Cpp::Detail::trimLeft(text)));
    }

    template <typename Node>
    static std::string text(const Node* node) {
        return node ? std::string(node->text()) : "-";
    }

    template <typename Node>
    static std::string optional(const Node* node) {
        return node ? ' ' + std::string(node->text()) : std::string();
    }

    std::string parameters(Cpp::ParameterListNode* list) {
        if (!list) return "-";
        std::string result = "(";
        Trn::Position last = list->start();
        for (const auto& child : list->children()) {
            if (result.size() > 1) result += "; ";
            result += dynamic_cast<Cpp::ParameterNode&>(*child).text();
            if (child->start() < last || child->end() > list->end()) result += " MISPLACED";
            last = child->end();
        }
        return result + ')';
    }

    std::string head(Cpp::FunctionHeadNode* node) {
        return text(node->returnType()) + " | " + text(node->name()) + ' ' + parameters(node->parameters()) +
               optional(node->qualifiers()) + optional(node->exceptionSpec()) + optional(node->tail()) +
               optional(node->pureSpec()) + optional(node->oldParameters());
    }

    void line(const Cpp::SyntaxNode& node, std::initializer_list<std::string_view> words) {
        indent();
        for (const std::string_view word : words) write(word);
        if (positions_ == Positions::Shown) out_ << " @" << node.start() << '-' << node.end();
        if (!Trn::isSet(node.start()) || node.end() < node.start()) out_ << " MISPLACED";
        out_ << '\n';
    }

    void write(std::string_view word) {
        if (texts_ == Texts::Whole) {
            out_ << word;
            return;
        }
        std::ranges::copy_if(word, std::ostreambuf_iterator(out_), [](char c) {
            return !Cpp::Detail::kWhitespace.holds(c);
        });
    }

    void ordered(const Cpp::SyntaxNode& parent, std::initializer_list<const Cpp::SyntaxNode*> nodes) {
        Trn::Position last = parent.start();
        for (const Cpp::SyntaxNode* node : nodes) {
            if (!node) continue;
            if (node->start() < last || node->end() > parent.end()) misplaced(*node);
            last = node->end();
        }
    }

    void bodies(const Cpp::ExprBodies& bodies) {
        for (const auto& body : bodies.blocks()) parts(body.get());
    }

    void misplaced(const Cpp::SyntaxNode& node) {
        indent();
        out_ << "MISPLACED";
        if (texts_ == Texts::Whole) out_ << " @" << node.start() << '-' << node.end();
        out_ << '\n';
    }

    void children(Cpp::InteriorNode& list) {
        Trn::Position last = list.start();
        for (const auto& child : list.children()) {
            if (child->start() < last || child->end() > list.end()) misplaced(*child);
            last = child->end();
            child->accept(*this);
        }
    }

    template <typename... Parts>
    void parts(Parts*... nodes) {
        indented([&] {
            const auto visitPart = [this](auto* part) {
                if (part) part->accept(*this);
            };
            (visitPart(nodes), ...);
        });
    }

    // Of thousands of levels, a number tells as much as blanks.
    void indent() {
        constexpr std::size_t deepest = 100;
        if (depth_ > deepest) out_ << depth_;
        out_ << std::string(std::min(depth_, deepest) * 2, ' ');
    }

    template <typename Action>
    void indented(Action action) {
        ++depth_;
        action();
        --depth_;
    }

    Positions positions_;
    Texts texts_;
    std::size_t depth_ = 0;
    std::ostringstream out_;
};

}  // namespace CppTest
