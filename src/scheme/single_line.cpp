#include "scheme/single_line.h"

#include <string>

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
    std::string text;
    bool isOn = false;
    for (const std::string& key : scheme.names()) {
        const bool endsLine = scheme.getString(key, text) && text.find('\n') != std::string::npos;
        if (endsLine) scheme.setString(key, isBeforeComma(key) ? "" : " ");
        if (isAlignment(key) && scheme.getBool(key, isOn)) scheme.setBool(key, false);
    }
    return scheme;
}

}  // namespace Tessel
