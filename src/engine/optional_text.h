#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "scheme/key_id.h"

namespace Tessel {

// What reading a string property yields. A text that is not present leaves the input's white space as it is;
// a present and empty one removes it.
struct OptionalText {
    bool present = false;
    std::string text;
    KeyId key = {};  // that it has been read from; none for texts that are not the scheme's

    bool hasLineFeed() const { return present && text.find('\n') != std::string::npos; }
};

inline const OptionalText kAsInInput;
inline const OptionalText kNothing{true, ""};
inline const OptionalText kBlank{true, " "};
inline const OptionalText kLineFeed{true, "\n"};

// A switch or a number of the scheme, with its key.
template <typename Value>
struct Keyed {
    Value value{};
    KeyId key = {};

    operator const Value&() const { return value; }
};

inline const Keyed<bool> kNeverKept;

// What is wanted in place of the white space in a gap: a setting, or what has become of one. A view.
struct WantedText {
    WantedText() = default;
    WantedText(const OptionalText& setting) : present(setting.present), text(setting.text), key(setting.key) {}
    // Wanted whatever the scheme says.
    explicit WantedText(std::string_view needed) : present(true), text(needed) {}
    WantedText(std::string_view wanted, KeyId decidedBy) : present(true), text(wanted), key(decidedBy) {}

    // Another text by the same key.
    WantedText with(std::string_view other) const {
        WantedText result = *this;
        result.text = other;
        return result;
    }
    bool hasLineFeed() const { return present && text.find('\n') != std::string_view::npos; }

    bool present = false;
    std::string_view text;
    KeyId key;
    bool isOnOneLine = false;  // in the source the construct around the gap is, for which other keys may count
};

inline WantedText firstPresent(const WantedText& first, const WantedText& second) {
    return first.present || !second.present ? first : second;
}

}  // namespace Tessel
