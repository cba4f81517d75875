#include "cpp/macro_scanner.h"

#include <algorithm>

#include "cpp/directive_text.h"
#include "cpp/token_classes.h"
#include "cpp/token_kind.h"
#include "cpp/token_sets.h"
#include "cpp/words.h"

namespace Cpp {

namespace {

// More macros in a row than anyone writes at the end of a body; the look for them ends there.
constexpr int kMaximumMacroRun = 16;

// Whether no item goes on at a token of the kind.
constexpr bool endsStatements(int kind) {
    return kind == CloseBrace || kind == KeywordElse || kind == KeywordCatch || kind == KeywordCase ||
           kind == KeywordDefault || kind == Trn::kEndKind;
}

// A keyword that begins a declaration wherever it stands: what is in front of it on another line is complete.
constexpr bool onlyBeginsDeclarations(int kind) {
    switch (kind) {
        case KeywordNamespace:
        case KeywordTemplate:
        case KeywordUsing:
        case KeywordClass:
        case KeywordStruct:
        case KeywordUnion:
        case KeywordEnum:
            return true;
        default:
            return isStorageWord(kind) || isAccessKeyword(kind);
    }
}

// What no declaration begins with, and the element of a list may.
constexpr bool beginsRow(int kind) {
    switch (kind) {
        case OpenParen:
        case OpenBracket:
        case Dot:
        case Minus:
        case Number:
        case StringLiteral:
        case CharLiteral: return true;
        default: return false;
    }
}

constexpr bool mayStandBetweenMacros(int kind) { return isWord(kind) || kind == Less || kind == OpenParen; }

constexpr bool endsType(int kind) {
    return isWord(kind) || kind == Asterisk || kind == Ampersand || kind == Greater;
}

}  // namespace

Item MacroScanner::scanStatement(Index start) const {
    using Shape = Item::Shape;
    const Trn::Token word = tokens_.at(start);
    if (word.kind != Identifier || isScopedName(word) || takesArgument(word) || isAssemblerWord(word.text))
        return {};
    const Index open = next(start);
    if (kind(open) == OpenBrace) return scanHead(open);
    if (kind(open) != OpenParen) {
        const bool isMacro = isWordMacro(start) || isFollowedByCall(start, open);
        return isMacro ? Item{Shape::Macro, start + 1, 0} : Item{};
    }
    const Index close = links_.closing(open);
    if (close == kNone) return {};
    const Index following = next(close);
    if (endsStatements(kind(following))) return {Shape::Macro, close + 1, 0};
    if (kind(following) == OpenBrace) return scanHead(following);
    const bool isLater = startsLaterLine(following, close);
    if (!isLater) return beginsPlainStatement(following) ? Item{Shape::MacroHead, following, 0} : Item{};
    const bool begins = beginsPlainStatement(following) || beginsUnclearStatement(following);
    const bool governs = begins && !holdsStatement(open, close) && !standsInOtherBranch(following, close);
    if (governs && isIndentedFrom(start, following)) return {Shape::MacroHead, following, 0};
    const bool beginsItem = begins || isWord(kind(following)) || opensAttribute(following);
    return beginsItem ? Item{Shape::Macro, close + 1, 0} : Item{};
}

// Whether an "#else" stands between the two.
bool MacroScanner::standsInOtherBranch(Index place, Index than) const {
    for (Index between = than + 1; between < place; ++between) {
        const Trn::Token token = tokens_.at(between);
        if (token.kind == Directive && beginsBranch(token.text)) return true;
    }
    return false;
}

// `IF_FEATURE(if (a) b();)`: it governs nothing.
bool MacroScanner::holdsStatement(Index open, Index close) const {
    if (!isControlKeyword(kind(next(open)))) return false;
    Index last = open;
    for (Index place = next(open); place < close; place = behind(place)) last = place;
    return kind(last) == Semicolon || kind(last) == OpenBrace;
}

// The head of the block whose "{" is at the place, unless values stand in it: a ";" is behind these in the end.
Item MacroScanner::scanHead(Index openBrace) const {
    const int following = kind(behind(openBrace));
    const bool isBlock =
        links_.holdsStatements(openBrace) || following == CloseBrace || !followsValue(following);
    return isBlock ? Item{Item::Shape::MacroHead, openBrace, 0} : Item{};
}

bool MacroScanner::isWordMacro(Index place) const {
    const Trn::Token word = tokens_.at(place);
    if (word.kind != Identifier || isScopedName(word)) return false;
    const Index following = next(place);
    const int followingKind = kind(following);
    if (endsStatements(followingKind)) return true;
    if (followingKind == KeywordNamespace || isAccessKeyword(followingKind)) return true;
    if (!startsLaterLine(following, place)) return false;
    if (opensNamedBlock(following)) return true;
    if (onlyBeginsDeclarations(followingKind) || opensAttribute(following)) return true;
    const std::string_view below = tokens_.at(following).text;
    if (below == "static_assert" || below == "_Static_assert") return true;
    if (!isUpperCase(word.text) || !isWord(followingKind)) return false;
    return isCompleteDeclaration(following) || endsInWordMacros(following);
}

// TEST_START
// {
bool MacroScanner::opensNamedBlock(Index name) const {
    return kind(name) == Identifier && isUpperCase(tokens_.at(name).text) && kind(next(name)) == OpenBrace;
}

// BEGIN_TRAITS(1) traits<int> END_TRAITS()
// BEGIN_TRAITS(2) traits<char> END_TRAITS()
MacroScanner::Index MacroScanner::behindMacroLine(Index name) const {
    Index last = links_.closing(next(name));
    if (last == kNone || !isUpperCase(tokens_.at(name).text)) return kNone;
    const Index second = next(last);
    Index word = second;  // the last one of the line, outside of brackets
    Index place = second;
    for (; mayStandBetweenMacros(kind(place)) && !startsLaterLine(place, last); place = behind(place)) {
        if (isWord(kind(place))) word = place;
        const Index close = links_.closing(place);
        last = close == kNone ? place : close;
    }
    const bool endsInWord = last == word || last == links_.closing(next(word));
    if (word == second || !endsInWord || !isUpperCase(tokens_.at(word).text)) return kNone;
    const bool isCall = isUpperCase(tokens_.at(place).text) && kind(next(place)) == OpenParen;
    const bool beginsItem = isCall || onlyBeginsDeclarations(kind(place)) || endsStatements(kind(place));
    return startsLaterLine(place, last) && beginsItem ? last + 1 : kNone;
}

// { "camera", 0x04cb },
// "camera",
// [CAMERA] = 0x04cb,
MacroScanner::Index MacroScanner::behindRow(Index start) const {
    const bool isBraced = kind(start) == OpenBrace && next(start) != links_.closing(start);
    if (isBraced ? links_.holdsStatements(start) : !beginsRow(kind(start))) return kNone;
    if (isBraced && kind(behind(start)) == Trn::kEndKind) return behind(start);
    for (Index place = start;; place = behind(place)) {
        const int kindHere = kind(place);
        if (kindHere == Comma && startsLaterLine(next(place), place)) return place + 1;
        if (kindHere == Semicolon || kindHere == CloseBrace || kindHere == Trn::kEndKind) return kNone;
    }
}

// Whether nothing but words that may be macros, each in a line of its own, stands up to the end of the body
// or the text.
bool MacroScanner::endsInWordMacros(Index place) const {
    for (int count = 0; count < kMaximumMacroRun; ++count) {
        const Trn::Token word = tokens_.at(place);
        if (word.kind != Identifier || !isUpperCase(word.text)) return false;
        const Index following = next(place);
        if (kind(following) == CloseBrace || kind(following) == Trn::kEndKind) return true;
        if (!startsLaterLine(following, place)) return false;
        place = following;
    }
    return false;
}

bool MacroScanner::isCompleteDeclaration(Index place) const {
    if (isControlKeyword(kind(place)) || isJumpKeyword(kind(place)) || kind(place) == KeywordCase)
        return true;
    if (tokens_.at(place).text.starts_with('~')) return true;
    int words = 0;
    Index previous = place;
    for (Index here = place;; previous = here, here = behind(here)) {
        const int kindHere = kind(here);
        if (kindHere == KeywordOperator) {
            // Only a conversion has no type in front.
            const int converted = kind(next(here));
            return words > 0 || (isWord(converted) && converted != KeywordNew && converted != KeywordDelete);
        } else if (isWord(kindHere)) {
            words += !tokens_.at(here).text.starts_with("::");
            if (words > 1) return true;
        } else if (kindHere == OpenParen) {
            if (takesArgument(tokens_.at(previous))) continue;
            return words == 1 && isUpperCase(tokens_.at(previous).text);
        } else if (kindHere != Asterisk && kindHere != Ampersand && kindHere != Less &&
                   kindHere != LogicalAnd) {
            return false;
        }
    }
}

MacroScanner::Index MacroScanner::endOfClassHead(Index name) const {
    if (!links_.hasUnopenedBrace() || kind(name) != Identifier) return kNone;
    const Index open = next(name);
    const bool isCall = kind(open) == OpenParen;
    // Else it may be the type of what is declared below.
    if (!isCall && !isUpperCase(tokens_.at(name).text) && !isCompleteDeclaration(open)) return kNone;
    const Index close = isCall ? links_.closing(open) : name;
    return close != kNone && opensClass(name, close) ? close : kNone;
}

// `public:`, `private slots:`
bool MacroScanner::opensAccess(Index place) const {
    if (!isAccessKeyword(kind(place))) return false;
    const Index following = next(place);
    return kind(following) == Colon || (kind(following) == Identifier && kind(next(following)) == Colon);
}

// `CLASS_OF_1(A, Base)` in front of members that stand further than it, up to the "};" of another line. Only access
// labels may stand where it does.
bool MacroScanner::opensClass(Index name, Index last) const {
    Index place = next(last);
    if (kind(place) == CloseBrace && !startsLaterLine(place, last)) return kind(next(place)) == Semicolon;
    for (bool isFirst = true;; isFirst = false, place = behind(place)) {
        if (!startsLaterLine(place, last)) {
            if (isFirst || endsStatements(kind(place))) return false;
        } else if (isFirst && (kind(place) == Colon || kind(place) == Arrow)) {
            return false;  // initialisers, or the type of what is returned
        } else if (kind(place) == CloseBrace) {
            return kind(next(place)) == Semicolon;
        } else if (kind(place) == Trn::kEndKind || !(isIndentedFrom(name, place) || opensAccess(place))) {
            return false;
        }
        const Index close = links_.closing(place);
        last = close == kNone ? place : close;
    }
}

// `ANONYMOUS_NAMESPACE {`, `VERSION_NAMESPACE(2) {`
bool MacroScanner::opensNamespace(Index name) const {
    if (kind(name) != Identifier || isScopedName(tokens_.at(name))) return false;
    const bool isCall = kind(next(name)) == OpenParen;
    const Index open = isCall ? behind(next(name)) : next(name);
    return kind(open) == OpenBrace && links_.closing(open) != kNone && holdsDeclarations(open, isCall);
}

// What a block never has; or, unless a function may begin so, what it seldom has, and no statement that only blocks
// have.
bool MacroScanner::holdsDeclarations(Index open, bool mayBeFunction) const {
    bool holdsSome = false;
    Index last = open;
    Index secondLast = open;
    for (Index place = next(open); place != links_.closing(open); place = behind(place)) {
        const int kindHere = kind(place);
        if (opensNamedScope(place)) return true;
        if (isControlKeyword(kindHere) || isJumpKeyword(kindHere)) return false;
        const bool isFunction = kindHere == OpenParen && kind(last) == Identifier && endsType(kind(secondLast)) &&
                                kind(behind(place)) == OpenBrace;
        holdsSome |= isFunction || kindHere == KeywordTemplate || isClassKey(kindHere);
        secondLast = last;
        last = place;
    }
    return holdsSome && !mayBeFunction;
}

// `namespace a {`
bool MacroScanner::opensNamedScope(Index place) const {
    return kind(place) == KeywordNamespace && (kind(next(place)) == OpenBrace || kind(next(next(place))) == OpenBrace);
}

// Whether a word by itself in its line has a statement behind it that no declaration begins like.
bool MacroScanner::isFollowedByCall(Index word, Index following) const {
    if (!startsLaterLine(following, word) || kind(following) != Identifier) return false;
    const Index behindName = next(following);
    switch (kind(behindName)) {
        case OpenParen:
            // The type of a function that stands in the block.
            return isUpperCase(tokens_.at(word).text) || kind(behind(behindName)) != OpenBrace;
        case Dot:
        case Arrow:
        case PlusAssign:
        case MinusAssign:
        case BarAssign:
        case AmpersandAssign:
        case Increment:
        case Decrement:
            return true;
        case Assign:
            // As opposed to the type in `LONG_NAME name = {0};`.
            return isUpperCase(tokens_.at(word).text) && kind(next(behindName)) != OpenBrace;
        default:
            return false;
    }
}

// Whether a statement begins at the place that is one behind a macro on the same line too.
bool MacroScanner::beginsPlainStatement(Index place) const {
    const int first = kind(place);
    if (isControlKeyword(first)) return first != KeywordElse && first != KeywordCatch;
    if (isJumpKeyword(first)) return true;
    if (first != Identifier) return false;
    switch (kind(next(place))) {
        case OpenParen:
        case Dot:
        case Arrow:
        case Increment:
        case Decrement:
        case PlusAssign:
            return true;
        default:
            return false;
    }
}

// One that, were it on the same line as the macro, would be taken for a part of a declaration or an
// expression.
bool MacroScanner::beginsUnclearStatement(Index place) const {
    switch (kind(place)) {
        case Identifier:
        case Asterisk:
        case Increment:
        case Decrement:
            return true;
        default:
            return false;
    }
}

// A tab counts as 8 columns, as nearly everywhere; only the scheme knows.
bool MacroScanner::isIndentedFrom(Index head, Index following) const {
    constexpr std::size_t tabSize = 8;
    const auto indentation = [source = tokens_.source()](const Trn::Token& token) {
        const std::size_t ahead = std::max<std::size_t>(token.start.column, 1) - 1;
        std::size_t column = 0;
        for (const char c : source.substr(token.offset - ahead, ahead)) {
            if (c != ' ' && c != '\t') break;
            column = c == '\t' ? (column / tabSize + 1) * tabSize : column + 1;
        }
        return column;
    };
    return indentation(tokens_.at(following)) > indentation(tokens_.at(head));
}

}  // namespace Cpp
