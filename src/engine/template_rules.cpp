// template<class T,class U>class A;
//
// template <class T, class U>
// class A;
#include "engine/cpp_formatter.h"
#include "engine/formatter_scopes.h"

namespace Tessel {

// The column of the first of the headers in front of a declaration, when there is one.
std::optional<int> CppFormatter::takeTemplateColumn() { return std::exchange(templateColumn_, std::nullopt); }

void CppFormatter::visit(Cpp::TemplateNode* header) {
    applyPendingWhitespace(*header);
    const int column = copyUpTo(*header);
    if (!templateColumn_) templateColumn_ = column;
    if (header->keyword()) copyThrough(*header->keyword());
    if (header->parameters()) formatTemplateParameters(*header->parameters());
    copyThrough(*header);
    pend(settings_.afterTemplateClose);
}

void CppFormatter::formatTemplateParameters(Cpp::ParameterListNode& list) {
    const OptionalText& afterOpen = settings_.afterTemplateOpen;
    const OptionalText& beforeClose = settings_.beforeTemplateClose;
    writeGapBefore(list, settings_.beforeTemplateOpen);
    writer_.copyThrough(list.start());
    if (list.size() == 0) {
        const std::string_view gap = writer_.readGap(list.end());
        if (afterOpen.present || beforeClose.present) {
            writer_.writeWithoutTrailing(gap);
        } else {
            writer_.write(gap);
        }
        return;
    }
    writeGapBefore(**list.childBegin(), afterOpen);
    formatSeparatedList(list, {settings_.beforeTemplateComma, settings_.betweenTemplateParameters});
    const std::string_view closing = writer_.readGap(list.end());
    if (beforeClose.present) {
        writer_.writeMerged(closing, beforeClose.text);
    } else {
        writer_.write(closing);
    }
}

}  // namespace Tessel
