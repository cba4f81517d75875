#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "cpp/emitter.h"
#include "cpp/nodes.h"
#include "engine/columns.h"
#include "engine/format_options.h"
#include "engine/formatter_settings.h"
#include "engine/namespace_indent.h"
#include "engine/opaque_text.h"
#include "engine/source_columns.h"
#include "engine/source_copy.h"
#include "layout/cpp_expr_line_wrapper.h"
#include "layout/list_parts.h"
#include "textstream/itext_doc_stream.h"
#include "textstream/oindent_stream.h"
#include "trn/position.h"

namespace Tessel {

// Writes a formatted text with its long lines wrapped, in one forward sweep guided by the text's tree. Text
// that no long line runs through is copied as it stands. A construct with a long line is taken apart, down to
// the lists and expressions that CppExprLineWrapper breaks; between them everything is copied.
//
//  - The base column is that of the first character of the construct around; lists and contents are
//    indented from it. Constructs push it for the time that they are written.
//  - Comments, directives, case labels and protected regions are copied.
//
// One object wraps one text, once. The visits stand in a file for each family of constructs: *_wrapping.cpp.
class CppLineWrapper : public Cpp::Emitter {
public:
    // All are borrowed. The tree that accepts the wrapper must be that of `formatted`.
    CppLineWrapper(const FormatOptions& options, const Zelmor::TextDocument& formatted);

    // The result, once the tree has accepted the wrapper.
    std::string takeText() { return out_.takeText(); }

    using Cpp::Emitter::visit;
    // Bodies and comments (cpp_line_wrapper.cpp). Nodes without a visit are copied with what follows them.
    void visit(Cpp::RootNode* root) override;
    void visit(Cpp::NamespaceBodyNode* body) override;
    void visit(Cpp::ClassBodyNode* body) override;
    void visit(Cpp::LinkageBlockBodyNode* body) override;
    void visit(Cpp::BlockNode* block) override;
    void visit(Cpp::CommentNode* comment) override;
    // Declarations (declaration_wrapping.cpp).
    void visit(Cpp::NamespaceDeclNode* declaration) override;
    void visit(Cpp::LinkageBlockNode* linkage) override;
    void visit(Cpp::EnumDeclNode* declaration) override;
    void visit(Cpp::EnumBodyNode* body) override;
    void visit(Cpp::ClassDeclNode* declaration) override;
    void visit(Cpp::ClassHeadNode* head) override;
    void visit(Cpp::FunctionDeclNode* declaration) override;
    void visit(Cpp::CtorDeclNode* declaration) override;
    void visit(Cpp::FunctionPtrDeclNode* declaration) override;
    void visit(Cpp::DataDeclNode* declaration) override;
    // Lists (list_wrapping.cpp).
    void visit(Cpp::TemplateNode* header) override;
    void visit(Cpp::BaseClauseListNode* list) override;
    void visit(Cpp::InitializerNode* initializer) override;
    // Statements (statement_wrapping.cpp).
    void visit(Cpp::ExprNode* expression) override;
    void visit(Cpp::KeptNode* item) override;
    void visit(Cpp::CtrlStmtNode* statement) override;
    void visit(Cpp::CtrlSubStmtNode* part) override;
    void visit(Cpp::CtrlSubStmtHeadNode* head) override;

private:
    using Position = Trn::Position;
    class BaseColumnScope;

    // Long lines.
    bool needsWrapping(Position start, Position end) const;
    bool needsWrapping(const Cpp::SyntaxNode& node) const { return needsWrapping(node.start(), node.end()); }

