#include "layout/line_search.h"

#include <algorithm>

#include "cpp/token_kind.h"
#include "engine/gap.h"
#include "engine/opaque_text.h"
#include "engine/shown_width.h"
#include "layout/line_text.h"

namespace Tessel {

namespace {

constexpr std::int64_t kLineInWhole = 1000;  // where none was to begin
constexpr std::int64_t kMostForComment = 500;  // what the lines that bring it within the margin may cost more
constexpr int kBlanksBeforeComment = 2;

}  // namespace

LineSearch::LineSearch(WrapText& text, const WrapSettings& settings, const WeighedExtent& extent)
    : text_(text),
      tokens_(text.tokens()),
      settings_(settings),
      kind_(extent.text),
      indentColumn_(extent.indentColumn),
      name_(extent.name),
      partsElements_(extent.text == WeighedText::Class ||
                     (extent.text == WeighedText::Initializers && settings.partsInitializers())),
      scopes_(text.tokens(), extent.name),
      weights_(text.tokens(), scopes_, settings, extent) {}

bool LineSearch::isSuited() {
    if (tokens_.empty() || tokens_.size() > kMostTokens) return false;
    if (standsApart(tokens_.size() - 1) || tokens_.front().kind == Cpp::LineComment) return false;
    for (std::size_t place = 0; place < tokens_.size(); ++place) {
        const int kind = tokens_[place].kind;
        const bool isEven = text_.isEven({place, place + 1}) || kind == Cpp::LineComment;
        const bool isGapEven = text_.gap(place).find_first_of("\t\n") == std::string_view::npos;
        const bool isSpecial = text_.continuesLiteral(place) || text_.isLongBlock(place);
        if (!(isEven && (isGapEven || standsApart(place))) && !isSpecial) return false;
        if (kind == Cpp::Directive) return false;
    }
    return true;
}

// Whether a line begins at a token whatever is weighed: at a comment that has one to itself, behind what ends one, and
// at rows that stay.
bool LineSearch::standsApart(std::size_t place) const { return place > 0 && text_.startsOwnLine(place); }

// No line break helps a comment that is too long anyway.
int LineSearch::widthOfComment(std::size_t place) const {
    const int width = shownColumnAfter(trimRight(text_.tokenText(place)), 0, settings_.tabSize);
    return text_.isWithinMargin(indentColumn_ + kBlanksBeforeComment + width) ? width : 0;
}

void LineSearch::takeWidths() {
    before_.assign(tokens_.size(), kNoToken);
    gaps_.clear();
    widths_.clear();
    std::size_t last = kNoToken;
    bases_ = kNoToken;
    for (std::size_t place = 0; place < tokens_.size(); ++place) {
        before_[place] = last;
        const bool isColon = tokens_[place].kind == Cpp::Colon && scopes_.at(place).depth == 0;
        if (isColon && bases_ == kNoToken) bases_ = place;
        if (!isTrivia(place)) last = place;
        const bool isComment = tokens_[place].kind == Cpp::LineComment;
        gaps_.push_back(isComment ? kBlanksBeforeComment : lengthOf(text_.gap(place)));
        widths_.push_back(isComment ? widthOfComment(place) : text_.measure({place, place + 1}, 0).column);
    }
    declarator_ = firstDeclarator();
    std::vector<bool> staying;
    for (std::size_t place = 0; place < tokens_.size(); ++place) staying.push_back(standsApart(place));
    listColumns_.read(tokens_, gaps_, widths_, staying);
}

// `Type a = 1, b = 2;`: the first name.
std::size_t LineSearch::firstDeclarator() const {
    const auto isName = [](const ExprToken& token) { return token.role == ExprRole::Name; };
    const auto name = std::ranges::find_if(tokens_, isName);
    const std::size_t place = static_cast<std::size_t>(name - tokens_.begin());
    const bool declares = kind_ == WeighedText::Statement || kind_ == WeighedText::Clauses;
    const bool isFirst = declares && place > 0 && place < tokens_.size() &&
                         scopes_.at(place).depth == 0 && tokens_[place - 1].role != ExprRole::Mark;
    return isFirst && text_.kindAt(place + 1) == Cpp::Assign ? place : kNoToken;
}

// One behind the first.
bool LineSearch::startsDeclarator(std::size_t place) const {
    const std::size_t left = before(place);
    return left != kNoToken && tokens_[left].kind == Cpp::Comma && scopes_.at(place).depth == 0;
}

bool LineSearch::lay(int column, int trailingWidth, int commentWidth) {
    if (!isSuited()) return false;
    takeWidths();
    weighWays(column, trailingWidth + commentWidth);
    const std::int64_t cost = lightest().cost;
    if (commentWidth > 0 && cost >= kMostForComment) {
        weighWays(column, trailingWidth);
        // No line break helps a comment that is too long anyway, and none in front of a "[" is worth one.
        const bool isWorthIt = cost < kColumnBeyondMargin && cost - lightest().cost < kMostForComment;
        if (isWorthIt) weighWays(column, trailingWidth + commentWidth);
    }
    putLines(lightest());
    return true;
}

void LineSearch::weighWays(int column, int trailingWidth) {
    lines_.clear();
    outer_.clear();
    Way first;
    const bool hangsFromStatement = standsByItself(kind_);
    first.top.indent = hangsFromStatement ? indentColumn_ : column;
    first.top.last = first.top.indent;
    first.top.call = hangsFromStatement ? 0 : column;
    first.lineColumn = indentColumn_;
    first.column = column;
    ways_.assign(1, first);
    pass(ways_.front(), 0, false);
    for (std::size_t place = 1; place < tokens_.size(); ++place) {
        if (standsApart(place)) {
            for (Way& way : ways_) beginApart(way, place);
            continue;
        }
        const bool hasChoice = weights_.at(place) != BreakWeights::kNoBreak || text_.continuesLiteral(place);
        if (hasChoice) part(place);
        if (!hasChoice || next_.empty()) {
            for (Way& way : ways_) goOn(way, place);
        } else {
            keepLightest();
        }
    }
    for (Way& way : ways_) {
        const int end = way.column;
        way.column += trailingWidth;
        payOverflow(way, end, tokens_.size() - 1);
    }
}

// The ways to go on from each: with a line that begins at the token, and without.
void LineSearch::part(std::size_t place) {
    next_.clear();
    for (Way& way : ways_) {
        const int lineColumn = columnOfLine(way, place);
        const bool must = mustBegin(way, place, lineColumn);
        if (mayBegin(way, place)) {
            Way& broken = next_.emplace_back(way);
            beginLine(broken, place, lineColumn);
            pass(broken, place, true);
        }
        if (!must) goOn(next_.emplace_back(way), place);
    }
}

// A comment stands where what follows it does, and what follows nothing but comments below the first one.
void LineSearch::beginApart(Way& way, std::size_t place) {
    const std::size_t token = isTrivia(place) ? nextPlace(tokens_, place) : place;
    const bool isAlone = token == tokens_.size() || before(token) == kNoToken;
    const int column = isAlone ? way.top.indent : columnOfLine(way, token);
    if (!isTrivia(place) && !isAlone) {
        if (!mayBegin(way, place)) way.cost += kLineInWhole;
        beginLine(way, place, column);
    } else {
        way.lineDepth = way.lowestDepth = scopes_.at(place).depth;
        way.column = way.lineColumn = column;
        note(way, place, column);
    }
    pass(way, place, true);
}

void LineSearch::goOn(Way& way, std::size_t place) {
    stayOnLine(way, place);
    pass(way, place, false);
}

// Of ways that go on alike, only the lightest.
void LineSearch::keepLightest() {
    order_.clear();
    for (const Way& way : next_) order_.push_back(&way);
    if (order_.size() > 1) std::ranges::stable_sort(order_, {}, &Way::cost);
    ways_.clear();
    for (const Way* way : order_) {
        const auto goesOnAlike = [way](const Way& other) {
            return way->column == other.column && way->literal == other.literal &&
                   way->lineDepth == other.lineDepth && way->lowestDepth == other.lowestDepth &&
                   way->declarator == other.declarator && way->later == other.later && way->top == other.top;
        };
        if (std::ranges::any_of(ways_, goesOnAlike)) continue;
        ways_.push_back(*way);
        if (ways_.size() == kMostWays) break;
    }
}

void LineSearch::putLines(const Way& way) {
    std::vector<Line> lines;
    for (std::uint32_t line = way.lines; line != kNone; line = lines_[line].before)
        lines.push_back(lines_[line]);
    for (auto line = lines.rbegin(); line != lines.rend(); ++line) {
        if (line->column == kParted) {
            text_.part(line->place);
        } else if (line->column == kPadded) {
            text_.pad(line->place, line->split);
        } else if (line->split > 0) {
            text_.split({line->place, static_cast<std::size_t>(line->split), line->column});
        } else {
            text_.startLine(line->place, {line->column});
        }
    }
}

void LineSearch::note(Way& way, std::size_t place, int column, int split) {
    lines_.push_back({way.lines, static_cast<std::uint32_t>(place), column, split});
    way.lines = static_cast<std::uint32_t>(lines_.size() - 1);
}

// Whether nothing but what closes or separates stands behind a literal, up to the token.
bool LineSearch::endsInLiteral(std::size_t place) const {
    const auto isClosing = [this](std::size_t at) {
        const ExprRole role = tokens_[at].role;
        return role == ExprRole::GroupClose || role == ExprRole::BraceClose || role == ExprRole::Separator;
    };
    while (place > 0 && isClosing(place)) --place;
    return tokens_[place].kind == Cpp::StringLiteral;
}

// What has come to stand beyond the margin, with the token or behind it.
void LineSearch::payOverflow(Way& way, int before, std::size_t place) const {
    const int margin = settings_.rightMargin;
    const int excess = std::max(way.column - margin, 0) - std::max(before - margin, 0);
    if (settings_.literalsMayRunOver && excess > 0 && endsInLiteral(place)) {
        way.cost += kLiteralColumnBeyondMargin * excess + (before <= margin ? kLiteralBeyondMargin : 0);
        return;
    }
    const bool isComment = tokens_[place].kind == Cpp::LineComment;
    way.cost += (isComment ? kCommentBeyondMargin : kColumnBeyondMargin) * excess;
}

}  // namespace Tessel
