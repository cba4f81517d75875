#include "learn/search.h"

#include <algorithm>
#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "learn/key_families.h"
#include "scheme/key_value.h"

namespace Learn {

namespace {

using namespace Tessel::Keys;
using Tessel::KeyId;

constexpr std::size_t kLinesToAWorth = 5000;  // one line in so many is worth a value that is not the usual one
constexpr std::size_t kLinesToAHand = 300;    // of which one tells that lines were indented by hand
constexpr std::size_t kLinesToAMargin = 100;  // of which one may go beyond a margin that the others keep
constexpr std::size_t kFewestTold = 3;        // places that tell what is done at them

std::string textOf(const Tessel::PropertySet& scheme, std::string_view key) {
    std::string text;
    scheme.getString(key, text);
    return text;
}

// How lines are wrapped: the usual value of each key, and another.
constexpr std::pair<KeyId, std::pair<int, int>> kWrapStyles[] = {
    {WRAP_STYLE, {1, 2}},         {LIST_WRAP_STRATEGY, {1, 2}}, {CALL_ARGS_WRAP_STRATEGY, {1, 2}},
    {EXPR_WRAP_STYLE, {2, 1}},    {EXPR_WRAP_STRATEGY, {1, 2}}, {COMMA_WRAP_STYLE, {2, 1}},
    {SHIFT_WRAP_STYLE, {1, 2}},
};

constexpr int kUsualMargins[] = {72, 76, 78, 79, 80, 90, 95, 96, 98, 99, 100, 110, 119, 120, 128, 130, 132, 140};

// Margins that so many lines speak against are as likely as one that so few do.
std::size_t likelyUpTo(std::size_t against) {
    constexpr std::size_t oneOf = 50;
    return against + against / oneOf;
}

// Whether a switch is on in nearly all places that tell.
bool isUsual(const Decision& decision) {
    constexpr std::size_t few = 3;
    constexpr std::size_t onePlaceOf = 10;
    if (decision.sightings.empty() || decision.sightings.front().value != Value(true)) return false;
    const std::size_t on = decision.sightings.front().found.count;
    return on >= few && (decision.places - on) * onePlaceOf <= decision.places;
}

// The highest value that more than a few places have.
Value highestOf(const Decision& decision) {
    constexpr std::size_t few = 3;
    constexpr std::size_t onePlaceOf = 200;
    Value highest = decision.key.type() == Tessel::PropertyType::Boolean ? Value(false) : Value(0);
    for (const Sighting& sighting : decision.sightings) {
        if (sighting.found.count < few || sighting.found.count * onePlaceOf < decision.places) continue;
        highest = std::max(highest, sighting.value);
    }
    return highest;
}

// Many constructs agree on it, so that it is no matter of lines: one that is long would outvote them.
bool isSettled(const Decision& decision) {
    return natureOf(decision.key) == Nature::Indentation && decision.origin == Origin::Found;
}

}  // namespace

Search::Search(SchemeTrial& trial, Tessel::PropertySet scheme)
    : trial_(trial), scheme_(std::move(scheme)), worth_(1 + trial.lines() / kLinesToAWorth) {}

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
    changed_ = trial_.changedLines(scheme_, kUnknown);
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
        const std::size_t changed = isKnown ? changed_ : trial_.changedLines(scheme, limit);
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
    askJoining(decisions[KeyId(KEEP_ONE_LINE_FUNCTIONS).place()]);
    askTabs(habits);
    askKeptLayout();
    // What is asked behind that needs most lines to be as they were.
    const Tessel::PropertySet* const nearest = nearestOf(known);
    askNearest(nearest, decisions);
    askHandmadeColumns();
    askWrapping(habits);
    askNearest(nearest, decisions);
    note(decisions);
}

void Search::askTabs(const TextHabits& habits) {
    if (habits.withTabs * 500 < habits.lines) {
        reasons_[CONVERT_WS] = Origin::Lines;
        set({{CONVERT_WS, 1}});
        return;
    }
    ask(CONVERT_WS, {0, 2, 1});
    ask(TAB_SIZE, {8, 4, 2, 3}, trial_.lines() / kLinesToAHand);
    ask(TABS_IN_INDENT_ONLY, {std::nullopt, true});
    ask(KEEP_TABS, {std::nullopt, true}, trial_.lines() / kLinesToAHand);
}

void Search::askIndentation(const std::vector<Decision>& decisions) {
    constexpr std::size_t mostValues = 4;
    for (const Decision& decision : decisions) {
        if (natureOf(decision.key) != Nature::Indentation || decision.places == 0 || isSettled(decision)) continue;
        Values values = {decision.value};
        for (const Sighting& sighting : decision.sightings) {
            if (values.size() == mostValues) break;
            if (sighting.value != decision.value) values.push_back(sighting.value);
        }
        ask(decision.key, values);
    }
}

