#include "engine/source_indents.h"

#include <algorithm>
#include <optional>

#include "engine/columns.h"
#include "engine/gap.h"

namespace Tessel {

namespace {

// A walk over the characters of a text that are no white space.
class Characters {
public:
    explicit Characters(std::string_view text) : text_(text) { skipWhitespace(); }

    void next() {
        ++place_;
        skipWhitespace();
    }
    // The tabs and blanks in front of the current one, where it is the first of its line.
    std::optional<std::string_view> indent() const {
        const std::string_view before = text_.substr(0, place_);
        const std::size_t start = kBlanks.skipBackIn(before);
        if (start > 0 && before[start - 1] != '\n') return {};
        return before.substr(start);
    }

private:
    void skipWhitespace() {
        while (place_ < text_.size() && isWhitespace(text_[place_])) ++place_;
        place_ = std::min(place_, text_.size());
    }

    std::string_view text_;
    std::size_t place_ = 0;
};

}  // namespace

std::string withIndentsOfSource(std::string_view source, std::string_view result, int tabSize) {
    std::string text;
    text.reserve(result.size());
    Characters characters(source);
    for (std::size_t start = 0; start < result.size();) {
        const std::size_t end = std::min(result.find('\n', start), result.size() - 1) + 1;
        const std::string_view line = result.substr(start, end - start);
        const std::string_view indent = line.substr(0, kBlanks.skipIn(line));
        const std::string_view rest = line.substr(indent.size());
        const std::optional<std::string_view> found = characters.indent();
        const bool isAsWide = found && columnAfter(*found, 0, tabSize) == columnAfter(indent, 0, tabSize);
        text.append(isAsWide && rest != "\n" ? *found : indent).append(rest);
        for (const char character : rest) {
            if (!isWhitespace(character)) characters.next();
        }
        start = end;
    }
    return text;
}

}  // namespace Tessel
