#pragma once

#include <cstddef>
#include <functional>
#include <limits>
#include <map>
#include <optional>
#include <vector>

#include "learn/decision.h"
#include "learn/scheme_trial.h"
#include "learn/text_habits.h"

namespace Learn {

// Finds what no place tells by itself by trying it: the values with which a scheme changes the fewest lines.
class Search {
public:
    // The trial is borrowed. The scheme is what the search starts from.
    Search(SchemeTrial& trial, Tessel::PropertySet scheme);

    // Goes on from what was decided, and notes there what the scheme has in the end, and why. What remains open goes by
    // the nearest of the known schemes.
    void run(const TextHabits& habits, const std::vector<Tessel::PropertySet>& known, std::vector<Decision>& decisions);

    const Tessel::PropertySet& scheme() const { return scheme_; }
    std::size_t changedLines() const { return changed_; }

private:
    using Values = std::vector<std::optional<Value>>;  // none: the key is absent
    struct Setting {
        Tessel::KeyId key;
        std::optional<Value> value;
    };
    using Answer = std::vector<Setting>;
    struct Margin {
        int column;
        std::size_t broken;   // lines, where all others are kept
        std::size_t against;  // lines that speak against it
    };

    static constexpr std::size_t kUnknown = std::numeric_limits<std::size_t>::max();
    static constexpr std::size_t kLinesToAHand = 300;  // of which one tells that lines were indented by hand

    static bool isSettled(const Decision& decision);
    Tessel::PropertySet with(const Answer& answer) const;
    void set(const Answer& answer);
    std::size_t ask(const std::vector<Answer>& answers, std::size_t worth = 0);
    std::size_t ask(Tessel::KeyId key, const Values& values, std::size_t worth = 0);
    void askSuiting(Tessel::KeyId key, const Values& values);
    // What these questions come to, unless that costs so many lines.
    void unlessWorse(const std::function<void()>& questions, std::size_t cost);

    void askCauses(const std::vector<Decision>& decisions);
    std::vector<Tessel::KeyId> keysByHarm(const std::vector<Decision>& decisions) const;
    void askOther(const Decision& decision);
    bool isBetter(const Answer& answer, std::size_t worth);
    void note(std::vector<Decision>& decisions) const;

    // search_layout.cpp
    void askTabs(const TextHabits& habits);
    void askIndentation(const std::vector<Decision>& decisions);
    void askNamespaces(const Decision& indents);
    void askKeptLayout();
    void askWrapIndent();
    void askHanging();
    void askUnseen(const std::vector<Decision>& decisions);
    void askLaidOut();
    void askMacroBodies();
    void askDirectives();
    void askJoining(Tessel::KeyId joining, const Decision& oneLine);
    void dropKept(const std::vector<Decision>& decisions);

    // search_columns.cpp
    void askAlignment(const std::vector<Decision>& decisions);
    void askHandmadeColumns();
    void askColumns();
    void askTables(const std::vector<Decision>& decisions);

    // search_wrapping.cpp
    void askWrapping(const TextHabits& habits);
    std::vector<Margin> likelyMargins(SchemeTrial& joined) const;
    std::vector<Margin> tryMargins(const std::vector<int>& columns, const Answer& wrapping, SchemeTrial& joined) const;
    int findMargin(const TextHabits& habits, SchemeTrial& joined) const;
    void askWrapStyles(int margin, SchemeTrial& joined);
    void askOfJoinedLines(int margin);

    // search_nearest.cpp
    const Tessel::PropertySet* nearestOf(const std::vector<Tessel::PropertySet>& known);
    void askNearest(const Tessel::PropertySet* nearest, const std::vector<Decision>& decisions);

    // What the questions are asked of.
    SchemeTrial* trial_;
    Tessel::PropertySet scheme_;
    std::size_t changed_ = kUnknown;  // lines, with the scheme
    bool keepsLineBreaks_ = true;
    std::map<Tessel::KeyId, Origin> reasons_;  // of keys that were asked for, or that the lines tell
    std::size_t worth_ = 0;  // lines that a value that is not the usual one has to save
};

}  // namespace Learn
