#pragma once

#include "engine/extension_settings.h"
#include "engine/hanging_lines.h"
#include "engine/list_commas.h"
#include "scheme/property_set.h"

namespace Tessel {

// What the scheme says about one kind of pointer mark, "*" or "&".
struct MarkSettings {
    // 0: the mark stands against the type; 1: against the name; anything else: as in the input.
    Keyed<int> anchor{-1};
    Keyed<bool> isHanging;
    // Between the type and the marks, or between the marks and the name, on the side that is not anchored.
    OptionalText gap;
    // On the side that is.
    OptionalText against;
};

// The scheme's values for expressions and declaration texts.
struct ExprSettings : ExtensionSettings {
    explicit ExprSettings(const PropertySet& scheme);

    ListCommas commas;
    OptionalText afterOperator;
    OptionalText afterCallName;
    OptionalText afterOpenParen;
    OptionalText beforeCloseParen;
    OptionalText afterOpenBracket;
    OptionalText beforeCloseBracket;
    OptionalText afterOpenAngle;
    OptionalText beforeCloseAngle;
    OptionalText beforeDataBrace;
    OptionalText afterDataBrace;
    OptionalText beforeDataCloseBrace;
    OptionalText dataIndent;
    MarkSettings asterisk;
    MarkSettings ampersand;
    HangingIndents hanging;
    int wrapMargin = 0;  // 0 where no line is too long
};

}  // namespace Tessel
