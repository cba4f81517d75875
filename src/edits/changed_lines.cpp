#include "edits/changed_lines.h"

#include "edits/line_feeds.h"

namespace Edits {

namespace {

class Blocks {
public:
    explicit Blocks(std::string_view before) : before_(before) {}

    void take(const Replacement& replacement) {
        const std::size_t first = lineOf(replacement.offset);
        const std::size_t last = lineOf(replacement.end());
        const std::size_t end = isWholeLines(replacement) ? last : last + 1;
        const std::size_t newFirst = first + added_ - removed_;
        added_ += countLineFeeds(replacement.text);
        removed_ += last - first;
        const std::size_t newEnd = end + added_ - removed_;
        if (!blocks_.empty() && first <= blocks_.back().end) {
            blocks_.back().end = end;
            blocks_.back().newEnd = newEnd;
        } else {
            blocks_.push_back({first, end, newFirst, newEnd});
        }
    }

    std::vector<ChangedLines> result() { return std::move(blocks_); }

private:
    // The places come in order.
    std::size_t lineOf(std::size_t offset) {
        line_ += countLineFeeds(before_.substr(place_, offset - place_));
        place_ = offset;
        return line_;
    }

    bool startsLine(std::size_t offset) const { return offset == 0 || before_[offset - 1] == '\n'; }

    bool isWholeLines(const Replacement& replacement) const {
        return startsLine(replacement.offset) && startsLine(replacement.end()) &&
               (replacement.text.empty() || replacement.text.ends_with('\n'));
    }

    std::string_view before_;
    std::vector<ChangedLines> blocks_;
    std::size_t place_ = 0;
    std::size_t line_ = 0;
    std::size_t added_ = 0;
    std::size_t removed_ = 0;
};

}  // namespace

std::vector<ChangedLines> changedLines(std::string_view before, const Replacements& replacements) {
    Blocks blocks(before);
    for (const Replacement& replacement : replacements) blocks.take(replacement);
    return blocks.result();
}

}  // namespace Edits
