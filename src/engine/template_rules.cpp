// template<class T,class U>class A;
//
// template <class T, class U>
// class A;
#include "engine/cpp_formatter.h"
#include "engine/formatter_scopes.h"
#include "engine/gap.h"
#include "scheme/extension_keys.h"

namespace Tessel {

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
    const bool isKept = keepsBreak(leadingBlanks(writer_.ahead()), settings_.afterTemplateClose);
    pend(isKept ? OptionalText{true, "\n", Keys::KEEP_LINE_BREAKS} : settings_.afterTemplateClose);
}

void CppFormatter::formatTemplateParameters(Cpp::ParameterListNode& list) {
    writeGapBefore(list, settings_.beforeTemplateOpen);
    formatBracketedList(list, settings_.afterTemplateOpen, settings_.commas.templateParameters,
                        settings_.beforeTemplateClose);
}

}  // namespace Tessel