    // The sweep.
    std::string_view source() const { return in_.document().text(); }
    void write(std::string_view text) { writeRendered(text, out_); }
    // A piece of the source as it stands; a block comment keeps its shape when the piece has moved.
    void copy(std::string_view piece);
    void copyThrough(Position position) { copy(readThrough(in_, position)); }
    void copyThrough(const Cpp::SyntaxNode& node) { copyThrough(node.end()); }
    void copyUpTo(const Cpp::SyntaxNode& node) { copy(readGap(in_, node.start())); }
    // Copies up to the node. Returns the column of its first character.
    int copyToColumnOf(const Cpp::SyntaxNode& node);
    // The same for the first node of a construct. Returns the column from which what is in it is indented.
    int copyToConstruct(const Cpp::SyntaxNode& node);
    // Copies a node that no long line runs through, and says so.
    bool copyUnlessLong(const Cpp::SyntaxNode& node);

    // Texts that are broken.
    enum class TextForm { Expression, List, ForClauses };
    void writeMoved(std::string_view comment);
    void writeWrapped(std::string_view text, TextForm form, WrapContext context);
    bool writeByWeight(Position start, Position end, WrapContext context, const Cpp::ExprBodies* bodies = nullptr);
    bool isLongAround(Position start, Position end, const Cpp::ExprBodies& bodies) const;
    std::size_t offsetBetween(Position start, Position end) const;
    int widthBehind(std::string_view text) const;
    int widthOfCommentBehind(std::string_view text) const;

    // Bodies.
    int baseColumn() const { return baseColumns_.empty() ? 0 : baseColumns_.back(); }
    std::string indentAt(int column) const { return indentToColumn(out_, column); }
    void endTemplateLine(const Cpp::SyntaxNode& header, const Cpp::SyntaxNode& declaration);
    void wrapChildren(Cpp::InteriorNode& node, const OptionalText& contentIndent);
    void wrapBraced(Cpp::BracketedNode& node, const OptionalText& contentIndent);
    void wrapParts(Cpp::SyntaxNode& declaration, Cpp::SyntaxNode* head, Cpp::SyntaxNode* body);
    std::optional<int> takeTemplateColumn() { return std::exchange(templateColumn_, std::nullopt); }

    void wrapBodies(const Cpp::ExprBodies& bodies);
    void wrapConditionWithBodies(const Cpp::CtrlSubStmtHeadNode& head);
    void wrapBody(Cpp::BlockNode& body);
    void partBody(Cpp::BlockNode& body);
    void wrapOrPart(Cpp::BlockNode& body);
    bool partsBodies(const Cpp::BlockNode& body) const;

    // Lists.
    void wrapBracketedList(Cpp::BracketedNode& list, const CommaTexts& commas, bool endsLine = false);
    void wrapElements(Cpp::InteriorNode& list, const CommaTexts& commas, ExprMode mode, bool isInParentheses = false,
                      bool endsLine = false);

    // Declarations.
    void wrapFunction(Cpp::FunctionDeclNode& declaration, Cpp::InitializerListNode* initializers);
    void wrapFunctionHead(Cpp::FunctionHeadNode& head, const Cpp::InitializerListNode* initializers);
    bool movesInitializers(std::string_view gap) const;
    void copyToInitializers(std::string_view gap);
    void wrapInitializers(Cpp::InitializerListNode& list, bool isHeadLong);
    bool weighsDeclaration(const Cpp::DataDeclNode& declaration) const;
    void wrapDeclarators(const Cpp::DataDeclNode& declaration);
    void wrapInitializer(std::string_view text, int nameColumn);
    void wrapBraceContents(std::string_view inside, const ListParts& parts);
    void writeElement(std::string_view text, WrapContext context);

    FormatterSettings settings_;
    const MarkerPairs& markers_;
    Zelmor::ITextDocStream in_;
    Zelmor::OIndentBuf out_;
    CppExprLineWrapper wrapper_;
    SourceColumns columns_;
    std::vector<int> longLines_;  // numbers, ascending
    std::vector<int> baseColumns_;
    std::optional<int> templateColumn_;  // of the header whose declaration has not come yet
    NamespaceIndents namespaceIndents_{settings_, in_.document()};
    bool chainsElseIf_ = false;
    std::vector<ExprToken> tokens_;
};

}  // namespace Tessel
