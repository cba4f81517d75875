#include "learn/decision.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

#include "learn/key_families.h"
#include "scheme/key_value.h"

namespace Learn {

namespace {

using Tessel::KeyId;

constexpr std::size_t kFewestOf = 50;      // one place in so many is told by
constexpr std::size_t kHardlyOneOf = 200;
constexpr std::size_t kFewestBreaks = 20;  // by which a style is told from what long lines came to

std::string_view textOf(const Value& value) {
    const std::string* const text = std::get_if<std::string>(&value);
    return text ? std::string_view(*text) : std::string_view();
}

// Whether it brings what follows into a column, rather than apart.
bool isColumn(const Value& value) {
    constexpr std::size_t widest = 2;
    return !breaksLine(value) && (textOf(value).size() > widest || textOf(value).find('\t') != std::string_view::npos);
}

// Whether what was found is the value, with more of the same: columns where a blank is meant, empty lines where a line
// end is. Other keys keep or make these.
bool widens(std::string_view found, std::string_view value) {
    if (value.empty() || found.size() <= value.size()) return false;
    if (value.find('\n') == std::string_view::npos) return found.find('\n') == std::string_view::npos;
    const std::size_t emptyLines = found.size() - value.size();
    return found.find_first_not_of('\n') >= emptyLines && found.substr(emptyLines) == value;
}

std::vector<Sighting> sightingsOf(const Values& values) {
    std::vector<Sighting> sightings;
    for (const auto& [value, found] : values) sightings.push_back({value, found});
    std::stable_sort(sightings.begin(), sightings.end(), [](const Sighting& left, const Sighting& right) {
        return left.found.count > right.found.count;
    });
    return sightings;
}

std::size_t countOf(const std::vector<Sighting>& sightings) {
    std::size_t sum = 0;
    for (const Sighting& sighting : sightings) sum += sighting.found.count;
    return sum;
}

std::size_t countAgreeing(const std::vector<Sighting>& sightings, const Value& value) {
    std::size_t sum = 0;
    for (const Sighting& sighting : sightings) {
        if (sighting.value == value || widens(textOf(sighting.value), textOf(value))) sum += sighting.found.count;
    }
    return sum;
}

class Judge {
public:
    Judge(const Tally& tally, const DecisionRules& rules) : tally_(tally), rules_(rules) {}

    Decision judge(KeyId key) const {
        Decision decision;
        decision.key = key;
        decision.sightings = sightingsOf(told(key));
        decision.places = countOf(decision.sightings);
        if (decision.places < rules_.minPlaces || !isDecidedByPlaces(key)) return decision;
        find(decision);
        decision.origin = decision.value ? Origin::Found : isUnsure(decision) ? Origin::Unseen : Origin::Disputed;
        return decision;
    }

private:
    // What stands on one line is told of by other keys, where line breaks are what this one is about.
    Values told(KeyId key) const {
        const Habit& habit = tally_.of(key);
        const Nature nature = natureOf(key);
        const bool isAboutBreaks =
            nature == Nature::Structural || nature == Nature::Hanging || nature == Nature::Together;
        if (isAboutBreaks && !habit.values.empty()) return habit.values;
        Values all = habit.values;
        add(all, habit.onOneLine);
        return all;
    }

    // Of a key that is about white space within lines, nothing but a few line breaks has been seen.
    bool isUnsure(const Decision& decision) const {
        return natureOf(decision.key) == Nature::Inline && decision.places < kFewestBreaks &&
               countOf(only(decision.sightings, false)) < rules_.minPlaces;
    }

    static std::vector<Sighting> only(std::vector<Sighting> sightings, bool broken) {
        std::erase_if(sightings, [broken](const Sighting& sighting) {
            return breaksLine(sighting.value) != broken || isColumn(sighting.value);
        });
        return sightings;
    }

    // Lines that begin within another construct are their author's; and so is what stays on one line where constructs
    // of its kind are broken. The others tell what is wanted.
    bool find(Decision& decision) const {
        const std::vector<Sighting> all = decision.sightings;
        switch (natureOf(decision.key)) {
            case Nature::Inline:
                return findAmong(decision, false, kFewestOf) ||
                       (decision.places >= kFewestBreaks && findValue(decision, all));
            case Nature::Breakable: return findValue(decision, all) || findAmong(decision, false, kFewestOf);
            case Nature::Together: return findAmong(decision, false, kHardlyOneOf) || findValue(decision, all);
            case Nature::Structural:
            case Nature::Hanging: return findValue(decision, all) || findAmong(decision, true, kFewestOf);
            case Nature::Table:
            case Nature::Indentation:
            case Nature::Other: break;
        }
        return findValue(decision, all);
    }

    // Among those alone that break a line, or that do not; when they are at least one of so many.
    bool findAmong(Decision& decision, bool broken, std::size_t oneOf) const {
        const std::vector<Sighting> some = only(decision.sightings, broken);
        const std::size_t needed = std::max(rules_.minPlaces, decision.sightingCount() / oneOf);
        return countOf(some) >= needed && findValue(decision, some);
    }

    // The most frequent value that enough places agree with.
    bool findValue(Decision& decision, const std::vector<Sighting>& sightings) const {
        decision.places = countOf(sightings);
        decision.agreeing = 0;
        for (const Sighting& sighting : sightings) {
            if (natureOf(decision.key) == Nature::Inline && isColumn(sighting.value)) continue;
            const std::size_t agreeing = countAgreeing(sightings, sighting.value);
            decision.agreeing = std::max(decision.agreeing, agreeing);
            if (static_cast<double>(agreeing) < rules_.minAgreement * static_cast<double>(decision.places)) continue;
            decision.agreeing = agreeing;
            decision.exact = sighting.found.count;
            decision.value = sighting.value;
            return true;
        }
        return false;
    }

    const Tally& tally_;
    const DecisionRules& rules_;
};

// A key that too few places tell of goes by the given scheme, else by the nearest of its kin that was found.
void takeOver(Decision& decision, const std::vector<Decision>& all, const Tessel::PropertySet* given) {
    if (given) decision.value = Tessel::valueOf(*given, decision.key);
    if (decision.value) {
        decision.origin = Origin::Given;
        return;
    }
    for (const KeyId kin : kinOf(decision.key)) {
        const Decision& other = all[kin.place()];
        if (other.origin != Origin::Found) continue;
        decision.value = other.value;
        decision.kin = kin;
        decision.origin = Origin::Kin;
        return;
    }
}

}  // namespace

bool breaksLine(const Value& value) {
    return textOf(value).find('\n') != std::string_view::npos;
}

bool isDecidedByPlaces(KeyId key) {
    return key.type() == Tessel::PropertyType::String || !kinOf(key).empty();
}

std::size_t Decision::sightingCount() const {
    return countOf(sightings);
}

std::vector<Decision> decide(const Tally& tally, const DecisionRules& rules) {
    const Judge judge(tally, rules);
    std::vector<Decision> decisions;
    for (std::size_t place = 0; place < Tessel::Keys::ALL.size(); ++place) {
        decisions.push_back(judge.judge(KeyId::at(place)));
    }
    for (Decision& decision : decisions) {
        if (decision.origin == Origin::Unseen) takeOver(decision, decisions, rules.given);
    }
    return decisions;
}

}  // namespace Learn
