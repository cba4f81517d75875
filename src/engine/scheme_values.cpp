#include "engine/scheme_values.h"

#include <algorithm>
#include <limits>
#include <string>

#include "scheme/property_keys.h"
#include "textstream/otext_doc_buf.h"

namespace Tessel {

namespace {

// Wider tabs than anyone uses, and still far from what column arithmetic can bear.
constexpr int kWidestTab = 1000;

bool isMissing(const PropertySet& scheme, KeyId key) {
    return !scheme.contains(key);
}

void setWhenMissing(PropertySet& scheme, KeyId key, int value) {
    if (isMissing(scheme, key)) scheme.setInt(key.name(), value);
}

void setWhenMissing(PropertySet& scheme, KeyId key, std::string_view value) {
    if (isMissing(scheme, key)) scheme.setString(key.name(), value);
}

}  // namespace

OptionalText readText(const PropertySet& scheme, KeyId key) {
    OptionalText value;
    value.key = key;
    if (const std::string* const text = scheme.findString(key)) value = {true, *text, key};
    return value;
}

OptionalText readIndent(const PropertySet& scheme, KeyId key) {
    OptionalText value = readText(scheme, key);
    value.text.remove_prefix(value.text.rfind('\n') + 1);
    return value;
}

Keyed<bool> readSwitch(const PropertySet& scheme, KeyId key) {
    Keyed<bool> value{false, key};
    scheme.getBool(key, value.value);
    return value;
}

Keyed<int> readInt(const PropertySet& scheme, KeyId key, int whenAbsent) {
    Keyed<int> value{whenAbsent, key};
    scheme.getInt(key, value.value);
    return value;
}

int readTabSize(const PropertySet& scheme) {
    return std::clamp(readInt(scheme, Keys::TAB_SIZE, 1).value, 0, kWidestTab);
}

int readWrapMargin(const PropertySet& scheme) {
    return readSwitch(scheme, Keys::LINE_WRAP) ? std::max(readInt(scheme, Keys::RIGHT_MARGIN, 0).value, 0) : 0;
}

int readJoiningMargin(const PropertySet& scheme) {
    constexpr int whenAbsent = 80;
    const int margin = readInt(scheme, Keys::RIGHT_MARGIN, whenAbsent).value;
    return margin > 0 ? margin : whenAbsent;
}

int readTabMode(const PropertySet& scheme) {
    const int mode = readInt(scheme, Keys::CONVERT_WS, Zelmor::KeepTabs);
    const bool isInIndentOnly = readSwitch(scheme, Keys::TABS_IN_INDENT_ONLY);
    switch (mode) {
        case Zelmor::TabsToSpaces: return mode;
        case Zelmor::SpacesToTabs: return isInIndentOnly ? Zelmor::SpacesToTabsInIndent : mode;
        default: return isInIndentOnly ? Zelmor::KeepTabsInIndent : Zelmor::KeepTabs;
    }
}

int readRightMargin(const PropertySet& scheme) {
    const int margin = readSwitch(scheme, Keys::LINE_WRAP) ? readInt(scheme, Keys::RIGHT_MARGIN, 0).value : 0;
    return margin > 0 ? margin : std::numeric_limits<int>::max();
}

PropertySet withSchemeDefaults(PropertySet scheme) {
    constexpr int asInInput = -1;
    setWhenMissing(scheme, Keys::ASTERISK_ANCHOR, asInInput);
    setWhenMissing(scheme, Keys::AMPERSAND_ANCHOR, asInInput);
    setWhenMissing(scheme, Keys::TAB_SIZE, 1);
    setWhenMissing(scheme, Keys::WS_AFTER_PARAM_TYPE_ID, " ");

    // A type and the name behind it must not run into each other; with an anchor gap, marks move away from
    // between them, so that the gap has to be there.
    const bool hasAnchorGap = !isMissing(scheme, Keys::WS_BETWEEN_AMPERSAND_ANCHOR) ||
                              !isMissing(scheme, Keys::WS_BETWEEN_ASTERISK_ANCHOR);
    for (const KeyId key : {KeyId(Keys::WS_AFTER_DD_TYPE_ID), KeyId(Keys::WS_AFTER_FN_DECL_RETURN_TYPE),
                            KeyId(Keys::WS_AFTER_FN_DEFN_RETURN_TYPE)}) {
        std::string value;
        const bool isEmpty = scheme.getString(key, value) && value.empty();
        if (isEmpty || (hasAnchorGap && isMissing(scheme, key))) scheme.setString(key.name(), " ");
    }

    setWhenMissing(scheme, Keys::CONVERT_WS, 0);
    if (readSwitch(scheme, Keys::LINE_WRAP)) {
        setWhenMissing(scheme, Keys::WS_BETWEEN_EXPR_OP_OPERANDS, " ");
    }
    setWhenMissing(scheme, Keys::EXPR_WRAP_STYLE, 1);
    return scheme;
}

}  // namespace Tessel