// Where some namespaces are indented and others are not, each stays as it is.
void Search::askNamespaces(const Decision& indents) {
    constexpr std::size_t few = 3;
    constexpr std::size_t onePlaceOf = 50;
    const Answer alike = {{indents.key, Tessel::valueOf(scheme_, indents.key)}, {KEEP_NS_INDENT, {}}};
    const auto isOther = [](const Sighting& sighting) { return sighting.value != Value(""); };
    const auto other = std::find_if(indents.sightings.begin(), indents.sightings.end(), isOther);
    if (other == indents.sightings.end() || indents.sightings.size() == 1) return;
    const bool isUsual = other->found.count >= std::max(few, indents.sightingCount() / onePlaceOf);
    const Answer asTheyAre = {{indents.key, other->value}, {KEEP_NS_INDENT, true}};
    ask(isUsual ? std::vector{asTheyAre, alike} : std::vector{alike, asTheyAre});
}

void Search::askKeptLayout() {
    const std::string unit = textOf(scheme_, INDENT_FN_CONTENT);
    ask(INDENT_FROM_LINE, {true, std::nullopt});
    ask(WS_BETWEEN_DD_ELEMENTS, {std::nullopt, " ", "\n"});
    // It shows where lines do not stay as far behind as they are.
    set({{WRAP_INDENT, unit}, {KEEP_LINE_INDENT, false}});
    askWrapIndent();
    askHanging();
    ask(ALIGN_PPD_LEFT_MOST, {true, false, std::nullopt});
}

void Search::askWrapIndent() {
    const std::string unit = textOf(scheme_, INDENT_FN_CONTENT);
    ask(WRAP_INDENT, {Tessel::valueOf(scheme_, WRAP_INDENT), unit, unit + unit, "    ", "        "});
}

// Where lines that are kept hang, unless they stay as far behind as they are.
void Search::askHanging() {
    const std::string unit = textOf(scheme_, INDENT_FN_CONTENT);
    const Values hangs = {std::nullopt, textOf(scheme_, WRAP_INDENT), "", unit};
    std::vector<Answer> hanging;
    for (const bool keepsIndent : {false, true}) {
        for (const std::optional<Value>& hang : hangs) {
            hanging.push_back({{KEEP_LINE_INDENT, keepsIndent}, {HANGING_OPERAND_INDENT, hang}});
        }
    }
    ask(hanging, trial_.lines() / kLinesToAHand);
    // By itself, where operands hang keeps nothing that was done by hand: less speaks for it.
    Values operands = hangs;
    operands.front() = Tessel::valueOf(scheme_, HANGING_OPERAND_INDENT);
    ask(HANGING_OPERAND_INDENT, operands);
    ask(HANGING_FROM_STATEMENT, {std::nullopt, true});
}

// Keys that no place was told of, in the order in which their values are usual.
void Search::askUnseen(const std::vector<Decision>& decisions) {
    const std::string unit = textOf(scheme_, INDENT_FN_CONTENT);
    const std::vector<std::pair<KeyId, Values>> usual = {
        {WS_BEFORE_LINE_COMMENT, {" ", "  ", "\t", std::nullopt}},
        {INDENT_DD_CONTENT, {unit, textOf(scheme_, WRAP_INDENT), std::nullopt}},
        {INDENT_LABEL, {"", " ", std::nullopt}},
        {INDENT_CS_SINGLE, {std::nullopt, unit}},
    };
    for (const auto& [key, values] : usual) {
        if (decisions[key.place()].origin == Origin::Unseen) ask(key, values);
    }
}

void Search::askAlignment(const std::vector<Decision>& decisions) {
    set({{KEEP_COLUMNS, std::nullopt}});
    for (const KeyId key : {KeyId(ALIGN_ENUM_INITIALIZERS), KeyId(ALIGN_DD_INITIALIZERS)}) {
        ask(key, {isUsual(decisions[key.place()]), false, true});
    }
    for (const KeyId key :
         {KeyId(ALIGN_DD_NAMES_LEFT), KeyId(ALIGN_CLASS_MEMBER_NAMES_LEFT), KeyId(ALIGN_FN_DECL_NAMES_LEFT)}) {
        ask({{{key, isUsual(decisions[key.place()])}},
             {{key, false}},
             {{key, true}},
             {{key, true}, {ALIGN_DATA_ONLY, true}},
             {{key, true}, {HANGING_ASTERISK, true}, {HANGING_AMPERSAND, true}}});
    }
    askColumns();
}

