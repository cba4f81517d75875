#include "layout/offset_calculator.h"

#include <utility>

#include "cpp/lexer.h"
#include "engine/scheme_values.h"
#include "engine/source_copy.h"

namespace Tessel {

OffsetCalculator::OffsetCalculator(const PropertySet& scheme, const Zelmor::TextDocument& source)
    : source_(source), tabSize_(readTabSize(scheme)) {}

void OffsetCalculator::visit(Cpp::RootNode* root) {
    visitChildren(*root);
    flush();
}

void OffsetCalculator::visit(Cpp::ClassBodyNode* body) {
    visitMembers(*body);
    flush();
}

void OffsetCalculator::visit(Cpp::NamespaceBodyNode* body) {
    visitChildren(*body);
    flush();
}

void OffsetCalculator::visit(Cpp::LinkageBlockBodyNode* body) {
    visitChildren(*body);
    flush();
}

void OffsetCalculator::visit(Cpp::CtrlStmtNode* statement) {
    visitChildren(*statement);
    flush();
}

void OffsetCalculator::visit(Cpp::BlockNode* block) {
    flush();
    visitChildren(*block);
    flush();
}

void OffsetCalculator::visit(Cpp::ClassDeclNode* declaration) {
    flush();
    visitBody(declaration->body());
}

void OffsetCalculator::visit(Cpp::NamespaceDeclNode* declaration) {
    flush();
    visitBody(declaration->body());
}

void OffsetCalculator::visit(Cpp::LinkageBlockNode* declaration) {
    flush();
    visitBody(declaration->body());
}

void OffsetCalculator::visit(Cpp::FunctionDeclNode* declaration) {
    flushAndVisitBody(*declaration);
}

void OffsetCalculator::visit(Cpp::CtorDeclNode* declaration) {
    flushAndVisitBody(*declaration);
}

void OffsetCalculator::visit(Cpp::CtrlSubStmtNode* part) {
    flush();
    visitBody(part->body());
}

void OffsetCalculator::visitChildren(Cpp::InteriorNode& node) {
    for (const auto& child : node.children()) child->accept(*this);
}

void OffsetCalculator::visitMembers(Cpp::ClassBodyNode& body) {
    const bool wasInClassBody = std::exchange(inClassBody_, true);
    visitChildren(body);
    inClassBody_ = wasInClassBody;
}

void OffsetCalculator::visitBody(Cpp::SyntaxNode* body) {
    if (body) body->accept(*this);
}

void OffsetCalculator::flushAndVisitBody(const Cpp::FunctionDeclNode& declaration) {
    flush();
    const bool wasInClassBody = std::exchange(inClassBody_, false);
    visitBody(declaration.body());
    inClassBody_ = wasInClassBody;
}

bool OffsetCalculator::maySpace(std::string_view type) {
    return type.find_first_of("\"'/#\\") == std::string_view::npos || Cpp::opaqueTokensOf(type).empty();
}

std::string_view OffsetCalculator::textBetween(Trn::Position start, Trn::Position end) const {
    const std::size_t behindFirst = offsetOf(source_, start);
    const std::size_t first = behindFirst > 0 ? behindFirst - 1 : 0;
    const std::size_t last = offsetOf(source_, end);
    return last > first ? source_.text().substr(first, last - first) : std::string_view();
}

}  // namespace Tessel
