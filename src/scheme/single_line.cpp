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
    scheme.edit([become](std::string_view key, auto& value) {
        using Held = std::decay_t<decltype(value)>;
        if constexpr (std::is_same_v<Held, std::string>) {
            if (value.find('\n') == std::string::npos) return true;
            value = isBeforeComma(key) ? "" : " ";
            return become != LineEndTexts::Absent;
        } else if constexpr (std::is_same_v<Held, bool>) {
            value = value && !isAlignment(key);
        }
        return true;
    });
    return scheme;
}

}  // namespace Tessel
