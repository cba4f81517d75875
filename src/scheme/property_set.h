#pragma once

#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "scheme/key_id.h"
#include "scheme/property_line.h"
#include "scheme/value_table.h"
#include "trn/exception.h"

namespace Tessel {

// A property was set or erased under a name that no scheme file could hold.
class InvalidPropertyName : public Trn::Exception {
public:
    InvalidPropertyName() : Exception("Invalid name for a Property.") {}
};

// The lines of a scheme's text in front of its properties, but for what means nothing.
inline constexpr int kSchemeHeadLines = 3;

// One formatting scheme: a name, and values by key. Booleans, integers and strings are kept apart: a key may
// be present in more than one type, and each getter sees only its own.
//
// The text form, one property set to a file:
//
//     Tessel::PropertySet
//     1
//     "allman"
//     1 LINE_WRAP 0
//     2 TAB_SIZE 4
//     3 WS_BEFORE_FN_OPEN_BRACE "\n"
//
// The first line says what the file is, the second is the version of the form, the third the scheme's name,
// as it is. Then come the properties: type (1 boolean, 2 integer, 3 string), key, value. Blank lines, and
// lines that start with "#", mean nothing anywhere; nor does a byte-order mark in front.
class PropertySet {
public:
    PropertySet() = default;
    // To move is to copy, which costs little: a set always has its values.
    PropertySet(const PropertySet&) = default;
    PropertySet& operator=(const PropertySet&) = default;
    ~PropertySet() = default;
    explicit PropertySet(const std::string& name) : name_(name) {}
    // Reads the set from its text form; failure shows in the stream's state, and leaves the set empty.
    explicit PropertySet(std::istream& in) { read(in); }

    std::string getName() const { return name_; }
    unsigned size() const;
    // Every key: those of booleans, of integers, of strings, each group sorted.
    std::vector<std::string> names() const;
    std::vector<Property> properties() const;  // in the same order
    // In no order: visitor(key, value), where a value is a bool, an int or a string.
    template <typename Visitor>
    void forEach(const Visitor& visitor) const {
        values_->booleans.forEach(visitor);
        values_->integers.forEach(visitor);
        values_->strings.forEach(visitor);
    }
    // In no order: editor(key, value) may change the value, and says whether it stays.
    template <typename Editor>
    void edit(const Editor& editor) {
        Values& values = ownValues();
        values.booleans.edit(editor);
        values.integers.edit(editor);
        values.strings.edit(editor);
    }
    bool contains(std::string_view key) const;
    bool contains(KeyId key) const;

    // True when the key has a value of that type, which is then stored in `value`.
    bool getBool(std::string_view key, bool& value) const;
    bool getInt(std::string_view key, int& value) const;
    bool getString(std::string_view key, std::string& value) const;
    bool getBool(KeyId key, bool& value) const;
    bool getInt(KeyId key, int& value) const;
    bool getString(KeyId key, std::string& value) const;
    // Null when the key has none. It stays, whatever becomes of this set, while any of its copies is as it is.
    const std::string* findString(KeyId key) const { return values_->strings.find(key); }

    // Insert or overwrite. An empty key, or one that holds white space, throws InvalidPropertyName.
    void setBool(std::string_view key, bool value);
    void setInt(std::string_view key, int value);
    void setString(std::string_view key, std::string_view value);
    void set(Property property);

    // Removes the key from the first of strings, integers and booleans that holds it; false when none does.
    // Throws InvalidPropertyName like the setters.
    bool erase(std::string_view key);

    void write(std::ostream& out) const;
    // Replaces the whole set by what the stream holds up to its end. Where that is no property set, the
    // stream is marked failed and the set stays as it is.
    void read(std::istream& in);

    void swap(PropertySet& other) noexcept;
    bool operator==(const PropertySet& other) const;

private:
    struct Values {
        ValueTable<bool> booleans;
        ValueTable<int> integers;
        ValueTable<std::string> strings;

        bool operator==(const Values&) const = default;
    };

    static std::shared_ptr<Values> noValues();
    // Those of this set alone.
    Values& ownValues();

    std::string name_;
    int version_ = 1;
    // Copies have them in common until one is changed.
    std::shared_ptr<Values> values_ = noValues();
};

}  // namespace Tessel
