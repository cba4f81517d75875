#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "scheme/property_set.h"

namespace Fuzz {

// What formatting the result once more has to come to.
enum class SecondRun { Accepted, Unchanged };

// The formatted text, or nothing when the source does not parse. Whatever else goes wrong ends the process,
// and so does a result that breaks a promise: its tokens and its tree are not those of the source, or it does
// not stand a second run. What is wrong is on standard error.
std::optional<std::string> formatChecked(const Tessel::PropertySet& scheme, std::string_view source,
                                         SecondRun secondRun);

}  // namespace Fuzz
