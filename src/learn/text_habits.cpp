#include "learn/text_habits.h"

#include <algorithm>
#include <functional>

#include "engine/shown_width.h"

namespace Learn {

namespace {

template <typename Counts>
void addEach(Counts& counts, const Counts& others) {
    std::transform(counts.begin(), counts.end(), others.begin(), counts.begin(), std::plus<>());
}

void addLine(TextHabits& habits, std::string_view line, int tabSize) {
    ++habits.lines;
    const bool hasTabs = line.find('\t') != std::string_view::npos;
    const std::size_t width = static_cast<std::size_t>(Tessel::shownColumnAfter(line, 0, tabSize));
    ++habits.widths[std::min(width, TextHabits::kWidest)];
    if (hasTabs) ++habits.withTabs;
    if (line.ends_with(' ') || line.ends_with('\t')) ++habits.withTrailingBlanks;
}

}  // namespace

void TextHabits::add(const TextHabits& other) {
    lines += other.lines;
    addEach(widths, other.widths);
    addEach(emptyRuns, other.emptyRuns);
    withTabs += other.withTabs;
    withTrailingBlanks += other.withTrailingBlanks;
}

TextHabits habitsOf(std::string_view text, int tabSize) {
    TextHabits habits;
    std::size_t empty = 0;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        std::string_view line = text.substr(start, end - start);
        if (line.ends_with('\r')) line.remove_suffix(1);
        addLine(habits, line, tabSize);
        const bool isEmpty = line.find_first_not_of(" \t") == std::string_view::npos;
        if (!isEmpty && empty > 0) ++habits.emptyRuns[std::min(empty, TextHabits::kMostEmpty)];
        empty = isEmpty ? empty + 1 : 0;
        start = end + 1;
    }
    return habits;
}

}  // namespace Learn
