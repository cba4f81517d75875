#include "layout/name_offset_calculator.h"

#include <algorithm>

#include "engine/columns.h"
#include "engine/gap.h"
#include "engine/scheme_values.h"
#include "scheme/property_keys.h"

namespace Tessel {

NameOffsetCalculator::NameOffsetCalculator(const PropertySet& scheme, const Zelmor::TextDocument& source)
    : OffsetCalculator(scheme, source),
      marks_(scheme, tabSize()),
      alignClassMembers_(readSwitch(scheme, Keys::ALIGN_CLASS_MEMBER_NAMES_LEFT)),
      alignFnDeclNames_(readSwitch(scheme, Keys::ALIGN_FN_DECL_NAMES_LEFT)),
      alignDataNames_(readSwitch(scheme, Keys::ALIGN_DD_NAMES_LEFT)),
      joinsLines_(readSwitch(scheme, Keys::ALIGN_DD_INITIALIZERS)) {}

void NameOffsetCalculator::visit(Cpp::ClassBodyNode* body) {
    visitMembers(*body);
    classBodyEnded_ = true;
}

void NameOffsetCalculator::visit(Cpp::DataDeclNode* declaration) {
    if (!alignsData()) {
        flush();
        return;
    }
    if (const std::optional<int> measure = measureData(*declaration)) {
        dataRun_.add(declaration);
        dataRun_.widen(*measure);
    }
}

void NameOffsetCalculator::visit(Cpp::FunctionDeclNode* declaration) {
    if (!alignsFunctions() || declaration->body() || !declaration->head()) {
        flushAndVisitBody(*declaration);
        return;
    }
    if (const std::optional<int> measure = measureFunction(*declaration->head())) {
        functionRun_.add(declaration);
        functionRun_.widen(*measure);
    }
}

void NameOffsetCalculator::visit(Cpp::CtorDeclNode* declaration) {
    if (declaration->body()) {
        flushAndVisitBody(*declaration);
    } else if (alignsFunctions()) {
        functionRun_.add(declaration);
    }
}

void NameOffsetCalculator::flush() {
    int dataOffset = offsetBehind(dataRun_.widest());
    int functionOffset = offsetBehind(functionRun_.widest());
    if (alignClassMembers_ && (inClassBody() || classBodyEnded_)) {
        dataOffset = functionOffset = std::max(dataOffset, functionOffset);
        classBodyEnded_ = false;
    }
    dataRun_.close(dataOffset, dataOffsets_);
    functionRun_.close(functionOffset, functionOffsets_);
}

int NameOffsetCalculator::offsetBehind(int widest) const {
    return widest > 0 ? roundUpToMultiple(widest + 1, tabSize()) : 0;
}

// Nothing when the declaration cannot be aligned.
std::optional<int> NameOffsetCalculator::measureData(const Cpp::DataDeclNode& declaration) const {
    const Cpp::TypeNode* type = declaration.type();
    if (!type) return 0;
    if (holdsTrivia(*type, declaration.name())) return std::nullopt;
    const std::string_view text = textOf(*type);
    return marks_.measure(TypeText(joinsLines_ ? text : lastLineOf(text)));
}

// The lines of a return type are joined where its name is aligned.
std::optional<int> NameOffsetCalculator::measureFunction(const Cpp::FunctionHeadNode& head) const {
    const Cpp::FunctionReturnNode* type = head.returnType();
    if (!type) return 0;
    if (holdsTrivia(*type, head.name())) return std::nullopt;
    return marks_.measure(TypeText(textOf(*type)));
}

// A comment or directive in front of the name has to keep its place.
bool NameOffsetCalculator::holdsTrivia(const Cpp::SyntaxNode& type, const Cpp::SyntaxNode* name) const {
    return containsCommentOrDirective(textBetween(type.start(), name ? name->start() : type.end()));
}

}  // namespace Tessel
