#include "engine/stretched_text.h"

#include <utility>

#include "engine/gap.h"
#include "engine/parsed_text.h"
#include "textstream/view_stream.h"

namespace Tessel {

namespace {

// What becomes of a stretch, with the white space in front of it but not behind; nothing where that cannot be told
// without the rest of the text.
std::optional<std::string> formatStretch(const FormatStages& stages, const Stretch& stretch) {
    const std::string framed = std::string(stretch.ahead).append(stretch.text).append(stretch.behind);
    Zelmor::ViewStream in(framed);
    ParsedText source(in);
    if (!stages.read(source).empty() || !standsInFrame(source, stretch)) return std::nullopt;
    const std::string result = stages.layOut(source, nullptr);
    if (FormatStages::prove(source, result)) return std::nullopt;
    const std::string_view own = withoutFrame(result, stretch);
    const bool isFirst = stretch.ahead.empty();
    const bool startsLine = isFirst || own.substr(0, own.size() - trimLeft(own).size()).find('\n') != own.npos;
    if (!startsLine) return std::nullopt;
    return std::string(stretch.isLast ? own : trimRight(own));
}

}  // namespace

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
        auto result = formatStretch(stages_, *stretch);
        if (result) return results_[stretch->number].swap(*result);
    } catch (...) {
        // The text as a whole meets that again.
    }
    hasFailed_ = true;
}

// The cuts are made while other stretches are being laid out, in the order of the text.
std::optional<Stretch> StretchedText::take() {
    const std::scoped_lock lock(cutting_);
    return first_ ? std::exchange(first_, std::nullopt) : cutter_.next();
}

}  // namespace Tessel
