#include "scheme/single_line.h"

#include <string>
#include <variant>

namespace Tessel {

namespace {

// A comma that begins its line elsewhere stands against what it follows.
bool isBeforeComma(const std::string& key) {
    return key.starts_with("WS_BEFORE_") && key.ends_with("_COMMA");
}

// The switches that align break lines between what they align.
bool isAlignment(const std::string& key) {
    return key.starts_with("ALIGN_");
}

}  // namespace

PropertySet withoutLineEnds(PropertySet scheme) {
    for (const auto& [key, value] : scheme.properties()) {
        const auto* text = std::get_if<std::string>(&value);
        const auto* isOn = std::get_if<bool>(&value);
        if (text && text->find('\n') != std::string::npos) scheme.setString(key, isBeforeComma(key) ? "" : " ");
        if (isOn && *isOn && isAlignment(key)) scheme.setBool(key, false);
    }
    return scheme;
}

}  // namespace Tessel
