#include "engine/type_text.h"

#include <algorithm>

#include "engine/columns.h"
#include "engine/gap.h"
#include "engine/holds_any_of.h"
#include "engine/scheme_values.h"
#include "scheme/property_keys.h"

namespace Tessel {

namespace {

bool isMark(char c) {
    return c == '*' || c == '&';
}

MarkSettings readMarks(const PropertySet& scheme, KeyId anchor, KeyId hanging, KeyId gap) {
    constexpr int asInInput = -1;
    return {readInt(scheme, anchor, asInInput), readSwitch(scheme, hanging), readText(scheme, gap), {true, "", anchor}};
}

}  // namespace

TypeText::TypeText(std::string_view source) : text(trimRight(source)), head(text) {
    if (text.empty() || !isMark(text.back())) return;
    // The first character is never taken for a mark.
    while (head.size() > 1 && (isMark(head.back()) || isWhitespace(head.back()))) {
        markCount += isMark(head.back());
        head.remove_suffix(1);
    }
    const bool splitsOperator = head.ends_with('&') && text[head.size()] == '&';
    if (!head.ends_with("->") && !head.ends_with('.') && !splitsOperator) return;
    head = text;  // the mark belongs to an operator
    markCount = 0;
}

bool endsWithMarks(std::string_view type) {
    if (!holdsAnyOf<'*', '&'>(type)) return false;
    for (bool isQualified = true; isQualified;) {
        isQualified = false;
        type = trimRight(type);
        for (const std::string_view qualifier : {"const", "volatile"}) {
            if (!type.ends_with(qualifier)) continue;
            const std::string_view rest = trimRight(type.substr(0, type.size() - qualifier.size()));
            if (!rest.ends_with('*') && !rest.ends_with('&')) return false;
            type = rest;
            isQualified = true;
        }
    }
    return TypeText(type).hasMarks();
}

std::string_view lastLineOf(std::string_view text) {
    const std::size_t lineFeed = text.rfind('\n');
    return lineFeed == std::string_view::npos ? text : trimLeft(text.substr(lineFeed + 1));
}

MarkPlacement::MarkPlacement(const PropertySet& scheme, int tabSize)
    : tabSize_(tabSize),
      asterisk_(
          readMarks(scheme, Keys::ASTERISK_ANCHOR, Keys::HANGING_ASTERISK, Keys::WS_BETWEEN_ASTERISK_ANCHOR)),
      ampersand_(readMarks(scheme, Keys::AMPERSAND_ANCHOR, Keys::HANGING_AMPERSAND,
                           Keys::WS_BETWEEN_AMPERSAND_ANCHOR)) {}

int MarkPlacement::measure(const TypeText& type) const {
    if (!type.hasMarks()) return width(type.text);
    const MarkSettings& marks = of(type);
    if (standsAgainstName(type)) return measureBeforeMarks(type, marks.isHanging);
    const bool hasGap = marks.anchor != -1 && marks.gap.present;
    if (standsAgainstType(type)) {
        const int attached = width(type.head) + type.markCount;
        return hasGap ? attached + width(marks.gap.text) : attached - 1;
    }
    // Marks that stay where they are separate the name from the type.
    return hasGap ? width(type.text) : width(type.text) - 1;
}

// Hanging marks take the columns in front of the name's; a blank is to stay between them and the type.
int MarkPlacement::measureBeforeMarks(const TypeText& type, bool isHanging) const {
    const int headWidth = width(type.head);
    if (!isHanging) return headWidth;
    const int step = std::max(tabSize_, 1);
    int measure = headWidth;
    while (roundUpToMultiple(measure + 1, step) - headWidth <= type.markCount) measure += step;
    return measure;
}

int MarkPlacement::width(std::string_view text) const {
    return columnAfter(text, 0, tabSize_);
}

bool isAlias(std::string_view statement) {
    const auto startsWith = [statement](std::string_view word) {
        return statement.starts_with(word) && statement.size() > word.size() &&
               isAllWhitespace(statement.substr(word.size(), 1));
    };
    return (startsWith("using") || startsWith("namespace")) && statement.ends_with(';') &&
           statement.find_first_of("\n/#[{") == statement.npos && statement.find("operator") == statement.npos;
}

bool givesTypeName(const Cpp::ExprNode& statement) {
    return statement.firstWord() == "using";
}

}  // namespace Tessel
