#include "learn/tally.h"

#include <algorithm>
#include <string_view>
#include <tuple>
#include <utility>
#include <variant>

#include "learn/key_families.h"
#include "scheme/property_keys.h"
#include "textstream/text_document.h"

namespace Learn {

namespace {

void add(Values& values, const Value& value, const Found& found) {
    Found& sum = values[value];
    if (sum.count == 0) sum.first = found.first;
    sum.count += found.count;
}

// The value in the type that the key has.
Value typedValue(Tessel::KeyId key, const std::variant<int, std::string>& measured) {
    const int* const number = std::get_if<int>(&measured);
    if (!number) return std::get<std::string>(measured);
    if (key.type() == Tessel::PropertyType::Boolean) return *number != 0;
    return *number;
}

}  // namespace

void add(Values& values, const Values& others) {
    for (const auto& [value, found] : others) add(values, value, found);
}

void Tally::add(const Tally& other) {
    for (std::size_t key = 0; key < habits_.size(); ++key) {
        Learn::add(habits_[key].values, other.habits_[key].values);
        Learn::add(habits_[key].onOneLine, other.habits_[key].onOneLine);
    }
}

void TallyObserver::decided(const Tessel::DecidedGap& gap) {
    if (!gap.key || isBehindComment(gap) || isBeforeLastComment(gap)) return;
    std::string value = Tessel::valueFound(gap, tabSize_);
    // Where the line stands is told by keys of indentations, and by rules.
    const Nature nature = natureOf(gap.key);
    const bool isForOthers = nature == Nature::Inline || (gap.indentKey && nature != Nature::Hanging);
    if (const std::size_t indent = value.rfind('\n') + 1; indent > 0 && isForOthers) value.resize(indent);
    record(gap.key, gap.end(), std::move(value), gap.isOnOneLine, false);
}

// Whether the line end in front of the gap is one that a comment needs, whatever the scheme says.
bool TallyObserver::isBehindComment(const Tessel::DecidedGap& gap) const {
    return gap.offset > 0 && source_->text()[gap.offset - 1] == '\n';
}

// Whether a comment that ends its line follows on the same one: the line end that is wanted here comes behind that.
bool TallyObserver::isBeforeLastComment(const Tessel::DecidedGap& gap) const {
    const bool isForComments = gap.key == Tessel::KeyId(Tessel::Keys::WS_BEFORE_LINE_COMMENT);
    if (isForComments || gap.found.find('\n') != std::string_view::npos) return false;
    const std::string_view next = std::string_view(source_->text()).substr(gap.end());
    if (next.starts_with("//")) return true;
    const std::size_t end = next.starts_with("/*") ? next.find("*/", 2) : std::string_view::npos;
    if (end == std::string_view::npos) return false;
    const std::size_t behind = next.find_first_not_of(" \t", end + 2);
    return behind == std::string_view::npos || next[behind] == '\n';
}

void TallyObserver::measured(const Tessel::Measured& measure) {
    record(measure.key, measure.offset, typedValue(measure.key, measure.value), false, true);
}

void TallyObserver::record(Tessel::KeyId key, std::size_t end, Value value, bool isOnOneLine, bool isMeasured) {
    const auto line = static_cast<std::uint32_t>(source_->positionOf(end).line);
    records_.push_back({key, isOnOneLine, isMeasured, line, end, std::move(value)});
}

// Of gaps that end at one place the last report counts, of measures at one place the last for each key.
Tally TallyObserver::tally() {
    const auto place = [](const Record& record) {
        return std::tuple(record.isMeasured, record.end, record.isMeasured ? record.key : Tessel::KeyId());
    };
    std::stable_sort(records_.begin(), records_.end(),
                     [&place](const Record& left, const Record& right) { return place(left) < place(right); });
    Tally tally;
    for (std::size_t i = 0; i < records_.size(); ++i) {
        if (i + 1 < records_.size() && place(records_[i]) == place(records_[i + 1])) continue;
        const Record& record = records_[i];
        Habit& habit = tally.of(record.key);
        add(record.isOnOneLine ? habit.onOneLine : habit.values, record.value, {1, {file_, record.line}});
    }
    return tally;
}

}  // namespace Learn
