#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "scheme/property_set.h"

namespace TesselUI {

// The most characters that a white-space text may have: more than any layout needs, and little enough for a
// source with many places to put it.
inline constexpr std::size_t MAXIMUM_WHITESPACE_LENGTH = 1000;

// A text of a scheme that would put more into people's code than white space.
struct UnusableText {
    std::string key;
    std::string problem;  // reads on after the key: "holds a character that is ..."
};

// The first text, in the order of the keys, that must not be used: white space is blanks, tabs and line
// feeds.
std::optional<UnusableText> findUnusableText(const Tessel::PropertySet& scheme);

// Whether the scheme asks for a program of another major version than this one's.
bool needsOtherVersion(const Tessel::PropertySet& scheme);

// The path of the file that the scheme of that name was read from; the name itself when the file has gone.
std::string findSchemeFile(const std::string& directory, std::string_view schemeName);

}  // namespace TesselUI
