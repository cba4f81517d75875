#include "layout/wrap_text.h"

#include <algorithm>

#include "cpp/token_kind.h"
#include "engine/columns.h"
#include "engine/gap.h"
#include "engine/opaque_text.h"

namespace Tessel {

namespace {

constexpr int kNone = -1;

bool isEvenText(std::string_view text) {
    return text.find_first_of("\t\n") == std::string_view::npos;
}

bool isLineEndToken(int kind) {
    return kind == Cpp::LineComment || kind == Cpp::Directive;
}

int lengthOf(std::string_view text) {
    return static_cast<int>(text.size());
}

std::string_view firstLine(std::string_view text) {
    return text.substr(0, text.find('\n'));
}

std::string_view lastLine(std::string_view text) {
    return text.substr(text.rfind('\n') + 1);
}

bool holdsLineEnd(std::string_view text) {
    return text.find('\n') != std::string_view::npos;
}

// Whether nothing stands between two tokens that come to stand on one line.
bool isJoinedTightly(const ExprToken& first, const ExprToken& second) {
    const auto isMember = [](int kind) { return kind == Cpp::Dot || kind == Cpp::Arrow; };
    switch (first.role) {
        case ExprRole::GroupOpen:
        case ExprRole::TemplateOpen:
        case ExprRole::UnaryOperator:
            return true;
        default:
            break;
    }
    if (isMember(first.token.kind) || isMember(second.token.kind)) return true;
    return second.role == ExprRole::GroupClose || second.role == ExprRole::TemplateClose ||
           second.role == ExprRole::Separator;
}

}  // namespace

void WrapText::read(std::string_view text, ExprMode mode, int trailingWidth, const SourceColumns& source) {
    text_ = text;
    trailingWidth_ = trailingWidth;
    readExprTokens(text, mode, tokens_);
    gaps_.clear();
    offsets_.clear();
    holdsUnknownText_ = false;
    std::size_t end = 0;
    int offset = 0;
    for (const ExprToken& token : tokens_) {
        const std::string_view gap = text.substr(end, token.token.offset - end);
        gaps_.push_back(gap);
        holdsUnknownText_ |= !isAllWhitespace(gap);
        offset += lengthOf(gap);
        offsets_.push_back(offset);
        offset += static_cast<int>(token.token.length);
        end = std::size_t{token.token.offset} + token.token.length;
    }
    gaps_.push_back(text.substr(end));
    holdsUnknownText_ |= !isAllWhitespace(gaps_.back());
    starts_.assign(tokens_.size(), {kNone, false, 0});
    started_.clear();
    startsLine_ = source.startsLine(text);
    readTraits();
    readComments(source);
    tailWidths_.clear();
    readElements(source);
}

void WrapText::readTraits() {
    traits_.assign(tokens_.size(), 0);
    nextUneven_.assign(tokens_.size() + 1, tokens_.size());
    for (std::size_t place = tokens_.size(); place-- > 0;) {
        unsigned traits = 0;
        const bool followsLineEnd = place > 0 && tokenText(place - 1).ends_with('\n');
        if (!isEvenText(tokenText(place))) traits |= UnevenText;
        if (followsLineEnd || !isEvenText(gaps_[place])) traits |= UnevenGap;
        const bool isParted = place > 0 && kindAt(place) == Cpp::Directive && !followsComments(place);
        if (isParted || followsLineEnd || holdsLineEnd(gaps_[place])) traits |= OwnLine;
        const bool areLiterals =
            place > 0 && kindAt(place) == Cpp::StringLiteral && kindAt(place - 1) == Cpp::StringLiteral;
        // A prefix directly behind a literal, as in "a"U"b", means something else apart.
        const bool isJoined = gaps_[place].empty() && !tokenText(place).starts_with('"');
        if (areLiterals && !isJoined) traits |= ContinuesLiteral;
        traits_[place] = static_cast<unsigned char>(traits);
        nextUneven_[place] = traits != 0 ? place : nextUneven_[place + 1];
    }
}

bool WrapText::followsComments(std::size_t place) const {
    while (place > 0 && !holdsLineEnd(gaps_[place])) {
        --place;
        if (kindAt(place) != Cpp::BlockComment) return false;
        const bool startsLine = place > 0 ? tokenText(place - 1).ends_with('\n') : startsLine_;
        if (startsLine || lineStart(place) || holdsLineEnd(gaps_[place])) return true;
    }
    return false;
}

// The lines of a comment keep their place below its first one.
void WrapText::readComments(const SourceColumns& source) {
    lastLines_.clear();
    for (std::size_t place = 0; place < tokens_.size(); ++place) {
        const std::string_view text = tokenText(place);
        if (kindAt(place) != Cpp::BlockComment || !holdsLineEnd(text)) continue;
        lastLines_.emplace_back(place, columnsBehindStart(lastLine(text), source.columnOf(text), tabSize_));
    }
}

void WrapText::readElements(const SourceColumns& source) {
    elements_.clear();
    // Finding the column costs a walk over the line in front, which only the last text on the line may cause.
    if (!holdsLineEnd(text_)) return;
    bracketColumns_.assign(tokens_.size(), kNone);
    int column = source.columnOf(text_);
    std::vector<std::pair<std::size_t, int>> brackets;  // around the token, with their columns
    for (std::size_t place = 0; place < tokens_.size(); ++place) {
        const std::size_t partner = tokens_[place].partner;
        column = columnOf(place, column);
        while (!brackets.empty() && tokens_[brackets.back().first].partner <= place) brackets.pop_back();
        if (!brackets.empty() && place > 0 && startsOwnLine(place)) {
            const auto [bracket, bracketColumn] = brackets.back();
            const int offset = column - bracketColumn;
            if (kindAt(bracket) == Cpp::OpenParen && offset > 0) {
                elements_.push_back({place, bracket, column, offset});
            }
        }
        if (partner != kNoToken && partner > place) brackets.emplace_back(place, column);
        column = columnBehind(place, column);
    }
}

const WrapText::Element* WrapText::elementAt(std::size_t place) const {
    const auto element = std::ranges::lower_bound(elements_, place, {}, &Element::place);
    return element != elements_.end() && element->place == place ? &*element : nullptr;
}

void WrapText::placeBracket(std::size_t place, int column) {
    if (!elements_.empty()) bracketColumns_[place] = column;
}

bool WrapText::hasMoved(std::size_t place) const {
    const Element* element = elementAt(place);
    return element && columnOf(place, 0) != element->column;
}

int WrapText::kindAt(std::size_t place) const {
    return place < tokens_.size() ? tokens_[place].token.kind : Trn::kEndKind;
}

std::string_view WrapText::tokenText(std::size_t place) const {
    return text_.substr(tokens_[place].token.offset, tokens_[place].token.length);
}

void WrapText::respaceCommas(std::string_view before) {
    for (std::size_t place = 0; place < tokens_.size(); ++place) {
        const ExprToken& token = tokens_[place];
        if (token.partner != kNoToken && token.partner > place) {
            place = token.partner;
        } else if (token.role == ExprRole::Separator && token.token.kind == Cpp::Comma) {
            const bool isAmongTokens = place > 0 && place + 1 < tokens_.size();
            if (isAmongTokens && !startsOwnLine(place)) gaps_[place] = before;
            if (isAmongTokens && !startsOwnLine(place + 1)) gaps_[place + 1] = " ";
        }
    }
    measureGaps();
}

void WrapText::joinLines() {
    for (std::size_t place = 1; place < tokens_.size(); ++place) {
        const ExprToken& before = tokens_[place - 1];
        if (before.token.kind == Cpp::OpenBrace && before.partner != kNoToken && before.partner >= place) {
            place = before.partner;
            continue;
        }
        const bool isApart = tokens_[place].role == ExprRole::Trivia || before.role == ExprRole::Trivia;
        if (isApart || !holdsLineEnd(gaps_[place])) continue;
        gaps_[place] = isJoinedTightly(before, tokens_[place]) ? "" : " ";
    }
    measureGaps();
}

void WrapText::measureGaps() {
    int offset = 0;
    for (std::size_t place = 0; place < tokens_.size(); ++place) {
        offsets_[place] = offset + lengthOf(gaps_[place]);
        offset = offsets_[place] + static_cast<int>(tokens_[place].token.length);
    }
    readTraits();
}

void WrapText::startLine(std::size_t place, LineStart start) {
    starts_[place] = start;
    started_.push_back(place);
}

void WrapText::undoLineStarts(std::size_t count) {
    for (; started_.size() > count; started_.pop_back()) starts_[started_.back()].column = kNone;
}

const LineStart* WrapText::lineStart(std::size_t place) const {
    return starts_[place].column == kNone ? nullptr : &starts_[place];
}

int WrapText::columnOf(std::size_t place, int column) const {
    if (const LineStart* start = lineStart(place)) return start->column;
    const std::string_view gap = gaps_[place];
    if (startsOwnLine(place)) {
        const Element* element = elementAt(place);
        const int bracket = element ? bracketColumns_[element->bracket] : kNone;
        return bracket != kNone ? bracket + element->offset : columnAfter(lastLine(gap), 0, tabSize_);
    }
    return has(place, UnevenGap) ? columnAfter(gap, column, tabSize_) : column + lengthOf(gap);
}

bool WrapText::isEven(TokenRange range) const {
    return !has(range.first, UnevenText) && nextUneven_[range.first + 1] >= range.last;
}

Extent WrapText::measure(TokenRange range, int column, Literals literals) {
    if (range.empty()) return {column, true};
    if (!isEven(range)) return walk(range, column, literals, false);
    const std::size_t last = range.last - 1;
    return {column + offsets_[last] - offsets_[range.first] + static_cast<int>(tokens_[last].token.length),
            true};
}

// Of a token that starts at `column`.
int WrapText::columnBehind(std::size_t place, int column) const {
    const std::string_view text = tokenText(place);
    if (!holdsLineEnd(text)) return columnAfter(text, column, tabSize_);
    const auto comment = std::lower_bound(lastLines_.begin(), lastLines_.end(), std::pair(place, 0));
    if (comment == lastLines_.end() || comment->first != place)
        return columnAfter(lastLine(text), 0, tabSize_);
    return columnAfter(trimLeft(lastLine(text)), column + comment->second, tabSize_);
}

// Until the end, or until a line turns out to be too long.
Extent WrapText::walk(TokenRange range, int column, Literals literals, bool untilTooLong) {
    Extent extent{column, true};
    int counted = column;  // the end of the line so far, without a comment that ends it
    int literalColumn = column;
    const auto endLine = [&] { extent.fits = extent.fits && isWithinMargin(counted); };
    for (std::size_t place = range.first; place < range.last; ++place) {
        if (place != range.first) {
            const bool stacks = literals == Literals::Stacked && isStacked(place, literalColumn);
            if (stacks || startsOwnLine(place)) endLine();
            extent.column = stacks ? literalColumn : columnOf(place, extent.column);
        }
        if (kindAt(place) == Cpp::StringLiteral && !continuesLiteral(place)) literalColumn = extent.column;
        placeBracket(place, extent.column);
        const std::string_view text = tokenText(place);
        if (isLineEndToken(kindAt(place))) {
            extent.column = columnAfter(text, extent.column, tabSize_);
            continue;
        }
        if (holdsLineEnd(text)) {
            counted = columnAfter(firstLine(text), extent.column, tabSize_);
            endLine();
        }
        extent.column = columnBehind(place, extent.column);
        counted = extent.column;
        if (untilTooLong && !(extent.fits && isWithinMargin(counted))) return {counted, false};
    }
    if (isLineEndToken(kindAt(range.last - 1))) extent.column = counted;
    return extent;
}

bool WrapText::fits(TokenRange range, int column, int tail, Literals literals) {
    if (range.empty()) return isWithinMargin(column + tail);
    const Extent extent = isEven(range) ? measure(range, column) : walk(range, column, literals, true);
    return extent.fits && isWithinMargin(extent.column + tail);
}

void WrapText::setLineChances(const std::vector<bool>& mayStartLine) {
    tailWidths_.assign(tokens_.size() + 1, trailingWidth_);
    for (std::size_t place = tokens_.size(); place-- > 0;) {
        const bool endsTail = mayStartLine[place] || startsOwnLine(place) || continuesLiteral(place) ||
                              isLineEndToken(kindAt(place));
        const std::string_view text = tokenText(place);
        const int width = lengthOf(gaps_[place]) + lengthOf(firstLine(text));
        if (endsTail) {
            tailWidths_[place] = 0;
        } else {
            tailWidths_[place] = holdsLineEnd(text) ? width : width + tailWidths_[place + 1];
        }
    }
}

}  // namespace Tessel
