#include "tool/sample_trial.h"

#include <algorithm>
#include <atomic>
#include <optional>
#include <utility>

#include "edits/changed_lines.h"
#include "edits/line_feeds.h"
#include "edits/replacement.h"
#include "run/format_text.h"
#include "tool/explained_gaps.h"
#include "tool/ordered_pool.h"
#include "tool/source_text.h"

namespace Tool {

namespace {

// Each block counts as the longer of its sides.
std::size_t countChanged(std::string_view before, std::string_view after) {
    std::size_t count = 0;
    for (const Edits::ChangedLines& lines : Edits::changedLines(before, Edits::replacementsBetween(before, after))) {
        count += std::max(lines.end - lines.first, lines.newEnd - lines.newFirst);
    }
    return count;
}

// None where a scheme cannot be used for the text.
std::optional<std::string> formatted(const Tessel::FormatOptions& options, const std::string& text) {
    std::optional<std::string> result;
    problemWith("", [&] {
        Run::FormattedText formatted = Run::formatText(options, text);
        if (formatted.messages.empty()) result = std::move(formatted.text);
    });
    return result;
}

using Causes = std::map<Tessel::KeyId, std::size_t>;

Causes causesIn(const Tessel::FormatOptions& options, const std::string& text) {
    Causes causes;
    problemWith("", [&] {
        for (const ExplainedGap& gap : explainText(options, text).gaps) {
            if (gap.key && gap.isChanged()) ++causes[gap.key];
        }
    });
    return causes;
}

}  // namespace

SampleTrial::SampleTrial(std::vector<std::string> texts, std::size_t threads, Progress& progress)
    : texts_(std::move(texts)), wanted_(texts_), threads_(threads), progress_(progress) {
    for (const std::string& text : texts_) lines_ += Edits::countLineFeeds(text);
}

// A text that a scheme cannot be used for counts as if all its lines changed.
std::size_t SampleTrial::changedBy(const Tessel::FormatOptions& options, std::size_t index) const {
    const std::optional<std::string> result = formatted(options, texts_[index]);
    return result ? countChanged(wanted_[index], *result) : Edits::countLineFeeds(wanted_[index]);
}

std::size_t SampleTrial::changedLines(const Tessel::PropertySet& scheme, std::size_t limit) {
    const Tessel::FormatOptions options{scheme, Tessel::protectedRegionMarkers()};
    std::atomic<std::size_t> changed = 0;
    OrderedPool<char> pool(threads_);
    pool.run(
        texts_.size(),
        [&](std::size_t index) {
            if (changed <= limit) changed += changedBy(options, index);
            return char{};
        },
        [](std::size_t, char) {});
    progress_.countOne();
    return changed;
}

std::map<Tessel::KeyId, std::size_t> SampleTrial::causes(const Tessel::PropertySet& scheme) {
    const Tessel::FormatOptions options{scheme, Tessel::protectedRegionMarkers()};
    Causes sum;
    OrderedPool<Causes> pool(threads_);
    pool.run(
        texts_.size(), [&](std::size_t index) { return causesIn(options, texts_[index]); },
        [&sum](std::size_t, const Causes& causes) {
            for (const auto& [key, count] : causes) sum[key] += count;
        });
    progress_.countOne();
    return sum;
}

// A text that it cannot be used for stays as it is.
std::unique_ptr<Learn::SchemeTrial> SampleTrial::laidOut(const Tessel::PropertySet& scheme) {
    const Tessel::FormatOptions options{scheme, Tessel::protectedRegionMarkers()};
    auto other = std::make_unique<SampleTrial>(*this);
    OrderedPool<std::optional<std::string>> pool(threads_);
    pool.run(
        texts_.size(), [&](std::size_t index) { return formatted(options, texts_[index]); },
        [&other](std::size_t index, std::optional<std::string> result) {
            if (result) other->texts_[index] = std::move(*result);
        });
    progress_.countOne();
    return other;
}

}  // namespace Tool
