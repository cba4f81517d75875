#include "layout/expr_layout.h"

#include <algorithm>
#include <functional>
#include <numeric>
#include <utility>

#include "cpp/token_kind.h"
#include "engine/columns.h"

namespace Tessel {

namespace {

// Regions nested deeper stay as they are; their lines would start far beyond any margin.
constexpr int kDeepestRegion = 500;

}  // namespace

ExprLayout::ExprLayout(WrapText& text, const WrapSettings& settings, int indentColumn, Clauses clauses)
    : text_(text),
      settings_(settings),
      indentColumn_(indentColumn),
      lineColumn_(indentColumn),
      places_(text, settings, clauses) {
    const std::vector<bool> chances = places_.chances();
    text_.setLineChances(chances);
    chances_.resize(chances.size() + 1);
    std::transform_inclusive_scan(chances.begin(), chances.end(), chances_.begin() + 1, std::plus<>(),
                                  [](bool isChance) { return isChance ? 1 : 0; });
}

bool ExprLayout::isTooLong(TokenRange range, int column) const {
    return !text_.fits(range, column, text_.tailWidth(range.last), Literals::Joined);
}

bool ExprLayout::holdsElements(TokenRange range) {
    std::size_t separator = range.first;
    return places_.nextLine(places_.separatorsOf(Class::Comma), range, range, separator, range.first) != kNoToken;
}

void ExprLayout::breakExpression(TokenRange range, int column) {
    const Region region{range, indentColumn_, column, 0, atIndent_};
    layCallsOrRegion(region, column);
}

void ExprLayout::partList(TokenRange range, int column) {
    layRegion({range, indentColumn_, column, 0, atIndent_}, column);
}

void ExprLayout::packList(TokenRange range, int column) {
    if (settings_.comma == SeparatorPlace::None) return;
    const Region region{range, indentColumn_, column, 0, atIndent_};
    if (!canBreak(region)) return;
    alignOwnLines(region);
    if (!packPieces(region, range, column, places_.separatorsOf(Class::Comma), std::nullopt, false)) {
        layPiece(region, range, column, Class::Conditional);
    }
}

void ExprLayout::breakForClauses(TokenRange range, int column) {
    const Region region{range, column, column, 0, true};
    if (!canBreak(region)) return;
    alignOwnLines(region);
    layPiece(region, range, column, Class::Clause);
}

int ExprLayout::layRegion(Region region, int column) {
    const TokenRange range = region.range;
    if (range.empty()) return column;
    if (fitsWhole(region, column)) return text_.measure(range, column).column;
    region.alignment = alignmentOf(region, column);
    if (!canBreak(region)) return measured(range, column);
    alignOwnLines(region);
    if (const auto end = breakElements(region, column)) return *end;
    return layPiece(region, range, column, Class::Conditional);
}

int ExprLayout::alignmentOf(const Region& region, int column) const {
    return region.depth == 0 ? alignment_.value_or(column) : column;
}

// At the commas of a region.
std::optional<int> ExprLayout::breakElements(const Region& region, int column) {
    const Separators commas = places_.separatorsOf(Class::Comma);
    if (region.isRow) {
        return packPieces(region, region.range, column, commas, LineStart{region.alignment}, false);
    }
    switch (region.isCall ? settings_.callArguments() : ListStrategy::Cascade) {
        case ListStrategy::Keep: return std::nullopt;
        case ListStrategy::Pack: return packPieces(region, region.range, column, commas, std::nullopt, false);
        default: return breakAll(region, region.range, column, commas);
    }
}

// Breaks what does not fit, beginning with the separators of class `from`. Returns the column behind the
// piece.
int ExprLayout::layPiece(const Region& region, TokenRange piece, int column, Class from) {
    if (fits(region, piece, column)) return text_.measure(piece, column).column;
    const bool hasGroups = nextGroup(piece.first, piece.last) < piece.last;
    const Class last = settings_.weighsBreaks() && hasGroups ? Class::Comparison : Class::None;
    if (const auto end = breakAtFirst(region, piece, column, from, last)) return *end;
    if (last == Class::None) return layGroups(region, piece, column);
    return layGroupsOrWeak(region, piece, column);
}

// At the weakest separators that there are, of those from one class up to another.
std::optional<int> ExprLayout::breakAtFirst(const Region& region, TokenRange piece, int column, Class from,
                                            Class last) {
    for (Class separatorClass = from; separatorClass < last; separatorClass = LinePlaces::behind(separatorClass)) {
        if (separatorClass >= Class::Cast && !breaksCasts_) break;
        if (const auto end = breakAt(region, piece, column, separatorClass)) return end;
    }
    return std::nullopt;
}

// In the brackets of a piece; where that does not serve, at comparisons or behind casts.
int ExprLayout::layGroupsOrWeak(const Region& region, TokenRange piece, int column) {
    const std::size_t undoCount = text_.lineStartCount();
    const bool overflowedBefore = std::exchange(overflows_, false);
    int end = layGroups(region, piece, column);
    if (overflows_ && attempts_ > 0) {
        --attempts_;
        text_.undoLineStarts(undoCount);
        overflows_ = false;
        const auto weak = breakAtFirst(region, piece, column, Class::Comparison, Class::None);
        end = weak ? *weak : layGroups(region, piece, column);
    }
    overflows_ = overflows_ || overflowedBefore;
    return end;
}

std::optional<int> ExprLayout::breakAt(const Region& region, TokenRange piece, int column, Class separatorClass) {
    if (separatorClass == Class::Shift) return packShifts(region, piece, column);
    const Separators separators = places_.separatorsOf(separatorClass);
    const bool isOperator = separatorClass >= Class::Logical && separatorClass <= Class::Factor;
    if (isOperator && settings_.fillsOperands()) {
        return packPieces(region, piece, column, separators, std::nullopt, false);
    }
    return breakAll(region, piece, column, separators);
}

std::optional<int> ExprLayout::breakAll(const Region& region, TokenRange piece, int column,
                                        Separators separators) {
    std::size_t separator = piece.first;
    std::size_t line = places_.nextLine(separators, region.range, piece, separator, piece.first);
    if (line == kNoToken) return std::nullopt;
    const Class inside = LinePlaces::behind(separators.separatorClass);
    int end = layPiece(region, {piece.first, line}, column, inside);
    while (line != kNoToken) {
        const std::size_t next = places_.nextLine(separators, region.range, piece, separator, separator + 1);
        const TokenRange part{line, std::min(next, piece.last)};
        const LineStart start = lineStart(region, line, separators.leadsLine);
        const int place = servesNothing(region, part, start) ? text_.columnOf(line, end) : begin(line, start);
        end = layPiece(region, part, place, inside);
        line = next;
    }
    return end;
}

// out << first << second
//     << third                   the operator leads: lines begin below the first one
//
// out << first << second <<
// third                          it ends lines: they begin below the start of the chain
std::optional<int> ExprLayout::packShifts(const Region& region, TokenRange piece, int column) {
    const Separators shifts = places_.separatorsOf(Class::Shift);
    LineStart start = lineStart(region, piece.first, false);
    const bool isAligned = settings_.style == WrapStyle::Aligned && !region.startsAtIndent;
    if (isAligned) start.column = column;
    return packPieces(region, piece, column, shifts, start, isAligned && shifts.leadsLine);
}

// Puts as many pieces on a line as fit. Lines begin at `start`, or below the second piece.
std::optional<int> ExprLayout::packPieces(const Region& region, TokenRange whole, int column,
                                          Separators separators, std::optional<LineStart> start,
                                          bool alignsToSecond) {
    std::size_t separator = whole.first;
    std::size_t first = places_.nextLine(separators, region.range, whole, separator, whole.first);
    if (first == kNoToken) return std::nullopt;
    const Class inside = LinePlaces::behind(separators.separatorClass);
    int end = layPiece(region, {whole.first, first}, column, inside);
    bool isSecond = true;
    while (first != kNoToken) {
        const std::size_t next = places_.nextLine(separators, region.range, whole, separator, separator + 1);
        const TokenRange piece{first, std::min(next, whole.last)};
        int pieceColumn = text_.columnOf(first, end);
        if (!text_.startsOwnLine(first) && fits(region, piece, pieceColumn)) {
            end = text_.measure(piece, pieceColumn).column;
        } else {
            const LineStart line = start ? *start : lineStart(region, first, separators.leadsLine);
            if (!servesNothing(region, piece, line)) pieceColumn = begin(first, line);
            end = layPiece(region, piece, pieceColumn, inside);
        }
        if (isSecond && alignsToSecond) start->column = pieceColumn;
        isSecond = false;
        first = next;
    }
    return end;
}

// Breaks the regions inside a piece that has no separators left.
int ExprLayout::layGroups(const Region& region, TokenRange piece, int column) {
    std::size_t at = piece.first;
    if (!callsOnly_ && region.depth < kDeepestRegion) {
        for (std::size_t open = nextGroup(at, piece.last); open < piece.last;
             open = nextGroup(at + 1, piece.last)) {
            column = layGroupAt(region, open, at, column);
            at = text_.tokens()[open].partner;
        }
    }
    const TokenRange rest{at, piece.last};
    overflows_ = overflows_ || !fits(region, rest, column);
    return text_.measure(rest, column).column;
}

// The text from token `at`, which stands at `column`, to the end of the group's inside. Returns the column of
// the closing bracket.
int ExprLayout::layGroupAt(const Region& region, std::size_t open, std::size_t at, int column) {
    const bool isBraced = text_.kindAt(open) == Cpp::OpenBrace;
    Region inside{{open + 1, text_.tokens()[open].partner},
                  region.indent,
                  0,
                  region.depth + 1,
                  isBraced && region.startsAtIndent};
    // As the elements of any initializer: `.size = {`.
    const bool isIndented =
        text_.tokens()[open].role == ExprRole::BraceOpen || opensBlock(text_.tokens(), open);
    inside.isRow = inside.startsAtIndent && !isIndented;
    if (inside.startsAtIndent && isIndented) {
        inside.indent = columnAfter(settings_.dataIndent.text, region.indent, settings_.tabSize);
    }
    const bool isCallGroup = isCall(open, at);
    inside.isCall = isCallGroup;
    if (isCallGroup) {
        const std::size_t name = open - 1;
        if (name > at) column = text_.columnOf(name, measured({at, name}, column));
        inside.indent = column;
        at = name;
    }
    column = measured({at, open + 1}, column);
    text_.placeBracket(open, column - 1);
    if (!inside.range.empty()) {
        column = text_.columnOf(open + 1, column);
        column = isBraced ? layRegion(inside, column) : layParentheses(inside, region, column);
    }
    return text_.columnOf(inside.range.last, column);
}

// What stands in parentheses; as a last resort from a line of its own on.
int ExprLayout::layParentheses(const Region& inside, const Region& around, int column) {
    const auto lay = [&](const Region& region, int start) {
        return inside.isCall ? layRegion(region, start) : layCallsOrRegion(region, start);
    };
    const std::size_t first = inside.range.first;
    const std::size_t undoCount = text_.lineStartCount();
    const bool overflowedBefore = std::exchange(overflows_, false);
    int end = lay(inside, column);
    if (overflows_ && opensLines_ && attempts_ > 0 && !text_.startsOwnLine(first)) {
        --attempts_;
        text_.undoLineStarts(undoCount);
        overflows_ = false;
        Region below = inside;
        below.indent = around.depth == 0 ? lineColumn_ : around.alignment;
        const LineStart start = indentedStart(below.indent);
        end = lay(below, begin(first, start));
        if (overflows_) {
            text_.undoLineStarts(undoCount);
            end = lay(inside, column);
        }
    }
    overflows_ = overflows_ || overflowedBefore;
    return end;
}

LineStart ExprLayout::indentedStart(int column) const {
    return {columnAfter(settings_.wrapIndent.text, column, settings_.tabSize), true, column};
}

// The ways to bring a text within the margin, the next one where one does not: to break it as any; to begin a line
// behind the "=" in front of it, behind parentheses, or both; to break it behind casts, too.
void ExprLayout::breakWithLastResort(TokenRange range, int column, bool followsAssignment) {
    const Region behindAssignment{range, indentColumn_, indentedStart(indentColumn_).column};
    if (settings_.keepsPartsWhole && followsAssignment && fitsWhole(behindAssignment, behindAssignment.alignment)) {
        begin(range.first, indentedStart(indentColumn_));
        return;
    }
    breaksCasts_ = !settings_.breaksAsLastResort;
    breakExpression(range, column);
    if (!settings_.breaksAsLastResort || !overflows_) return;
    const auto attempt = [&](bool atStart, bool opensLines) {
        text_.undoLineStarts(0);
        overflows_ = false;
        opensLines_ = opensLines;
        attempts_ = kMostAttempts;
        lineColumn_ = text_.kindAt(range.first) == Cpp::Directive ? column : indentColumn_;
        if (atStart) lineColumn_ = begin(range.first, indentedStart(indentColumn_));
        breakExpression(range, atStart ? lineColumn_ : column);
        return !overflows_;
    };
    if (followsAssignment && attempt(true, false)) return;
    if (attempt(false, true)) return;
    if (followsAssignment && attempt(true, true)) return;
    breaksCasts_ = true;
    attempt(false, false);
}

// The same for a list: a line may begin in front of its first element.
void ExprLayout::packWithLastResort(TokenRange range, int column) {
    packList(range, column);
    if (!settings_.breaksAsLastResort || !overflows_ || text_.startsOwnLine(range.first)) return;
    text_.undoLineStarts(0);
    overflows_ = false;
    packList(range, begin(range.first, indentedStart(indentColumn_)));
    if (!overflows_) return;
    text_.undoLineStarts(0);
    packList(range, column);
}

// Breaks nothing but the operators of the region itself, when that makes everything fit.
std::optional<int> ExprLayout::layOperands(const Region& region, int column) {
    if (!canBreak(region) || !text_.isEven(region.range)) return std::nullopt;
    const std::size_t undoCount = text_.lineStartCount();
    const bool overflowedBefore = std::exchange(overflows_, false);
    const int attempts = std::exchange(attempts_, 0);
    callsOnly_ = true;
    const auto end = breakAtFirst(region, region.range, column, Class::Conditional, Class::Comparison);
    callsOnly_ = false;
    attempts_ = attempts;
    const bool works = end && !overflows_;
    overflows_ = overflowedBefore;
    if (works) return end;
    text_.undoLineStarts(undoCount);
    return std::nullopt;
}

// Breaks nothing but the calls that stand in the region itself, when that makes everything fit.
std::optional<int> ExprLayout::layCalls(const Region& region, int column) {
    const std::size_t undoCount = text_.lineStartCount();
    const bool overflowedBefore = std::exchange(overflows_, false);
    callsOnly_ = true;
    std::size_t at = region.range.first;
    const std::size_t last = region.range.last;
    for (std::size_t open = nextCall(at, last); open < last && !overflows_; open = nextCall(at + 1, last)) {
        column = layGroupAt(region, open, at, column);
        at = text_.tokens()[open].partner;
    }
    callsOnly_ = false;
    const bool works = !overflows_ && text_.lineStartCount() > undoCount && fits(region, {at, last}, column);
    overflows_ = overflowedBefore;
    if (works) return text_.measure({at, last}, column).column;
    text_.undoLineStarts(undoCount);
    return std::nullopt;
}

int ExprLayout::layCallsOrRegion(Region region, int column) {
    region.alignment = alignmentOf(region, column);
    if (fitsWhole(region, column)) return text_.measure(region.range, column).column;
    if (settings_.keepsPartsWhole) {
        if (const auto end = layOperands(region, column)) return *end;
    }
    if (const auto end = layCalls(region, column)) return *end;
    return layRegion(region, column);
}

// Where lines are weighed the formatter has put a value that begins one behind directives where it belongs.
bool ExprLayout::staysBehindDirective(std::size_t place) const {
    if (!settings_.weighsBreaks() || place == 0 || text_.kindAt(place - 1) != Cpp::Directive) return false;
    while (place > 0 && text_.tokens()[place - 1].role == ExprRole::Trivia) --place;
    return place > 0 && text_.kindAt(place - 1) == Cpp::Assign;
}

// Tokens that stand on lines of their own anyway begin where the region's lines do.
void ExprLayout::alignOwnLines(const Region& region) {
    if (text_.isEven(region.range)) return;
    for (std::size_t place = region.range.first; place < region.range.last; ++place) {
        const bool isMovable = place != region.range.first && text_.kindAt(place) != Cpp::Directive &&
                               !staysBehindDirective(place);
        if (isMovable && text_.startsOwnLine(place)) text_.startLine(place, lineStart(region, place, false));
        const std::size_t partner = text_.tokens()[place].partner;
        if (opensBracket(text_.tokens(), place) && partner < region.range.last) place = partner;
    }
}

// Lines that begin beyond the margin would be of no use, and there would be no end to their white space.
bool ExprLayout::canBreak(const Region& region) const {
    return text_.isWithinMargin(lineStart(region, region.range.first, false).column + 1);
}

// Where a line of the region begins that `place` is put at the start of.
LineStart ExprLayout::lineStart(const Region& region, std::size_t place, bool leadsLine) const {
    if (region.startsAtIndent) return {region.indent};
    switch (settings_.style) {
        case WrapStyle::AtIndent:
            return {region.indent};
        case WrapStyle::Indented:
            if (contentIndented_ && region.depth == 0) return {region.indent};
            return {columnAfter(settings_.wrapIndent.text, region.indent, settings_.tabSize), true,
                    region.indent};
        case WrapStyle::Aligned:
            break;
    }
    const ExprRole role = text_.tokens()[place].role;
    const bool isSeparator = role == ExprRole::BinaryOperator || role == ExprRole::Separator;
    if (!leadsLine || !isSeparator || place + 1 >= text_.size()) return {region.alignment};
    // The operand behind the separator stands below the first one.
    const auto separatorWidth = static_cast<int>(text_.tokenText(place).size() + text_.gap(place + 1).size());
    return {std::max(region.alignment - separatorWidth, 0)};
}

int ExprLayout::begin(std::size_t place, LineStart start) {
    text_.startLine(place, start);
    return start.column;
}

int ExprLayout::tailBehind(const Region& region, std::size_t place) const {
    return place == region.range.last ? text_.tailWidth(place) : 0;
}

bool ExprLayout::fits(const Region& region, TokenRange piece, int column) const {
    return text_.fits(piece, column, tailBehind(region, piece.last));
}

// A region on one line, its literals joined.
bool ExprLayout::fitsWhole(const Region& region, int column) const {
    return text_.fits(region.range, column, tailBehind(region, region.range.last), Literals::Joined);
}

// Whether a line that begins with the piece would be too long all the same, and the author began none there.
bool ExprLayout::servesNothing(const Region& region, TokenRange piece, LineStart start) const {
    if (!settings_.weighsBreaks() || text_.startsOwnLine(piece.first) || text_.beganLine(piece.first)) return false;
    const bool isBreakable = chances_[piece.last] > chances_[piece.first + 1];
    return !isBreakable && !fits(region, piece, start.column);
}

// The column behind the range.
int ExprLayout::measured(TokenRange range, int column) {
    const Extent extent = text_.measure(range, column);
    overflows_ = overflows_ || !extent.fits || !text_.isWithinMargin(extent.column);
    return extent.column;
}

// Whether the parenthesis directly follows a name that stands at or behind token `from`.
bool ExprLayout::isCall(std::size_t open, std::size_t from) const {
    return text_.kindAt(open) == Cpp::OpenParen && open > from && text_.kindAt(open - 1) == Cpp::Identifier;
}

// The next "(" or "{" with its partner in front of `last`. Brackets of other kinds are looked into, but for "[ ]"
// where breaks are weighed.
std::size_t ExprLayout::nextGroup(std::size_t from, std::size_t last) const {
    for (std::size_t place = from; place < last; ++place) {
        const int kind = text_.kindAt(place);
        const std::size_t partner = text_.tokens()[place].partner;
        if (settings_.weighsBreaks() && kind == Cpp::OpenBracket && partner != kNoToken && partner < last) {
            place = partner;
            continue;
        }
        const bool isGroup = kind == Cpp::OpenParen || kind == Cpp::OpenBrace;
        if (isGroup && partner != kNoToken && partner > place && partner < last) return place;
    }
    return last;
}

// The next call that stands in no parentheses between `from` and itself.
std::size_t ExprLayout::nextCall(std::size_t from, std::size_t last) const {
    for (std::size_t open = nextGroup(from, last); open < last; open = nextGroup(open, last)) {
        if (isCall(open, from)) return open;
        open = text_.kindAt(open) == Cpp::OpenParen ? text_.tokens()[open].partner : open + 1;
    }
    return last;
}

}  // namespace Tessel
