#pragma once

#include <algorithm>
#include <array>
#include <string_view>

#include "scheme/extension_keys.h"
#include "scheme/property_keys.h"

// All keys that mean something, the catalogue's and those beside it.
namespace Tessel::Keys {

inline constexpr auto ALL = [] {
    std::array<std::string_view, CATALOGUE.size() + EXTENSIONS.size()> keys;
    const auto end = std::copy(CATALOGUE.begin(), CATALOGUE.end(), keys.begin());
    std::transform(EXTENSIONS.begin(), EXTENSIONS.end(), end,
                   [](const TypedName& key) { return key.name; });
    return keys;
}();

constexpr bool isKnown(std::string_view key) {
    return std::find(ALL.begin(), ALL.end(), key) != ALL.end();
}

// The type that the readers of a known key expect. Stored with another type, the key acts as absent.
constexpr PropertyType typeOf(std::string_view key) {
    const TypedName* extension = findExtension(key);
    return extension ? extension->type : catalogueTypeOf(key);
}

}  // namespace Tessel::Keys
