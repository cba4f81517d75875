#include "scheme/key_guide.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "scheme/key_guide_rows.h"
#include "scheme/known_keys.h"

namespace Tessel {

namespace {

struct GroupText {
    KeyGroup group;
    std::string_view title;
    std::string_view introduction = {};
};

constexpr GroupText groupTexts[] = {
    {KeyGroup::WholeText, "The whole text"},
    {KeyGroup::Braces, "Braces and indentation",
     "Every construct that has braces has the same four places: before and after \"{\", before \"}\", and the "
     "indentation "
     "added to what is between them. A single statement without braces is placed as if it had them. Other braces in "
     "expressions, as those of a lambda, keep the white space around them, and the lines between them are indented as "
     "in initialisers."},
    {KeyGroup::OneLine, "What stays on one line",
     "These keep what stands on one line in the source, and fits within the right margin where lines are wrapped."},
    {KeyGroup::KeptLayout, "Lines and columns of the author's",
     "What a team has laid out by hand comes back as it was."},
    {KeyGroup::Classes, "Classes"},
    {KeyGroup::Functions, "Functions, parameters and calls"},
    {KeyGroup::Templates, "Templates"},
    {KeyGroup::Data, "Data declarations and enumerations"},
    {KeyGroup::Marks, "Pointers and references"},
    {KeyGroup::Alignment, "Alignment",
     "Declarations that follow each other, whatever comments are between them, make a run. Columns are tab stops."},
    {KeyGroup::Control, "Control statements"},
    {KeyGroup::Expressions, "Expressions"},
    {KeyGroup::LongLines, "Long lines",
     "With CALL_ARGS_WRAP_STRATEGY, EXPR_WRAP_STRATEGY or WRAP_LAST_RESORT, breaks that serve little are not made: "
     "those "
     "that leave their line too long, those inside \"[ ]\", and those behind casts and at comparisons where there are "
     "other places; \"?\" and \":\" begin their lines; and columns are those that people see: a character of UTF-8 "
     "counts "
     "one, a wide one two."},
    {KeyGroup::WithoutEffect, "Keys without effect"},
};

const GroupText& textOf(KeyGroup group) {
    return *std::find_if(std::begin(groupTexts), std::end(groupTexts),
                         [group](const GroupText& one) { return one.group == group; });
}

constexpr int widestTab = 1000;

// How many characters have to be put in, taken out or exchanged.
std::size_t spellingDistance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i + 1);
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t exchanged = diagonal + (a[i] != b[j]);
            diagonal = row[j + 1];
            row[j + 1] = std::min({exchanged, row[j] + 1, row[j + 1] + 1});
        }
    }
    return row.back();
}

}  // namespace

const std::vector<KeyGroup>& keyGroups() {
    static const std::vector<KeyGroup> groups = [] {
        std::vector<KeyGroup> all;
        for (const GroupText& one : groupTexts) all.push_back(one.group);
        return all;
    }();
    return groups;
}

std::string_view groupTitle(KeyGroup group) {
    return textOf(group).title;
}

std::string_view groupIntroduction(KeyGroup group) {
    return textOf(group).introduction;
}

const std::vector<KeyGuide>& keyGuides() {
    static const std::vector<KeyGuide> guides = [] {
        std::vector<KeyGuide> rows;
        addLayoutKeys(rows);
        addDeclarationKeys(rows);
        addStatementKeys(rows);
        return rows;
    }();
    return guides;
}

const KeyGuide* findKeyGuide(std::string_view key) {
    for (const KeyGuide& guide : keyGuides()) {
        if (guide.key() == key) return &guide;
    }
    return nullptr;
}

NumberRange numberRange(std::string_view key) {
    if (key == Keys::TAB_SIZE) return {0, widestTab};
    if (key == Keys::RIGHT_MARGIN || key == Keys::MAX_BLANK_LINES.name) return {0};
    if (key == Keys::LINE_WRAP_DO_NOT_FORMAT) return {};
    if (key == Keys::ASTERISK_ANCHOR || key == Keys::AMPERSAND_ANCHOR) return {-1, 1};
    if (key == Keys::KEEP_ONE_LINE_FUNCTIONS.name || key == Keys::JOIN_SHORT_FUNCTIONS.name) return {0, 3};
    if (key == Keys::KEEP_BLANK_LINES.name) return {0, 4};
    return {0, 2};
}

std::string_view nearestKey(std::string_view key) {
    constexpr std::size_t longestKey = 100;  // of those that are worth comparing
    if (key.size() > longestKey) return {};
    std::string_view nearest;
    std::size_t least = std::max<std::size_t>(key.size() / 3, 1) + 1;
    for (const std::string_view known : Keys::ALL) {
        const std::size_t distance = spellingDistance(key, known);
        if (distance >= least) continue;
        least = distance;
        nearest = known;
    }
    return nearest;
}

}  // namespace Tessel
