#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
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

    // Goes on from what was decided, and notes there what the trials have changed.
    void run(const TextHabits& habits, std::vector<Decision>& decisions);

    const Tessel::PropertySet& scheme() const { return scheme_; }
    std::size_t changedLines() const { return changed_; }

private:
    struct Setting {
        std::string_view key;
        std::optional<Value> value;  // none: the key is absent
    };
    using Answer = std::vector<Setting>;

    Tessel::PropertySet with(const Answer& answer) const;
    std::size_t ask(const std::vector<Answer>& answers, std::size_t worth = 0);

    void askIndentation(const std::vector<Decision>& decisions);
    void askTabs(const TextHabits& habits);
    void askKeptLayout();
    void askUnseen(const std::vector<Decision>& decisions);
    void askAlignment(const std::vector<Decision>& decisions);
    void askRunnersUp(std::vector<Decision>& decisions);
    void askWrapping(const TextHabits& habits);
    void askWrapStyles(int margin);
    void dropKept(const std::vector<Decision>& decisions);

    SchemeTrial& trial_;
    Tessel::PropertySet scheme_;
    std::size_t changed_ = 0;
    bool keepsLineBreaks_ = true;
    std::size_t worth_ = 0;  // lines that a value that is not the usual one has to save
};

}  // namespace Learn
