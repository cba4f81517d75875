#include "tool/fences.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "run/format_text.h"
#include "trn/exception.h"

namespace Tool {

namespace {

using Range = Edits::LineSet::Range;

constexpr int mostTries = 8;

class FenceSearch {
public:
    FenceSearch(const Tessel::FormatOptions& options, std::string_view source) : options_(options) {
        while (!source.empty()) {
            const std::size_t length = std::min(source.find('\n'), source.size() - 1) + 1;
            lines_.push_back(source.substr(0, length));
            source.remove_prefix(length);
        }
    }

    std::vector<Range> run(std::vector<std::size_t> suspects) {
        std::vector<Range> ranges;
        for (int tries = 0; tries < mostTries; ++tries) {
            const std::vector<Range> tried = ranges;
            for (const std::size_t line : suspects) ranges.push_back(around(line, tried));
            ranges = Edits::LineSet(std::move(ranges)).ranges();
            const auto remaining = tryWith(ranges);
            if (!remaining) break;
            if (remaining->empty()) return ranges;
            suspects = *remaining;
        }
        ranges = {{1, lines_.size()}};
        const auto remaining = tryWith(ranges);
        return remaining && remaining->empty() ? ranges : std::vector<Range>();
    }

private:
    // The item at the outermost level that a line belongs to. Where that has been tried, more around it.
    Range around(std::size_t line, const std::vector<Range>& tried) const {
        Range range{std::clamp<std::size_t>(line, 1, lines_.size()), 0};
        range.last = range.first;
        for (const Range& one : tried) {
            if (one.first <= line && line <= one.last) range = {std::max<std::size_t>(one.first, 2) - 1, one.last + 1};
        }
        while (range.first > 1 && !startsItem(range.first)) --range.first;
        range.last = std::min(range.last, lines_.size());
        while (range.last < lines_.size() && !startsItem(range.last + 1)) ++range.last;
        while (range.last > range.first && isBlank(range.last)) --range.last;
        return range;
    }

    std::string_view at(std::size_t line) const { return lines_[line - 1]; }
    bool isBlank(std::size_t line) const { return at(line).find_first_not_of(" \t\r\n") == std::string_view::npos; }

    // A line without indentation behind an empty one, or behind the end of another item.
    bool startsItem(std::size_t line) const {
        if (std::string_view(" \t\r\n{}").find(at(line).front()) != std::string_view::npos) return false;
        return line == 1 || isBlank(line - 1) || at(line - 1).front() == '}';
    }

    // The lines of what still is refused; nothing when that cannot be told.
    std::optional<std::vector<std::size_t>> tryWith(const std::vector<Range>& ranges) const {
        std::string text;
        std::vector<std::size_t> lineOf = {0};  // of the text, in the source
        std::size_t line = 1;
        for (const Range& range : ranges) {
            add(line, range.first - 1, text, lineOf);
            text += "// VANTREL-OFF\n";
            lineOf.push_back(range.first);
            add(range.first, range.last, text, lineOf);
            if (!text.ends_with('\n')) text += '\n';
            text += "// VANTREL-ON\n";
            lineOf.push_back(range.last);
            line = range.last + 1;
        }
        add(line, lines_.size(), text, lineOf);
        try {
            std::vector<std::size_t> refused;
            for (const Tessel::Diagnostic& message : Run::formatText(options_, text).messages) {
                refused.push_back(lineOf[std::min<std::size_t>(message.position.line, lineOf.size() - 1)]);
            }
            return refused;
        } catch (const Trn::Exception&) {
            return std::nullopt;
        }
    }

    void add(std::size_t first, std::size_t last, std::string& text, std::vector<std::size_t>& lineOf) const {
        for (std::size_t line = first; line <= last; ++line) {
            text += at(line);
            lineOf.push_back(line);
        }
    }

    const Tessel::FormatOptions& options_;
    std::vector<std::string_view> lines_;
};

}  // namespace

std::vector<Range> findFences(const Tessel::FormatOptions& options, const std::string& source,
                              std::vector<std::size_t> suspects) {
    return FenceSearch(options, source).run(std::move(suspects));
}

}  // namespace Tool
