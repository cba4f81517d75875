#include "scheme/property_set.h"

#include <algorithm>
#include <istream>
#include <ostream>
#include <utility>

#include "scheme/property_line.h"
#include "textstream/byte_order_mark.h"

namespace Tessel {

namespace {

constexpr std::string_view HEADER = "Tessel::PropertySet";
constexpr int FORM_VERSION = 1;

void requireValid(std::string_view key) {
    if (key.empty() || std::any_of(key.begin(), key.end(), isBlank)) throw InvalidPropertyName();
}

template <typename Value, typename Key>
bool lookUp(const ValueTable<Value>& table, Key key, Value& value) {
    const Value* const found = table.find(key);
    if (found) value = *found;
    return found != nullptr;
}

// The lines of a text that are neither blank nor comments, without the white space around them.
class SignificantLines {
public:
    explicit SignificantLines(std::istream& in) : in_(in) {}

    // Takes the next one. False, with an empty line, at the end of the input, which then is all that the
    // stream reports.
    bool next(std::string& line) {
        while (std::getline(in_, raw_)) {
            std::string_view content = raw_;
            if (isFirst_ && content.starts_with(Zelmor::BYTE_ORDER_MARK)) {
                content.remove_prefix(Zelmor::BYTE_ORDER_MARK.size());
            }
            isFirst_ = false;
            line = significantPart(content);
            if (!line.empty()) return true;
        }
        line.clear();
        if (in_.eof() && !in_.bad()) in_.clear(std::ios::eofbit);
        return false;
    }

private:
    std::istream& in_;
    std::string raw_;
    bool isFirst_ = true;
};

}  // namespace

unsigned PropertySet::size() const {
    return static_cast<unsigned>(values_->booleans.size() + values_->integers.size() + values_->strings.size());
}

std::vector<std::string> PropertySet::names() const {
    std::vector<std::string> keys;
    for (Property& property : properties()) keys.push_back(std::move(property.key));
    return keys;
}

std::vector<Property> PropertySet::properties() const {
    std::vector<Property> all;
    all.reserve(size());
    forEach([&all](std::string_view key, const auto& value) { all.push_back({std::string(key), value}); });
    std::ranges::sort(all, [](const Property& one, const Property& other) {
        return one.type() != other.type() ? one.type() < other.type() : one.key < other.key;
    });
    return all;
}

bool PropertySet::contains(std::string_view key) const {
    if (const KeyId known = KeyId::find(key)) return contains(known);
    return values_->booleans.find(key) || values_->integers.find(key) || values_->strings.find(key);
}

bool PropertySet::contains(KeyId key) const {
    return values_->booleans.find(key) || values_->integers.find(key) || values_->strings.find(key);
}

bool PropertySet::getBool(std::string_view key, bool& value) const { return lookUp(values_->booleans, key, value); }

bool PropertySet::getInt(std::string_view key, int& value) const { return lookUp(values_->integers, key, value); }

bool PropertySet::getString(std::string_view key, std::string& value) const {
    return lookUp(values_->strings, key, value);
}

bool PropertySet::getBool(KeyId key, bool& value) const { return lookUp(values_->booleans, key, value); }

bool PropertySet::getInt(KeyId key, int& value) const { return lookUp(values_->integers, key, value); }

bool PropertySet::getString(KeyId key, std::string& value) const { return lookUp(values_->strings, key, value); }

void PropertySet::setBool(std::string_view key, bool value) {
    set({std::string(key), value});
}

void PropertySet::setInt(std::string_view key, int value) {
    set({std::string(key), value});
}

void PropertySet::setString(std::string_view key, std::string_view value) {
    set({std::string(key), std::string(value)});
}

void PropertySet::set(Property property) {
    requireValid(property.key);
    Values& values = ownValues();
    switch (property.type()) {
        case PropertyType::Boolean:
            values.booleans.set(std::move(property.key), std::get<bool>(property.value));
            break;
        case PropertyType::Integer:
            values.integers.set(std::move(property.key), std::get<int>(property.value));
            break;
        case PropertyType::String:
            values.strings.set(std::move(property.key), std::get<std::string>(std::move(property.value)));
            break;
    }
}

bool PropertySet::erase(std::string_view key) {
    requireValid(key);
    if (!contains(key)) return false;
    Values& values = ownValues();
    return values.strings.erase(key) || values.integers.erase(key) || values.booleans.erase(key);
}

void PropertySet::write(std::ostream& out) const {
    if (out.fail()) return;
    std::string text(HEADER);
    text += '\n' + std::to_string(version_) + "\n\"" + name_ + "\"\n";
    for (const Property& property : properties()) text += propertyLine(property) + '\n';
    out << text;
}

void PropertySet::read(std::istream& in) {
    if (in.fail()) return;
    PropertySet scratch("temp");
    SignificantLines lines(in);
    std::string line;

    lines.next(line);
    if (line != HEADER) return in.setstate(std::ios::failbit);

    lines.next(line);
    if (leadingInteger(line) != FORM_VERSION) return in.setstate(std::ios::failbit);

    lines.next(line);
    scratch.name_ = withoutQuotes(line);

    while (lines.next(line)) {
        PropertyLine content = readPropertyLine(line);
        if (!content.hasType) return in.setstate(std::ios::failbit);
        if (content.property) scratch.set(std::move(*content.property));
    }
    if (!in.fail()) swap(scratch);
}

void PropertySet::swap(PropertySet& other) noexcept {
    name_.swap(other.name_);
    std::swap(version_, other.version_);
    values_.swap(other.values_);
}

bool PropertySet::operator==(const PropertySet& other) const {
    return name_ == other.name_ && version_ == other.version_ &&
           (values_ == other.values_ || *values_ == *other.values_);
}

std::shared_ptr<PropertySet::Values> PropertySet::noValues() {
    static const auto none = std::make_shared<Values>();
    return none;
}

PropertySet::Values& PropertySet::ownValues() {
    if (values_.use_count() > 1) values_ = std::make_shared<Values>(*values_);
    return *values_;
}

}  // namespace Tessel
