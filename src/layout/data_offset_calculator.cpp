#include "layout/data_offset_calculator.h"

#include <algorithm>
#include <cctype>

#include "engine/columns.h"
#include "engine/declarator_text.h"
#include "engine/gap.h"
#include "engine/scheme_values.h"
#include "scheme/property_keys.h"

namespace Tessel {

namespace {

// The white space around a bit field's ":" is never aligned.
bool hasInitializer(const Cpp::DataDeclNode& declaration) {
    return declaration.tail() && !declaration.tail()->startsWith(':');
}

// Names that are written as they stand in the source.
bool isPlainName(std::string_view name) {
    return std::all_of(name.begin(), name.end(), [](unsigned char c) { return std::isalnum(c) || c == '_'; });
}

}  // namespace

DataOffsetCalculator::DataOffsetCalculator(const PropertySet& scheme, const Zelmor::TextDocument& source)
    : OffsetCalculator(scheme, source),
      exprFormatter_(scheme, &source),
      marks_(scheme, tabSize()),
      afterType_(readText(scheme, Keys::WS_AFTER_DD_TYPE_ID)),
      behindType_(onOneLine(afterType_.text)),
      alignDataNames_(readSwitch(scheme, Keys::ALIGN_DD_NAMES_LEFT)),
      alignClassMembers_(readSwitch(scheme, Keys::ALIGN_CLASS_MEMBER_NAMES_LEFT)),
      afterName_(readText(scheme, Keys::WS_AFTER_DD_NAME)),
      afterBracket_(readText(scheme, Keys::WS_AFTER_DD_RBRACKET)),
      keepsData_(readSwitch(scheme, Keys::DATA_DO_NOT_FORMAT)) {
    afterType_.text = behindType_;
}

void DataOffsetCalculator::visit(Cpp::DataDeclNode* declaration) {
    if (declaration->type() && !hasInitializer(*declaration)) return;
    if (const std::optional<int> width = measure(*declaration)) {
        run_.add(declaration);
        run_.widen(*width);
    }
}

void DataOffsetCalculator::flush() {
    run_.close(run_.widest(), offsets_);
}

bool DataOffsetCalculator::alignsNames() const {
    return !keepsData_ && (alignDataNames_ || (alignClassMembers_ && inClassBody()));
}

// Nothing where names are aligned but this one cannot be.
std::optional<int> DataOffsetCalculator::measure(const Cpp::DataDeclNode& declaration) {
    const Cpp::TypeNode* type = declaration.type();
    const Cpp::IdNode* name = declaration.name();
    if (!type) return name ? width(lastLineOf(writtenName(textOf(*name), false))) : 0;
    if (!name) return width(textOf(*type)) - 1;

    std::string_view typeText = textBetween(type->start(), name->start());
    typeText.remove_suffix(1);  // the name's first character
    const std::string nameText = writtenName(textOf(*name), alignsNames());
    if (!alignsNames()) return width(lastLineOf(writtenType(typeText) + nameText));

    if (!maySpace(typeText)) return std::nullopt;
    // Marks against the name begin in the column of the names, unless they hang in front of it.
    const TypeText marked(typeText);
    const bool beginsWithMarks = marks_.standsAgainstName(marked) && !marks_.of(marked).isHanging;
    return width(lastLineOf(nameText)) + (beginsWithMarks ? marked.markCount : 0);
}

// `type` reaches up to the name, which is not aligned.
std::string DataOffsetCalculator::writtenType(std::string_view type) {
    if (!keepsData_ && endsWithMarks(type)) {
        Zelmor::OIndentBuf out(lineStart());
        exprFormatter_.formatTypeText(type, out, afterType_);
        return out.takeText();
    }
    std::string written(type);
    if (!keepsData_ && afterType_.present) mergeWhitespace(written, afterType_.text);
    return written;
}

std::string DataOffsetCalculator::writtenName(std::string_view name, bool isAligned) {
    if (isPlainName(name)) return std::string(name);
    Zelmor::OIndentBuf out(lineStart());
    exprFormatter_.formatDeclarators(name, out);
    std::string written = out.takeText();
    if (!isAligned) {
        spaceBrackets(written, afterName_, afterBracket_);
        written.erase(trimRight(written).size());
    }
    return written;
}

Zelmor::IndentState DataOffsetCalculator::lineStart() const {
    Zelmor::IndentState state;
    state.tabSize = tabSize();
    return state;
}

int DataOffsetCalculator::width(std::string_view text) const {
    return columnAfter(text, 0, tabSize());
}

}  // namespace Tessel
