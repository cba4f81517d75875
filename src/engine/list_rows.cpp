#include "engine/list_rows.h"

#include <algorithm>

#include "cpp/token_kind.h"
#include "engine/element_columns.h"
#include "engine/gap.h"
#include "engine/shown_width.h"
#include "engine/side_by_side.h"

namespace Tessel {

namespace {

constexpr std::size_t kLeastColumns = 2;

// Behind the element that begins at the place: that of the comma, of a comment, or of the bracket that ends the list.
std::size_t endOfElement(const ExprTokens& tokens, std::size_t place, std::size_t close) {
    for (; place < close; ++place) {
        const ExprToken& token = tokens[place];
        if (token.role == ExprRole::Separator || token.role == ExprRole::Trivia) return place;
        if (opensBracket(tokens, place)) place = token.partner;
    }
    return close;
}

// Whether nothing but comments stands in front of the bracket that ends the list.
bool endsList(const ExprTokens& tokens, std::size_t place, std::size_t close) {
    while (place < close && tokens[place].role == ExprRole::Trivia) ++place;
    return place == close;
}

// Writes a text with blanks in front of the elements of its lists.
class ListColumnsWriter {
public:
    ListColumnsWriter(const ColumnLayout& layout, std::string_view source, std::string_view text)
        : layout_(layout), text_(text), sides_(source, text) {}

    void write(const ListRows& list);
    std::string takeText() {
        out_ += text_.substr(copied_);
        return std::move(out_);
    }

private:
    void read(const ListRows& list);
    bool standsInRows(std::size_t columns) const;
    bool isAligned(std::size_t columns) const;
    int columnAt(std::size_t place) const {
        const std::size_t lineStart = lineStartOf(text_, place);
        return shownColumnAfter(text_.substr(lineStart, place - lineStart), 0, layout_.tabSize);
    }
    std::string_view lineBehind(std::size_t place) const {
        const std::string_view rest = text_.substr(place);
        return rest.substr(0, rest.find('\n'));
    }

    const ColumnLayout& layout_;
    std::string_view text_;
    SideBySide sides_;
    std::vector<ListRows::Element> elements_;  // in the text
    std::vector<int> widths_;
    std::string out_;
    std::size_t copied_ = 0;
};

void ListColumnsWriter::read(const ListRows& list) {
    elements_.clear();
    widths_.clear();
    for (const ListRows::Element& element : list.elements) {
        sides_.goTo(element.start);
        const std::size_t start = sides_.resultPlace();
        sides_.passUpTo(element.end);
        elements_.push_back({start, sides_.resultPlace()});
        const std::string_view text = text_.substr(start, sides_.resultPlace() - start);
        widths_.push_back(shownColumnAfter(text, 0, layout_.tabSize));
    }
}

// Whether rows begin below the first element, and what stands in them a blank behind what is in front.
bool ListColumnsWriter::standsInRows(std::size_t columns) const {
    const int first = columnAt(elements_.front().start);
    for (std::size_t i = 1; i < elements_.size(); ++i) {
        const std::size_t before = elements_[i - 1].end;
        const std::string_view gap = text_.substr(before, elements_[i].start - before);
        const bool isInPlace =
            i % columns != 0 ? gap == " " : isLineBreak(gap) && columnAt(elements_[i].start) == first;
        if (!isInPlace) return false;
    }
    return true;
}

bool ListColumnsWriter::isAligned(std::size_t columns) const {
    for (std::size_t i = columns; i < widths_.size(); ++i) {
        const bool endsRow = i % columns + 1 == columns || i + 1 == widths_.size();
        if (!endsRow && widths_[i] != widths_[i - columns]) return false;
    }
    return true;
}

void ListColumnsWriter::write(const ListRows& list) {
    read(list);
    if (isAligned(list.columns) || !standsInRows(list.columns)) return;
    const ElementColumns columns(widths_);
    const int first = columnAt(elements_.front().start);
    const int behindLast = shownColumnAfter(lineBehind(elements_.back().end), 0, layout_.tabSize);
    if (columns.countWithin(layout_.margin - first, behindLast) != list.columns) return;
    for (std::size_t i = 1; i < elements_.size(); ++i) {
        if (i % list.columns == 0) continue;
        const std::size_t gap = elements_[i - 1].end;
        out_ += text_.substr(copied_, gap - copied_);
        out_ += layout_.blanks(first + columns.offsetOf(i - 1, list.columns) + widths_[i - 1],
                               first + columns.offsetOf(i, list.columns));
        copied_ = elements_[i].start;
    }
}

}  // namespace

std::optional<ListRows> readListRows(const ExprTokens& tokens, std::size_t open, std::size_t least,
                                     std::size_t start) {
    const std::size_t close = tokens[open].partner;
    ListRows list;
    std::uint32_t line = 0;
    std::size_t inRow = 0;
    for (std::size_t place = open + 1; place < close;) {
        const std::uint32_t elementLine = tokens[place].start.line;
        const std::size_t end = endOfElement(tokens, place, close);
        if (end == place || tokens[end - 1].lastLine() != elementLine) return std::nullopt;
        if (!list.elements.empty() && elementLine != line) {
            if (list.columns == 0) list.columns = inRow;
            if (list.columns < kLeastColumns || inRow != list.columns) return std::nullopt;
            inRow = 0;
        }
        if (list.columns > 0 && inRow == list.columns) return std::nullopt;
        line = elementLine;
        ++inRow;
        const bool hasComma = end < close && tokens[end].role == ExprRole::Separator;
        const std::size_t behind = hasComma ? end + 1 : end;
        list.elements.push_back({start + tokens[place].offset, start + tokens[behind - 1].end()});
        place = behind;
        if (endsList(tokens, place, close)) break;
        if (!hasComma || tokens[place].role == ExprRole::Trivia) return std::nullopt;
    }
    const bool hasRows = list.columns > 0 && list.elements.size() >= least;
    return hasRows ? std::optional(std::move(list)) : std::nullopt;
}

std::string withListColumns(const ColumnLayout& layout, std::string_view source, ListsInRows lists,
                            std::string result) {
    const auto startOf = [](const ListRows& list) { return list.elements.front().start; };
    std::ranges::sort(lists, {}, startOf);
    // Some have been written more than once, to see what they would take.
    const auto isRepeated = [startOf](const ListRows& one, const ListRows& other) {
        return startOf(one) == startOf(other);
    };
    lists.erase(std::unique(lists.begin(), lists.end(), isRepeated), lists.end());
    ListColumnsWriter writer(layout, source, result);
    for (const ListRows& list : lists) writer.write(list);
    return writer.takeText();
}

}  // namespace Tessel