// Names may stand in columns that are none of those that can be made.
void Search::askHandmadeColumns() {
    const Answer kept = {{ALIGN_DD_NAMES_LEFT, false},      {ALIGN_CLASS_MEMBER_NAMES_LEFT, false},
                         {ALIGN_FN_DECL_NAMES_LEFT, false}, {ALIGN_DD_INITIALIZERS, false},
                         {WS_AFTER_DD_TYPE_ID, {}},         {WS_AFTER_PARAM_TYPE_ID, {}},
                         {WS_AFTER_DD_NAME, {}},            {KEEP_COLUMNS, true}};
    Answer made;
    for (const Setting& setting : kept) made.push_back({setting.key, Tessel::valueOf(scheme_, setting.key)});
    if (ask({made, kept}, trial_.lines() / kLinesToAHand) == 0) return;
    // A blank is no column, so that these can stay beside it.
    for (const KeyId key : {KeyId(WS_AFTER_DD_TYPE_ID), KeyId(WS_AFTER_PARAM_TYPE_ID)}) ask(key, {" ", std::nullopt});
}

// Where comments alone stand in columns, these are left to themselves, and no other columns kept.
void Search::askColumns() {
    const std::optional<Value> comment = Tessel::valueOf(scheme_, WS_BEFORE_LINE_COMMENT);
    const Setting dropped{KEEP_COLUMNS, {}};
    ask({{dropped, {WS_BEFORE_LINE_COMMENT, comment}},
         {dropped, {WS_BEFORE_LINE_COMMENT, {}}},
         {{KEEP_COLUMNS, true}, {WS_BEFORE_LINE_COMMENT, comment}}});
}

