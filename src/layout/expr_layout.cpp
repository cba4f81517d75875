#include "layout/expr_layout.h"

#include <algorithm>
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
      clauses_(clauses),
      semicolons_(TokenClasses::semicolonTokens),
      commas_(TokenClasses::commaTokens),
      shifts_(TokenClasses::shiftTokens),
      logicals_(TokenClasses::logicalTokens) {
    findLineChances();
}

bool ExprLayout::isTooLong(TokenRange range, int column) const {
    return !text_.fits(range, column, text_.tailWidth(range.last), Literals::Joined);
}

bool ExprLayout::holdsElements(TokenRange range) {
    std::size_t separator = range.first;
    return nextLine(separatorsOf(Class::Comma), {range}, range, separator, range.first) != kNoToken;
}

void ExprLayout::breakExpression(TokenRange range, int column) {
    const Region region{range, indentColumn_, column, 0, atIndent_};
    layCallsOrRegion(region, column);
}

void ExprLayout::packList(TokenRange range, int column) {
    if (settings_.comma == SeparatorPlace::None) return;
    const Region region{range, indentColumn_, column, 0, atIndent_};
    if (!canBreak(region)) return;
    alignOwnLines(region);
    if (!packPieces(region, range, column, separatorsOf(Class::Comma), std::nullopt, false)) {
        layPiece(region, range, column, Class::Shift);
    }
}

void ExprLayout::breakForClauses(TokenRange range, int column) {
    const Region region{range, column, column, 0, true};
    if (!canBreak(region)) return;
    alignOwnLines(region);
    layPiece(region, range, column, Class::Clause);
}

// Line chances are the places where some region might start a line.
void ExprLayout::findLineChances() {
    const std::vector<ExprToken>& tokens = text_.tokens();
    std::vector<bool> mayStartLine(tokens.size(), false);
    std::vector<TokenRange> regions{{0, tokens.size()}};
    std::vector<bool> isBreakable{true};
    for (std::size_t place = 0; place < tokens.size(); ++place) {
        const ExprToken& token = tokens[place];
        if (token.role == ExprRole::Trivia) continue;
        while (regions.size() > 1 && place >= regions.back().last) {
            regions.pop_back();
            isBreakable.pop_back();
        }
        if (token.partner != kNoToken && token.partner > place) {
            regions.push_back({place + 1, token.partner});
            isBreakable.push_back(token.token.kind == Cpp::OpenParen || token.token.kind == Cpp::OpenBrace);
            continue;
        }
        if (!isBreakable.back()) continue;
        const std::optional<Class> separatorClass = classOf(place, regions.back());
        if (!separatorClass) continue;
        const bool leadsLine = separatorsOf(*separatorClass).leadsLine;
        const std::size_t line = leadsLine ? lineAt(place) : lineBehind(place, regions.back().last);
        if (line < regions.back().last) mayStartLine[line] = true;
    }
    text_.setLineChances(mayStartLine);
}

std::optional<ExprLayout::Class> ExprLayout::classOf(std::size_t place, TokenRange region) {
    const TokenPlace token = placeOf(text_.tokens(), region.first, place, region.last);
    const int kind = token.token.token.kind;
    for (Class separatorClass = Class::Clause; separatorClass != Class::None;
         separatorClass = behind(separatorClass)) {
        const FirstWrapToken& finder = separatorsOf(separatorClass).finder;
        if (finder.isWrapToken(kind) && finder.breaksAt(token) && isUsable(place, separatorClass)) {
            return separatorClass;
        }
    }
    return std::nullopt;
}

ExprLayout::Class ExprLayout::behind(Class separatorClass) {
    return static_cast<Class>(static_cast<int>(separatorClass) + 1);
}

ExprLayout::Separators ExprLayout::separatorsOf(Class separatorClass) {
    const bool operatorLeads = settings_.operators != SeparatorPlace::EndsLine;
    switch (separatorClass) {
        case Class::Clause:
            return {separatorClass, semicolons_, false};
        case Class::Comma:
            return {separatorClass, commas_, settings_.comma != SeparatorPlace::EndsLine};
        case Class::Shift:
            return {separatorClass, shifts_, settings_.shift != SeparatorPlace::EndsLine};
        case Class::Logical:
            return {separatorClass, logicals_, operatorLeads};
        case Class::Binary:
            return {separatorClass, binaries_, operatorLeads};
        case Class::Cast:
            return {separatorClass, casts_, false};
        default:
            return {separatorClass, oldCasts_, false};
    }
}

// A sign stays with its operand, and a shift chain is broken by its own rule or not at all.
bool ExprLayout::isUsable(std::size_t place, Class separatorClass) const {
    const ExprToken& token = text_.tokens()[place];
    switch (separatorClass) {
        case Class::Clause:
            return clauses_ == Clauses::Separate;
        case Class::Shift:
            return settings_.shift != SeparatorPlace::None;
        case Class::Binary:
            return token.role == ExprRole::BinaryOperator &&
                   !isIn(TokenClasses::shiftTokens, token.token.kind);
        default:
            return true;
    }
}

// The token that begins the line when it is broken at a leading separator: the next one where it stands on a
// line of its own already.
std::size_t ExprLayout::lineAt(std::size_t separator) const {
    const bool endsLine = separator + 1 < text_.size() && text_.startsOwnLine(separator + 1);
    return endsLine && !text_.startsOwnLine(separator) ? separator + 1 : separator;
}

