// class A:public B{int a;public:void f();};
//
// class A : public B
// {
//     int a;
// public:
//     void f();
// };
#include "cpp/lexer.h"
#include "cpp/token_kind.h"
#include "cpp/token_sets.h"
#include "engine/columns.h"
#include "engine/cpp_formatter.h"
#include "engine/formatter_scopes.h"
#include "engine/gap.h"
#include "engine/namespace_indent.h"
#include "engine/one_line_rules.h"

namespace Tessel {

using Zelmor::IndentScope;

namespace {

std::string_view behindLineEnd(std::string_view text) { return text.substr(text.rfind('\n') + 1); }

// Behind the last token of a gap that is no comment or directive: a ";" that ended what stands in front.
std::size_t separatorEnd(std::string_view gap) {
    std::size_t end = 0;
    if (isAllWhitespace(gap)) return end;
    Cpp::Lexer lexer(gap);
    for (Trn::Token token = lexer.nextToken(); token.kind != Trn::kEndKind; token = lexer.nextToken()) {
        if (!Cpp::isTrivia(token.kind)) end = std::size_t{token.offset} + token.length;
    }
    return end;
}

// Whether a macro is the head, and brings the "{".
bool isMacro(const Cpp::ClassDeclNode& declaration) {
    return declaration.head() && declaration.body() && declaration.body()->start() == declaration.head()->end();
}

}  // namespace

void CppFormatter::visit(Cpp::NamespaceDeclNode* declaration) {
    applyPendingWhitespace(*declaration);
    formatHeadAndBody(declaration->head(), declaration->body(), settings_.namespaces.beforeOpen,
                      settings_.keepsOneLineBlocks);
}

void CppFormatter::visit(Cpp::NamespaceBodyNode* body) {
    applyPendingWhitespace(*body);
    ValueScope<bool> outsideClass(inClassBody_, false);
    const BraceSettings& braces = settings_.namespaces;
    measureNamespace(*body);
    const NamespaceIndents::Scope indent(namespaceIndents_, *body, braces.indent, out().tabSize());
    formatBlock(*body, braces, indent.indent());
}

void CppFormatter::visit(Cpp::ClassDeclNode* declaration) {
    applyPendingWhitespace(*declaration);
    const std::optional<int> templateColumn = takeTemplateColumn();
    int base = templateColumn.value_or(indentColumn());
    if (declaration->head()) {
        const int headColumn = copyUpToConstruct(*declaration->head());
        if (!templateColumn) base = headColumn;
        if (isMacro(*declaration)) {
            writeExpression(writer_.readThrough(declaration->body()->start()), {});
        } else {
            declaration->head()->accept(*this);
        }
    }
    if (!declaration->body()) return;
    {
        BaseColumnScope scope(*this, base, declaration);
        const bool hasOpen = declaration->head() && !isMacro(*declaration);
        formatBody(*declaration->body(), hasOpen ? beforeBrace(*declaration->head()) : kAsInInput,
                   hasOpen ? settings_.keepsOneLineLists : kNeverKept, [&] { declaration->body()->accept(*this); });
    }
    if (settings_.formatsOtherGaps) copyThrough(*declaration);
    const bool endsWithBody = declaration->end() == declaration->body()->end() && declaration->body()->size() > 0;
    lastClosedClass_ = endsWithBody ? declaration : nullptr;
}

const OptionalText& CppFormatter::beforeBrace(const Cpp::ClassHeadNode& head) const {
    const int key = head.name() ? head.name()->classKey() : Cpp::ClassNameNode::kClass;
    if (key == Cpp::ClassNameNode::kClass) return settings_.classes.beforeOpen;
    const OptionalText& ofStruct = firstPresent(settings_.beforeStructOpen, settings_.classes.beforeOpen);
    return key == Cpp::ClassNameNode::kUnion ? firstPresent(settings_.beforeUnionOpen, ofStruct) : ofStruct;
}

void CppFormatter::visit(Cpp::ClassHeadNode* head) {
    if (head->name()) head->name()->accept(*this);
    if (!head->baseClauses()) return;
    pend(settings_.afterClassName);
    head->baseClauses()->accept(*this);
}

void CppFormatter::visit(Cpp::ClassBodyNode* body) {
    applyPendingWhitespace(*body);
    ValueScope<bool> insideClass(inClassBody_, true);
    formatBlock(*body, settings_.classes);
}

void CppFormatter::visit(Cpp::BaseClauseListNode* list) {
    const OptionalText before = takePending();
    if (list->size() == 0) return;
    writeColon(writer_.readGap(list->start()), before, settings_.beforeBaseClauses);
    formatSeparatedList(*list, settings_.commas.baseClauses);
}

// What stands in front of the ":" on its line, where comments on lines of their own stand as it does.
std::string_view CppFormatter::hangOfComments(std::string_view gap, std::string_view ahead) const {
    const bool startWithLine = keepsLines() && isLineBreak(leadingBlanks(gap)) && trimLeft(gap).starts_with('/');
    return startWithLine && ahead.find('\n') != ahead.npos ? behindLineEnd(ahead) : std::string_view();
}

// The ":" in front of a list, which the gap holds.
void CppFormatter::writeColon(std::string_view gap, const OptionalText& before, const OptionalText& after) {
    const bool joinsScope = writer_.peek() == ':' && after.present && after.text.empty();
    const bool startsDirective = !after.hasLineFeed() && writer_.startsDirectiveBehind(gap);
    const OptionalText& apart = joinsScope ? kBlank : after;
    const std::string_view rest = writer_.writeDirectiveEnd(gap);
    const std::string_view throughLast = trimRight(rest);
    const bool endsWithColon = throughLast.ends_with(':');
    // A comment in front of the ":" does not stand for it.
    const std::string_view front =
        endsWithColon ? trailingBlanks(throughLast.substr(0, throughLast.size() - 1)) : leadingBlanks(rest);
    OptionalText ahead = keepsBreak(front, before) ? keptBreak(front) : before;
    // A directive in front of the ":" has ended its line.
    const bool startsLine = keepsLines() && !before.hasLineFeed() && out().column() == 0 && out().line() > 1;
    if (startsLine && front.find('\n') == front.npos) ahead = keptBreak(front);
    const std::string_view hang = startsLine ? behindLineEnd(ahead.text) : hangOfComments(rest, ahead.text);
    IndentScope hanging(out(), out().indent() + std::string(hang));
    ahead.text.remove_suffix(hang.size());
    // A ":" that the scheme puts at the start of a line takes what follows it along.
    const bool isMoved = before.hasLineFeed() && apart.present && endsWithColon;
    const OptionalText behind = keepsBreak(rest, apart) && !isMoved ? keptBreak(rest) : apart;
    writeRendered(exprFormatter_.respaceSeparator(rest, Cpp::Colon,
                                                  rest.size() < gap.size() ? kNothing : ahead,
                                                  startsDirective ? kLineFeed : behind, state()));
}

void CppFormatter::visit(Cpp::BaseClauseNode* clause) {
    const std::string_view text = writer_.readThrough(clause->end());
    exprFormatter_.formatDeclarationText(text, out(), settings_.afterParameterType);
}

// Labels are indented from the column of their class.
void CppFormatter::visit(Cpp::AccessSpecNode* label) {
    std::string_view gap = writer_.readGap(label->start());
    const WantedText ahead = settings_.beforeAccessLabel;
    if (ahead.present && !isOnOneLine_) {
        const std::size_t start = separatorEnd(gap);
        writer_.write(gap.substr(0, start));
        gap.remove_prefix(start);
        writer_.replace(leadingBlanks(gap), asOutputStands(ahead));
        writer_.writeWithoutLeading(gap);
    } else {
        writer_.writeMerged(gap, ahead.present ? kAsInInput : ahead);
    }
    LabelScope scope(*this, *label, settings_.accessLabelIndent, labelIndent(settings_.accessLabelIndent));
    writeLabel(*label);
}

// The indentation of a label, from the column of its construct; none where lines keep the one that they have.
std::string CppFormatter::labelIndent(const OptionalText& indent) {
    if (!indent.present && out().keepLeadingSpace()) return out().indent();
    return indentToColumn(out(), baseColumn()) + indent;
}

}  // namespace Tessel
