#include "engine/define_tabs.h"

#include <set>

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
    if (!DefineTabs::mayTell(trimLeft(line))) return {};
    const std::size_t word = line.find("define") + std::string_view("define").size();
    const std::size_t name = line.find_first_not_of(kBlanks, word);
    const std::size_t tab = name == line.npos ? line.npos : line.find('\t', name);
    const std::size_t value = tab == line.npos ? line.npos : line.find_first_not_of(kBlanks, tab);
    return value == line.npos ? std::string_view() : line.substr(0, value);
}

// The columns of values, for tabs of one size.
class ValueColumns {
public:
    explicit ValueColumns(int tabSize) : tabSize_(tabSize) {}

    void add(std::string_view ahead) { columns_.insert(columnAfter(ahead, 0, tabSize_)); }
    std::size_t count() const { return columns_.size(); }

private:
    std::set<int> columns_;
    int tabSize_;
};

}  // namespace

bool DefineTabs::mayTell(std::string_view directive) {
    return Cpp::directiveStartsWith(directive, "#define") && directive.find('\t') > directive.find("define");
}

int DefineTabs::sizeAt(std::size_t place) {
    if (place < linesStart_ || place >= linesEnd_) readLinesAround(place);
    return size_;
}

void DefineTabs::readLinesAround(std::size_t place) {
    linesStart_ = lineStartOf(text_, place);
    while (linesStart_ > 0) {
        const std::size_t above = lineStartOf(text_, linesStart_ - 1);
        if (!isDirective(lineAt(text_, above))) break;
        linesStart_ = above;
    }
    ValueColumns asInScheme(tabSize_);
    ValueColumns asUsual(kUsualTabSize);
    linesEnd_ = linesStart_;
    do {
        const std::string_view line = lineAt(text_, linesEnd_);
        const std::string_view ahead = aheadOfValue(line);
        if (!ahead.empty()) asInScheme.add(ahead);
        if (!ahead.empty()) asUsual.add(ahead);
        linesEnd_ += line.size() + 1;
    } while (linesEnd_ < text_.size() && isDirective(lineAt(text_, linesEnd_)));
    size_ = asUsual.count() < asInScheme.count() ? kUsualTabSize : tabSize_;
}

}  // namespace Tessel
