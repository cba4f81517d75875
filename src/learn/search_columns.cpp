// What stands in columns: names, initialisers, comments, and tables.
#include "learn/search.h"

#include <utility>

#include "learn/key_families.h"
#include "scheme/key_value.h"

namespace Learn {

namespace {

using namespace Tessel::Keys;
using Tessel::KeyId;

// Whether a switch is on in nearly all places that tell.
bool isUsual(const Decision& decision) {
    constexpr std::size_t few = 3;
    constexpr std::size_t onePlaceOf = 10;
    if (decision.sightings.empty() || decision.sightings.front().value != Value(true)) return false;
    const std::size_t on = decision.sightings.front().found.count;
    return on >= few && (decision.places - on) * onePlaceOf <= decision.places;
}

}  // namespace

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
    if (ask({made, kept}, trial_->lines() / kLinesToAHand) == 0) return;
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

}  // namespace Learn
