#include "engine/expr_settings.h"

#include "engine/scheme_values.h"
#include "scheme/property_keys.h"

namespace Tessel {

namespace {

constexpr int kNoAnchor = -1;

MarkSettings readMark(const PropertySet& scheme, KeyId anchor, KeyId hanging, KeyId gap) {
    return {readInt(scheme, anchor, kNoAnchor),
            readSwitch(scheme, hanging),
            readText(scheme, gap),
            {true, "", anchor}};
}

// Nothing where a line ends there.
OptionalText withinLine(const OptionalText& text) { return text.hasLineFeed() ? OptionalText() : text; }

}  // namespace

ExprSettings::ExprSettings(const PropertySet& scheme)
    : ExtensionSettings(scheme),
      commas(scheme, *this),
      afterOperator(readText(scheme, Keys::WS_BETWEEN_EXPR_OP_OPERANDS)),
      afterCallName(readText(scheme, Keys::WS_AFTER_FN_CALL_NAME)),
      afterOpenParen(readText(scheme, Keys::WS_AFTER_EXPR_OPEN_PAREN)),
      beforeCloseParen(readText(scheme, Keys::WS_BEFORE_EXPR_CLOSE_PAREN)),
      afterOpenBracket(readText(scheme, Keys::WS_AFTER_LBRACKET)),
      beforeCloseBracket(readText(scheme, Keys::WS_BEFORE_RBRACKET)),
      beforeTemplateOpen(readText(scheme, Keys::WS_BEFORE_TP_OPEN_BRACKET)),
      afterOpenAngle(readText(scheme, Keys::WS_AFTER_TP_OPEN_BRACKET)),
      beforeCloseAngle(readText(scheme, Keys::WS_BEFORE_TP_CLOSE_BRACKET)),
      beforeDataBrace(readText(scheme, Keys::WS_BEFORE_DD_OPEN_BRACE)),
      afterDataBrace(readText(scheme, Keys::WS_AFTER_DD_OPEN_BRACE)),
      beforeDataCloseBrace(readText(scheme, Keys::WS_BEFORE_DD_CLOSE_BRACE)),
      dataIndent(readIndent(scheme, Keys::INDENT_DD_CONTENT)),
      asterisk(
          readMark(scheme, Keys::ASTERISK_ANCHOR, Keys::HANGING_ASTERISK, Keys::WS_BETWEEN_ASTERISK_ANCHOR)),
      ampersand(readMark(scheme, Keys::AMPERSAND_ANCHOR, Keys::HANGING_AMPERSAND,
                         Keys::WS_BETWEEN_AMPERSAND_ANCHOR)),
      hanging{readIndent(scheme, Keys::WRAP_INDENT), dataIndent, operandIndent,
              readIndent(scheme, Keys::INDENT_FN_CONTENT), hangsFromStatement, hangsFromLine, hangsCommas,
              weighsWholes(), operandIndent.present && readWrapMargin(scheme) == 0},
      otherGaps{{formatsOtherGaps, "", formatsOtherGaps.key}, {formatsOtherGaps, " ", formatsOtherGaps.key}},
      beforeLambdaBody(formatsOtherGaps ? withinLine(readText(scheme, Keys::WS_BEFORE_FN_OPEN_BRACE)) : OptionalText()),
      wrapMargin(readWrapMargin(scheme)) {}

}  // namespace Tessel
