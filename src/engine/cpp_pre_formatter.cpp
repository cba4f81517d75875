#include "engine/cpp_pre_formatter.h"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>

#include "cpp/comment_text.h"
#include "cpp/nodes.h"

namespace Tessel {

void CppPreFormatter::visit(Cpp::RootNode* node) {
    depth_ = 0;
    bodyDepth_ = 0;
    forgetRegion();
    closedRegions_.clear();
    regions_.clear();
    visitItems(node);
    std::ranges::stable_sort(regions_, {}, &Region::start);
    if (closedRegions_.empty()) return;
    Cpp::NodeRangeRemover remover(std::exchange(closedRegions_, {}));
    node->accept(remover);
}

// The items of a list whose comments are items too. One that a region has ended in gives its place to the
// region.
void CppPreFormatter::visitItems(Cpp::InteriorNode* node) {
    const Cpp::CommentNode* openingBefore = opening_;
    enter();
    for (auto item = node->childBegin(); item != node->childEnd(); ++item) {
        const Cpp::CommentNode* openingBeforeItem = opening_;
        const std::size_t regionsBeforeItem = closedRegions_.size();
        (*item)->accept(*this);
        if (!closesWithConstruct_ || regionDepth_ != depth_) continue;
        auto region = std::make_unique<Cpp::CommentNode>(std::string(), regionStart_, (*item)->end());
        region->setProtectedRegion(true);
        regions_.push_back({region->start(), region->end()});
        if (opening_ == openingBeforeItem) {
            closedRegions_.emplace_back(opening_, region.get());
        } else {
            closedRegions_.resize(regionsBeforeItem);
        }
        node->replace(item, std::move(region));
        forgetRegion();
    }
    leave(*node, openingBefore);
}

void CppPreFormatter::visitBody(Cpp::BracketedNode* node) {
    Cpp::BracketedNode* const outerBody = std::exchange(body_, node);
    const int outerDepth = std::exchange(bodyDepth_, depth_ + 1);
    visitItems(node);
    body_ = outerBody;
    bodyDepth_ = outerDepth;
}

void CppPreFormatter::visitChildren(Cpp::InteriorNode* node) {
    const Cpp::CommentNode* openingBefore = opening_;
    enter();
    for (const auto& child : node->children()) child->accept(*this);
    leave(*node, openingBefore);
}

void CppPreFormatter::visitBodies(Cpp::SyntaxNode* node, const Cpp::ExprBodies& bodies) {
    if (bodies.empty()) return;
    const Cpp::CommentNode* openingBefore = opening_;
    enter();
    for (const auto& body : bodies.blocks()) body->accept(*this);
    leave(*node, openingBefore);
}

template <typename Node, typename... Parts>
void CppPreFormatter::visitParts(Node* node, Parts*... parts) {
    const Cpp::CommentNode* openingBefore = opening_;
    const auto visitPart = [this](auto* part) {
        if (part) part->accept(*this);
    };
    enter();
    (visitPart(parts), ...);
    leave(*node, openingBefore);
}

// A region that was opened inside the construct takes all of it out of the tree, so that the region's text
// must cover it.
void CppPreFormatter::leave(const Cpp::SyntaxNode& node, const Cpp::CommentNode* openingBefore) {
    --depth_;
    if (!opening_ || opening_ == openingBefore) return;
    regionStart_ = std::min(regionStart_, node.start());
    regionDepth_ = depth_;
}

void CppPreFormatter::visit(Cpp::NamespaceBodyNode* node) {
    visitBody(node);
}
void CppPreFormatter::visit(Cpp::ClassBodyNode* node) {
    visitBody(node);
}
void CppPreFormatter::visit(Cpp::BlockNode* node) {
    visitItems(node);
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
    visitBody(node);
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
    visitParts(node, node->parameters(), node->oldParameters());
}
void CppPreFormatter::visit(Cpp::FunctionPtrDeclNode* node) {
    visitParts(node, node->parameters());
}
void CppPreFormatter::visit(Cpp::CtrlSubStmtNode* node) {
    visitParts(node, node->head(), node->body());
}
void CppPreFormatter::visit(Cpp::CtrlSubStmtHeadNode* node) {
    visitParts(node, node->condition());
}
void CppPreFormatter::visit(Cpp::DataDeclNode* node) {
    visitParts(node, node->tail());
}
void CppPreFormatter::visit(Cpp::ExprNode* node) {
    visitBodies(node, node->bodies());
}
void CppPreFormatter::visit(Cpp::InitializerNode* node) {
    visitBodies(node, node->bodies());
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
    if (node->protectedRegion()) regions_.push_back({node->start(), node->end()});
    if (closesWithConstruct_) return;
    const std::string_view body = Cpp::trimmedCommentBody(node->text());
    if (pendingEndMarker_.empty()) {
        open(node, body);
    } else if (body == pendingEndMarker_) {
        close(node);
    }
}

// One without a text stands for a part of the source that is kept.
void CppPreFormatter::visit(Cpp::PreprocDirectiveNode* node) {
    if (node->text().empty()) regions_.push_back({node->start(), node->end()});
}

void CppPreFormatter::visit(Cpp::KeptNode* node) {
    regions_.push_back({node->start(), node->end()});
}

void CppPreFormatter::open(Cpp::CommentNode* comment, std::string_view body) {
    const auto pair = std::find_if(markers_.begin(), markers_.end(),
                                   [body](const auto& markers) { return markers.first == body; });
    if (pair == markers_.end()) return;
    pendingEndMarker_ = pair->second;
    opening_ = comment;
    regionStart_ = comment->start();
    regionDepth_ = depth_;
}

void CppPreFormatter::close(Cpp::CommentNode* comment) {
    if (depth_ > regionDepth_) {
        if (!endsAmongItems()) {
            closesWithConstruct_ = true;
            return;
        }
        body_->setStart(regionStart_);
    }
    closedRegions_.emplace_back(opening_, comment);
    comment->setStart(regionStart_);
    comment->setText({});
    comment->setProtectedRegion(true);
    regions_.push_back({comment->start(), comment->end()});
    forgetRegion();
}

// Whether nothing but one declaration with its body stands around the place, and not around the region's start.
bool CppPreFormatter::endsAmongItems() const {
    return bodyDepth_ == depth_ && depth_ == regionDepth_ + 2;
}

void CppPreFormatter::forgetRegion() {
    opening_ = nullptr;
    pendingEndMarker_ = {};
    closesWithConstruct_ = false;
}

}  // namespace Tessel
