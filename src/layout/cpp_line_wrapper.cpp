#include "layout/cpp_line_wrapper.h"

#include <algorithm>

#include "cpp/lexer.h"
#include "cpp/token_kind.h"
#include "engine/columns.h"
#include "engine/gap.h"
#include "engine/namespace_indent.h"
#include "engine/scheme_values.h"
#include "engine/shown_width.h"
#include "layout/long_lines.h"
#include "layout/protected_text.h"
#include "layout/wrap_scopes.h"
#include "scheme/property_keys.h"

namespace Tessel {

using Zelmor::IndentScope;
using Zelmor::IndentState;
using Zelmor::LeadingSpaceScope;

namespace {

constexpr int kBracketWidth = 1;

}  // namespace

CppLineWrapper::CppLineWrapper(const FormatOptions& options, const Zelmor::TextDocument& formatted)
    : settings_(withSchemeDefaults(options.scheme)),
      markers_(options.markers),
      in_(formatted),
      out_(IndentState()),
      wrapper_(options.scheme, &formatted),
      columns_(&formatted, wrapper_.settings().tabSize) {
    in_.setTabSize(wrapper_.settings().tabSize);
    // White space in front of long lines is all that is added.
    out_.reserve(formatted.size() + formatted.size() / 16);
    out_.setTabSize(wrapper_.settings().tabSize);
    out_.setTabMode(wrapper_.settings().tabMode);
    LongLines lines(source(), wrapper_.settings());
    while (const int line = lines.next()) longLines_.push_back(line);
}

bool CppLineWrapper::needsWrapping(Position start, Position end) const {
    if (start.line < 1 || end.line < start.line) return false;
    const auto line = std::lower_bound(longLines_.begin(), longLines_.end(), static_cast<int>(start.line));
    return line != longLines_.end() && *line <= static_cast<int>(end.line);
}

int CppLineWrapper::copyToColumnOf(const Cpp::SyntaxNode& node) {
    copyUpTo(node);
    return out_.column();
}

int CppLineWrapper::copyToConstruct(const Cpp::SyntaxNode& node) {
    const int column = copyToColumnOf(node);
    return settings_.indentsFromLine ? out_.textColumn() : column;
}

bool CppLineWrapper::copyUnlessLong(const Cpp::SyntaxNode& node) {
    if (needsWrapping(node)) return false;
    copyThrough(node);
    return true;
}

void CppLineWrapper::writeWrapped(std::string_view text, TextForm form, WrapContext context) {
    if (text.empty()) return;
    if (holdsProtectedText(text, markers_)) {
        write(text);
        return;
    }
    context.trailingWidth = context.endsLine ? kBracketWidth : widthBehind(text);
    const IndentState state(out_);
    switch (form) {
        case TextForm::Expression:
            context.commentWidth = widthOfCommentBehind(text);
            write(wrapper_.wrap(text, state, context));
            break;
        case TextForm::List:
            write(wrapper_.wrapList(text, state, context));
            break;
        case TextForm::ForClauses:
            write(wrapper_.wrapForClauses(text, state, context));
            break;
    }
}

// An element of a list, with the white space in front of it, that begins a line.
void CppLineWrapper::writeElement(std::string_view text, WrapContext context) {
    const std::string_view gap = leadingBlanks(text);
    const std::string_view element = text.substr(gap.size());
    write(gap);
    if (holdsProtectedText(element, markers_)) return write(element);
    context.trailingWidth = widthBehind(element);
    const std::vector<WrappedPiece> pieces = wrapper_.wrapByWeight(element, IndentState(out_), context);
    if (pieces.empty()) return writeWrapped(element, TextForm::List, context);
    write(pieces.front().text);
}

std::size_t CppLineWrapper::offsetBetween(Position start, Position end) const {
    return offsetOf(in_.document(), end) - offsetOf(in_.document(), start);
}

// Whether a long line runs through what stands around the bodies.
bool CppLineWrapper::isLongAround(Position start, Position end, const Cpp::ExprBodies& bodies) const {
    Position from = start;
    for (const auto& body : bodies.blocks()) {
        if (body->start().line == body->end().line) continue;
        if (needsWrapping(from, body->start())) return true;
        from = body->end();
    }
    return needsWrapping(from, end);
}

// What a long line runs through, and begins at the reading position. Says false, with nothing written, where it is not
// broken by weight.
bool CppLineWrapper::writeByWeight(Position start, Position end, WrapContext context, const Cpp::ExprBodies* bodies) {
    if (!wrapper_.settings().weighsWholes()) return false;
    const std::size_t offset = offsetOf(in_.document(), start) - 1;
    const std::string_view text = source().substr(offset, offsetBetween(start, end) + 1);
    if (holdsProtectedText(text, markers_)) return false;
    std::vector<TextExtent> blocks;
    if (bodies) {
        for (const auto& body : bodies->blocks()) {
            const std::size_t first = offsetOf(in_.document(), body->start()) - 1;
            blocks.push_back({first - offset, offsetOf(in_.document(), body->end()) - first});
        }
    }
    context.blocks = blocks;
    context.trailingWidth = context.endsLine ? 0 : widthBehind(text);
    context.commentWidth = context.endsLine ? 0 : widthOfCommentBehind(text);
    IndentScope indent(out_, indentAt(baseColumn()));
    const std::vector<WrappedPiece> pieces = wrapper_.wrapByWeight(text, IndentState(out_), context);
    for (const WrappedPiece& piece : pieces) {
        if (piece.block == WrappedPiece::kNoBlock) {
            readThrough(in_, end);
            write(piece.text);
        } else {
            Cpp::BlockNode& body = *bodies->blocks()[piece.block];
            readGap(in_, body.start());
            write(piece.text);
            wrapOrPart(body);
        }
    }
    return !pieces.empty();
}

// The columns of what follows a piece of the source and cannot leave the line that the piece ends on:
// everything up to the next place where a line might end, and the brackets behind that. Another statement is
// broken by itself.
int CppLineWrapper::widthBehind(std::string_view text) const {
    if (isLineBreak(trailingBlanks(text))) return 0;
    const auto end = static_cast<std::size_t>(text.data() - source().data()) + text.size();
    // What lies beyond the margin from here is too wide wherever it ends.
    std::string_view rest =
        source().substr(end, static_cast<std::size_t>(wrapper_.settings().rightMargin) + 1);
    rest = rest.substr(0, rest.find('\n'));
    rest = rest.substr(0, std::min(rest.find("//"), rest.find("/*")));
    const bool endsStatement = text.ends_with(';');
    const std::size_t separator = rest.find_first_of(",;{");
    if (endsStatement || separator != std::string_view::npos) {
        const std::size_t behind = endsStatement ? 0 : separator + 1;
        rest = rest.substr(0, std::min(rest.find_first_not_of(")]};", behind), rest.size()));
    }
    rest = trimRight(rest);
    return wrapper_.settings().weighsBreaks() ? shownColumnAfter(rest, 0, 1) : static_cast<int>(rest.size());
}

// The columns of a comment, and the blanks in front of it, that ends the line of a piece of the source, which nothing
// but the end of a statement or a head separates from it. One behind a block that holds the piece concerns the block.
int CppLineWrapper::widthOfCommentBehind(std::string_view text) const {
    const auto end = static_cast<std::size_t>(text.data() - source().data()) + text.size();
    // No more of it, nor of what stands in front, counts.
    const auto most = static_cast<std::size_t>(wrapper_.settings().rightMargin) + 1;
    const std::size_t start = source().substr(end, most).find_first_not_of(")};{ \t");
    if (start == std::string_view::npos || !source().substr(end + start).starts_with("//")) return 0;
    const std::string_view between = source().substr(end, start);
    if (std::ranges::count(between, '}') > std::ranges::count(between, '{')) return 0;
    const std::string_view comment = source().substr(end + start, most);
    constexpr int blanks = 2;
    return blanks + shownColumnAfter(trimRight(comment.substr(0, comment.find('\n'))), 0, wrapper_.settings().tabSize);
}

void CppLineWrapper::visit(Cpp::RootNode* root) {
    if (!longLines_.empty()) {
        LeadingSpaceScope leadingSpace(out_, !settings_.leftMargin.present);
        wrapChildren(*root, settings_.leftMargin);
    }
    write(restOfInput(in_));
}

// What a header in front makes too long for a line begins the next one.
void CppLineWrapper::endTemplateLine(const Cpp::SyntaxNode& header, const Cpp::SyntaxNode& declaration) {
    const Position start = declaration.start();
    if (!wrapper_.settings().weighsWholes() || header.end().line != start.line) return;
    if (!needsWrapping(start, start) || !templateColumn_) return;
    const std::size_t end = offsetOf(in_.document(), header.end());
    const std::string_view gap = source().substr(end, offsetOf(in_.document(), start) - 1 - end);
    if (!isAllWhitespace(gap)) return;
    readGap(in_, start);
    IndentScope indent(out_, indentAt(*templateColumn_));
    LeadingSpaceScope dropSpace(out_, false);
    write("\n");
}

void CppLineWrapper::wrapChildren(Cpp::InteriorNode& node, const OptionalText& contentIndent) {
    LeadingSpaceScope leadingSpace(out_, contentIndent.present ? false : out_.keepLeadingSpace());
    IndentScope indent(out_,
                       contentIndent.present ? indentAt(baseColumn()) + contentIndent : out_.indent());
    const Cpp::SyntaxNode* previous = nullptr;
    for (const auto& child : node.children()) {
        // A block behind a label goes by the label's column.
        const bool isCaseBlock = settings_.beforeCaseOpen.present &&
                                 Cpp::as<Cpp::BlockNode>(child.get()) &&
                                 Cpp::as<Cpp::CaseNode>(previous);
        IndentScope caseIndent(
            out_, isCaseBlock ? indentAt(baseColumn()) + settings_.caseIndent : out_.indent());
        if (previous && Cpp::as<Cpp::TemplateNode>(previous)) endTemplateLine(*previous, *child);
        child->accept(*this);
        previous = child.get();
    }
    templateColumn_.reset();
}

void CppLineWrapper::wrapBraced(Cpp::BracketedNode& node, const OptionalText& contentIndent) {
    if (node.hasBrackets()) copyThrough(node.open());
    wrapChildren(node, contentIndent);
    copyThrough(node);
}

void CppLineWrapper::visit(Cpp::NamespaceBodyNode* body) {
    if (copyUnlessLong(*body)) return;
    const OptionalText& indent = settings_.namespaces.indent;
    const NamespaceIndents::Scope scope(namespaceIndents_, *body, indent, out_.tabSize());
    wrapBraced(*body, scope.indent());
}

void CppLineWrapper::visit(Cpp::ClassBodyNode* body) {
    if (!copyUnlessLong(*body)) wrapBraced(*body, settings_.classes.indent);
}

void CppLineWrapper::visit(Cpp::LinkageBlockBodyNode* body) {
    if (!copyUnlessLong(*body)) wrapBraced(*body, settings_.linkage.indent);
}

// A block on its own stands at the indentation.
void CppLineWrapper::visit(Cpp::BlockNode* block) {
    if (copyUnlessLong(*block)) return;
    const int column = columnAfter(out_.indent(), 0, out_.tabSize());
    BaseColumnScope base(*this, column);
    IndentScope indent(out_, indentAt(column));
    wrapBraced(*block, settings_.global.indent);
}

void CppLineWrapper::copy(std::string_view piece) {
    const std::size_t lineEnd = piece.find('\n');
    const std::size_t comment = piece.substr(0, lineEnd).rfind("/*");
    const bool holdsLinesOfComment = lineEnd != std::string_view::npos && comment != std::string_view::npos;
    if (!holdsLinesOfComment || out_.column() == columns_.columnOf(piece)) {
        write(piece);
        return;
    }
    // Only a comment on the first line has moved with it.
    Cpp::Lexer lexer(piece);
    Trn::Token token = lexer.nextToken();
    while (token.kind != Trn::kEndKind && token.offset + token.length <= lineEnd) token = lexer.nextToken();
    if (token.kind != Cpp::BlockComment || token.offset > lineEnd) {
        write(piece);
        return;
    }
    const std::size_t end = std::size_t{token.offset} + token.length;
    write(piece.substr(0, token.offset));
    writeMoved(piece.substr(token.offset, token.length));
    write(piece.substr(end));
}

// The further lines of a comment stay where they stand relative to its first character, should that have
// moved.
void CppLineWrapper::writeMoved(std::string_view comment) {
    LeadingSpaceScope keepSpace(out_, true);
    IndentScope noIndent(out_, {});
    wrapper_.writeComment(comment, out_);
}

void CppLineWrapper::visit(Cpp::CommentNode* comment) {
    if (!comment->isBlockComment() || comment->start().line == comment->end().line) {
        copyThrough(*comment);
        return;
    }
    copyUpTo(*comment);
    writeMoved(readThrough(in_, comment->end()));
}

}  // namespace Tessel
