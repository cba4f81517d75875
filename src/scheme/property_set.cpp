#include "scheme/property_set.h"

#include <algorithm>
#include <charconv>
#include <istream>
#include <optional>
#include <ostream>
#include <system_error>
#include <utility>

#include "scheme/property_keys.h"
#include "textstream/string_escape.h"

namespace Tessel {

namespace {

constexpr std::string_view HEADER = "Tessel::PropertySet";
constexpr int FORM_VERSION = 1;
constexpr std::string_view WHITE_SPACE = " \t\n\v\f\r";

void requireValid(std::string_view key) {
    if (key.empty() || key.find_first_of(WHITE_SPACE) != std::string_view::npos) throw InvalidPropertyName();
}

template <typename Map, typename Value>
bool lookUp(const Map& map, std::string_view key, Value& value) {
    const auto found = map.find(key);
    if (found == map.end()) return false;
    value = found->second;
    return true;
}

template <typename Map, typename Value>
void store(Map& map, std::string_view key, Value value) {
    requireValid(key);
    map.insert_or_assign(std::string(key), typename Map::mapped_type(value));
}

template <typename Map>
bool eraseFrom(Map& map, std::string_view key) {
    const auto found = map.find(key);
    if (found == map.end()) return false;
    map.erase(found);
    return true;
}

template <typename Map>
void appendKeys(const Map& map, std::vector<std::string>& keys) {
    for (const auto& [key, value] : map) keys.push_back(key);
}

std::string propertyLine(PropertyType type, std::string_view key, std::string_view value) {
    std::string line = std::to_string(static_cast<int>(type));
    line.append(" ").append(key).append(" ").append(value).append("\n");
    return line;
}

std::string quoted(std::string value) {
    Zelmor::escape(value);
    return '"' + value + '"';
}

std::string_view withoutQuotes(std::string_view text) {
    const bool isQuoted = text.size() >= 2 && text.front() == '"' && text.back() == '"';
    return isQuoted ? text.substr(1, text.size() - 2) : text;
}

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(WHITE_SPACE);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(WHITE_SPACE) - first + 1);
}

// Takes the next line that is neither blank nor a comment, without the white space around it. False, with an
// empty line, at the end of the input, which then is all that the stream reports.
bool nextSignificantLine(std::istream& in, std::string& line) {
    std::string raw;
    while (std::getline(in, raw)) {
        line = trimmed(raw);
        if (!line.empty() && line.front() != '#') return true;
    }
    line.clear();
    if (in.eof() && !in.bad()) in.clear(std::ios::eofbit);
    return false;
}

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
        return take(std::min(rest_.find_first_of(WHITE_SPACE), rest_.size()));
    }

    // A text between quotes, which it keeps, or a word.
    std::string_view quotedTextOrWord() {
        skipWhiteSpace();
        return rest_.starts_with('"') ? take(quotedLength()) : word();
    }

private:
    void skipWhiteSpace() { take(std::min(rest_.find_first_not_of(WHITE_SPACE), rest_.size())); }

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

}  // namespace

unsigned PropertySet::size() const {
    return static_cast<unsigned>(booleans_.size() + integers_.size() + strings_.size());
}

std::vector<std::string> PropertySet::names() const {
    std::vector<std::string> keys;
    keys.reserve(size());
    appendKeys(booleans_, keys);
    appendKeys(integers_, keys);
    appendKeys(strings_, keys);
    return keys;
}

bool PropertySet::contains(std::string_view key) const {
    return booleans_.contains(key) || integers_.contains(key) || strings_.contains(key);
}

bool PropertySet::getBool(std::string_view key, bool& value) const {
    return lookUp(booleans_, key, value);
}

bool PropertySet::getInt(std::string_view key, int& value) const {
    return lookUp(integers_, key, value);
}

bool PropertySet::getString(std::string_view key, std::string& value) const {
    return lookUp(strings_, key, value);
}

void PropertySet::setBool(std::string_view key, bool value) {
    store(booleans_, key, value);
}

void PropertySet::setInt(std::string_view key, int value) {
    store(integers_, key, value);
}

void PropertySet::setString(std::string_view key, std::string_view value) {
    store(strings_, key, value);
}

bool PropertySet::erase(std::string_view key) {
    requireValid(key);
    return eraseFrom(strings_, key) || eraseFrom(integers_, key) || eraseFrom(booleans_, key);
}

void PropertySet::write(std::ostream& out) const {
    if (out.fail()) return;
    std::string text(HEADER);
    text += '\n' + std::to_string(version_) + "\n\"" + name_ + "\"\n";
    for (const auto& [key, value] : booleans_) {
        text += propertyLine(PropertyType::Boolean, key, value ? "1" : "0");
    }
    for (const auto& [key, value] : integers_) {
        text += propertyLine(PropertyType::Integer, key, std::to_string(value));
    }
    for (const auto& [key, value] : strings_) text += propertyLine(PropertyType::String, key, quoted(value));
    out << text;
}

void PropertySet::read(std::istream& in) {
    if (in.fail()) return;
    PropertySet scratch("temp");
    std::string line;

    nextSignificantLine(in, line);
    if (line != HEADER) return in.setstate(std::ios::failbit);

    nextSignificantLine(in, line);
    if (LineParts(line).integer() != FORM_VERSION) return in.setstate(std::ios::failbit);

    nextSignificantLine(in, line);
    scratch.name_ = withoutQuotes(line);

    while (nextSignificantLine(in, line)) {
        if (!scratch.readProperty(line)) return in.setstate(std::ios::failbit);
    }
    if (!in.fail()) swap(scratch);
}

// False when the line is no property at all. A property whose key or value cannot be read is left out.
bool PropertySet::readProperty(std::string_view line) {
    LineParts parts(line);
    const std::optional<int> tag = parts.integer();
    if (!tag) return false;
    const std::string_view key = parts.word();
    switch (static_cast<PropertyType>(*tag)) {
        case PropertyType::Boolean: {
            const std::optional<int> value = parts.integer();
            if (value == 0 || value == 1) setBool(key, value == 1);
            return true;
        }
        case PropertyType::Integer: {
            if (const std::optional<int> value = parts.integer()) setInt(key, *value);
            return true;
        }
        case PropertyType::String: {
            std::string value(parts.quotedTextOrWord());
            Zelmor::unescape(value);
            if (!key.empty()) setString(key, withoutQuotes(value));
            return true;
        }
    }
    return false;
}

void PropertySet::swap(PropertySet& other) noexcept {
    name_.swap(other.name_);
    std::swap(version_, other.version_);
    booleans_.swap(other.booleans_);
    integers_.swap(other.integers_);
    strings_.swap(other.strings_);
}

}  // namespace Tessel
