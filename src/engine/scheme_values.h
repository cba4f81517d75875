#pragma once

#include "engine/optional_text.h"
#include "scheme/property_set.h"

// Reading a scheme's values into the settings of a pass.
namespace Tessel {

OptionalText readText(const PropertySet& scheme, KeyId key);
// Indentation. It stands in front of every line, those of comments too: of a text with line feeds the last line.
OptionalText readIndent(const PropertySet& scheme, KeyId key);
// False when the key is absent.
Keyed<bool> readSwitch(const PropertySet& scheme, KeyId key);
Keyed<int> readInt(const PropertySet& scheme, KeyId key, int whenAbsent);
// TAB_SIZE; never negative.
int readTabSize(const PropertySet& scheme);
// The columns that a line may have; 0 where none is too long.
int readWrapMargin(const PropertySet& scheme);
// The columns that a line may have that is made of several.
int readJoiningMargin(const PropertySet& scheme);
// CONVERT_WS as one of Zelmor::TabMode; a value that is none counts as absent.
int readTabMode(const PropertySet& scheme);
// Columns that a line may have where lines are wrapped; else more than any line has.
int readRightMargin(const PropertySet& scheme);

// What a pass reads: the scheme, and values that the passes rely on where it lacks them.
PropertySet withSchemeDefaults(PropertySet scheme);

}  // namespace Tessel
