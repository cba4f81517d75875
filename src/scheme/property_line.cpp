#include "scheme/property_line.h"

#include <algorithm>
#include <charconv>
#include <system_error>
#include <utility>

#include "textstream/string_escape.h"

namespace Tessel {

namespace {

// Takes the parts of one line, from left to right.
class LineParts {
public:
    explicit LineParts(std::string_view line) : rest_(line) {}

    // A decimal integer; what follows it stays.
    std::optional<int> integer() {
        skipWhiteSpace();
        std::string_view digits = rest_;
        if (digits.starts_with('+') && !digits.starts_with("+-")) digits.remove_prefix(1);
        int value = 0;
        const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
        if (error != std::errc()) return std::nullopt;
        rest_ = digits.substr(static_cast<std::size_t>(end - digits.data()));
        return value;
    }

    // A run of non-blank characters.
    std::string_view word() {
        skipWhiteSpace();
        return takeUntil(std::find_if(rest_.begin(), rest_.end(), isBlank));
    }

    // A text between quotes, which it keeps, or a word.
    std::string_view quotedTextOrWord() {
        skipWhiteSpace();
        return rest_.starts_with('"') ? take(quotedLength()) : word();
    }

private:
    void skipWhiteSpace() { takeUntil(std::find_if_not(rest_.begin(), rest_.end(), isBlank)); }

    std::string_view takeUntil(std::string_view::const_iterator end) {
        return take(static_cast<std::size_t>(end - rest_.begin()));
    }

    std::string_view take(std::size_t length) {
        const std::string_view part = rest_.substr(0, length);
        rest_.remove_prefix(length);
        return part;
    }

    // A backslash takes the character behind it along, so that an escaped quote does not end the text.
    std::size_t quotedLength() const {
        for (std::size_t i = 1; i < rest_.size(); ++i) {
            if (rest_[i] == '"') return i + 1;
            if (rest_[i] == '\\') ++i;
        }
        return rest_.size();
    }

    std::string_view rest_;
};

using Value = decltype(Property::value);

std::optional<PropertyType> readType(LineParts& parts) {
    const std::optional<int> tag = parts.integer();
    if (!tag || *tag < 1 || *tag > static_cast<int>(std::variant_size_v<Value>)) return std::nullopt;
    return static_cast<PropertyType>(*tag);
}

std::optional<Value> readValue(PropertyType type, LineParts& parts) {
    if (type == PropertyType::String) {
        std::string text(parts.quotedTextOrWord());
        Zelmor::unescape(text);
        return std::string(withoutQuotes(text));
    }
    const std::optional<int> number = parts.integer();
    if (type == PropertyType::Integer) return number;
    if (number == 0 || number == 1) return number == 1;
    return std::nullopt;
}

std::string quoted(std::string value) {
    Zelmor::escape(value);
    return '"' + value + '"';
}

}  // namespace

bool comesBefore(const Property& left, const Property& right) {
    return std::pair(left.type(), std::string_view(left.key)) <
           std::pair(right.type(), std::string_view(right.key));
}

PropertyLine readPropertyLine(std::string_view text) {
    LineParts parts(text);
    const std::optional<PropertyType> type = readType(parts);
    PropertyLine line;
    line.hasType = type.has_value();
    if (!type) return line;
    std::string key(parts.word());
    std::optional<Value> value = readValue(*type, parts);
    if (!key.empty() && value) line.property = {std::move(key), std::move(*value)};
    return line;
}

std::string propertyLine(const Property& property) {
    return std::to_string(static_cast<int>(property.type())) + ' ' + property.key + ' ' + valueText(property.value);
}

std::string valueText(const PropertyValue& value) {
    struct ValueText {
        std::string operator()(bool isOn) const { return isOn ? "1" : "0"; }
        std::string operator()(int number) const { return std::to_string(number); }
        std::string operator()(const std::string& text) const { return quoted(text); }
    };
    return std::visit(ValueText(), value);
}

std::optional<int> leadingInteger(std::string_view line) {
    return LineParts(line).integer();
}

std::string_view significantPart(std::string_view line) {
    const auto first = std::find_if_not(line.begin(), line.end(), isBlank);
    if (first == line.end() || *first == '#') return {};
    return {first, std::find_if_not(line.rbegin(), line.rend(), isBlank).base()};
}

std::string_view withoutQuotes(std::string_view text) {
    const bool isQuoted = text.size() >= 2 && text.front() == '"' && text.back() == '"';
    return isQuoted ? text.substr(1, text.size() - 2) : text;
}

}  // namespace Tessel
