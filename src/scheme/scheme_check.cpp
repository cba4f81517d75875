#include "scheme/scheme_check.h"

#include <fstream>

#include "scheme/known_keys.h"
#include "scheme/property_set_store.h"
#include "scheme/scheme_conversion.h"

namespace TesselUI {

namespace {

constexpr std::string_view whiteSpace = " \t\n";

// A key that nobody reads does no harm, whatever it holds.
bool isWhitespace(std::string_view key) {
    namespace Keys = Tessel::Keys;
    return Keys::isKnown(key) && Keys::typeOf(key) == Tessel::PropertyType::String &&
           key != Keys::VANTREL_VERSION && key != Keys::REQUIRED_VERSION.name;
}

std::string_view majorVersion(std::string_view version) {
    return version.substr(0, version.find('.'));
}

}  // namespace

std::optional<UnusableText> findUnusableText(const Tessel::PropertySet& scheme) {
    std::string text;
    for (const std::string& key : scheme.names()) {
        if (!isWhitespace(key) || !scheme.getString(key, text)) continue;
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

bool needsOtherVersion(const Tessel::PropertySet& scheme) {
    std::string version;
    if (!scheme.getString(Tessel::Keys::REQUIRED_VERSION.name, version)) return false;
    return majorVersion(version) != majorVersion(CURRENT_VERSION);
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
