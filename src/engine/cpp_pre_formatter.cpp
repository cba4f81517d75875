#include "engine/cpp_pre_formatter.h"

#include <algorithm>
#include <utility>

#include "cpp/comment_text.h"
#include "cpp/nodes.h"

namespace Tessel {

void CppPreFormatter::visit(Cpp::RootNode* node) {
    opening_ = nullptr;
    pendingEndMarker_ = {};
    closedRegions_.clear();
    if (markers_.empty()) return;
    visitChildren(node);
    if (closedRegions_.empty()) return;
    Cpp::NodeRangeRemover remover(std::exchange(closedRegions_, {}));
    node->accept(remover);
}

void CppPreFormatter::visitChildren(Cpp::InteriorNode* node) {
    const Cpp::CommentNode* openingBefore = opening_;
    for (const auto& child : node->children()) child->accept(*this);
    includeStart(*node, openingBefore);
}

template <typename Node, typename... Parts>
void CppPreFormatter::visitParts(Node* node, Parts*... parts) {
    const Cpp::CommentNode* openingBefore = opening_;
    const auto visitPart = [this](auto* part) {
        if (part) part->accept(*this);
    };
    (visitPart(parts), ...);
    includeStart(*node, openingBefore);
}

// Called when a construct has been left. A region that was opened inside it takes all of it out of the tree,
// so that the region's text must cover it.
void CppPreFormatter::includeStart(const Cpp::SyntaxNode& node, const Cpp::CommentNode* openingBefore) {
    if (opening_ && opening_ != openingBefore) regionStart_ = std::min(regionStart_, node.start());
}

void CppPreFormatter::visit(Cpp::NamespaceBodyNode* node) {
    visitChildren(node);
}
void CppPreFormatter::visit(Cpp::ClassBodyNode* node) {
    visitChildren(node);
}
void CppPreFormatter::visit(Cpp::BlockNode* node) {
    visitChildren(node);
}
void CppPreFormatter::visit(Cpp::CtrlStmtNode* node) {
    visitChildren(node);
}
void CppPreFormatter::visit(Cpp::ParameterListNode* node) {
    visitChildren(node);
}
void CppPreFormatter::visit(Cpp::InitializerListNode* node) {
    visitChildren(node);
}
void CppPreFormatter::visit(Cpp::EnumBodyNode* node) {
    visitChildren(node);
}
void CppPreFormatter::visit(Cpp::BaseClauseListNode* node) {
    visitChildren(node);
}
void CppPreFormatter::visit(Cpp::LinkageBlockBodyNode* node) {
    visitChildren(node);
}

void CppPreFormatter::visit(Cpp::ClassDeclNode* node) {
    visitParts(node, node->head(), node->body());
}
void CppPreFormatter::visit(Cpp::ClassHeadNode* node) {
    visitParts(node, node->baseClauses());
}
void CppPreFormatter::visit(Cpp::NamespaceDeclNode* node) {
    visitParts(node, node->body());
}
void CppPreFormatter::visit(Cpp::CtorDeclNode* node) {
    visitParts(node, node->initializers(), node->head(), node->body());
}
void CppPreFormatter::visit(Cpp::FunctionDeclNode* node) {
    visitParts(node, node->head(), node->body());
}
void CppPreFormatter::visit(Cpp::FunctionHeadNode* node) {
    visitParts(node, node->parameters());
}
void CppPreFormatter::visit(Cpp::FunctionPtrDeclNode* node) {
    visitParts(node, node->parameters());
}
void CppPreFormatter::visit(Cpp::CtrlSubStmtNode* node) {
    visitParts(node, node->body());
}
void CppPreFormatter::visit(Cpp::TemplateNode* node) {
    visitParts(node, node->parameters());
}
void CppPreFormatter::visit(Cpp::EnumDeclNode* node) {
    visitParts(node, node->body());
}
void CppPreFormatter::visit(Cpp::LinkageBlockNode* node) {
    visitParts(node, node->body());
}

void CppPreFormatter::visit(Cpp::CommentNode* node) {
    const std::string_view body = Cpp::trimmedCommentBody(node->text());
    if (pendingEndMarker_.empty()) {
        open(node, body);
    } else if (body == pendingEndMarker_) {
        close(node);
    }
}

void CppPreFormatter::open(Cpp::CommentNode* comment, std::string_view body) {
    const auto pair = std::find_if(markers_.begin(), markers_.end(),
                                   [body](const auto& markers) { return markers.first == body; });
    if (pair == markers_.end()) return;
    pendingEndMarker_ = pair->second;
    opening_ = comment;
    regionStart_ = comment->start();
}

void CppPreFormatter::close(Cpp::CommentNode* comment) {
    closedRegions_.emplace_back(opening_, comment);
    comment->setStart(regionStart_);
    comment->setText({});
    comment->setProtectedRegion(true);
    pendingEndMarker_ = {};
    opening_ = nullptr;
}

}  // namespace Tessel
