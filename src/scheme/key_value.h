#pragma once

#include <optional>

#include "scheme/key_id.h"
#include "scheme/property_set.h"

namespace Tessel {

// What a scheme has for a key, whatever its type. None where it lacks the key, or has it with a type that is not the
// key's, so that it acts as absent.
std::optional<PropertyValue> valueOf(const PropertySet& scheme, KeyId key);

}  // namespace Tessel
