// Where code stands: tabs, indentation, what is kept as it is, and what is laid out.
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

std::string textOf(const Tessel::PropertySet& scheme, std::string_view key) {
    std::string text;
    scheme.getString(key, text);
    return text;
}

Value lowestOf(KeyId key) { return key.type() == Tessel::PropertyType::Boolean ? Value(false) : Value(0); }

// The highest value that more than a few places have.
Value highestOf(const Decision& decision) {
    constexpr std::size_t few = 3;
    constexpr std::size_t onePlaceOf = 200;
    Value highest = lowestOf(decision.key);
    for (const Sighting& sighting : decision.sightings) {
        if (sighting.found.count < few || sighting.found.count * onePlaceOf < decision.places) continue;
        highest = std::max(highest, sighting.value);
    }
    return highest;
}

}  // namespace

void Search::askTabs(const TextHabits& habits) {
    if (habits.withTabs * 500 < habits.lines) {
        reasons_[CONVERT_WS] = Origin::Lines;
        set({{CONVERT_WS, 1}});
        return;
    }
    ask(CONVERT_WS, {0, 2, 1});
    ask(TAB_SIZE, {8, 4, 2, 3}, trial_->lines() / kLinesToAHand);
    ask(TABS_IN_INDENT_ONLY, {std::nullopt, true});
    ask(KEEP_TABS, {std::nullopt, true}, trial_->lines() / kLinesToAHand);
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
    askWrapIndent();
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
    ask(hanging, trial_->lines() / kLinesToAHand);
    // By itself, where operands hang keeps nothing that was done by hand: less speaks for it.
    Values operands = hangs;
    operands.front() = Tessel::valueOf(scheme_, HANGING_OPERAND_INDENT);
    ask(HANGING_OPERAND_INDENT, operands);
    ask(HANGING_FROM_STATEMENT, {std::nullopt, true});
    ask(HANGING_FROM_LINE, {std::nullopt, true});
    ask(HANGING_COMMAS, {std::nullopt, true});
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

// What may be left as it is, is laid out as all else where that changes next to nothing.
void Search::askLaidOut() {
    for (const KeyId key : {KeyId(FORMAT_TYPE_ARGUMENTS), KeyId(FORMAT_DIRECTIVES), KeyId(FORMAT_MACRO_CALLS),
                            KeyId(FORMAT_LABELS), KeyId(FORMAT_OTHER_GAPS)}) {
        ask(key, {true, std::nullopt});
    }
    if (!Tessel::valueOf(scheme_, FORMAT_DIRECTIVES)) ask(FORMAT_CONDITIONS, {true, std::nullopt});
    askMacroBodies();
    for (const KeyId key : {KeyId(WS_AROUND_PASTE), KeyId(WS_IN_EMPTY_BRACES)}) {
        if (!Tessel::valueOf(scheme_, key)) askSuiting(key, {"", " "});
    }
    ask(ANCHORS_FROM_SOURCE, {std::nullopt, true});
}

// A body that is laid out may move with its directive.
void Search::askMacroBodies() {
    ask({{{FORMAT_MACRO_BODIES, true}, {INDENT_FROM_DIRECTIVE, std::nullopt}},
         {{FORMAT_MACRO_BODIES, true}, {INDENT_FROM_DIRECTIVE, true}},
         {{FORMAT_MACRO_BODIES, std::nullopt}, {INDENT_FROM_DIRECTIVE, std::nullopt}}});
    askSuiting(ALIGN_LINE_SPLICES, {0, 1, 2});
}

// Where directives stand, and what tabs are for in them, goes with whether they are laid out: as usual, or as found.
void Search::askDirectives() {
    const Answer usual = {{FORMAT_DIRECTIVES, true}, {ALIGN_PPD_LEFT_MOST, true}, {TABS_IN_INDENT_ONLY, std::nullopt}};
    Answer found = usual;
    for (Setting& setting : found) setting.value = Tessel::valueOf(scheme_, setting.key);
    ask({usual, found});
}

// Where many short bodies stand on one line, and hardly any on several, that is the style.
void Search::askJoining(KeyId joining, const Decision& oneLine) {
    constexpr std::size_t many = 20;
    const std::optional<Value> kept = Tessel::valueOf(scheme_, oneLine.key);
    std::set<Value, std::greater<>> levels;
    for (const Sighting& sighting : oneLine.sightings) {
        if (sighting.found.count >= many && sighting.value > lowestOf(oneLine.key)) levels.insert(sighting.value);
    }
    Values values;
    for (const Value& level : levels) {
        if (kept >= level) values.emplace_back(level);
    }
    if (values.empty()) return;
    values.emplace_back();
    ask(joining, values);
}

// What is kept for nothing is rather not kept.
void Search::dropKept(const std::vector<Decision>& decisions) {
    constexpr KeyId keys[] = {KEEP_ONE_LINE_FUNCTIONS, KEEP_ONE_LINE_STATEMENTS,  KEEP_ONE_LINE_BLOCKS,
                              KEEP_ONE_LINE_LISTS,     KEEP_ONE_LINE_INITS,       KEEP_FN_RETURN_TYPE_BREAK,
                              KEEP_BLANK_LINES};
    for (const KeyId key : keys) {
        Values values = {highestOf(decisions[key.place()])};
        if (key.type() == Tessel::PropertyType::Boolean) {
            for (const bool isOn : {false, true}) values.emplace_back(std::in_place, isOn);
        } else {
            constexpr int highest = 3;
            for (int level = 0; level <= highest; ++level) values.emplace_back(std::in_place, level);
        }
        ask(key, values);
    }
    askColumns();
    keepsLineBreaks_ = ask(KEEP_LINE_BREAKS, {false, true}) == 1;
}

}  // namespace Learn
