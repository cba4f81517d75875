#pragma once

#include "engine/extension_settings.h"
#include "engine/hanging_lines.h"
#include "engine/list_commas.h"
#include "scheme/property_set.h"

namespace Tessel {

// Where a mark stands; with any other value as in the input.
inline constexpr int kAnchoredToType = 0;
inline constexpr int kAnchoredToName = 1;

// What the scheme says about one kind of pointer mark, "*" or "&".
struct MarkSettings {
    Keyed<int> anchor{-1};
    Keyed<bool> isHanging;
    // Between the type and the marks, or between the marks and the name, on the side that is not anchored.
    OptionalText gap;
    // On the side that is.
    OptionalText against;
};

// Where the marks at the end of a type stand: by their anchor, or against the name, as those of the further names do.
enum class LastMarks { ByAnchor, AgainstName };

// What stands between tokens that no other key is about; both absent where that stays as it is.
struct OtherGapTexts {
    OptionalText none;
    OptionalText blank;
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
    OptionalText beforeTemplateOpen;
    OptionalText afterOpenAngle;
    OptionalText beforeCloseAngle;
    OptionalText beforeDataBrace;
    OptionalText afterDataBrace;
    OptionalText beforeDataCloseBrace;
    OptionalText dataIndent;
    MarkSettings asterisk;
    MarkSettings ampersand;
    HangingIndents hanging;
    OtherGapTexts otherGaps;
    OptionalText beforeLambdaBody;  // of several lines, where FORMAT_OTHER_GAPS puts the "{" behind its head
    int wrapMargin = 0;  // 0 where no line is too long
};

}  // namespace Tessel
