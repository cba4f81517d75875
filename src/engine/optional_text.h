#pragma once

#include <string>
#include <string_view>

#include "engine/holds_any_of.h"
#include "scheme/key_id.h"

namespace Tessel {

// What reading a string property yields, a view of what the settings keep. A text that is not present leaves the
// input's white space as it is; a present and empty one removes it.
struct OptionalText {
    bool present = false;
    std::string_view text;
    KeyId key = {};  // that it has been read from; none for texts that are not the scheme's

    bool hasLineFeed() const { return present && holdsAnyOf<'\n'>(text); }
};

inline constexpr OptionalText kAsInInput;
inline constexpr OptionalText kNothing{true, ""};
inline constexpr OptionalText kBlank{true, " "};
inline constexpr OptionalText kLineFeed{true, "\n"};

inline std::string operator+(std::string front, const OptionalText& setting) {
    front += setting.text;
    return front;
}

// A switch or a number of the scheme, with its key.
template <typename Value>
struct Keyed {
    Value value{};
    KeyId key = {};

    operator const Value&() const { return value; }
};

inline constexpr Keyed<bool> kNeverKept;

// What is wanted in place of the white space in a gap: a setting, or what has become of one. A view.
class WantedText {
public:
    WantedText() = default;
    WantedText(const OptionalText& setting) : key(setting.key), present(setting.present), text_(setting.text) {}
    WantedText(std::string_view wanted, KeyId decidedBy) : key(decidedBy), present(true), text_(wanted) {}
    // Wanted whatever the scheme says.
    explicit WantedText(std::string_view needed) : WantedText(needed, KeyId()) {}

    std::string_view text() const { return text_; }
    bool hasLineFeed() const { return present && holdsAnyOf<'\n'>(text_); }
    // Another text by the same key.
    WantedText with(std::string_view other) const {
        WantedText result = *this;
        result.text_ = other;
        return result;
    }

    KeyId key;
    bool present = false;
    bool isOnOneLine = false;  // in the source the construct around the gap is, for which other keys may count

private:
    std::string_view text_;
};

// The first where neither is.
inline const OptionalText& firstPresent(const OptionalText& first, const OptionalText& second) {
    return first.present || !second.present ? first : second;
}

}  // namespace Tessel
