// Where lines that are too long are broken, and which are.
#include "learn/search.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <utility>

#include "scheme/key_value.h"

namespace Learn {

namespace {

using namespace Tessel::Keys;
using Tessel::KeyId;

constexpr std::size_t kLinesToAMargin = 50;  // of which one may go beyond a margin that the others keep

// How lines are wrapped: the usual value of each key, and others. None: the key is absent.
const std::vector<std::pair<KeyId, std::vector<std::optional<Value>>>>& wrapStyles() {
    static const std::vector<std::pair<KeyId, std::vector<std::optional<Value>>>> table = {
        {WRAP_STYLE, {1, 2}},
        {LIST_WRAP_STRATEGY, {1, 2}},
        {CALL_ARGS_WRAP_STRATEGY, {1, 2}},
        {EXPR_WRAP_STYLE, {2, 1}},
        {EXPR_WRAP_STRATEGY, {1, 2}},
        {COMMA_WRAP_STYLE, {2, 1}},
        {SHIFT_WRAP_STYLE, {1, 2}},
        {WRAP_WHOLE_PARTS, {std::nullopt, true}},
        {WRAP_LAST_RESORT, {true, std::nullopt}},
        {WRAP_BY_WEIGHT, {std::nullopt, 1, 2}},
    };
    return table;
}

constexpr int kUsualMargins[] = {72, 76, 78, 79, 80, 90, 95, 96, 98, 99, 100, 110, 119, 120, 128, 130, 132, 140};

// Margins that so many lines speak against are as likely as one that so few do.
std::size_t likelyUpTo(std::size_t against) {
    constexpr std::size_t oneOf = 50;
    return against + against / oneOf;
}

}  // namespace

// Lines are wrapped where that changes next to nothing.
void Search::askWrapping(const TextHabits& habits) {
    for (const KeyId key : {KeyId(LINE_WRAP), KeyId(RIGHT_MARGIN)}) reasons_[key] = Origin::Tried;
    set({{LINE_WRAP, false}, {RIGHT_MARGIN, 0}});
    const std::unique_ptr<SchemeTrial> joined = trial_->laidOut(with({{KEEP_LINE_BREAKS, std::nullopt}}));
    const int margin = findMargin(habits, *joined);
    if (margin == 0) return;
    unlessWorse([&] { askWrapStyles(margin, *joined); }, worth_);
    // What has been wrapped hangs as wrapped lines do.
    const bool isWrapping = Tessel::valueOf(scheme_, LINE_WRAP) == Value(true);
    if (isWrapping && Tessel::valueOf(scheme_, KEEP_LINE_INDENT) == Value(true)) askHanging();
}

// Lines that could be broken, and go beyond a margin, speak against it. Where those that end within it are joined and
// broken once more, they are as they were for the margin that they were broken at: of those that are as likely, it is
// the one that the fewest lines go beyond. 0 when there is none.
int Search::findMargin(const TextHabits& habits, SchemeTrial& joined) const {
    const std::vector<Margin> margins = likelyMargins(joined);
    if (margins.empty()) return 0;
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

// Those that are about as likely as the likeliest, whether lines are broken one place after the other or as wholes.
std::vector<Search::Margin> Search::likelyMargins(SchemeTrial& joined) const {
    const auto dropUnlikely = [](std::vector<Margin>& margins) {
        std::size_t fewest = kUnknown;
        for (const Margin& margin : margins) fewest = std::min(fewest, margin.against);
        std::erase_if(margins, [&](const Margin& margin) { return margin.against > likelyUpTo(fewest); });
    };
    Answer usual = {{LINE_WRAP, true},            {WRAP_STYLE, 1},         {LIST_WRAP_STRATEGY, 1},
                    {CALL_ARGS_WRAP_STRATEGY, 1}, {EXPR_WRAP_STRATEGY, 1}, {EXPR_WRAP_STYLE, 2},
                    {WRAP_LAST_RESORT, {}}};
    std::vector<Margin> margins = tryMargins({std::begin(kUsualMargins), std::end(kUsualMargins)}, usual, joined);
    dropUnlikely(margins);
    std::vector<int> columns;
    for (const Margin& margin : margins) columns.push_back(margin.column);
    usual.push_back({WRAP_BY_WEIGHT, 1});
    std::ranges::copy(tryMargins(columns, usual, joined), std::back_inserter(margins));
    dropUnlikely(margins);
    return margins;
}

// Those that hardly any lines go beyond.
std::vector<Search::Margin> Search::tryMargins(const std::vector<int>& columns, const Answer& wrapping,
                                               SchemeTrial& joined) const {
    constexpr std::size_t weightOfLongLines = 4;
    const std::size_t most = changed_ + trial_->lines() / kLinesToAMargin;
    std::vector<Margin> margins;
    std::size_t limit = kUnknown;
    for (const int column : columns) {
        Tessel::PropertySet scheme = with(wrapping);
        scheme.setInt(RIGHT_MARGIN, column);
        const std::size_t broken = trial_->changedLines(scheme, most);
        if (broken > most) continue;
        const std::size_t against = joined.changedLines(scheme, limit) + weightOfLongLines * broken;
        limit = std::min(limit, likelyUpTo(against));
        margins.push_back({column, broken, against});
    }
    return margins;
}

// How lines are broken shows where they were joined before.
void Search::askOfJoinedLines(int margin) {
    set({{LINE_WRAP, true}, {RIGHT_MARGIN, margin}});
    // Some of these lines were broken by hand: a style has to show in many.
    const std::size_t many = trial_->lines() / kLinesToAHand;
    for (const auto& [key, values] : wrapStyles()) ask(key, values, many);
    if (Tessel::valueOf(scheme_, WRAP_BY_WEIGHT)) ask(WRAP_BY_WEIGHT, {1, 2});
    if (Tessel::valueOf(scheme_, WRAP_BY_WEIGHT)) ask(LITERALS_BEYOND_MARGIN, {std::nullopt, true}, many);
    askWrapIndent();
}

// Where lines are kept, those that are broken all the same show it best, and where lines do not stay as far behind as
// they are.
void Search::askWrapStyles(int margin, SchemeTrial& joined) {
    SchemeTrial* const sample = std::exchange(trial_, &joined);
    askOfJoinedLines(margin);
    trial_ = sample;
    const std::optional<Value> keepsIndent = Tessel::valueOf(scheme_, KEEP_LINE_INDENT);
    set({{KEEP_LINE_BREAKS, keepsLineBreaks_}, {KEEP_LINE_INDENT, false}});
    for (const auto& [key, values] : wrapStyles()) {
        Values currentFirst = values;
        const auto current = std::ranges::find(currentFirst, Tessel::valueOf(scheme_, key));
        std::rotate(currentFirst.begin(), current, current + 1);
        ask(key, currentFirst);
    }
    ask(KEEP_LINE_INDENT, {false, keepsIndent});
    askWrapIndent();
}

}  // namespace Learn
