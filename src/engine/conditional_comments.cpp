#include "engine/conditional_comments.h"

#include <vector>

#include "engine/columns.h"
#include "engine/gap.h"

namespace Tessel {

namespace {

constexpr std::size_t kNone = std::string_view::npos;

// A comment behind a directive.
struct Place {
    std::size_t offset = kNone;  // kNone where there is no comment
    std::size_t indent = 0;      // of the "#" on its line
    int column = 0;
};

// Where the line begins that the "#" is the first text of; kNone for another "#".
std::size_t lineOfHash(std::string_view source, std::size_t hash) {
    std::size_t start = hash;
    while (start > 0 && kBlanks.holds(source[start - 1])) --start;
    return start == 0 || source[start - 1] == '\n' ? start : kNone;
}

}  // namespace

bool ConditionalComments::standsByEnd(std::size_t offset) {
    const std::size_t lineStart = lineStartOf(source_, offset);
    const std::size_t text = kBlanks.skipIn(source_, lineStart);
    if (text >= offset || !source_.substr(text).starts_with("#else")) return false;
    if (!isRead_) read();
    return offsets_.contains(offset);
}

void ConditionalComments::read() {
    isRead_ = true;
    std::vector<Place> groups;  // the comment behind the "#else" of each group that is open
    for (std::size_t hash = source_.find('#'); hash != kNone; hash = source_.find('#', hash + 1)) {
        const std::size_t start = lineOfHash(source_, hash);
        if (start == kNone) continue;
        const std::string_view line = source_.substr(start, source_.find('\n', hash) - start);
        const std::string_view directive = line.substr(hash - start + 1);
        const std::string_view word = trimLeft(directive);
        const std::size_t comment = line.find("//");
        const int column = columnAfter(line.substr(0, comment), 0, tabSize_);
        const Place place{comment == kNone ? kNone : start + comment, hash - start, column};
        if (word.starts_with("if")) {
            groups.emplace_back();
        } else if (directive.starts_with("else") && !groups.empty()) {
            groups.back() = place;
        } else if (word.starts_with("endif") && !groups.empty()) {
            const Place& ahead = groups.back();
            const bool stays = comment != kNone && trailingBlanks(line.substr(0, comment)) == gap_;
            const bool isBelow = ahead.indent == place.indent && ahead.column == column;
            if (stays && isBelow && directive.starts_with("endif")) offsets_.insert(ahead.offset);
            groups.pop_back();
        }
    }
}

}  // namespace Tessel
