#pragma once

#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "scheme/property_line.h"

// What people are told of the keys: their meaning, their values, and a small source that shows what each does.
namespace Tessel {

enum class KeyGroup {
    WholeText,
    Braces,
    OneLine,
    KeptLayout,
    Classes,
    Functions,
    Templates,
    Data,
    Marks,
    Alignment,
    Control,
    Expressions,
    LongLines,
    WithoutEffect,
};

// In the order in which listings have them.
const std::vector<KeyGroup>& keyGroups();
std::string_view groupTitle(KeyGroup group);
// What holds for all keys of the group; empty where there is nothing to say.
std::string_view groupIntroduction(KeyGroup group);

struct KeyGuide {
    Property shown;  // the key, with the value that the example shows
    KeyGroup group;
    std::string meaning;
    std::string source;               // what the key makes a difference to; empty where there is none
    std::vector<Property> base = {};  // what the scheme of the example has besides

    const std::string& key() const { return shown.key; }
};

// All keys, group by group.
const std::vector<KeyGuide>& keyGuides();

// Null when there is no such key.
const KeyGuide* findKeyGuide(std::string_view key);

// What numbers mean something for a key.
struct NumberRange {
    int lowest = std::numeric_limits<int>::min();
    int highest = std::numeric_limits<int>::max();

    bool contains(int number) const { return lowest <= number && number <= highest; }
};

NumberRange numberRange(std::string_view key);

// The known key whose spelling is nearest; empty when none is near.
std::string_view nearestKey(std::string_view key);

}  // namespace Tessel
