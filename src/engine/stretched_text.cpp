#include "engine/stretched_text.h"

#include <algorithm>
#include <utility>

#include "engine/gap.h"
#include "engine/parsed_text.h"
#include "textstream/view_stream.h"

namespace Tessel {

std::vector<std::string> StretchedText::layOut(TaskRunner& tasks) {
    first_ = cutter_.next();
    if (!first_ || first_->isLast) return {};
    results_.resize(cutter_.mostStretches());
    tasks.run(results_.size(), [this](std::size_t) { layOutNext(); });
    if (hasFailed_) return {};
    return std::move(results_);
}

void StretchedText::layOutNext() {
    if (hasFailed_) return;
    try {
        const std::optional<Stretch> stretch = take();
        if (!stretch) return;
        auto result = format(*stretch);
        if (result) return results_[stretch->number].swap(*result);
    } catch (...) {
        // The text as a whole meets that again.
    }
    hasFailed_ = true;
}

// The cuts are made while other stretches are being laid out, in the order of the text.
std::optional<Stretch> StretchedText::take() {
    const std::scoped_lock lock(mutex_);
    return first_ ? std::exchange(first_, std::nullopt) : cutter_.next();
}

// What becomes of a stretch, with the white space in front of it but not behind; nothing where that cannot be told
// without the rest of the text.
std::optional<std::string> StretchedText::format(const Stretch& stretch) {
    std::string framed;
    framed.reserve(stretch.ahead.size() + stretch.text.size() + stretch.behind.size());
    framed.append(stretch.ahead).append(stretch.text).append(stretch.behind);
    Zelmor::ViewStream in(framed);
    ParsedText source(in);
    if (!stages_.read(source).empty() || !standsInFrame(source, stretch)) return std::nullopt;
    if (!agrees(source.conditions)) return std::nullopt;
    const std::string result = stages_.layOut(source, nullptr);
    if (FormatStages::prove(source, result)) return std::nullopt;
    const std::string_view own = withoutFrame(result, stretch);
    const bool isFirst = stretch.ahead.empty();
    const bool startsLine = isFirst || own.substr(0, own.size() - trimLeft(own).size()).find('\n') != own.npos;
    if (!startsLine) return std::nullopt;
    return std::string(stretch.isLast ? own : trimRight(own));
}

// Whether the stretch takes the same conditions to hold as the others do. In a whole text, the first group that tests
// one decides for all.
bool StretchedText::agrees(const Cpp::TakenConditions& conditions) {
    const std::scoped_lock lock(mutex_);
    return std::ranges::all_of(conditions, [this](const auto& condition) {
        return conditions_.insert(condition).first->second == condition.second;
    });
}

}  // namespace Tessel
