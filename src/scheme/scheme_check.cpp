#include "scheme/scheme_check.h"

#include <fstream>

#include "scheme/property_keys.h"
#include "scheme/property_set_store.h"

namespace TesselUI {

namespace {

constexpr std::string_view whiteSpace = " \t\n";

// Keys outside the catalogue count too: an earlier version's text may become a current one.
bool namesWhitespace(std::string_view key) {
    for (const std::string_view prefix : {"WS_", "GLOBAL_WS_", "INDENT_", "GLOBAL_INDENT_"}) {
        if (key.starts_with(prefix)) return true;
    }
    return key == Tessel::Keys::LEFT_MARGIN || key == Tessel::Keys::WRAP_INDENT;
}

}  // namespace

std::optional<UnusableText> findUnusableText(const Tessel::PropertySet& scheme) {
    std::string text;
    for (const std::string& key : scheme.names()) {
        if (!namesWhitespace(key) || !scheme.getString(key, text)) continue;
        if (text.find_first_not_of(whiteSpace) != std::string::npos) {
            return UnusableText{key, "holds a character that is neither a blank nor a tab nor a line feed"};
        }
        if (text.size() > MAXIMUM_WHITESPACE_LENGTH) {
            return UnusableText{
                key, "is longer than " + std::to_string(MAXIMUM_WHITESPACE_LENGTH) + " characters"};
        }
    }
    return std::nullopt;
}

std::string findSchemeFile(const std::string& directory, std::string_view schemeName) {
    for (const std::string& fileName : PropertySetStore::findPSFiles(directory)) {
        const std::string path = directory.ends_with('/') ? directory + fileName : directory + '/' + fileName;
        std::ifstream in(path, std::ios::binary);
        if (Tessel::PropertySet(in).getName() == schemeName) return path;
    }
    return std::string(schemeName);
}

}  // namespace TesselUI