// The token that begins the line when it is broken behind a separator. Comments behind the separator stay on
// its line, unless more follows them there.
std::size_t ExprLayout::lineBehind(std::size_t separator, std::size_t last) const {
    std::size_t place = separator + 1;
    for (; place < last && text_.tokens()[place].role == ExprRole::Trivia; ++place) {
        if (text_.startsOwnLine(place)) break;
        const bool belongsToNext = place + 1 < last && !text_.startsOwnLine(place + 1);
        if (belongsToNext) break;
    }
    return place;
}

// The first token behind `from` in the piece that a line may begin with; `separator` becomes what lets it.
std::size_t ExprLayout::nextLine(Separators separators, const Region& region, TokenRange piece,
                                 std::size_t& separator, std::size_t from) const {
    FirstWrapToken& finder = separators.finder;
    separator = from;
    while (true) {
        separator = finder.find(text_.tokens(), region.range.first, separator, piece.last);
        if (separator == kNoToken) return kNoToken;
        const std::size_t line = separators.leadsLine ? lineAt(separator) : lineBehind(separator, piece.last);
        if (isUsable(separator, separators.separatorClass) && line > piece.first && line < piece.last)
            return line;
        ++separator;
    }
}

int ExprLayout::layRegion(Region region, int column) {
    const TokenRange range = region.range;
    if (range.empty()) return column;
    if (text_.fits(range, column, tailBehind(region, range.last), Literals::Joined)) {
        return text_.measure(range, column).column;
    }
    region.alignment = region.depth == 0 ? alignment_.value_or(column) : column;
    if (!canBreak(region)) return measured(range, column);
    alignOwnLines(region);
    if (const auto end = breakAll(region, range, column, separatorsOf(Class::Comma))) return *end;
    return layPiece(region, range, column, Class::Shift);
}

// Breaks what does not fit, beginning with the separators of class `from`. Returns the column behind the
// piece.
int ExprLayout::layPiece(const Region& region, TokenRange piece, int column, Class from) {
    if (fits(region, piece, column)) return text_.measure(piece, column).column;
    for (Class separatorClass = from; separatorClass != Class::None;
         separatorClass = behind(separatorClass)) {
        const auto end = separatorClass == Class::Shift
                             ? packShifts(region, piece, column)
                             : breakAll(region, piece, column, separatorsOf(separatorClass));
        if (end) return *end;
    }
    return layGroups(region, piece, column);
}

std::optional<int> ExprLayout::breakAll(const Region& region, TokenRange piece, int column,
                                        Separators separators) {
    std::size_t separator = piece.first;
    std::size_t line = nextLine(separators, region, piece, separator, piece.first);
    if (line == kNoToken) return std::nullopt;
    const Class inside = behind(separators.separatorClass);
    int end = layPiece(region, {piece.first, line}, column, inside);
    while (line != kNoToken) {
        const std::size_t next = nextLine(separators, region, piece, separator, separator + 1);
        const int start = begin(line, lineStart(region, line, separators.leadsLine));
        end = layPiece(region, {line, std::min(next, piece.last)}, start, inside);
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
    const Separators shifts = separatorsOf(Class::Shift);
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
    std::size_t first = nextLine(separators, region, whole, separator, whole.first);
    if (first == kNoToken) return std::nullopt;
    const Class inside = behind(separators.separatorClass);
    int end = layPiece(region, {whole.first, first}, column, inside);
    bool isSecond = true;
    while (first != kNoToken) {
        const std::size_t next = nextLine(separators, region, whole, separator, separator + 1);
        const TokenRange piece{first, std::min(next, whole.last)};
        int pieceColumn = text_.columnOf(first, end);
        if (!text_.startsOwnLine(first) && fits(region, piece, pieceColumn)) {
            end = text_.measure(piece, pieceColumn).column;
        } else {
            pieceColumn = begin(first, start ? *start : lineStart(region, first, separators.leadsLine));
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
    if (inside.startsAtIndent && isIndented) {
        inside.indent = columnAfter(settings_.dataIndent.text, region.indent, settings_.tabSize);
    }
    const bool isCallGroup = isCall(open, at);
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
        column = isCallGroup || isBraced ? layRegion(inside, column) : layCallsOrRegion(inside, column);
    }
    return text_.columnOf(inside.range.last, column);
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

int ExprLayout::layCallsOrRegion(const Region& region, int column) {
    const int tail = tailBehind(region, region.range.last);
    if (text_.fits(region.range, column, tail, Literals::Joined)) {
        return text_.measure(region.range, column).column;
    }
    if (const auto end = layCalls(region, column)) return *end;
    return layRegion(region, column);
}

// Tokens that stand on lines of their own anyway begin where the region's lines do.
void ExprLayout::alignOwnLines(const Region& region) {
    if (text_.isEven(region.range)) return;
    for (std::size_t place = region.range.first; place < region.range.last; ++place) {
        const bool isMovable = place != region.range.first && text_.kindAt(place) != Cpp::Directive;
        if (isMovable && text_.startsOwnLine(place)) text_.startLine(place, lineStart(region, place, false));
        const std::size_t partner = text_.tokens()[place].partner;
        if (partner != kNoToken && partner > place && partner < region.range.last) place = partner;
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

// The next "(" or "{" with its partner in front of `last`. Brackets of other kinds are looked into.
std::size_t ExprLayout::nextGroup(std::size_t from, std::size_t last) const {
    for (std::size_t place = from; place < last; ++place) {
        const int kind = text_.kindAt(place);
        const std::size_t partner = text_.tokens()[place].partner;
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
