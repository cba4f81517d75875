// What remains open goes by a scheme that is known.
#include "learn/search.h"

#include "scheme/key_value.h"

namespace Learn {

namespace {

using namespace Tessel::Keys;
using Tessel::KeyId;

constexpr std::size_t kFewestTold = 3;  // places that tell what is done at them

}  // namespace

// The one that changes the fewest lines by itself; null when there is none.
const Tessel::PropertySet* Search::nearestOf(const std::vector<Tessel::PropertySet>& known) {
    const Tessel::PropertySet* nearest = nullptr;
    std::size_t fewest = kUnknown;
    for (const Tessel::PropertySet& scheme : known) {
        const std::size_t changed = trial_->changedLines(scheme, fewest);
        if (changed >= fewest) continue;
        fewest = changed;
        nearest = &scheme;
    }
    return nearest;
}

// Who wrote a known scheme has seen more than one project: where it is as good, it has what neither places nor trials
// tell of. All of that at once first, for keys depend on each other. Whether lines are wrapped has been asked for.
void Search::askNearest(const Tessel::PropertySet* nearest, const std::vector<Decision>& decisions) {
    if (!nearest) return;
    const std::map<KeyId, Origin> reasons = reasons_;
    const auto isTold = [&](KeyId key) {
        return decisions[key.place()].places >= kFewestTold || reasons.contains(key);
    };
    Answer own;
    Answer theirs;
    Answer theirsUntold;
    for (const Decision& decision : decisions) {
        const std::optional<Value> value = Tessel::valueOf(*nearest, decision.key);
        const std::optional<Value> ownValue = Tessel::valueOf(scheme_, decision.key);
        const bool isOfWrapping = decision.key == KeyId(LINE_WRAP) || decision.key == KeyId(RIGHT_MARGIN);
        if (!value || value == ownValue || isOfWrapping || decision.origin == Origin::Lines) continue;
        own.push_back({decision.key, ownValue});
        theirs.push_back({decision.key, value});
        if (!isTold(decision.key)) theirsUntold.push_back(theirs.back());
    }
    isBetter(theirsUntold, 0) || isBetter(theirs, worth_);
    // What is better may change with the keys that come behind.
    for (int round = 0; round < 2; ++round) {
        for (std::size_t i = 0; i < own.size(); ++i) {
            const std::size_t worth = isTold(own[i].key) ? worth_ : 0;
            const bool isOwn = Tessel::valueOf(scheme_, own[i].key) == own[i].value;
            if (isOwn) {
                isBetter({theirs[i]}, worth);
            } else {
                isBetter({own[i]}, worth_ - worth);
            }
        }
    }
    for (const Setting& setting : theirs) {
        if (Tessel::valueOf(scheme_, setting.key) == setting.value) reasons_[setting.key] = Origin::Nearest;
    }
}

}  // namespace Learn
