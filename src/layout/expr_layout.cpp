#include "layout/expr_layout.h"

#include <algorithm>

#include "cpp/token_kind.h"
#include "engine/columns.h"

namespace Tessel {

namespace {

// Regions nested deeper stay as they are; their lines would start far beyond any margin.
constexpr int kDeepestRegion = 500;

}  // namespace

ExprLayout::ExprLayout(WrapText& text, const WrapSettings& settings, int indentColumn)
    : text_(text),
      settings_(settings),
      indentColumn_(indentColumn),
      commas_(TokenClasses::commaTokens),
      shifts_(TokenClasses::shiftTokens),
      logicals_(TokenClasses::logicalTokens),
      semicolons_(TokenClasses::semicolonTokens) {
    findLineChances();
}

bool ExprLayout::isTooLong(TokenRange range, int column) const {
    return !text_.fits(range, column, text_.tailWidth(range.last), Literals::Joined);
}

void ExprLayout::breakExpression(TokenRange range, int column) {
    const Region region{range, indentColumn_, column, 0};
    if (!breakCallsOnly(region, column)) layRegion(region, column);
}

void ExprLayout::packList(TokenRange range, int column) {
    if (settings_.comma == SeparatorPlace::None) return;
    const Region region{range, indentColumn_, column, 0};
    alignOwnLines(region);
    if (!packPieces(region, range, column, separatorsOf(Class::Comma), false, Class::Shift)) {
        layPiece(region, range, column, Class::Shift);
    }
}

void ExprLayout::breakForClauses(TokenRange range, int column) {
    atIndent_ = true;
    const Region region{range, column, column, 0};
    alignOwnLines(region);
    if (!breakAll(region, range, column, {semicolons_, false}, Class::Comma)) {
        layPiece(region, range, column, Class::Comma);
    }
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
        const std::size_t line = leadsLine ? place : lineBehind(place, regions.back().last);
        if (line < regions.back().last) mayStartLine[line] = true;
    }
    text_.setLineChances(mayStartLine);
}

std::optional<ExprLayout::Class> ExprLayout::classOf(std::size_t place, TokenRange region) {
    const TokenPlace token = placeOf(text_.tokens(), region.first, place, region.last);
    const int kind = token.token.token.kind;
    for (Class separatorClass = Class::Clause; separatorClass != Class::None; separatorClass = behind(separatorClass)) {
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
        case Class::Clause: return {separatorClass, semicolons_, false};
        case Class::Comma: return {separatorClass, commas_, settings_.comma != SeparatorPlace::EndsLine};
        case Class::Shift: return {separatorClass, shifts_, settings_.shift != SeparatorPlace::EndsLine};
        case Class::Logical: return {separatorClass, logicals_, operatorLeads};
        case Class::Binary: return {separatorClass, binaries_, operatorLeads};
        case Class::Cast: return {separatorClass, casts_, false};
        default: return {separatorClass, oldCasts_, false};
    }
}

// A sign stays with its operand, and a shift chain is broken by its own rule or not at all.
bool ExprLayout::isUsable(std::size_t place, Class separatorClass) const {
    const ExprToken& token = text_.tokens()[place];
    switch (separatorClass) {
        case Class::Shift: return settings_.shift != SeparatorPlace::None;
        case Class::Binary:
            return token.role == ExprRole::BinaryOperator && !isIn(TokenClasses::shiftTokens, token.token.kind);
        default: return true;
    }
}

// The token that begins the line when it is broken behind a separator. Comments behind the separator stay on its
// line, unless more follows them there.
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
        const std::size_t line = separators.leadsLine ? separator : lineBehind(separator, piece.last);
        if (isUsable(separator, separators.separatorClass) && line > piece.first && line < piece.last) return line;
        ++separator;
    }
}

int ExprLayout::layRegion(Region region, int column) {
    const TokenRange range = region.range;
    if (range.empty()) return column;
    if (text_.fits(range, column, tailBehind(region, range.last), Literals::Joined)) {
        return text_.measure(range, column).column;
    }
    region.alignment = column;
    alignOwnLines(region);
    if (const auto end = breakAll(region, range, column, separatorsOf(Class::Comma))) return *end;
    return layPiece(region, range, column, Class::Shift);
}

// Breaks what does not fit, beginning with the separators of class `from`. Returns the column behind the piece.
int ExprLayout::layPiece(const Region& region, TokenRange piece, int column, Class from) {
    if (fits(region, piece, column)) return text_.measure(piece, column).column;
    for (Class separatorClass = from; separatorClass != Class::None; separatorClass = behind(separatorClass)) {
        const auto end = separatorClass == Class::Shift
                             ? packShifts(region, piece, column)
                             : breakAll(region, piece, column, separatorsOf(separatorClass));
        if (end) return *end;
    }
    return layGroups(region, piece, column);
}

std::optional<int> ExprLayout::breakAll(const Region& region, TokenRange piece, int column, Separators separators) {
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
    const bool isAligned = settings_.style == WrapStyle::Aligned && !startsAtIndent(region);
    if (isAligned) start.column = column;
    return packPieces(region, piece, column, shifts, start, isAligned && shifts.leadsLine);
}

// Puts as many pieces on a line as fit. Lines begin at `start`, or below the second piece.
std::optional<int> ExprLayout::packPieces(const Region& region, TokenRange whole, int column, Separators separators,
                                          std::optional<LineStart> start, bool alignsToSecond) {
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
        for (std::size_t open = nextGroup(at, piece.last); open < piece.last; open = nextGroup(at + 1, piece.last)) {
            column = layGroupAt(region, open, at, column);
            at = text_.tokens()[open].partner;
        }
    }
    const TokenRange rest{at, piece.last};
    overflows_ = overflows_ || !fits(region, rest, column);
    return text_.measure(rest, column).column;
}

// The text from token `at`, which stands at `column`, to the end of the group's inside. Returns the column of the
// closing bracket.
int ExprLayout::layGroupAt(const Region& region, std::size_t open, std::size_t at, int column) {
    Region inside{{open + 1, text_.tokens()[open].partner}, region.indent, 0, region.depth + 1};
    const bool isCallGroup = isCall(open, at);
    if (isCallGroup) {
        const std::size_t name = nameOf(open);
        if (name > at) column = text_.columnOf(name, measured({at, name}, column));
        inside.indent = column;
        at = name;
    }
    column = measured({at, open + 1}, column);
    if (!inside.range.empty()) {
        column = text_.columnOf(open + 1, column);
        const bool isPlainGroup = !isCallGroup && text_.kindAt(open) == Cpp::OpenParen;
        column = isPlainGroup ? layCallsOrRegion(inside, column) : layRegion(inside, column);
    }
    return text_.columnOf(inside.range.last, column);
}

}  // namespace Tessel
