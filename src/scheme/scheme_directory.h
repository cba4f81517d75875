#pragma once

#include <string>

namespace TesselUI {

// The directory of the scheme files; the first of
//
//   1. the environment variable VANTREL_SCHEMES, unless it is empty;
//   2. the value PropertySetStore of the settings file, $XDG_CONFIG_HOME/vantrel/settings (~/.config by
//      default);
//   3. the directory of the running executable, links resolved; "" when that cannot be found out.
//
// The settings file has lines "key = value", and comments from "#". It is never created, but where it exists
// and has no value for PropertySetStore, the executable's directory is written there.
std::string schemeDirectory();

// The first two of these, nothing being written; "" where the user has chosen none.
std::string chosenSchemeDirectory();

// The third.
std::string shippedSchemeDirectory();

}  // namespace TesselUI
