#pragma once

#include <string>
#include <vector>

#include "learn/decision.h"
#include "learn/scheme_trial.h"
#include "learn/text_habits.h"
#include "scheme/property_set.h"

namespace Learn {

struct Learned {
    Tessel::PropertySet scheme;
    std::vector<Decision> decisions;  // one for each key, in their order
    std::size_t triedLines = 0;       // of the sample
    std::size_t changedLines = 0;     // of these, with the scheme
};

// What sources were seen to do.
struct Observations {
    int tabSize = 0;  // with which they were looked at
    Tally tally;
    TextHabits habits;
};

// The scheme with which files are formatted to see what they do: it wants nothing of them.
Tessel::PropertySet observingScheme(int tabSize);

// The columns to a tab stop, as far as the lines tell by themselves.
int guessTabSize(const TextHabits& habits);

// The known schemes tell what the sources do not.
Learned learnScheme(const std::string& name, const Observations& seen, const DecisionRules& rules,
                    const std::vector<Tessel::PropertySet>& known, SchemeTrial& trial);

}  // namespace Learn
