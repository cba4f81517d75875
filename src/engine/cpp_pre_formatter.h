#pragma once

#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "cpp/emitter.h"
#include "cpp/leaf_nodes.h"
#include "cpp/node_range_remover.h"
#include "engine/format_options.h"
#include "trn/position.h"

namespace Cpp {

class InteriorNode;

}  // namespace Cpp

namespace Tessel {

// Closes protected regions in a tree: the comment that ends a region comes to stand for its whole text, from
// the comment that opens it on, and the nodes in between leave the tree. Let the root accept the pass; it may
// be used for one tree after another. Regions do not nest, and one that is not closed changes nothing.
// Where one begins in a construct that it takes in, and another has ended there, both are one.
//
// A region that begins inside a construct and ends outside it, or the other way round, takes in all of that
// construct; but where it ends among the items of a class, a namespace or a linkage block, and nothing but such
// bodies stands around its end and not around its beginning, those behind its end stay. The outermost of the bodies
// holds the region then, and starts where it does; the others start at its end. Between markers of other formatters,
// ends of such bodies alone are no region.
//
// The pass also finds the regions that the parser has closed, `#if 0` among them.
class CppPreFormatter : public Cpp::Emitter {
public:
    // Regions that nothing closes are none, or reach to the end of the text.
    enum class OpenRegions { Forgotten, Kept };

    // Of what the parser keeps as it is, what is laid out all the same: macros that read like calls, `using A::b;`.
    struct LaidOut {
        bool macroCalls;
        bool aliases;
        bool keepsLines;  // of such calls, too
        bool types;       // of old-style parameters, too
        bool statements;  // that macros hold, too
    };

    explicit CppPreFormatter(MarkerPairs markers, OpenRegions openRegions = OpenRegions::Forgotten,
                             LaidOut laidOut = {})
        : markers_(std::move(markers)), openRegions_(openRegions), laidOut_(laidOut) {}

    // What is kept of the tree that was visited last, where each begins and ends: in order of their starts,
    // and one may lie inside another.
    struct Region {
        Trn::Position start;
        Trn::Position end;
    };
    const std::vector<Region>& regions() const { return regions_; }
    // Whether nothing closes the last region of that tree.
    bool hasOpenRegion() const { return hasOpenRegion_; }

    using Emitter::visit;
    void visit(Cpp::RootNode* node) override;
    void visit(Cpp::NamespaceBodyNode* node) override;
    void visit(Cpp::ClassBodyNode* node) override;
    void visit(Cpp::BlockNode* node) override;
    void visit(Cpp::CtrlStmtNode* node) override;
    void visit(Cpp::ParameterListNode* node) override;
    void visit(Cpp::InitializerListNode* node) override;
    void visit(Cpp::EnumBodyNode* node) override;
    void visit(Cpp::BaseClauseListNode* node) override;
    void visit(Cpp::LinkageBlockBodyNode* node) override;
    void visit(Cpp::ClassDeclNode* node) override;
    void visit(Cpp::ClassHeadNode* node) override;
    void visit(Cpp::NamespaceDeclNode* node) override;
    void visit(Cpp::CtorDeclNode* node) override;
    void visit(Cpp::FunctionDeclNode* node) override;
    void visit(Cpp::FunctionHeadNode* node) override;
    void visit(Cpp::FunctionPtrDeclNode* node) override;
    void visit(Cpp::CtrlSubStmtNode* node) override;
    void visit(Cpp::CtrlSubStmtHeadNode* node) override;
    void visit(Cpp::DataDeclNode* node) override;
    void visit(Cpp::ExprNode* node) override;
    void visit(Cpp::InitializerNode* node) override;
    void visit(Cpp::TemplateNode* node) override;
    void visit(Cpp::EnumDeclNode* node) override;
    void visit(Cpp::LinkageBlockNode* node) override;
    void visit(Cpp::CommentNode* node) override;
    void visit(Cpp::PreprocDirectiveNode* node) override;
    void visit(Cpp::KeptNode* node) override;

private:
    struct Body {
        Cpp::BracketedNode* node;
        int depth;
    };
    struct ClosedRegion {
        Cpp::CommentNode* opening;
        const Cpp::CommentNode* whole;  // what comes to stand for it
        int depth;                      // as regionDepth_
    };
    // A region that begins in front of the outer body and ends in the inner one.
    struct NestedRegion {
        std::size_t region;  // of closedRegions_
        Cpp::BracketedNode* outer;
        Cpp::BracketedNode* inner;
    };

    void visitItems(Cpp::InteriorNode* node);
    void visitBody(Cpp::BracketedNode* node);
    void visitChildren(Cpp::InteriorNode* node);
    void visitBodies(Cpp::SyntaxNode* node, const Cpp::ExprBodies& bodies);
    template <typename Node, typename... Parts>
    void visitParts(Node* node, Parts*... parts);
    void enter() { ++depth_; }
    void leave(const Cpp::SyntaxNode& node, const Cpp::CommentNode* openingBefore);
    void closeAtEnd(Cpp::InteriorNode& root);
    void open(Cpp::CommentNode* comment, std::string_view body);
    void close(Cpp::CommentNode* comment);
    void joinOverlapped();
    std::span<const Body> bodiesEntered() const;
    static void moveOut(const NestedRegion& nested);
    void forgetRegion();

    MarkerPairs markers_;
    OpenRegions openRegions_;
    LaidOut laidOut_;
    int depth_ = 0;                             // of constructs around the walk
    Cpp::CommentNode* opening_ = nullptr;       // of the region that is being collected
    Cpp::CommentNode* firstOpening_ = nullptr;  // the same, or that of a region which has been joined with it
    Trn::Position regionStart_;
    int regionDepth_ = 0;  // of the innermost construct around both the region's start and the walk
    std::vector<Body> bodies_;  // those around the walk whose items may stay behind a region's end
    bool closesWithConstruct_ = false;   // the region's end has been met, inside a construct that it takes in
    std::string_view pendingEndMarker_;  // one of markers_; empty outside a region
    bool leavesBody_ = false;            // the region begins in a body that has ended,
    bool keepsItems_ = false;            // and holds more than ends of bodies, or may not be without
    std::vector<ClosedRegion> closedRegions_;
    std::vector<NestedRegion> nestedRegions_;
    std::vector<Region> regions_;
    bool hasOpenRegion_ = false;
};

}  // namespace Tessel
