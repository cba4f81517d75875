// int values[] = {1, 2, 3, 4};
//
// int values[] = {1, 2,
//     3, 4};
#include <algorithm>

#include "cpp/nodes.h"
#include "cpp/token_kind.h"
#include "engine/columns.h"
#include "engine/gap.h"
#include "engine/head_words.h"
#include "layout/cpp_line_wrapper.h"
#include "layout/line_search.h"
#include "layout/wrap_scopes.h"

namespace Tessel {

using Zelmor::IndentScope;

namespace {

// Whether what stands for a declared name names more than one: a comma stands outside of all brackets.
bool holdsDeclarators(std::string_view name) {
    int depth = 0;
    for (const char c : name) {
        if (c == ',' && depth == 0) return true;
        if (c == '(' || c == '[' || c == '<') ++depth;
        if (c == ')' || c == ']' || c == '>') --depth;
    }
    return false;
}

// Whether the last element of an initialiser in braces has a comma behind it, so that each is to have a line.
bool endsWithComma(std::string_view initializer) {
    const std::string_view elements = initializer.substr(0, initializer.rfind('}'));
    return trimRight(elements).ends_with(',');
}

// From the first line on that is none of a directive.
std::string_view firstRow(std::string_view lines) {
    bool isSpliced = false;
    while (isSpliced || trimLeft(lines).starts_with('#')) {
        const std::size_t lineFeed = lines.find('\n', lines.find_first_not_of(" \t\n"));
        if (lineFeed == lines.npos) break;
        isSpliced = lines.substr(0, lineFeed).ends_with('\\');
        lines.remove_prefix(lineFeed + 1);
    }
    return lines.substr(leadingBlanks(lines).rfind('\n') + 1);
}

bool haveLinesEach(const Cpp::EnumBodyNode& body) {
    std::uint32_t line = body.open().line;
    return std::ranges::all_of(body.children(), [&line](const auto& child) {
        if (!Cpp::as<Cpp::ExprNode>(child.get())) return true;
        const bool startsLine = child->start().line > line;
        line = child->end().line;
        return startsLine;
    });
}

}  // namespace

void CppLineWrapper::wrapParts(Cpp::SyntaxNode& declaration, Cpp::SyntaxNode* head, Cpp::SyntaxNode* body) {
    const std::optional<int> templateColumn = takeTemplateColumn();
    if (copyUnlessLong(declaration)) return;
    const int column = head ? copyToConstruct(*head) : columnAfter(out_.indent(), 0, out_.tabSize());
    BaseColumnScope base(*this, templateColumn.value_or(column));
    if (head) head->accept(*this);
    if (body) body->accept(*this);
    copyThrough(declaration);
}

void CppLineWrapper::visit(Cpp::NamespaceDeclNode* declaration) {
    wrapParts(*declaration, declaration->head(), declaration->body());
}

void CppLineWrapper::visit(Cpp::LinkageBlockNode* linkage) {
    wrapParts(*linkage, linkage->linkage(), linkage->body());
}

void CppLineWrapper::visit(Cpp::EnumDeclNode* declaration) {
    wrapParts(*declaration, declaration->head(), declaration->body());
}

void CppLineWrapper::visit(Cpp::ClassDeclNode* declaration) {
    wrapParts(*declaration, declaration->head(), declaration->body());
}

void CppLineWrapper::visit(Cpp::ClassHeadNode* head) {
    if (copyUnlessLong(*head)) return;
    WrapContext context;
    context.mode = ExprMode::Declaration;
    context.weighed = WeighedText::Class;
    if (writeByWeight(head->start(), head->end(), context)) return;
    if (head->name()) copyThrough(*head->name());
    if (head->baseClauses()) head->baseClauses()->accept(*this);
    copyThrough(*head);
}

// Enumerators with a line each stay as they are; where that is how they were written, those that are too long are
// broken by themselves.
void CppLineWrapper::visit(Cpp::EnumBodyNode* body) {
    if (copyUnlessLong(*body)) return;
    const CommaTexts& commas = settings_.commas.enumerators;
    const bool hasEnumerators = std::any_of(body->childBegin(), body->childEnd(), [](const auto& child) {
        return Cpp::as<Cpp::ExprNode>(child.get()) != nullptr;
    });
    if (!hasEnumerators || commas.breaksLines() || wrapper_.settings().style == WrapStyle::AtIndent) {
        copyThrough(*body);
        return;
    }
    copyThrough(body->open());
    IndentScope indent(out_, indentAt(baseColumn()) + settings_.enums.indent);
    if (wrapper_.settings().keepsLineBreaks && haveLinesEach(*body)) {
        for (const auto& child : body->children()) child->accept(*this);
        copyThrough(*body);
        return;
    }
    WrapContext context;
    context.respacesCommas = commas.areAbsent();
    context.keepsLines = !commas.behind.present;
    context.contentIndented = settings_.enums.indent.present;
    context.isParted = wrapper_.settings().weighsWholes();
    writeWrapped(readGap(in_, body->end()), TextForm::List, context);
    copyThrough(*body);
}

void CppLineWrapper::visit(Cpp::FunctionDeclNode* declaration) {
    wrapFunction(*declaration, nullptr);
}

void CppLineWrapper::visit(Cpp::CtorDeclNode* declaration) {
    wrapFunction(*declaration, declaration->initializers());
}

void CppLineWrapper::wrapFunction(Cpp::FunctionDeclNode& declaration,
                                  Cpp::InitializerListNode* initializers) {
    const std::optional<int> templateColumn = takeTemplateColumn();
    if (copyUnlessLong(declaration)) return;
    const int column = declaration.head() ? copyToConstruct(*declaration.head()) : baseColumn();
    BaseColumnScope base(*this, templateColumn.value_or(column));
    const Cpp::FunctionHeadNode* head = declaration.head();
    const bool isHeadLong =
        head && (needsWrapping(*head) || (initializers && needsWrapping(head->start(), initializers->end())));
    if (isHeadLong) wrapFunctionHead(*declaration.head(), initializers);
    if (initializers) wrapInitializers(*initializers, isHeadLong);
    if (declaration.body()) wrapBraced(*declaration.body(), settings_.functions.indent);
    copyThrough(declaration);
}

void CppLineWrapper::wrapFunctionHead(Cpp::FunctionHeadNode& head, const Cpp::InitializerListNode* initializers) {
    if (head.parameters() && head.name() && !head.oldParameters()) {
        WrapContext context;
        if (initializers && initializers->size() > 0) {
            const std::size_t gapStart = offsetOf(in_.document(), head.end());
            const std::size_t gapEnd = offsetOf(in_.document(), initializers->children().front()->start()) - 1;
            context.endsLine = movesInitializers(source().substr(gapStart, gapEnd - gapStart));
        }
        context.mode = ExprMode::Declaration;
        context.weighed = WeighedText::Head;
        if (head.returnType()) {
            context.nameOffset = offsetBetween(head.start(), head.name()->start());
            context.keepsName = isItemByItself(head.returnType()->text(), head.name()->text());
        }
        if (writeByWeight(head.start(), head.end(), context)) return;
    }
    if (head.parameters()) {
        copyUpTo(*head.parameters());
        wrapBracketedList(*head.parameters(), settings_.commas.parameters);
    }
    copyThrough(head);
}

void CppLineWrapper::visit(Cpp::FunctionPtrDeclNode* declaration) {
    const std::optional<int> templateColumn = takeTemplateColumn();
    if (copyUnlessLong(*declaration)) return;
    const int column = copyToConstruct(*declaration);
    BaseColumnScope base(*this, templateColumn.value_or(column));
    WrapContext context;
    context.mode = ExprMode::Declaration;
    context.weighed = WeighedText::Head;
    if (writeByWeight(declaration->start(), declaration->end(), context)) return;
    if (declaration->parameters()) {
        copyUpTo(*declaration->parameters());
        wrapBracketedList(*declaration->parameters(), settings_.commas.parameters);
    }
    copyThrough(*declaration);
}

void CppLineWrapper::visit(Cpp::DataDeclNode* declaration) {
    const std::optional<int> templateColumn = takeTemplateColumn();
    if (copyUnlessLong(*declaration)) return;
    const int column = declaration->type() ? copyToConstruct(*declaration) : baseColumn();
    BaseColumnScope base(*this, templateColumn.value_or(column));
    if (weighsDeclaration(*declaration)) {
        WrapContext context;
        context.mode = ExprMode::Declaration;
        const Cpp::ExprBodies* bodies = declaration->tail() ? &declaration->tail()->bodies() : nullptr;
        const bool isLong = !bodies || isLongAround(declaration->start(), declaration->end(), *bodies);
        if (isLong && writeByWeight(declaration->start(), declaration->end(), context, bodies)) return;
    }
    const int nameColumn = declaration->name() ? copyToColumnOf(*declaration->name()) : column;
    if (declaration->tail() && !declaration->tail()->bodies().empty()) {
        wrapBodies(declaration->tail()->bodies());
    } else if (declaration->name() && holdsDeclarators(declaration->name()->text())) {
        wrapDeclarators(*declaration);
    } else if (declaration->tail()) {
        copyUpTo(*declaration->tail());
        wrapInitializer(readThrough(in_, declaration->tail()->end()), nameColumn);
    }
    copyThrough(*declaration);
}

// Whether its type, name and initialiser are broken as one text.
bool CppLineWrapper::weighsDeclaration(const Cpp::DataDeclNode& declaration) const {
    if (!declaration.type()) return false;
    if (!declaration.tail()) return true;
    const Position start = declaration.tail()->start();
    const std::size_t offset = offsetOf(in_.document(), start) - 1;
    const std::string_view tail = source().substr(offset, offsetBetween(start, declaration.tail()->end()) + 1);
    const std::size_t brace = tail.find('{');
    const bool isList = brace != std::string_view::npos && tail.find_first_not_of("= \t\n") == brace;
    return !isList || tail.find('\n') != std::string_view::npos || !endsWithComma(tail);
}

// first, second, third = 3;
void CppLineWrapper::wrapDeclarators(const Cpp::DataDeclNode& declaration) {
    IndentScope indent(out_, indentAt(baseColumn()));
    WrapContext context;
    context.mode = ExprMode::Declarators;
    writeWrapped(readThrough(in_, declaration.end()), TextForm::List, context);
}

// "= value;", "= {...};" or "(...);"
void CppLineWrapper::wrapInitializer(std::string_view text, int nameColumn) {
    std::string_view rest = text;
    readExprTokens(text, ExprMode::Declarators, tokens_);
    const auto bracket = std::find_if(tokens_.begin(), tokens_.end(), [](const ExprToken& token) {
        return token.kind == Cpp::OpenParen || token.kind == Cpp::OpenBrace;
    });
    if (bracket != tokens_.end() && bracket->kind == Cpp::OpenBrace && bracket->partner != kNoToken) {
        const std::size_t first = bracket->offset + 1;
        const std::size_t last = tokens_[bracket->partner].offset;
        write(text.substr(0, first));
        const std::string_view inside = text.substr(first, last - first);
        const auto open = static_cast<std::size_t>(bracket - tokens_.begin());
        const bool mayBeWeighed = bracket->partner - open <= LineSearch::kMostTokens;
        const bool hasParts = wrapper_.settings().weighsWholes() && !mayBeWeighed;
        wrapBraceContents(inside, hasParts ? partsOfList(tokens_, open, wrapper_.settings()) : ListParts{{inside}});
        rest.remove_prefix(last);
    }
    IndentScope indent(out_, indentAt(baseColumn()));
    WrapContext context;
    context.mode = ExprMode::Declarators;
    context.declaratorColumn = nameColumn;
    writeWrapped(rest, TextForm::Expression, context);
}

void CppLineWrapper::wrapBraceContents(std::string_view inside, const ListParts& parts) {
    const WrapSettings& wrap = wrapper_.settings();
    // Rows whose lines keep their indentation go on as they begin.
    const std::string_view ahead = leadingBlanks(inside);
    const bool goesByFirst = wrap.keepsLineIndent && isLineBreak(ahead);
    const std::string_view row = firstRow(inside.substr(ahead.rfind('\n') + 1));
    const int first = columnAfter(leadingBlanks(row), 0, wrap.tabSize);
    IndentScope indent(out_, goesByFirst ? indentAt(first) : out_.indent() + wrap.dataIndent);
    const OptionalText& behindComma = settings_.commas.elements.behind;
    WrapContext context;
    context.contentIndented = wrap.dataIndent.present;
    context.keepsLines = !behindComma.present || behindComma.hasLineFeed();
    for (const ListPart& part : parts) {
        if (part.isElement) {
            writeElement(part.text, context);
        } else {
            writeWrapped(part.text, TextForm::List, context);
        }
    }
}

}  // namespace Tessel
