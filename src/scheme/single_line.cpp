#include "scheme/single_line.h"

#include <string>
#include <string_view>
#include <type_traits>

namespace Tessel {

namespace {

// A comma that begins its line elsewhere stands against what it follows.
bool isBeforeComma(std::string_view key) {
    return key.starts_with("WS_BEFORE_") && key.ends_with("_COMMA");
}

// The switches that align break lines between what they align.
bool isAlignment(std::string_view key) {
    return key.starts_with("ALIGN_");
}

}  // namespace

PropertySet withoutLineEnds(PropertySet scheme, LineEndTexts become) {
    const PropertySet given = scheme;
    given.forEach([&scheme, become](std::string_view key, const auto& value) {
        using Held = std::decay_t<decltype(value)>;
        if constexpr (std::is_same_v<Held, std::string>) {
            if (value.find('\n') == std::string::npos) return;
            if (become == LineEndTexts::Absent) {
                scheme.erase(key);
            } else {
                scheme.setString(key, isBeforeComma(key) ? "" : " ");
            }
        } else if constexpr (std::is_same_v<Held, bool>) {
            if (value && isAlignment(key)) scheme.setBool(key, false);
        }
    });
    return scheme;
}

}  // namespace Tessel
