#include "edits/replacement.h"

#include <optional>
#include <stdexcept>

#include "edits/line_feeds.h"

namespace Edits {

namespace {

bool isWhitespace(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

// White space that differs.
struct Gap {
    std::size_t offset;
    std::string_view before;
    std::string_view after;
    std::size_t firstLine;  // the one in which it begins
};

// Goes through both texts side by side, from one gap that differs to the next.
class GapWalk {
public:
    GapWalk(std::string_view before, std::string_view after) : before_(before), after_(after) {}

    std::optional<Gap> next() {
        while (place_ < before_.size() || otherPlace_ < after_.size()) {
            const std::string_view gap = takeGap(before_, place_);
            const std::string_view otherGap = takeGap(after_, otherPlace_);
            const std::size_t line = line_;
            line_ += countLineFeeds(gap);
            const std::size_t offset = place_ - gap.size();
            takeCode();
            if (gap != otherGap) return Gap{offset, gap, otherGap, line};
        }
        return std::nullopt;
    }

private:
    static std::string_view takeGap(std::string_view text, std::size_t& place) {
        const std::size_t start = place;
        while (place < text.size() && isWhitespace(text[place])) ++place;
        return text.substr(start, place - start);
    }

    void takeCode() {
        if ((place_ == before_.size()) != (otherPlace_ == after_.size())) fail();
        while (place_ < before_.size() && otherPlace_ < after_.size()) {
            if (isWhitespace(before_[place_]) || isWhitespace(after_[otherPlace_])) return;
            if (before_[place_++] != after_[otherPlace_++]) fail();
        }
    }

    [[noreturn]] static void fail() { throw std::invalid_argument("the texts differ in more than white space"); }

    std::string_view before_;
    std::string_view after_;
    std::size_t place_ = 0;
    std::size_t otherPlace_ = 0;
    std::size_t line_ = 1;
};

// A gap with line ends: what stands behind the last word of a line, the empty lines with the line ends around them,
// the indentation of the next word.
struct GapParts {
    explicit GapParts(std::string_view gap)
        : tail(gap.substr(0, gap.find('\n'))), indent(gap.substr(gap.rfind('\n') + 1)),
          lines(gap.substr(tail.size(), gap.size() - tail.size() - indent.size())) {}

    std::string_view tail;
    std::string_view indent;
    std::string_view lines;
};

class Collector {
public:
    explicit Collector(const LineSet* lines) : lines_(lines) {}

    void take(const Gap& gap) {
        const std::size_t lastLine = gap.firstLine + countLineFeeds(gap.before);
        const bool hasLineEnds = lastLine > gap.firstLine && gap.after.find('\n') != std::string_view::npos;
        if (!hasLineEnds) {
            if (isWanted(gap.firstLine, lastLine)) add(gap.offset, gap.before, gap.after);
            return;
        }
        const GapParts before(gap.before);
        const GapParts after(gap.after);
        if (isWanted(gap.firstLine, gap.firstLine)) add(gap.offset, before.tail, after.tail);
        takeLines(gap, before, after);
        if (isWanted(lastLine, lastLine))
            add(gap.offset + gap.before.size() - before.indent.size(), before.indent, after.indent);
    }

    Replacements result() { return std::move(replacements_); }

private:
    bool isWanted(std::size_t first, std::size_t last) const { return !lines_ || lines_->containsAll(first, last); }

    void takeLines(const Gap& gap, const GapParts& before, const GapParts& after) {
        if (before.lines == after.lines) return;
        const std::size_t offset = gap.offset + before.tail.size();
        const std::size_t lastLine = gap.firstLine + countLineFeeds(before.lines);
        const bool startsText = gap.offset == 0;  // the first line is empty, too
        const std::size_t firstEmpty = gap.firstLine + (startsText ? 0 : 1);
        const bool hasEmptyLines = firstEmpty < lastLine;
        if (!lines_ || (hasEmptyLines && lines_->containsAll(firstEmpty, lastLine - 1))) {
            add(offset, before.lines, after.lines);
        } else if (!startsText) {
            takeWantedLines(offset, gap.firstLine, before.lines, after.lines);
        }
    }

    // Of the empty lines behind `line`, takes away or empties those that are wanted; adds what is to be added when any
    // line around is wanted.
    void takeWantedLines(std::size_t offset, std::size_t line, std::string_view before, std::string_view after) {
        const std::string lineEnd = after.find('\r') == std::string_view::npos ? "\n" : "\r\n";
        const std::size_t had = countLineFeeds(before);
        const std::size_t has = countLineFeeds(after);
        std::size_t surplus = had > has ? had - has : 0;
        std::string added;
        for (std::size_t count = had; count < has; ++count) added += lineEnd;
        if (!added.empty() && touches(line, line + had)) replacements_.push_back({offset + 1, 0, std::move(added)});
        for (std::size_t start = 1; start < before.size();) {  // behind the line end of `line`
            const std::size_t end = before.find('\n', start) + 1;
            if (lines_->contains(++line)) {
                add(offset + start, before.substr(start, end - start), surplus > 0 ? "" : lineEnd);
                if (surplus > 0) --surplus;
            }
            start = end;
        }
    }

    bool touches(std::size_t first, std::size_t last) const {
        while (first < last && !lines_->contains(first)) ++first;
        return lines_->contains(first);
    }

    // Without what both have in common at their ends.
    void add(std::size_t offset, std::string_view before, std::string_view after) {
        const auto [first, otherFirst] = std::mismatch(before.begin(), before.end(), after.begin(), after.end());
        const auto common = static_cast<std::size_t>(first - before.begin());
        before.remove_prefix(common);
        after.remove_prefix(common);
        const auto [last, otherLast] = std::mismatch(before.rbegin(), before.rend(), after.rbegin(), after.rend());
        before.remove_suffix(static_cast<std::size_t>(last - before.rbegin()));
        after.remove_suffix(static_cast<std::size_t>(otherLast - after.rbegin()));
        if (before.empty() && after.empty()) return;
        replacements_.push_back({offset + common, before.size(), std::string(after)});
    }

    const LineSet* lines_;  // null when all are wanted
    Replacements replacements_;
};

Replacements collect(std::string_view before, std::string_view after, const LineSet* lines) {
    GapWalk walk(before, after);
    Collector collector(lines);
    while (const std::optional<Gap> gap = walk.next()) collector.take(*gap);
    return collector.result();
}

}  // namespace

Replacements replacementsBetween(std::string_view before, std::string_view after) {
    return collect(before, after, nullptr);
}

Replacements replacementsInLines(std::string_view before, std::string_view after, const LineSet& lines) {
    return collect(before, after, &lines);
}

std::string replaced(std::string_view before, const Replacements& replacements) {
    std::string result;
    result.reserve(before.size());
    std::size_t place = 0;
    for (const Replacement& replacement : replacements) {
        result += before.substr(place, replacement.offset - place);
        result += replacement.text;
        place = replacement.end();
    }
    result += before.substr(place);
    return result;
}

}  // namespace Edits
