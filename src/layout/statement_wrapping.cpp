// if (first && second) {
//
// if (first &&
//     second) {
#include "cpp/control_parts.h"
#include "cpp/nodes.h"
#include "cpp/token_kind.h"
#include "engine/columns.h"
#include "engine/macro_call.h"
#include "engine/type_text.h"
#include "layout/cpp_line_wrapper.h"
#include "layout/wrap_scopes.h"

namespace Tessel {

using Cpp::continuesElseIf;
using Cpp::keywordOf;
using Zelmor::IndentScope;
using Zelmor::LeadingSpaceScope;

namespace {

const OptionalText kAsAround;

bool isOnOneLine(const Cpp::BlockNode& body) { return body.start().line == body.end().line; }

}  // namespace

void CppLineWrapper::visit(Cpp::ExprNode* expression) {
    if (copyUnlessLong(*expression)) return;
    copyUpTo(*expression);
    if (givesTypeName(*expression)) {  // types have no operands to break at
        WrapContext context;
        context.mode = ExprMode::Declaration;
        BaseColumnScope base(*this, columnAfter(out_.indent(), 0, out_.tabSize()));
        if (!writeByWeight(expression->start(), expression->end(), context)) copyThrough(*expression);
        return;
    }
    if (!expression->bodies().empty()) {
        const Cpp::ExprBodies& bodies = expression->bodies();
        const int column = columnAfter(out_.indent(), 0, out_.tabSize());
        BaseColumnScope base(*this, column);
        const bool isLong = isLongAround(expression->start(), expression->end(), bodies);
        if (isLong && writeByWeight(expression->start(), expression->end(), {}, &bodies)) return;
        wrapBodies(expression->bodies());
        copyThrough(*expression);
        return;
    }
    writeWrapped(readThrough(in_, expression->end()), TextForm::Expression, {});
}

void CppLineWrapper::visit(Cpp::KeptNode* item) {
    if (!settings_.formatsMacroCalls || !isMacroCall(*item) || copyUnlessLong(*item)) return;
    copyUpTo(*item);
    writeWrapped(readThrough(in_, item->end()), TextForm::Expression, {});
}

// What stands around the blocks of an expression stays as it is.
void CppLineWrapper::wrapBodies(const Cpp::ExprBodies& bodies) {
    for (const auto& body : bodies.blocks()) {
        if (isOnOneLine(*body) && !partsBodies(*body)) continue;
        copyUpTo(*body);
        wrapOrPart(*body);
    }
}

// Whether a body on one line is made one of several: the formatter leaves it there only where lines are weighed.
bool CppLineWrapper::partsBodies(const Cpp::BlockNode& body) const {
    return wrapper_.settings().weighsWholes() && body.size() > 0 && needsWrapping(body);
}

void CppLineWrapper::wrapOrPart(Cpp::BlockNode& body) {
    if (isOnOneLine(body)) {
        partBody(body);
    } else {
        wrapBody(body);
    }
}

// Each of the statements gets a line.
void CppLineWrapper::partBody(Cpp::BlockNode& body) {
    const std::string around = indentAt(out_.textColumn());
    LeadingSpaceScope dropSpace(out_, false);
    IndentScope outer(out_, around);
    copyThrough(body.open());
    {
        IndentScope inner(out_, around + settings_.functions.indent);
        for (const auto& statement : body.children()) {
            write(trimRight(readGap(in_, statement->start())));
            write("\n");
            copyThrough(*statement);
        }
    }
    write(trimRight(readGap(in_, {body.end().line, body.end().column})));
    write("\n");
    copyThrough(body);
}

// One that begins at the reading position.
void CppLineWrapper::wrapBody(Cpp::BlockNode& body) {
    const int column = out_.textColumn();
    BaseColumnScope base(*this, column);
    IndentScope indent(out_, indentAt(column));
    wrapBraced(body, settings_.functions.indent);
}

void CppLineWrapper::visit(Cpp::CtrlStmtNode* statement) {
    const bool chainsElseIf = std::exchange(chainsElseIf_, false);
    if (copyUnlessLong(*statement)) return;
    const int column = copyToConstruct(*statement);
    BaseColumnScope base(*this, chainsElseIf ? baseColumn() : column);
    for (const auto& part : statement->children()) part->accept(*this);
    copyThrough(*statement);
}

void CppLineWrapper::visit(Cpp::CtrlSubStmtNode* part) {
    if (copyUnlessLong(*part)) return;
    if (part->head()) part->head()->accept(*this);
    if (!part->body()) return;
    if (continuesElseIf(*part)) {
        chainsElseIf_ = true;
        wrapBraced(*part->body(), kAsAround);
    } else {
        const bool isSwitch = keywordOf(part->head()) == Cpp::KeywordSwitch;
        wrapBraced(*part->body(),
                   isSwitch ? settings_.caseContentIndent : settings_.indentOfBody(part->body()->hasBrackets()));
    }
}

void CppLineWrapper::wrapConditionWithBodies(const Cpp::CtrlSubStmtHeadNode& head) {
    const Cpp::ExprNode& condition = *head.condition();
    if (keywordOf(&head) != Cpp::KeywordFor) {
        copyThrough(condition.start());
        const Position inside{condition.start().line, condition.start().column + 1};
        WrapContext context;
        context.weighed = WeighedText::Condition;
        const Position end{condition.end().line, condition.end().column - 1};
        const bool isLong = isLongAround(inside, end, condition.bodies());
        if (isLong && writeByWeight(inside, end, context, &condition.bodies())) return;
    }
    wrapBodies(condition.bodies());
}

void CppLineWrapper::visit(Cpp::CtrlSubStmtHeadNode* head) {
    if (copyUnlessLong(*head)) return;
    if (head->condition() && !head->condition()->bodies().empty()) {
        wrapConditionWithBodies(*head);
    } else if (head->condition()) {
        copyThrough(head->condition()->start());
        const Position end = head->condition()->end();
        const std::string_view inside = readThrough(in_, {end.line, end.column - 1});
        IndentScope indent(out_, indentAt(baseColumn()));
        WrapContext context;
        if (keywordOf(head) == Cpp::KeywordFor) {
            context.mode = ExprMode::Declaration;
            context.weighed = WeighedText::Clauses;
            writeWrapped(inside, TextForm::ForClauses, context);
        } else {
            context.weighed = WeighedText::Condition;
            if (keywordOf(head) == Cpp::KeywordCatch) context.mode = ExprMode::Declaration;
            writeWrapped(inside, TextForm::Expression, context);
        }
    }
    copyThrough(*head);
}

}  // namespace Tessel
