#include "engine/conditional_comments.h"

#include <algorithm>
#include <vector>

#include "engine/gap.h"

namespace Tessel {

namespace {

constexpr std::size_t kNone = std::string_view::npos;

// A comment behind a directive.
struct Place {
    std::size_t offset = kNone;  // kNone where there is no comment
    std::size_t indent = 0;      // of the "#" on its line
    std::size_t column = 0;      // in characters
};

// What stands behind the "#" of a directive; nothing on other lines.
std::string_view directiveOf(std::string_view line) {
    const std::string_view directive = trimLeft(line);
    return directive.starts_with('#') ? directive.substr(1) : std::string_view();
}

}  // namespace

bool ConditionalComments::standsByEnd(std::size_t offset) {
    const std::size_t lineStart = source_.substr(0, offset).rfind('\n') + 1;
    if (!directiveOf(source_.substr(lineStart, offset - lineStart)).starts_with("else")) return false;
    if (!isRead_) read();
    return offsets_.contains(offset);
}

void ConditionalComments::read() {
    isRead_ = true;
    std::vector<Place> groups;  // the comment behind the "#else" of each group that is open
    for (std::size_t start = 0; start < source_.size();) {
        const std::size_t end = std::min(source_.find('\n', start), source_.size());
        const std::string_view line = source_.substr(start, end - start);
        const std::string_view directive = directiveOf(line);
        const std::size_t comment = directive.empty() ? kNone : line.find("//");
        const Place place{comment == kNone ? kNone : start + comment, leadingBlanks(line).size(), comment};
        if (trimLeft(directive).starts_with("if")) {
            groups.emplace_back();
        } else if (directive.starts_with("else") && !groups.empty()) {
            groups.back() = place;
        } else if (trimLeft(directive).starts_with("endif") && !groups.empty()) {
            const Place& ahead = groups.back();
            const bool stays = comment != kNone && trailingBlanks(line.substr(0, comment)) == gap_;
            const bool isBelow = ahead.indent == place.indent && ahead.column == comment;
            if (stays && isBelow && directive.starts_with("endif")) offsets_.insert(ahead.offset);
            groups.pop_back();
        }
        start = end + 1;
    }
}

}  // namespace Tessel
