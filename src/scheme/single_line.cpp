#include "scheme/single_line.h"

#include <string>
#include <string_view>
#include <type_traits>

#include "scheme/extension_keys.h"
#include "scheme/property_keys.h"

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

// What stands between a brace, or a further part of a statement, and the text in front of it.
bool isBeforeBraceOrPart(std::string_view key) {
    const bool isAtBrace = key.find("WS_BEFORE_") != key.npos && key.ends_with("_OPEN_BRACE");
    return isAtBrace || key == Keys::WS_BETWEEN_CS || key == Keys::WS_BEFORE_DO_WHILE.name;
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

PropertySet withBracesOfAuthor(PropertySet scheme) {
    scheme.edit([](std::string_view key, auto&) { return !isBeforeBraceOrPart(key); });
    return scheme;
}

}  // namespace Tessel
