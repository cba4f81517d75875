#include "scheme/key_value.h"

#include <string>
#include <string_view>

namespace Tessel {

std::optional<PropertyValue> valueOf(const PropertySet& scheme, KeyId key) {
    const std::string_view name = key.name();
    bool isOn = false;
    int number = 0;
    std::string text;
    switch (key.type()) {
        case PropertyType::Boolean:
            return scheme.getBool(name, isOn) ? std::optional<PropertyValue>(isOn) : std::nullopt;
        case PropertyType::Integer:
            return scheme.getInt(name, number) ? std::optional<PropertyValue>(number) : std::nullopt;
        case PropertyType::String: break;
    }
    return scheme.getString(name, text) ? std::optional<PropertyValue>(text) : std::nullopt;
}

}  // namespace Tessel
