#include "learn/search.h"

#include <algorithm>
#include <string>
#include <utility>

#include "learn/key_families.h"
#include "scheme/key_value.h"

namespace Learn {

namespace {

using namespace Tessel::Keys;
using Tessel::KeyId;

constexpr std::size_t kLinesToAWorth = 5000;  // one line in so many is worth a value that is not the usual one

}  // namespace

Search::Search(SchemeTrial& trial, Tessel::PropertySet scheme)
    : trial_(&trial), scheme_(std::move(scheme)), worth_(1 + trial.lines() / kLinesToAWorth) {}

// Many constructs agree on it, so that it is no matter of lines: one that is long would outvote them.
bool Search::isSettled(const Decision& decision) {
    return natureOf(decision.key) == Nature::Indentation && decision.origin == Origin::Found;
}

Tessel::PropertySet Search::with(const Answer& answer) const {
    Tessel::PropertySet scheme = scheme_;
    for (const Setting& setting : answer) {
        scheme.erase(setting.key.name());
        if (setting.value) scheme.set({std::string(setting.key.name()), *setting.value});
    }
    return scheme;
}

// Without a question.
void Search::set(const Answer& answer) {
    scheme_ = with(answer);
    changed_ = trial_->changedLines(scheme_, kUnknown);
}

// Which of the answers changes the fewest lines. The first one is the usual one: another has to be worth it.
std::size_t Search::ask(const std::vector<Answer>& answers, std::size_t worth) {
    std::size_t fewest = kUnknown;
    std::size_t chosen = 0;
    for (std::size_t i = 0; i < answers.size(); ++i) {
        for (const Setting& setting : answers[i]) reasons_[setting.key] = Origin::Tried;
        const std::size_t needed = i == 0 ? 0 : std::max(worth, worth_);
        if (fewest < needed) continue;
        const std::size_t limit = fewest - needed;
        const Tessel::PropertySet scheme = with(answers[i]);
        const bool isKnown = scheme == scheme_ && changed_ != kUnknown;
        const std::size_t changed = isKnown ? changed_ : trial_->changedLines(scheme, limit);
        if (changed > limit) continue;
        fewest = changed;
        chosen = i;
    }
    scheme_ = with(answers[chosen]);
    changed_ = fewest;
    return chosen;
}

std::size_t Search::ask(KeyId key, const Values& values, std::size_t worth) {
    std::vector<Answer> answers;
    for (const std::optional<Value>& value : values) answers.push_back({{key, value}});
    return ask(answers, worth);
}

// Takes the value that suits the lines where the others do not; none where several do.
void Search::askSuiting(KeyId key, const Values& values) {
    reasons_[key] = Origin::Tried;
    set({{key, std::nullopt}});
    std::size_t fewest = changed_ + worth_;
    std::size_t next = fewest;
    std::optional<Value> suiting;
    for (const std::optional<Value>& value : values) {
        const std::size_t changed = trial_->changedLines(with({{key, value}}), next);
        if (changed < fewest) {
            next = std::exchange(fewest, changed);
            suiting = value;
        } else {
            next = std::min(next, changed);
        }
    }
    if (suiting && next >= fewest + worth_) set({{key, suiting}});
}

void Search::unlessWorse(const std::function<void()>& questions, std::size_t cost) {
    Tessel::PropertySet before = scheme_;
    const std::size_t changedBefore = changed_;
    questions();
    if (changedBefore == kUnknown || changed_ < changedBefore + cost) return;
    scheme_ = std::move(before);
    changed_ = changedBefore;
}

void Search::run(const TextHabits& habits, const std::vector<Tessel::PropertySet>& known,
                 std::vector<Decision>& decisions) {
    askTabs(habits);
    askIndentation(decisions);
    askNamespaces(decisions[KeyId(INDENT_NS_CONTENT).place()]);
    askKeptLayout();
    askUnseen(decisions);
    askTables(decisions);
    askAlignment(decisions);
    askCauses(decisions);
    askLaidOut();
    dropKept(decisions);
    askJoining(JOIN_SHORT_FUNCTIONS, decisions[KeyId(KEEP_ONE_LINE_FUNCTIONS).place()]);
    askJoining(JOIN_SHORT_STATEMENTS, decisions[KeyId(KEEP_ONE_LINE_STATEMENTS).place()]);
    askTabs(habits);
    unlessWorse([this] { askKeptLayout(); }, 1);
    // What is asked behind that needs most lines to be as they were.
    const Tessel::PropertySet* const nearest = nearestOf(known);
    askNearest(nearest, decisions);
    askHandmadeColumns();
    askWrapping(habits);
    askMacroBodies();
    askDirectives();
    askNearest(nearest, decisions);
    note(decisions);
}

// Of keys that change much, the next most frequent values may do less harm, or none at all.
void Search::askCauses(const std::vector<Decision>& decisions) {
    constexpr int mostRounds = 3;
    std::size_t before = kUnknown;
    for (int round = 0; round < mostRounds && changed_ + worth_ <= before; ++round) {
        before = changed_;
        for (const KeyId key : keysByHarm(decisions)) askOther(decisions[key.place()]);
    }
}

// Those that change enough gaps for another value to be worth it, most first.
std::vector<KeyId> Search::keysByHarm(const std::vector<Decision>& decisions) const {
    const std::map<KeyId, std::size_t> causes = trial_->causes(scheme_);
    std::vector<KeyId> keys;
    for (const auto& [key, gaps] : causes) {
        if (gaps >= worth_ && isDecidedByPlaces(key) && !isSettled(decisions[key.place()])) keys.push_back(key);
    }
    std::stable_sort(keys.begin(), keys.end(),
                     [&causes](KeyId left, KeyId right) { return causes.at(left) > causes.at(right); });
    return keys;
}

void Search::askOther(const Decision& decision) {
    constexpr std::size_t mostValues = 4;
    const std::optional<Value> current = Tessel::valueOf(scheme_, decision.key);
    Values values = {current};
    for (const Sighting& sighting : decision.sightings) {
        if (values.size() == mostValues) break;
        const bool isByHand = natureOf(decision.key) == Nature::Inline && breaksLine(sighting.value);
        if (sighting.value != current && !isByHand) values.push_back(sighting.value);
    }
    if (current) values.emplace_back();
    ask(decision.key, values);
}

// Takes the answer where it saves so many lines.
bool Search::isBetter(const Answer& answer, std::size_t worth) {
    if (changed_ < worth) return false;
    const std::size_t limit = changed_ - worth;
    Tessel::PropertySet scheme = with(answer);
    const std::size_t changed = trial_->changedLines(scheme, limit);
    if (changed > limit) return false;
    scheme_ = std::move(scheme);
    changed_ = changed;
    return true;
}

// A key that places told of, and that is better left alone, is disputed after all.
void Search::note(std::vector<Decision>& decisions) const {
    for (Decision& decision : decisions) {
        const std::optional<Value> value = Tessel::valueOf(scheme_, decision.key);
        if (value == decision.value) continue;
        const bool wasFound = decision.origin == Origin::Found;
        decision.value = value;
        if (value) {
            const auto reason = reasons_.find(decision.key);
            decision.origin = reason == reasons_.end() ? Origin::Preset : reason->second;
        } else {
            decision.origin = wasFound ? Origin::Disputed : Origin::Unseen;
        }
        if (!wasFound || value) continue;
        decision.places = decision.sightingCount();
        decision.agreeing = decision.sightings.front().found.count;
    }
}

}  // namespace Learn
