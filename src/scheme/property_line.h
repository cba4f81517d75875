#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "scheme/property_type.h"

// The lines of a property set's text form.
namespace Tessel {

// What separates the parts of a line, and what no key may hold.
constexpr bool isBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

using PropertyValue = std::variant<bool, int, std::string>;  // in the order of the types

struct Property {
    std::string key;
    PropertyValue value;

    PropertyType type() const { return static_cast<PropertyType>(value.index() + 1); }
    bool operator==(const Property&) const = default;
};

// The order in which properties are written: by type, then by key.
bool comesBefore(const Property& left, const Property& right);

struct PropertyLine {
    bool hasType = false;              // starts with the tag of a type: else the text is no property set
    std::optional<Property> property;  // none when key or value cannot be read: such a line means nothing
};

// Takes a line like `3 WS_AFTER_FN_NAME " "` apart.
PropertyLine readPropertyLine(std::string_view text);

// The line, without a line end.
std::string propertyLine(const Property& property);
// What it has behind its type and key: `" "`.
std::string valueText(const PropertyValue& value);

std::optional<int> leadingInteger(std::string_view line);

// The line without the white space around it; empty when it is a comment.
std::string_view significantPart(std::string_view line);

// The text without the quotes around it, should it have them.
std::string_view withoutQuotes(std::string_view text);

}  // namespace Tessel