// Rows and columns may have been laid out by hand.
void Search::askTables(const std::vector<Decision>& decisions) {
    Answer asDecided;
    for (const Decision& decision : decisions) {
        if (natureOf(decision.key) == Nature::Table) asDecided.push_back({decision.key, decision.value});
    }
    Answer leftAlone = asDecided;
    for (Setting& setting : leftAlone) setting.value.reset();
    ask({asDecided, leftAlone});
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
    const std::map<KeyId, std::size_t> causes = trial_.causes(scheme_);
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

// What is kept for nothing is rather not kept.
void Search::dropKept(const std::vector<Decision>& decisions) {
    constexpr KeyId keys[] = {KEEP_ONE_LINE_FUNCTIONS, KEEP_ONE_LINE_STATEMENTS,  KEEP_ONE_LINE_BLOCKS,
                              KEEP_ONE_LINE_LISTS,     KEEP_ONE_LINE_INITS,       KEEP_FN_RETURN_TYPE_BREAK,
                              KEEP_BLANK_LINES};
    for (const KeyId key : keys) {
        Values values = {highestOf(decisions[key.place()])};
        if (key.type() == Tessel::PropertyType::Boolean) {
            for (const bool isOn : {false, true}) values.push_back(isOn);
        } else {
            constexpr int highest = 3;
            for (int level = 0; level <= highest; ++level) values.push_back(level);
        }
        ask(key, values);
    }
    askColumns();
    keepsLineBreaks_ = ask(KEEP_LINE_BREAKS, {false, true}) == 1;
}

// What may be left as it is, is laid out as all else where that changes next to nothing.
void Search::askLaidOut() {
    for (const KeyId key : {KeyId(FORMAT_TYPE_ARGUMENTS), KeyId(FORMAT_DIRECTIVES), KeyId(FORMAT_MACRO_BODIES),
                            KeyId(FORMAT_MACRO_CALLS)}) {
        ask(key, {true, std::nullopt});
    }
    ask(ALIGN_LINE_SPLICES, {std::nullopt, 0, 1, 2});
}

// Where many short functions stand on one line, and hardly any on several, that is the style.
void Search::askJoining(const Decision& oneLine) {
    constexpr std::size_t many = 20;
    const std::optional<Value> kept = Tessel::valueOf(scheme_, KEEP_ONE_LINE_FUNCTIONS);
    std::set<Value, std::greater<>> levels;
    for (const Sighting& sighting : oneLine.sightings) {
        if (sighting.found.count >= many && sighting.value > Value(0)) levels.insert(sighting.value);
    }
    Values values;
    for (const Value& level : levels) {
        if (kept >= level) values.emplace_back(level);
    }
    if (values.empty()) return;
    values.emplace_back();
    ask(JOIN_SHORT_FUNCTIONS, values);
}

// Lines are wrapped where that changes next to nothing.
void Search::askWrapping(const TextHabits& habits) {
    for (const KeyId key : {KeyId(LINE_WRAP), KeyId(RIGHT_MARGIN)}) reasons_[key] = Origin::Tried;
    set({{LINE_WRAP, false}, {RIGHT_MARGIN, 0}});
    const int margin = findMargin(habits);
    if (margin == 0) return;
    Tessel::PropertySet unwrapped = scheme_;
    const std::size_t changedUnwrapped = changed_;
    askWrapStyles(margin);
    if (changed_ >= changedUnwrapped + worth_) {
        scheme_ = std::move(unwrapped);
        changed_ = changedUnwrapped;
        return;
    }
    // What has been wrapped hangs as wrapped lines do.
    if (Tessel::valueOf(scheme_, KEEP_LINE_INDENT) == Value(true)) askHanging();
}

// Lines that could be broken, and go beyond a margin, speak against it. Where those that end within it are joined and
// broken once more, they are as they were for the margin that they were broken at: of those that are as likely, it is
// the one that the fewest lines go beyond. 0 when there is none.
int Search::findMargin(const TextHabits& habits) const {
    std::vector<Margin> margins = likelyMargins();
    if (margins.empty()) return 0;
    const auto against = [](const Margin& margin) { return margin.against; };
    const std::size_t most = likelyUpTo(std::ranges::min(margins, {}, against).against);
    std::erase_if(margins, [most](const Margin& margin) { return margin.against > most; });
    const auto worth = [](const Margin& margin) { return std::pair(margin.broken, margin.against); };
    const Margin best = std::ranges::min(margins, {}, worth);
    // Lines of just that width are what tells margins apart that are a column from each other.
    int found = best.column;
    for (const Margin& margin : margins) {
        const bool isReached = habits.widths[static_cast<std::size_t>(margin.column)] > 0;
        if (worth(margin) == worth(best) && isReached && margin.column <= found + 2) found = margin.column;
    }
    return found;
}

// Those that hardly any lines go beyond.
std::vector<Search::Margin> Search::likelyMargins() const {
    constexpr std::size_t weightOfLongLines = 4;
    const Answer usual = {{LINE_WRAP, true},            {WRAP_STYLE, 1},         {LIST_WRAP_STRATEGY, 1},
                          {CALL_ARGS_WRAP_STRATEGY, 1}, {EXPR_WRAP_STRATEGY, 1}, {EXPR_WRAP_STYLE, 2}};
    const std::size_t most = changed_ + trial_.lines() / kLinesToAMargin;
    std::vector<Margin> margins;
    std::size_t limit = kUnknown;
    for (const int column : kUsualMargins) {
        Tessel::PropertySet scheme = with(usual);
        scheme.setInt(RIGHT_MARGIN, column);
        const std::size_t broken = trial_.changedLines(scheme, most);
        if (broken > most) continue;
        scheme.erase(KEEP_LINE_BREAKS.name);
        const std::size_t against = trial_.changedLines(scheme, limit) + weightOfLongLines * broken;
        limit = std::min(limit, likelyUpTo(against));
        margins.push_back({column, broken, against});
    }
    return margins;
}

// How lines are broken shows where they are joined first. Where lines are kept, those that are broken all the same show
// it best, and where lines do not stay as far behind as they are.
void Search::askWrapStyles(int margin) {
    set({{KEEP_LINE_BREAKS, std::nullopt}, {LINE_WRAP, true}, {RIGHT_MARGIN, margin}});
    // Some of these lines were broken by hand: a style has to show in many.
    const std::size_t many = trial_.lines() / kLinesToAHand;
    for (const auto& [key, values] : kWrapStyles) ask(key, {values.first, values.second}, many);
    ask(WRAP_WHOLE_PARTS, {std::nullopt, true}, many);
    const std::optional<Value> keepsIndent = Tessel::valueOf(scheme_, KEEP_LINE_INDENT);
    set({{KEEP_LINE_BREAKS, keepsLineBreaks_}, {KEEP_LINE_INDENT, false}});
    for (const auto& [key, values] : kWrapStyles) {
        const bool isFirst = Tessel::valueOf(scheme_, key) == Value(values.first);
        ask(key, {isFirst ? values.first : values.second, isFirst ? values.second : values.first});
    }
    ask(KEEP_LINE_INDENT, {false, keepsIndent});
    askWrapIndent();
}

// The one that changes the fewest lines by itself; null when there is none.
const Tessel::PropertySet* Search::nearestOf(const std::vector<Tessel::PropertySet>& known) {
    const Tessel::PropertySet* nearest = nullptr;
    std::size_t fewest = kUnknown;
    for (const Tessel::PropertySet& scheme : known) {
        const std::size_t changed = trial_.changedLines(scheme, fewest);
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

// Takes the answer where it saves so many lines.
bool Search::isBetter(const Answer& answer, std::size_t worth) {
    if (changed_ < worth) return false;
    const std::size_t limit = changed_ - worth;
    Tessel::PropertySet scheme = with(answer);
    const std::size_t changed = trial_.changedLines(scheme, limit);
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
