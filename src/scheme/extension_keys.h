#pragma once

#include <array>
#include <string_view>

#include "scheme/property_type.h"

// The keys that stand beside the catalogue; extension_keys.def is their table, and tells what each is for.
//
// A key comes about by a row there, a member of ExtensionSettings that names it, and its use in a rule.
namespace Tessel {

// The name of a key whose values have that type.
template <PropertyType valueType>
struct ExtensionKey {
    std::string_view name;
};

namespace Keys {

#define VANTREL_EXTENSION_KEY(key, type) inline constexpr ExtensionKey<PropertyType::type> key{#key};
#include "scheme/extension_keys.def"
#undef VANTREL_EXTENSION_KEY

struct TypedName {
    std::string_view name;
    PropertyType type;
};

inline constexpr std::array EXTENSIONS = {
#define VANTREL_EXTENSION_KEY(key, type) TypedName{#key, PropertyType::type},
#include "scheme/extension_keys.def"
#undef VANTREL_EXTENSION_KEY
};

// Null when the table lacks the key.
constexpr const TypedName* findExtension(std::string_view name) {
    for (const TypedName& key : EXTENSIONS) {
        if (key.name == name) return &key;
    }
    return nullptr;
}

}  // namespace Keys

}  // namespace Tessel
