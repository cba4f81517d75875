#include "engine/define_tabs.h"

#include <algorithm>
#include <iterator>

#include "cpp/directive_text.h"
#include "engine/columns.h"
#include "engine/gap.h"

namespace Tessel {

namespace {

constexpr int kUsualTabSize = 8;

std::string_view lineAt(std::string_view text, std::size_t start) {
    return text.substr(start, text.find('\n', start) - start);
}

bool isDirective(std::string_view line) { return trimLeft(line).starts_with('#'); }

// The line up to its value, where tabs stand in front of that; nothing for any other line.
std::string_view aheadOfValue(std::string_view line) {
    if (line.find('\t') == line.npos || !DefineTabs::mayTell(trimLeft(line))) return {};
    const std::size_t word = line.find("define") + std::string_view("define").size();
    const std::size_t name = kBlanks.skipIn(line, word);
    const std::size_t tab = std::min(line.find('\t', name), line.size());
    const std::size_t value = kBlanks.skipIn(line, tab);
    return value == line.size() ? std::string_view() : line.substr(0, value);
}

// Whether a directive goes on behind the line that has been read last, by a splice or in a comment.
class OpenLine {
public:
    bool goesOn() const { return inComment_ || endsInSplice_; }

    void read(std::string_view line) {
        std::size_t open = inComment_ ? 0 : line.find("/*");
        inComment_ = false;
        while (open != line.npos && !inComment_) {
            const std::size_t close = line.find("*/", open);
            inComment_ = close == line.npos;
            if (!inComment_) open = line.find("/*", close);
        }
        endsInSplice_ = line.ends_with('\\');
    }

private:
    bool inComment_ = false;
    bool endsInSplice_ = false;
};

// The columns of values, for tabs of one size.
class ValueColumns {
public:
    explicit ValueColumns(int tabSize) : tabSize_(tabSize) {}

    void add(std::string_view ahead) {
        const int column = columnAfter(ahead, 0, tabSize_);
        const auto place = std::ranges::lower_bound(columns_, column);
        if (place == columns_.end() || *place != column) columns_.insert(place, column);
    }
    std::size_t count() const { return columns_.size(); }

private:
    std::vector<int> columns_;  // in order, each once
    int tabSize_;
};

}  // namespace

bool DefineTabs::mayTell(std::string_view directive) {
    return Cpp::directiveStartsWith(directive, "#define") && directive.find('\t') > directive.find("define");
}

int DefineTabs::sizeAt(std::size_t place) {
    if (!isRead_) readText();
    const auto behind = std::ranges::upper_bound(wide_, place, {}, &Lines::start);
    return behind != wide_.begin() && place < std::prev(behind)->end ? kUsualTabSize : tabSize_;
}

void DefineTabs::readText() {
    isRead_ = true;
    std::size_t mark = text_.find('#');
    while (mark != text_.npos) mark = text_.find('#', readLines(lineStartOf(text_, mark)));
}

// Says where the lines of macros end that begin there, or else the one line.
std::size_t DefineTabs::readLines(std::size_t start) {
    ValueColumns asInScheme(tabSize_);
    ValueColumns asUsual(kUsualTabSize);
    OpenLine last;
    std::size_t place = start;
    std::string_view line = lineAt(text_, start);
    do {
        const std::string_view ahead = last.goesOn() ? std::string_view() : aheadOfValue(line);
        if (!ahead.empty()) asInScheme.add(ahead);
        if (!ahead.empty()) asUsual.add(ahead);
        last.read(line);
        place += line.size() + 1;
        if (place >= text_.size()) break;
        line = lineAt(text_, place);
    } while (last.goesOn() || isDirective(line));
    if (asUsual.count() < asInScheme.count()) wide_.push_back({start, place});
    return place;
}

}  // namespace Tessel
