#include "learn/learner.h"

#include <utility>

#include "learn/key_families.h"
#include "learn/search.h"
#include "scheme/scheme_conversion.h"

namespace Learn {

namespace {

using namespace Tessel::Keys;

constexpr int kUsualTab = 8;
constexpr int kTabOfBlanks = 4;  // where there are none
constexpr int kSeldomWanted = 1000;  // lines of which one may go against what all others do

// What suits any source: everything that can be kept is.
Tessel::PropertySet keepingScheme(const std::string& name) {
    Tessel::PropertySet scheme(name);
    scheme.setString(VANTREL_VERSION, TesselUI::CURRENT_VERSION);
    scheme.setString(LEFT_MARGIN, "");
    scheme.setBool(LINE_WRAP, false);
    scheme.setBool(FN_DO_NOT_FORMAT, false);
    scheme.setBool(DATA_DO_NOT_FORMAT, false);
    scheme.setBool(KEEP_UNRECOGNIZED.name, true);
    scheme.setBool(KEEP_REGION_INDENT.name, true);
    scheme.setBool(KEEP_FOREIGN_REGIONS.name, true);
    scheme.setBool(KEEP_DIRECTIVE_COMMENTS.name, true);
    scheme.setBool(KEEP_LINE_BREAKS.name, true);
    scheme.setBool(KEEP_COLUMNS.name, true);
    scheme.setBool(WRAP_LAST_RESORT.name, true);
    scheme.setInt(KEEP_BLANK_LINES.name, 3);
    scheme.setInt(KEEP_ONE_LINE_FUNCTIONS.name, 3);
    scheme.setBool(KEEP_ONE_LINE_STATEMENTS.name, true);
    scheme.setBool(KEEP_ONE_LINE_BLOCKS.name, true);
    scheme.setBool(KEEP_ONE_LINE_LISTS.name, true);
    scheme.setBool(KEEP_ONE_LINE_INITS.name, true);
    scheme.setBool(KEEP_FN_RETURN_TYPE_BREAK.name, true);
    return scheme;
}

// A scheme that was given comes first.
void note(std::vector<Decision>& decisions, Tessel::KeyId key, Value value) {
    Decision& decision = decisions[key.place()];
    if (decision.origin == Origin::Given) return;
    decision.origin = Origin::Lines;
    decision.value = std::move(value);
}

void noteLineHabits(std::vector<Decision>& decisions, const Observations& seen) {
    const TextHabits& habits = seen.habits;
    note(decisions, TAB_SIZE, seen.tabSize);
    if (habits.withTrailingBlanks * kSeldomWanted / 10 <= habits.lines) note(decisions, STRIP_TRAILING_WS, true);
    std::size_t runs = 0;
    std::size_t most = 0;
    for (std::size_t length = habits.emptyRuns.size() - 1; length > 0 && most == 0; --length) {
        runs += habits.emptyRuns[length];
        if (runs * kSeldomWanted > habits.lines) most = length;
    }
    if (most > 0 && most < TextHabits::kMostEmpty) note(decisions, MAX_BLANK_LINES, static_cast<int>(most));
}

// Where the bodies of functions are indented by tabs, so is all that is as wide as some.
Value withTabs(const Value& value, int tabSize) {
    std::string text = std::get<std::string>(value);
    const std::string wide(static_cast<std::size_t>(tabSize), ' ');
    for (std::size_t place = 0; text.compare(place, wide.size(), wide) == 0; ++place) {
        text.replace(place, wide.size(), 1, '\t');
    }
    return text;
}

void useTabs(std::vector<Decision>& decisions, int tabSize) {
    const std::optional<Value>& body = decisions[Tessel::KeyId(INDENT_FN_CONTENT).place()].value;
    if (body != Value(std::string("\t"))) return;
    for (Decision& decision : decisions) {
        if (natureOf(decision.key) != Nature::Indentation) continue;
        if (decision.value) decision.value = withTabs(*decision.value, tabSize);
        for (Sighting& sighting : decision.sightings) sighting.value = withTabs(sighting.value, tabSize);
    }
}

}  // namespace

Tessel::PropertySet observingScheme(int tabSize) {
    Tessel::PropertySet scheme;
    scheme.setString(VANTREL_VERSION, TesselUI::CURRENT_VERSION);
    scheme.setInt(TAB_SIZE, tabSize);
    scheme.setBool(KEEP_UNRECOGNIZED.name, true);
    scheme.setBool(FORMAT_TYPE_ARGUMENTS.name, true);
    return scheme;
}

int guessTabSize(const TextHabits& habits) {
    const bool hasTabs = habits.withTabs * kSeldomWanted > habits.lines;
    return hasTabs ? kUsualTab : kTabOfBlanks;
}

Learned learnScheme(const std::string& name, const Observations& seen, const DecisionRules& rules,
                    const std::vector<Tessel::PropertySet>& known, SchemeTrial& trial) {
    Learned learned;
    learned.decisions = decide(seen.tally, rules);
    useTabs(learned.decisions, seen.tabSize);
    noteLineHabits(learned.decisions, seen);
    Tessel::PropertySet start = keepingScheme(name);
    for (const Decision& decision : learned.decisions) {
        if (decision.value) start.set({std::string(decision.key.name()), *decision.value});
    }
    Search search(trial, std::move(start));
    search.run(seen.habits, known, learned.decisions);
    learned.scheme = search.scheme();
    learned.triedLines = trial.lines();
    learned.changedLines = search.changedLines();
    return learned;
}

}  // namespace Learn
