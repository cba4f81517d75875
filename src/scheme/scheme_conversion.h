#pragma once

#include <string>

#include "scheme/property_set_store.h"

namespace TesselUI {

// The version that schemes of the current form carry; the program's own.
inline constexpr const char* CURRENT_VERSION = "1.2.1";

// Brings the schemes of version 1.1.0, those without a version key, to the current set of keys, and writes
// those that have changed. Gives the message for the user: which old schemes stayed as they are,
// because their files are read-only; empty when there are none. Throws PropertySetStore::WriteError.
std::string convertSchemes(PropertySetStore& store);

// Whether a scheme is one of version 1.1.0.
bool isOldScheme(const Tessel::PropertySet& scheme);

// Brings one to the current set of keys, in memory.
void convertScheme(Tessel::PropertySet& scheme);

}  // namespace TesselUI
