#include "layout/data_offset_calculator.h"

#include "engine/columns.h"
#include "engine/gap.h"
#include "engine/scheme_values.h"
#include "scheme/property_keys.h"

namespace Tessel {

namespace {

// The white space around a bit field's ":" is never aligned.
bool hasInitializer(const Cpp::DataDeclNode& declaration) {
    return declaration.tail() && !declaration.tail()->text().starts_with(':');
}

}  // namespace

DataOffsetCalculator::DataOffsetCalculator(const PropertySet& scheme, const Zelmor::TextDocument& source)
    : OffsetCalculator(scheme, source),
      marks_(scheme, tabSize()),
      afterType_(readText(scheme, Keys::WS_AFTER_DD_TYPE_ID)),
      alignDataNames_(readSwitch(scheme, Keys::ALIGN_DD_NAMES_LEFT)),
      alignClassMembers_(readSwitch(scheme, Keys::ALIGN_CLASS_MEMBER_NAMES_LEFT)) {}

void DataOffsetCalculator::visit(Cpp::DataDeclNode* declaration) {
    if (declaration->type() && !hasInitializer(*declaration)) return;
    run_.add(declaration);
    run_.widen(measure(*declaration));
}

void DataOffsetCalculator::flush() {
    run_.close(run_.widest(), offsets_);
}

int DataOffsetCalculator::measure(const Cpp::DataDeclNode& declaration) const {
    const Cpp::TypeNode* type = declaration.type();
    const Cpp::IdNode* name = declaration.name();
    if (!type) return name ? width(textOf(*name)) : 0;
    const TypeText typeText(textOf(*type));
    if (!name) return width(typeText.text) - 1;

    const std::string_view nameText = textOf(*name);
    if (alignsNames()) return measureFromNameColumn(typeText, nameText);
    const std::string_view line = textBetween(type->start(), name->end());
    const bool staysOnItsLines =
        nameText.find('\n') != std::string_view::npos || containsCommentOrDirective(line);
    if (staysOnItsLines) return width(lastLineOf(line));
    const std::size_t gapSize = line.size() - typeText.text.size() - nameText.size();
    return measureLine(typeText, line.substr(typeText.text.size(), gapSize), nameText);
}

// Marks against the name begin in the column of the names, unless they hang in front of it.
int DataOffsetCalculator::measureFromNameColumn(const TypeText& type, std::string_view name) const {
    const bool beginsWithMarks = marks_.standsAgainstName(type) && !marks_.of(type).isHanging;
    return width(lastLineOf(name)) + (beginsWithMarks ? type.markCount : 0);
}

// A line feed in the type or the gap is written as a blank.
int DataOffsetCalculator::measureLine(const TypeText& type, std::string_view gap,
                                      std::string_view name) const {
    const bool movesMarks = marks_.standsAgainstName(type) || marks_.standsAgainstType(type);
    int column = width(movesMarks ? type.head : type.text);
    column = columnAfter(writtenGap(type, gap), column, tabSize());
    return columnAfter(name, column + (movesMarks ? type.markCount : 0), tabSize());
}

// The white space between type and name, or on that side of the marks that they do not stand against. `gap`
// is what stands in front of the name in the source.
std::string_view DataOffsetCalculator::writtenGap(const TypeText& type, std::string_view gap) const {
    if (!type.hasMarks()) return afterType_.present ? afterType_.text : gap;
    const MarkSettings& marks = marks_.of(type);
    const bool isAnchored = marks.anchor == 0 || marks.anchor == 1;
    if (isAnchored && marks.gap.present) return marks.gap.text;
    const std::string_view behindHead = type.text.substr(type.head.size());
    const std::string_view gapBeforeMarks = behindHead.substr(0, behindHead.find_first_of("*&"));
    const std::string_view ownSide = marks.anchor == 1 ? gapBeforeMarks : gap;
    const std::string_view otherSide = marks.anchor == 1 ? gap : gapBeforeMarks;
    return isAnchored && ownSide.empty() ? otherSide : ownSide;
}

int DataOffsetCalculator::width(std::string_view text) const {
    return columnAfter(text, 0, tabSize());
}

}  // namespace Tessel
