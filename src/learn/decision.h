#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "learn/tally.h"
#include "scheme/property_set.h"

namespace Learn {

enum class Origin {
    Found,     // in enough places, which agree
    Disputed,  // the places do not agree: the key stays open, so that what people did by hand is left alone
    Kin,       // too few places: what a key like it has
    Given,     // too few places: what the scheme has that was given to start from
    Tried,     // what changes the fewest lines
    Nearest,   // too few places, or places that do not tell: what the nearest of the known schemes has
    Lines,     // what lines tell, whatever stands in them
    Preset,    // what suits any source
    Unseen,    // too few places, and nothing to go by
};

bool breaksLine(const Value& value);

struct Sighting {
    Value value;
    Found found;
};

// What was decided of a key, and why.
struct Decision {
    Tessel::KeyId key;
    Origin origin = Origin::Unseen;
    std::optional<Value> value;  // none for a key that stays open
    std::size_t places = 0;
    std::size_t agreeing = 0;    // of these, with the value, or with more of the same
    std::size_t exact = 0;       // of these, with the value itself
    Tessel::KeyId kin;           // whose value it has
    std::vector<Sighting> sightings;  // what was found, the most frequent first

    std::size_t sightingCount() const;  // of all that was found, what does not count as a place among it
};

// Switches and numbers are about more than one place each: trials tell what suits.
bool isDecidedByPlaces(Tessel::KeyId key);

struct DecisionRules {
    double minAgreement = 0.8;
    std::size_t minPlaces = 3;
    const Tessel::PropertySet* given = nullptr;  // borrowed; null when there is none
};

// One for each key that places were told of, or that has kin: in the order of the keys.
std::vector<Decision> decide(const Tally& tally, const DecisionRules& rules);

}  // namespace Learn
