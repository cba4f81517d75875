// What is decided from made-up tallies, and what is tried on a made-up sample.

#include <cstdlib>
#include <map>

#include <gtest/gtest.h>

#include "learn/decision.h"
#include "learn/search.h"

namespace {

using namespace Tessel::Keys;
using Learn::Decision;
using Learn::Origin;
using Learn::Value;
using Tessel::KeyId;

class Decisions : public ::testing::Test {
protected:
    void found(KeyId key, const std::string& value, std::size_t count) {
        tally.of(key).values[value] = {count, {0, 1}};
    }

    Decision decided(KeyId key) { return Learn::decide(tally, rules)[key.place()]; }
    std::string textOf(KeyId key) {
        const Decision decision = decided(key);
        return decision.value ? std::get<std::string>(*decision.value) : "open";
    }

    Learn::Tally tally;
    Learn::DecisionRules rules;
};

TEST_F(Decisions, WhatEnoughPlacesAgreeOnIsTakenAndTheRestIsLeftOpen) {
    found(WS_AFTER_CS_KEY, " ", 8);
    found(WS_AFTER_CS_KEY, "", 2);
    EXPECT_EQ(textOf(WS_AFTER_CS_KEY), " ");
    found(WS_AFTER_CS_KEY, "", 3);
    const Decision disputed = decided(WS_AFTER_CS_KEY);
    EXPECT_EQ(disputed.origin, Origin::Disputed);
    EXPECT_FALSE(disputed.value);
    EXPECT_EQ(disputed.sightings.front().value, Value(" "));
}

TEST_F(Decisions, BreaksColumnsAndEmptyLinesMadeByHandDoNotCountAgainstAValue) {
    found(WS_BETWEEN_FN_CALL_ARGS, " ", 60);
    found(WS_BETWEEN_FN_CALL_ARGS, "\n", 40);
    EXPECT_EQ(textOf(WS_BETWEEN_FN_CALL_ARGS), " ");
    found(WS_AFTER_DD_TYPE_ID, " ", 50);
    found(WS_AFTER_DD_TYPE_ID, "     ", 60);
    EXPECT_EQ(textOf(WS_AFTER_DD_TYPE_ID), " ");
    found(WS_AFTER_FN_OPEN_BRACE, "\n", 50);
    found(WS_AFTER_FN_OPEN_BRACE, "\n\n", 50);
    tally.of(KeyId(WS_AFTER_FN_OPEN_BRACE)).onOneLine[" "] = {200, {0, 1}};
    EXPECT_EQ(textOf(WS_AFTER_FN_OPEN_BRACE), "\n");
}

TEST_F(Decisions, KeysOfTooFewPlacesGoByAGivenSchemeOrByTheirKin) {
    found(WS_BEFORE_ENUM_OPEN_BRACE, " ", 1);
    found(WS_BEFORE_FN_OPEN_BRACE, "\n", 90);
    const Decision kin = decided(WS_BEFORE_ENUM_OPEN_BRACE);
    EXPECT_EQ(kin.origin, Origin::Kin);
    EXPECT_EQ(kin.value, Value("\n"));
    EXPECT_EQ(kin.kin, KeyId(WS_BEFORE_FN_OPEN_BRACE));
    Tessel::PropertySet given;
    given.setString(WS_BEFORE_ENUM_OPEN_BRACE, " ");
    rules.given = &given;
    EXPECT_EQ(textOf(WS_BEFORE_ENUM_OPEN_BRACE), " ");
    EXPECT_EQ(textOf(WS_BEFORE_FN_OPEN_BRACE), "\n");
}

// A sample in which so many lines change for each key that has not the value given here.
class MadeUpTrial : public Learn::SchemeTrial {
public:
    std::size_t lines() const override { return 10000; }
    std::size_t changedLines(const Tessel::PropertySet& scheme, std::size_t) override {
        int functions = 0;
        bool keepsBreaks = false;
        bool formatsCalls = false;
        std::string indent;
        scheme.getBool(FORMAT_MACRO_CALLS.name, formatsCalls);
        scheme.getInt(KEEP_ONE_LINE_FUNCTIONS.name, functions);
        scheme.getBool(KEEP_LINE_BREAKS.name, keepsBreaks);
        scheme.getString(INDENT_LABEL.name, indent);
        return (functions < 2 ? 50 : 0) + (keepsBreaks ? 0 : 300) + (indent == " " ? 0 : 30) + (formatsCalls ? 40 : 0);
    }
    std::map<KeyId, std::size_t> causes(const Tessel::PropertySet&) override { return {}; }
    std::unique_ptr<Learn::SchemeTrial> laidOut(const Tessel::PropertySet&) override {
        return std::make_unique<MadeUpTrial>(*this);
    }
};

// Of a trial, the lines that were joined before they are broken at a margin: how many come back otherwise for each
// column that it is off.
class JoinedTrial : public MadeUpTrial {
public:
    JoinedTrial(int margin, int linesToAColumn) : margin_(margin), linesToAColumn_(linesToAColumn) {}

