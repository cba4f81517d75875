#include "engine/cpp_pre_formatter.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <memory>
#include <string>
#include <utility>

#include "cpp/comment_text.h"
#include "cpp/nodes.h"
#include "engine/macro_call.h"
#include "engine/old_parameters.h"
#include "engine/type_text.h"

namespace Tessel {

namespace {

constexpr int kDepthOfRoot = 1;
constexpr int kDepthOfBody = 2;  // a declaration, and its body

}  // namespace

void CppPreFormatter::visit(Cpp::RootNode* node) {
    depth_ = 0;
    bodies_.clear();
    forgetRegion();
    closedRegions_.clear();
    nestedRegions_.clear();
    regions_.clear();
    visitItems(node);
    std::ranges::stable_sort(regions_, {}, &Region::start);
    if (closedRegions_.empty()) return;
    Cpp::NodeRangeRemover::Ranges ranges;
    for (const ClosedRegion& region : closedRegions_) ranges.emplace_back(region.opening, region.whole);
    Cpp::NodeRangeRemover remover(std::move(ranges));
    node->accept(remover);
    for (const NestedRegion& region : std::exchange(nestedRegions_, {})) moveOut(region);
}

void CppPreFormatter::closeAtEnd(Cpp::InteriorNode& root) {
    hasOpenRegion_ = opening_ != nullptr;
    if (openRegions_ == OpenRegions::Forgotten || !opening_) return;
    joinOverlapped();
    const auto last = root.childEnd() - 1;
    auto region = std::make_unique<Cpp::CommentNode>(Cpp::LeafText(), regionStart_, (*last)->end());
    region->setProtectedRegion(true);
    regions_.push_back({region->start(), region->end()});
    if (firstOpening_ != last->get()) {
        closedRegions_.push_back({firstOpening_, region.get(), regionDepth_});
        root.replace(last, std::move(region));
    }
    forgetRegion();
}

// All "{" from the outer body's to the inner one's lie in the region.
void CppPreFormatter::moveOut(const NestedRegion& nested) {
    auto region = std::move(*nested.inner->childBegin());
    nested.inner->erase(nested.inner->childBegin(), nested.inner->childBegin() + 1);
    nested.inner->setStart(region->end());
    nested.outer->children().insert(nested.outer->childBegin(), std::move(region));
}

// The items of a list whose comments are items too. One that a region has ended in gives its place to the
// region.
void CppPreFormatter::visitItems(Cpp::InteriorNode* node) {
    const Cpp::CommentNode* openingBefore = opening_;
    enter();
    for (auto item = node->childBegin(); item != node->childEnd(); ++item) {
        const Cpp::CommentNode* openingBeforeItem = opening_;
        const std::size_t regionsBeforeItem = closedRegions_.size();
        const std::size_t nestedBeforeItem = nestedRegions_.size();
        (*item)->accept(*this);
        if (opening_ && opening_ == openingBeforeItem) keepsItems_ = true;
        if (!closesWithConstruct_ || regionDepth_ != depth_) continue;
        auto region = std::make_unique<Cpp::CommentNode>(Cpp::LeafText(), regionStart_, (*item)->end());
        region->setProtectedRegion(true);
        regions_.push_back({region->start(), region->end()});
        // One that has been joined with another begins where that does.
        if (regionStart_ < (*item)->start()) {
            closedRegions_.push_back({firstOpening_, region.get(), regionDepth_});
        } else {
            closedRegions_.resize(regionsBeforeItem);
            nestedRegions_.resize(nestedBeforeItem);
        }
        node->replace(item, std::move(region));
        forgetRegion();
    }
    if (depth_ == kDepthOfRoot) closeAtEnd(*node);
    leave(*node, openingBefore);
}

void CppPreFormatter::visitBody(Cpp::BracketedNode* node) {
    bodies_.push_back({node, depth_ + 1});
    visitItems(node);
    bodies_.pop_back();
}

void CppPreFormatter::visitChildren(Cpp::InteriorNode* node) {
    const Cpp::CommentNode* openingBefore = opening_;
    enter();
    for (const auto& child : node->children()) child->accept(*this);
    if (opening_ != openingBefore) keepsItems_ = true;
    leave(*node, openingBefore);
}

void CppPreFormatter::visitBodies(Cpp::SyntaxNode* node, const Cpp::ExprBodies& bodies) {
    if (bodies.empty()) return;
    const Cpp::CommentNode* openingBefore = opening_;
    enter();
    for (const auto& body : bodies.blocks()) body->accept(*this);
    if (opening_ != openingBefore) keepsItems_ = true;
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
    leavesBody_ = true;
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
    Cpp::KeptNode* oldParameters = node->oldParameters();
    const bool areKept = oldParameters && !(laidOut_.types && areTypesAndNames(*oldParameters));
    visitParts(node, node->parameters(), areKept ? oldParameters : nullptr);
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
    if (laidOut_.macroCalls && isMacroCall(*node, laidOut_.keepsLines)) return;
    const bool isOnLine = node->start().line == node->end().line;
    if (laidOut_.macroCalls && laidOut_.statements && isOnLine && callOfStatements(node->text())) return;
    if (laidOut_.aliases && isAlias(node->text())) return;
    regions_.push_back({node->start(), node->end()});
}

void CppPreFormatter::open(Cpp::CommentNode* comment, std::string_view body) {
    const auto pair = std::find_if(markers_.begin(), markers_.end(),
                                   [body](const auto& markers) { return markers.first == body; });
    if (pair == markers_.end()) return;
    pendingEndMarker_ = pair->second;
    opening_ = firstOpening_ = comment;
    leavesBody_ = false;
    keepsItems_ = !isForeignMarker(body);
    regionStart_ = comment->start();
    regionDepth_ = depth_;
}

void CppPreFormatter::close(Cpp::CommentNode* comment) {
    // `/* *INDENT-OFF* */ } /* *INDENT-ON* */`, which would keep all that the "}" ends
    if (leavesBody_ && !keepsItems_ && depth_ == regionDepth_) return forgetRegion();
    joinOverlapped();
    if (depth_ > regionDepth_) {
        const auto entered = bodiesEntered();
        if (entered.empty()) {
            closesWithConstruct_ = true;
            return;
        }
        for (const Body& body : entered) body.node->setStart(regionStart_);
        if (entered.size() > 1) {
            nestedRegions_.push_back({closedRegions_.size(), entered.front().node, entered.back().node});
        }
    }
    closedRegions_.push_back({firstOpening_, comment, regionDepth_});
    comment->setStart(regionStart_);
    comment->setText({});
    comment->setProtectedRegion(true);
    regions_.push_back({comment->start(), comment->end()});
    forgetRegion();
}

// A region that began in a construct takes in all of it, and what regions have ended there: one of those that began in
// front of the construct begins the whole.
void CppPreFormatter::joinOverlapped() {
    for (; !closedRegions_.empty(); closedRegions_.pop_back()) {
        const ClosedRegion& region = closedRegions_.back();
        if (!(regionStart_ < region.whole->end())) break;
        if (regionStart_ < region.whole->start()) continue;
        // Those that begin where the construct does stand in it or, where it has been made to begin there, around it.
        if (region.whole->start() == regionStart_ && region.depth > regionDepth_) continue;
        firstOpening_ = region.opening;
        regionStart_ = region.whole->start();
        regionDepth_ = region.depth;
    }
    std::erase_if(nestedRegions_, [this](const NestedRegion& nested) {
        return nested.region >= closedRegions_.size();
    });
}

// The bodies that stand around the place and not around the region's start, each that of a declaration; none where
// anything else does, too.
std::span<const CppPreFormatter::Body> CppPreFormatter::bodiesEntered() const {
    int depth = depth_;
    auto first = bodies_.end();
    while (first != bodies_.begin() && std::prev(first)->depth == depth && depth > regionDepth_) {
        --first;
        depth -= kDepthOfBody;
    }
    return {depth == regionDepth_ ? first : bodies_.end(), bodies_.end()};
}

void CppPreFormatter::forgetRegion() {
    opening_ = nullptr;
    pendingEndMarker_ = {};
    closesWithConstruct_ = false;
}

}  // namespace Tessel
