#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "scheme/property_set.h"

namespace TesselUI {

// The scheme of that name as the store would find it, where that takes no more than the file that has its name: it
// holds the scheme, as of this version, and no file in front of it holds one of the same name. Else nothing, and the
// store has to tell.
std::optional<Tessel::PropertySet> readNamedScheme(const std::string& directory, std::string_view name);

}  // namespace TesselUI