    std::size_t changedLines(const Tessel::PropertySet& scheme, std::size_t) override {
        int margin = 0;
        scheme.getInt(RIGHT_MARGIN, margin);
        return 500 + static_cast<std::size_t>(linesToAColumn_ * std::abs(margin - margin_));
    }

private:
    int margin_;
    int linesToAColumn_;
};

TEST(Search, KeepsWhatSavesLinesAndNothingElse) {
    MadeUpTrial trial;
    Tessel::PropertySet start("made up");
    start.setBool(KEEP_ONE_LINE_STATEMENTS.name, true);
    std::vector<Decision> decisions = Learn::decide({}, {});
    decisions[KeyId(KEEP_ONE_LINE_FUNCTIONS).place()].sightings = {{2, {30, {}}}, {3, {2, {}}}};
    Learn::Search search(trial, start);
    search.run({}, {}, decisions);
    int functions = 0;
    bool isKept = false;
    EXPECT_TRUE(search.scheme().getInt(KEEP_ONE_LINE_FUNCTIONS.name, functions));
    EXPECT_EQ(functions, 2);
    EXPECT_TRUE(search.scheme().getInt(JOIN_SHORT_FUNCTIONS.name, functions) && functions == 2);
    EXPECT_TRUE(search.scheme().getBool(FORMAT_DIRECTIVES.name, isKept) && isKept);
    EXPECT_FALSE(search.scheme().getBool(FORMAT_MACRO_CALLS.name, isKept));
    EXPECT_TRUE(search.scheme().getBool(KEEP_LINE_BREAKS.name, isKept) && isKept);
    EXPECT_TRUE(search.scheme().getBool(KEEP_ONE_LINE_STATEMENTS.name, isKept) && !isKept);
    std::string indent;
    EXPECT_TRUE(search.scheme().getString(INDENT_LABEL.name, indent));
    EXPECT_EQ(indent, " ");
    EXPECT_EQ(search.changedLines(), 0);
}

// No place and no line tells of casts; of what stands behind keywords, places do.
TEST(Search, TakesFromTheNearestKnownSchemeWhatNothingTellsAndWhatSavesLines) {
    MadeUpTrial trial;
    Tessel::PropertySet start("made up");
    start.setString(WS_AFTER_CS_KEY, " ");
    Tessel::PropertySet nearest("nearest");
    nearest.setString(WS_AFTER_CS_KEY, "");
    nearest.setString(WS_AFTER_CAST.name, " ");
    nearest.setBool(KEEP_LINE_BREAKS.name, true);
    Tessel::PropertySet far("far");
    far.setString(WS_AFTER_CAST.name, "");
    std::vector<Decision> decisions = Learn::decide({}, {});
    Decision& told = decisions[KeyId(WS_AFTER_CS_KEY).place()];
    told.origin = Origin::Found;
    told.value = Value(" ");
    told.places = 50;
    Learn::Search search(trial, start);
    search.run({}, {far, nearest}, decisions);
    std::string text;
    EXPECT_TRUE(search.scheme().getString(WS_AFTER_CAST.name, text) && text == " ");
    EXPECT_EQ(decisions[KeyId(WS_AFTER_CAST).place()].origin, Origin::Nearest);
    EXPECT_TRUE(search.scheme().getString(WS_AFTER_CS_KEY, text) && text == " ");
    EXPECT_EQ(told.origin, Origin::Found);
    EXPECT_TRUE(search.scheme().getString(INDENT_LABEL.name, text) && text == " ");
}

// Lines that were broken at 100, some of which cannot be, and a key that disagrees with the sample.
class WrappedTrial : public MadeUpTrial {
public:
    std::size_t changedLines(const Tessel::PropertySet& scheme, std::size_t limit) override {
        int margin = 0;
        bool isOn = false;
        std::string afterKey;
        std::size_t changed = scheme.getString(WS_AFTER_CS_KEY, afterKey) && afterKey == " " ? 40 : 0;
        scheme.getInt(RIGHT_MARGIN, margin);
        if (!scheme.getBool(LINE_WRAP, isOn) || !isOn) return changed + MadeUpTrial::changedLines(scheme, limit);
        return changed + (margin < 100 ? 1 + 3 * static_cast<std::size_t>(100 - margin) : 1);
    }
    std::map<KeyId, std::size_t> causes(const Tessel::PropertySet&) override { return {{KeyId(WS_AFTER_CS_KEY), 40}}; }
    std::unique_ptr<Learn::SchemeTrial> laidOut(const Tessel::PropertySet&) override {
        return std::make_unique<JoinedTrial>(100, 5);
    }
};

TEST(Search, FindsTheMarginThatLinesWereBrokenAtAndLeavesAloneWhatDoesHarm) {
    WrappedTrial trial;
    Tessel::PropertySet start("made up");
    start.setString(WS_AFTER_CS_KEY, " ");
    std::vector<Decision> decisions = Learn::decide({}, {});
    Learn::Search search(trial, start);
    search.run({}, {}, decisions);
    int margin = 0;
    bool isOn = false;
    std::string text;
    EXPECT_TRUE(search.scheme().getInt(RIGHT_MARGIN, margin));
    EXPECT_EQ(margin, 100);
    EXPECT_TRUE(search.scheme().getBool(LINE_WRAP, isOn) && isOn);
    EXPECT_FALSE(search.scheme().getString(WS_AFTER_CS_KEY, text));
}

// Hardly any lines of the sample are in namespaces, and some are too long for the margin that the others keep.
class MixedTrial : public MadeUpTrial {
public:
    std::size_t changedLines(const Tessel::PropertySet& scheme, std::size_t limit) override {
        bool isOn = false;
        int margin = 0;
        std::size_t changed = MadeUpTrial::changedLines(scheme, limit);
        if (!scheme.getBool(LINE_WRAP, isOn) || !isOn || !scheme.getInt(RIGHT_MARGIN, margin)) return changed;
        return changed + (margin <= 80 ? 40 : 0);
    }
    std::unique_ptr<Learn::SchemeTrial> laidOut(const Tessel::PropertySet&) override {
        return std::make_unique<JoinedTrial>(80, 50);
    }
};

TEST(Search, LeavesNamespacesAsTheyAreWhereSomeAreIndentedAndLinesWhereSomeBreakTheMargin) {
    MixedTrial trial;
    Tessel::PropertySet start("made up");
    start.setString(INDENT_NS_CONTENT, "");
    Learn::Tally tally;
    tally.of(KeyId(INDENT_NS_CONTENT)).values = {{"", {90, {0, 1}}}, {"  ", {10, {0, 2}}}};
    std::vector<Decision> decisions = Learn::decide(tally, {});
    Learn::Search search(trial, start);
    search.run({}, {}, decisions);
    std::string indent;
    bool isOn = false;
    EXPECT_TRUE(search.scheme().getString(INDENT_NS_CONTENT, indent) && indent == "  ");
    EXPECT_TRUE(search.scheme().getBool(KEEP_NS_INDENT.name, isOn) && isOn);
    EXPECT_TRUE(search.scheme().getBool(LINE_WRAP, isOn) && !isOn);
}

}  // namespace
