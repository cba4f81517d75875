#include "layout/line_places.h"

#include "cpp/token_kind.h"

namespace Tessel {

namespace {

// Of the operators that else are as good as any.
bool hasOwnClass(int kind) {
    return isIn(TokenClasses::comparisonTokens, kind) || isIn(TokenClasses::factorTokens, kind) ||
           isIn(TokenClasses::conditionalTokens, kind);
}

}  // namespace

LinePlaces::LinePlaces(const WrapText& text, const WrapSettings& settings, Clauses clauses)
    : text_(text),
      settings_(settings),
      clauses_(clauses),
      semicolons_(TokenClasses::semicolonTokens),
      commas_(TokenClasses::commaTokens),
      conditionals_(TokenClasses::conditionalTokens),
      shifts_(TokenClasses::shiftTokens),
      logicals_(TokenClasses::logicalTokens),
      factors_(TokenClasses::factorTokens),
      comparisons_(TokenClasses::comparisonTokens) {}

std::vector<bool> LinePlaces::chances() const {
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
            isBreakable.push_back(token.kind == Cpp::OpenParen || token.kind == Cpp::OpenBrace);
            continue;
        }
        if (!isBreakable.back()) continue;
        const std::optional<Class> separatorClass = classOf(place, regions.back());
        if (!separatorClass) continue;
        const bool leadsLine = separatorsOf(*separatorClass).leadsLine;
        const std::size_t line = leadsLine ? lineAt(place) : lineBehind(place, regions.back().last);
        if (line < regions.back().last) mayStartLine[line] = true;
    }
    return mayStartLine;
}

std::optional<LinePlaces::Class> LinePlaces::classOf(std::size_t place, TokenRange region) const {
    const TokenPlace token = placeOf(text_.tokens(), region.first, place, region.last);
    const int kind = token.token.kind;
    for (Class separatorClass = Class::Clause; separatorClass != Class::None;
         separatorClass = behind(separatorClass)) {
        const FirstWrapToken& finder = separatorsOf(separatorClass).finder;
        if (finder.isWrapToken(kind) && finder.breaksAt(token) && isUsable(place, separatorClass)) {
            return separatorClass;
        }
    }
    return std::nullopt;
}

LinePlaces::Class LinePlaces::behind(Class separatorClass) {
    return static_cast<Class>(static_cast<int>(separatorClass) + 1);
}

LinePlaces::Separators LinePlaces::separatorsOf(Class separatorClass) const {
    const bool operatorLeads = settings_.operators != SeparatorPlace::EndsLine;
    switch (separatorClass) {
        case Class::Clause:
            return {separatorClass, semicolons_, false};
        case Class::Comma:
            return {separatorClass, commas_, settings_.comma != SeparatorPlace::EndsLine};
        case Class::Conditional:
            return {separatorClass, conditionals_, true};
        case Class::Shift:
            return {separatorClass, shifts_, settings_.shift != SeparatorPlace::EndsLine};
        case Class::Logical:
            return {separatorClass, logicals_, operatorLeads};
        case Class::Binary:
            return {separatorClass, binaries_, operatorLeads};
        case Class::Factor:
            return {separatorClass, factors_, operatorLeads};
        case Class::Comparison:
            return {separatorClass, comparisons_, operatorLeads};
        case Class::Cast:
            return {separatorClass, casts_, false};
        default:
            return {separatorClass, oldCasts_, false};
    }
}

// A sign stays with its operand, and a shift chain is broken by its own rule or not at all.
bool LinePlaces::isUsable(std::size_t place, Class separatorClass) const {
    const ExprToken& token = text_.tokens()[place];
    switch (separatorClass) {
        case Class::Clause:
            return clauses_ == Clauses::Separate;
        case Class::Shift:
            return settings_.shift != SeparatorPlace::None;
        case Class::Binary:
            return token.role == ExprRole::BinaryOperator && !isIn(TokenClasses::shiftTokens, token.kind) &&
                   !(settings_.weighsBreaks() && hasOwnClass(token.kind));
        case Class::Conditional:
        case Class::Factor:
        case Class::Comparison:
            return token.role == ExprRole::BinaryOperator && settings_.weighsBreaks();
        default:
            return true;
    }
}

// The token that begins the line when it is broken at a leading separator: the next one where it stands on a
// line of its own already.
std::size_t LinePlaces::lineAt(std::size_t separator) const {
    const bool endsLine = separator + 1 < text_.size() && text_.startsOwnLine(separator + 1);
    return endsLine && !text_.startsOwnLine(separator) ? separator + 1 : separator;
}

// The token that begins the line when it is broken behind a separator. Comments behind the separator stay on
// its line, unless more follows them there.
std::size_t LinePlaces::lineBehind(std::size_t separator, std::size_t last) const {
    std::size_t place = separator + 1;
    for (; place < last && text_.tokens()[place].role == ExprRole::Trivia; ++place) {
        if (text_.startsOwnLine(place)) break;
        const bool belongsToNext = place + 1 < last && !text_.startsOwnLine(place + 1);
        if (belongsToNext) break;
    }
    return place;
}

std::size_t LinePlaces::nextLine(Separators separators, TokenRange region, TokenRange piece,
                                 std::size_t& separator, std::size_t from) const {
    const FirstWrapToken& finder = separators.finder;
    separator = from;
    while (true) {
        separator = finder.find(text_.tokens(), region.first, separator, piece.last);
        if (separator == kNoToken) return kNoToken;
        const std::size_t line = separators.leadsLine ? lineAt(separator) : lineBehind(separator, piece.last);
        if (isUsable(separator, separators.separatorClass) && line > piece.first && line < piece.last)
            return line;
        ++separator;
    }
}

}  // namespace Tessel
