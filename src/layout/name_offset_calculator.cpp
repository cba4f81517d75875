#include "layout/name_offset_calculator.h"

#include <algorithm>

#include "engine/columns.h"
#include "engine/extension_settings.h"
#include "engine/gap.h"
#include "engine/scheme_values.h"
#include "scheme/property_keys.h"

namespace Tessel {

namespace {

// "class A;", "friend class A;", "typedef int A;", "using A = int;"
bool declaresNoData(std::string_view type) {
    const std::string_view first = type.substr(0, type.find(' '));
    return first == "friend" || first == "typedef" || first == "using" || type == "class" || type == "struct" ||
           type == "union" || type == "enum" || type == "enum class";
}

// Constructors, destructors, conversions and friends.
bool isSpecial(const Cpp::FunctionHeadNode& head) {
    if (!head.returnType() || (head.name() && head.name()->startsWith('~'))) return true;
    const std::string_view type = head.returnType()->text();
    return type.starts_with("friend ") || type.starts_with("typedef ") || type.ends_with("explicit") ||
           (head.name() && head.name()->text().starts_with("operator ") && !type.ends_with("operator"));
}

}  // namespace

NameOffsetCalculator::NameOffsetCalculator(const PropertySet& scheme, const Zelmor::TextDocument& source)
    : OffsetCalculator(scheme, source),
      marks_(scheme, tabSize()),
      alignClassMembers_(readSwitch(scheme, Keys::ALIGN_CLASS_MEMBER_NAMES_LEFT)),
      alignFnDeclNames_(readSwitch(scheme, Keys::ALIGN_FN_DECL_NAMES_LEFT)),
      alignDataNames_(readSwitch(scheme, Keys::ALIGN_DD_NAMES_LEFT)),
      keepsData_(readSwitch(scheme, Keys::DATA_DO_NOT_FORMAT)),
      alignsDataOnly_(ExtensionSettings(scheme).alignsDataOnly) {}

void NameOffsetCalculator::visit(Cpp::ClassDeclNode* declaration) {
    OffsetCalculator::visit(declaration);
    lastClass_ = declaration;
}

void NameOffsetCalculator::visit(Cpp::ClassBodyNode* body) {
    visitMembers(*body);
    classBodyEnded_ = true;
}

void NameOffsetCalculator::visit(Cpp::DataDeclNode* declaration) {
    if (!alignsData()) {
        flush();
        return;
    }
    if (alignsDataOnly_ && declaration->type() && declaresNoData(declaration->type()->text())) return;
    if (alignsDataOnly_ && goesOnBehindBody(*declaration)) return;
    if (const std::optional<int> width = measure(declaration->type(), declaration->name())) {
        dataRun_.add(declaration);
        dataRun_.widen(*width);
    }
}

void NameOffsetCalculator::visit(Cpp::FunctionDeclNode* declaration) {
    if (!alignsFunctions() || declaration->body() || !declaration->head()) {
        flushAndVisitBody(*declaration);
        return;
    }
    const Cpp::FunctionHeadNode& head = *declaration->head();
    if (alignsDataOnly_ && isSpecial(head)) return;
    if (const std::optional<int> width = measure(head.returnType(), head.name())) {
        functionRun_.add(declaration);
        functionRun_.widen(*width);
    }
}

void NameOffsetCalculator::visit(Cpp::CtorDeclNode* declaration) {
    if (declaration->body()) {
        flushAndVisitBody(*declaration);
    } else if (alignsFunctions() && !alignsDataOnly_) {
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

// `} __attribute__((packed)) name;`, which stands in no column.
bool NameOffsetCalculator::goesOnBehindBody(const Cpp::DataDeclNode& declaration) const {
    if (!lastClass_ || !lastClass_->body() || lastClass_->end() != lastClass_->body()->end()) return false;
    const std::string_view between = textBetween(lastClass_->end(), declaration.start());
    return between.size() >= 2 && isAllWhitespace(between.substr(1, between.size() - 2));
}

// Nothing when the declaration cannot be aligned. The lines of a type are joined where its name is aligned, which those
// of `A<\n B>::c` are not.
std::optional<int> NameOffsetCalculator::measure(const Cpp::TypeNode* type, const Cpp::IdNode* name) const {
    if (!type) return 0;
    const Trn::Position nameStart = name ? name->start() : type->end();
    const std::string_view typeText = textBetween(type->start(), nameStart);
    const bool isQualified = name && name->startsWith(':');
    if (!maySpace(typeText) || (isQualified && typeText.find('\n') != std::string_view::npos)) return std::nullopt;
    return marks_.measure(TypeText(textOf(*type)));
}

}  // namespace Tessel
