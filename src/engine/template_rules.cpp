// template<class T,class U>class A;
//
// template <class T, class U>
// class A;
#include "engine/cpp_formatter.h"
#include "engine/formatter_scopes.h"
#include "engine/gap.h"
#include "scheme/extension_keys.h"

namespace Tessel {

using Zelmor::IndentScope;

// The column of the first of the headers in front of a declaration, when there is one.
std::optional<int> CppFormatter::takeTemplateColumn() { return std::exchange(templateColumn_, std::nullopt); }

void CppFormatter::visit(Cpp::TemplateNode* header) {
    applyPendingWhitespace(*header);
    const int column = copyUpToConstruct(*header);
    if (!templateColumn_) {
        templateColumn_ = column;
        templateStart_ = out().text().size();
    }
    if (header->keyword()) copyThrough(*header->keyword());
    if (header->parameters()) formatTemplateParameters(*header->parameters());
    copyThrough(*header);
    pendBehindHeader();
}

// The line of what the header is for, where its author began one.
void CppFormatter::pendBehindHeader() {
    const bool isKept = keepsBreak(leadingBlanks(writer_.ahead()), settings_.afterTemplateClose);
    pend(isKept ? OptionalText{true, "\n", Keys::KEEP_LINE_BREAKS} : settings_.afterTemplateClose);
}

void CppFormatter::formatTemplateParameters(Cpp::ParameterListNode& list) {
    writeGapBefore(list, settings_.beforeTemplateOpen);
    formatBracketedList(list, settings_.afterTemplateOpen, settings_.commas.templateParameters,
                        settings_.beforeTemplateClose);
}

// Behind a template's parameters, on their line or, indented as its author did, in the next one.
void CppFormatter::writeRequiresClause(Cpp::ExprNode& clause) {
    takePending();
    const std::string_view gap = gapBefore(clause);
    const bool startsLine = isLineBreak(gap);
    const bool isIndented = startsLine && sourceColumnOf(clause) > sourceColumnOf(*previousSibling_);
    IndentScope indent(out(), out().indent() + (isIndented ? settings_.global.indent : kNothing));
    if (isAllWhitespace(gap)) {
        writer_.replace(writer_.readGap(clause.start()),
                        WantedText(startsLine ? "\n" : " ", settings_.formatsOtherGaps.key));
    } else {
        writer_.copyGap(clause.start());
    }
    writeExpression(writer_.readThrough(clause.end()), clause.bodies());
    pendBehindHeader();
}

}  // namespace Tessel
