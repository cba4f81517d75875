#pragma once

#include "engine/weighed_breaks.h"
#include "scheme/property_set.h"

namespace Tessel {

// Where continuation lines start.
enum class WrapStyle {
    AtIndent = 0,  // at the indentation
    Aligned = 1,   // below the first character of what is broken
    Indented = 2,  // WRAP_INDENT behind the indentation
};

// What stands at a line break. The values are those of the scheme's keys.
enum class SeparatorPlace {
    None = 0,
    StartsLine = 1,
    EndsLine = 2,
};

enum class ListStrategy {
    Keep = 0,
    Pack = 1,     // as many elements to a line as fit
    Cascade = 2,  // one element to a line, then whatever else it takes
};

// How expressions and lists are broken, as the scheme says. Values out of range become the defaults.
struct WrapSettings : ExtensionSettings {
    explicit WrapSettings(const PropertySet& scheme);

    bool wrapsLines() const { return lineWrap && rightMargin > 0; }
    // Whether breaks that serve little are not made: those that leave their line beyond the margin, and those inside
    // "[ ]", behind casts and at comparisons while there are other places.
    bool weighsBreaks() const { return Tessel::weighsBreaks(*this); }
    bool fillsOperands() const { return expressionStrategy == static_cast<int>(ListStrategy::Pack); }
    ListStrategy callArguments() const {
        switch (callArgumentStrategy) {
            case 0: return ListStrategy::Keep;
            case 1: return ListStrategy::Pack;
            default: return ListStrategy::Cascade;
        }
    }

    // Elements stand below the name of their list sooner, or beside its bracket.
    enum Weighing { BelowName = 1, BesideBracket = 2 };

    // Whether a constructor's initialisers that do not fit on a line stand one to a line.
    bool partsInitializers() const { return weighsWholes() && wrapWeighing == BelowName; }

    static constexpr int kWeightOfOnlyElement = 19;
    // Of a line that begins in front of the first of several elements.
    int weightBehindOpen = 1;
    // Of one that begins with a function's name, below its type.
    int weightOfFunctionName = 0;

    int rightMargin = 0;  // columns; the longest line that is not too long
    bool lineWrap = false;
    int tabSize = 1;
    int tabMode = 0;
    WrapStyle style = WrapStyle::AtIndent;
    SeparatorPlace comma = SeparatorPlace::EndsLine;
    SeparatorPlace shift = SeparatorPlace::StartsLine;
    SeparatorPlace operators = SeparatorPlace::StartsLine;
    ListStrategy lists = ListStrategy::Keep;
    OptionalText wrapIndent;
    OptionalText dataIndent;
};

}  // namespace Tessel
