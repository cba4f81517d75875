#pragma once

#include "engine/extension_settings.h"
#include "engine/optional_text.h"
#include "scheme/property_set.h"

namespace Tessel {

// The white space on both sides of a comma.
struct CommaTexts {
    OptionalText before;
    OptionalText behind;

    bool breaksLines() const { return before.hasLineFeed() || behind.hasLineFeed(); }
    bool areAbsent() const { return !before.present && !behind.present; }
};

// What a scheme has for the commas of each kind of list. All that writes commas asks here: the rules of lists of nodes
// (list_rules.cpp), those of lists in expressions (expr_groups.cpp), and the line wrapper.
struct ListCommas {
    ListCommas(const PropertySet& scheme, const ExtensionSettings& extensions);

    CommaTexts parameters;
    CommaTexts templateParameters;
    CommaTexts baseClauses;
    CommaTexts initializers;  // of constructors
    CommaTexts enumerators;
    CommaTexts callArguments;
    CommaTexts templateArguments;
    CommaTexts elements;       // of braces behind "="
    CommaTexts rowElements;    // of a row that is kept
    CommaTexts innerElements;  // of other braces in expressions
    CommaTexts captures;       // and others in square brackets
    CommaTexts declarators;
};

}  // namespace Tessel
