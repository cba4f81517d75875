// void declare(int first, int second, int third);
//
// void declare(int first,
//              int second, int third);
//
// Lists whose commas begin lines anyway keep their elements where they are.
#include <algorithm>

#include "cpp/nodes.h"
#include "engine/gap.h"
#include "layout/cpp_line_wrapper.h"
#include "layout/wrap_scopes.h"

namespace Tessel {

using Zelmor::IndentScope;
using Zelmor::LeadingSpaceScope;

void CppLineWrapper::wrapBracketedList(Cpp::BracketedNode& list, const CommaTexts& commas, bool endsLine) {
    if (copyUnlessLong(list)) return;
    copyThrough(list.open());
    wrapElements(list, commas, ExprMode::Declaration, true, endsLine);
    copyThrough(list);
}

void CppLineWrapper::wrapElements(Cpp::InteriorNode& list, const CommaTexts& commas, ExprMode mode,
                                  bool isInParentheses, bool endsLine) {
    if (list.size() == 0) return;
    // Nothing hangs under a directive.
    if (commas.breaksLines() || Cpp::as<Cpp::PreprocDirectiveNode>(list.children().front().get())) {
        for (const auto& element : list.children()) element->accept(*this);
        return;
    }
    copyUpTo(*list.children().front());
    IndentScope indent(out_, indentAt(baseColumn()));
    WrapContext context;
    context.mode = mode;
    context.isInParentheses = isInParentheses;
    context.endsLine = endsLine;
    if (isInParentheses) context.weighed = WeighedText::Parameters;
    context.respacesCommas = commas.areAbsent();
    writeWrapped(readThrough(in_, list.children().back()->end()), TextForm::List, context);
}

// The column stays for the declaration that follows.
void CppLineWrapper::visit(Cpp::TemplateNode* header) {
    const int column = copyToConstruct(*header);
    templateColumn_ = column;
    if (copyUnlessLong(*header)) return;
    if (header->parameters()) {
        BaseColumnScope base(*this, column);
        const bool endsLine = wrapper_.settings().weighsWholes();
        wrapBracketedList(*header->parameters(), settings_.commas.templateParameters, endsLine);
    }
    copyThrough(*header);
}

void CppLineWrapper::visit(Cpp::BaseClauseListNode* list) {
    if (copyUnlessLong(*list)) return;
    wrapElements(*list, settings_.commas.baseClauses, ExprMode::Declaration);
}

// Weighed, they are broken anew where the head in front of them is.
void CppLineWrapper::wrapInitializers(Cpp::InitializerListNode& list, bool isHeadLong) {
    const bool isWeighed = isHeadLong && wrapper_.settings().weighsWholes();
    if (list.size() == 0 || (!isWeighed && copyUnlessLong(list))) return;
    // One with a body, or a branch that nobody reads, goes into no text of the whole.
    const bool standsApart = std::any_of(list.childBegin(), list.childEnd(), [this](const auto& child) {
        const auto* initializer = Cpp::as<Cpp::InitializerNode>(child.get());
        const auto* directive = Cpp::as<Cpp::PreprocDirectiveNode>(child.get());
        const bool isUnread = settings_.keepsUnrecognized && directive && directive->text().empty();
        return isUnread || (initializer && !initializer->bodies().empty());
    });
    if (standsApart) {
        for (const auto& initializer : list.children()) initializer->accept(*this);
        return;
    }
    const Position start = list.children().front()->start();
    copyToInitializers(readGap(in_, start));
    WrapContext context;
    context.weighed = WeighedText::Initializers;
    if (writeByWeight(start, list.children().back()->end(), context)) return;
    wrapElements(list, settings_.commas.initializers, ExprMode::Expression);
}

// Whether the ":" of a line that runs over begins the next one, as the scheme has it.
bool CppLineWrapper::movesInitializers(std::string_view gap) const {
    const std::string_view colon = trimLeft(gap);
    const bool isAlone = colon.starts_with(':') && isAllWhitespace(colon.substr(1));
    const bool staysOnLine = gap.find('\n') == std::string_view::npos && settings_.beforeInitializerList.hasLineFeed();
    return wrapper_.settings().weighsWholes() && isAlone && staysOnLine;
}

void CppLineWrapper::copyToInitializers(std::string_view gap) {
    if (!movesInitializers(gap)) {
        copy(gap);
        return;
    }
    IndentScope indent(out_, indentAt(baseColumn()));
    LeadingSpaceScope keepSpace(out_, true);
    write(settings_.beforeInitializerList.text);
    write(trimLeft(gap));
}

// One that stands on a line of its own.
void CppLineWrapper::visit(Cpp::InitializerNode* initializer) {
    if (copyUnlessLong(*initializer)) return;
    copyUpTo(*initializer);
    if (!initializer->bodies().empty()) {
        wrapBodies(initializer->bodies());
        copyThrough(*initializer);
        return;
    }
    writeWrapped(readThrough(in_, initializer->end()), TextForm::List, {});
}

}  // namespace Tessel
