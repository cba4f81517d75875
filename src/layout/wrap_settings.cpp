#include "layout/wrap_settings.h"

#include <algorithm>

#include "engine/scheme_values.h"
#include "scheme/property_keys.h"

namespace Tessel {

namespace {

// Beside WrapSettings::kWeightOfOnlyElement.
constexpr int kLightElement = 1;
constexpr int kLightName = 60;
constexpr int kHeavyName = 200;

// One of the values 0 to 2 of a style key.
template <typename Style>
Style readStyle(const PropertySet& scheme, KeyId key, Style whenAbsent) {
    constexpr int last = 2;
    const int value = readInt(scheme, key, -1);
    return value < 0 || value > last ? whenAbsent : static_cast<Style>(value);
}

}  // namespace

WrapSettings::WrapSettings(const PropertySet& scheme)
    : ExtensionSettings(scheme),
      weightBehindOpen(wrapWeighing == BelowName ? kLightElement : kWeightOfOnlyElement),
      weightOfFunctionName(wrapWeighing == BelowName ? kHeavyName : kLightName),
      rightMargin(std::max(readInt(scheme, Keys::RIGHT_MARGIN, 0).value, 0)),
      lineWrap(readSwitch(scheme, Keys::LINE_WRAP)),
      tabSize(std::max(readTabSize(scheme), 1)),
      tabMode(readTabMode(scheme)),
      style(readStyle(scheme, Keys::WRAP_STYLE, WrapStyle::AtIndent)),
      comma(readStyle(scheme, Keys::COMMA_WRAP_STYLE, SeparatorPlace::EndsLine)),
      shift(readStyle(scheme, Keys::SHIFT_WRAP_STYLE, SeparatorPlace::StartsLine)),
      operators(readStyle(scheme, Keys::EXPR_WRAP_STYLE, SeparatorPlace::StartsLine)),
      lists(readStyle(scheme, Keys::LIST_WRAP_STRATEGY, ListStrategy::Keep)),
      wrapIndent(readIndent(scheme, Keys::WRAP_INDENT)),
      dataIndent(readIndent(scheme, Keys::INDENT_DD_CONTENT)) {}

}  // namespace Tessel
