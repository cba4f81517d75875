// Declarations, by the roles of their parentheses:
//
//     API(2) static int f(int a) const noexcept(true) {      a specifier, parameters, part of the tail
//     void (*handler)(int);                                  a declarator, parameters
//     class ALIGNED(8) A {                                   part of the class's name
//     REGISTER(f)                                            a macro that stands by itself
#include "cpp/item_scanner.h"

#include <algorithm>
#include <iterator>
#include <vector>

#include "cpp/token_classes.h"
#include "cpp/token_kind.h"
#include "cpp/token_sets.h"

namespace Cpp {

namespace {

constexpr auto kNone = TokenLinks::kNone;

// Old-style heads with more parameters than anyone writes; the look for them ends there.
constexpr std::size_t kMaximumOldParameters = 64;

constexpr std::string_view kArgumentWords[] = {"_Alignas",      "_Atomic",     "_BitInt",     "__attribute",
                                               "__attribute__", "__declspec",  "__typeof",    "__typeof__",
                                               "_declspec",     "alignas",     "decltype",    "noexcept",
                                               "typeof",        "typeof_unqual"};

constexpr bool isWord(int kind) { return kind == Identifier || (kind >= KeywordClass && kind <= KeywordVoid); }

constexpr bool isTypeWord(int kind) {
    return startsData(kind) || isClassKey(kind) || kind == KeywordSigned || kind == KeywordUnsigned ||
           kind == KeywordEnum || kind == KeywordTypename;
}

// A word that says how something is declared, and not of which type.
constexpr bool isStorageWord(int kind) {
    switch (kind) {
        case KeywordStatic:
        case KeywordInline:
        case KeywordExtern:
        case KeywordVirtual:
        case KeywordExplicit:
        case KeywordFriend:
        case KeywordExport:
        case KeywordTypedef: return true;
        default: return false;
    }
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
        case KeywordEnum: return true;
        default: return isStorageWord(kind) || isAccessKeyword(kind);
    }
}

constexpr bool isJoiningOperator(int kind) {
    return kind == LogicalAnd || kind == LogicalOr || kind == Exclamation;
}

// A token behind the "}" of a list of values.
constexpr bool followsValue(int kind) {
    return (kind >= Semicolon && kind <= ArrowAsterisk && kind != OpenBrace && kind != CloseBrace &&
            kind != Tilde && kind != Exclamation) ||
           kind == CloseBrace;
}

}  // namespace

bool takesArgument(const Trn::Token& word) {
    if (word.kind == KeywordExplicit) return true;
    if (word.kind != Identifier) return false;
    return std::ranges::find(kArgumentWords, word.text) != std::end(kArgumentWords) ||
           isAttributeWord(word.text);
}

bool isUpperCase(std::string_view word) {
    return std::ranges::none_of(word, [](char c) { return c >= 'a' && c <= 'z'; });
}

// What has been read of a declaration.
struct ItemScanner::Progress {
    Index previous = kNone;   // the last token that is no comment
    int typeWords = 0;        // words in front of the last one that are no specifiers
    int lastWords = 0;        // 1 when the last word may be the name, or a part of the type
    int wordsBehindKey = 0;   // since the class key
    bool sawOperator = false;
    bool sawEnum = false;
    bool sawClassKey = false;
    bool sawColon = false;

    void takeWord(int kind) {
        if (isStorageWord(kind)) return;
        typeWords += lastWords;
        lastWords = 1;
        ++wordsBehindKey;
    }
    // The last word and its argument are a specifier.
    void takeSpecifier() { lastWords = 0; }
    // Only specifiers stand in front of the name.
    bool isAlone() const { return typeWords == 0 && !sawOperator; }
};

ItemScanner::Index ItemScanner::behind(Index place) const {
    switch (kind(place)) {
        case OpenParen:
        case OpenBracket:
        case OpenBrace:
        case Less:
            if (const Index close = links_.partner(place); close != kNone) return next(close);
            [[fallthrough]];
        default: return next(place);
    }
}

bool ItemScanner::startsLaterLine(Index place, Index than) const {
    return tokens_.at(place).start.line > tokens_.at(than).end.line;
}

bool ItemScanner::opensAttribute(Index place) const {
    if (kind(place) != OpenBracket || kind(place + 1) != OpenBracket) return false;
    const Index inner = links_.partner(place + 1);
    return inner != kNone && links_.partner(place) == inner + 1;
}

ItemScanner::Index ItemScanner::behindAnnotations(Index place) const {
    while (true) {
        if (opensAttribute(place)) {
            place = behind(place);
        } else if (takesArgument(tokens_.at(place)) && kind(next(place)) == OpenParen) {
            place = behind(next(place));
        } else {
            return place;
        }
    }
}

// A ";" or a brace ends a declaration even where a "<" before it found no ">": it was a comparison then.
Item ItemScanner::scanDeclaration(Index start, const ItemContext& context, Index& noBraceBefore) const {
    using Shape = Item::Shape;
    Progress seen;
    Index place = links_.significant(start);
    const auto found = [&](Shape shape) {
        noBraceBefore = std::max(noBraceBefore, place);
        return Item{shape, place, 0};
    };
    if (findsMacros_ && isWordMacro(place)) return {Shape::Macro, place + 1, 0};
    while (true) {
        const int kindHere = kind(place);
        Index following = behind(place);
        switch (kindHere) {
            case Trn::kEndKind:
            case CloseBrace: return found(Shape::None);
            case Unknown:
            case Semicolon: return found(Shape::Data);
            case OpenBrace:
                if (seen.sawEnum) return found(Shape::Enum);
                if (makesClass(place)) return found(Shape::Class);
                return found(isBraceInitializer(place, seen) ? Shape::Data : Shape::Class);
            case KeywordPublic:
            case KeywordProtected:
            case KeywordPrivate:
                // Behind a ":" it belongs to a base class, if only a class body follows.
                if (!seen.sawColon || place < noBraceBefore) return found(Shape::Data);
                break;
            case Assign: return found(Shape::Data);
            case KeywordOperator:
                seen.sawOperator = true;
                following = behindOperatorName(place);
                break;
            case OpenParen:
                if (auto item = scanParenthesis(place, seen, context)) {
                    noBraceBefore = std::max(noBraceBefore, place);
                    return *item;
                }
                seen.takeSpecifier();
                break;
            case KeywordEnum: seen.sawEnum = true; break;
            case Colon:
                seen.sawColon = true;
                seen.sawClassKey |= makesClass(place);
                break;
            default:
                if (isClassKey(kindHere)) {
                    seen.sawClassKey = true;
                    seen.wordsBehindKey = 0;
                } else if (isWord(kindHere)) {
                    seen.takeWord(kindHere);
                }
        }
        seen.previous = place;
        place = following;
    }
}

// A ":" in front of base classes, or a "{" in front of members: a macro is the class key in front of the name, should
// there be none.
bool ItemScanner::makesClass(Index end) const {
    if (kind(end) == Colon) return isAccessKeyword(kind(next(end)));
    // Behind a slice of the tokens stands the text of what follows it.
    return kind(end) == OpenBrace && links_.holdsStatements(end) && tokens_.at(behind(end)).text == ";";
}

// The role of a group in parentheses. Nothing when it is part of what stands in front of the declared name, or of a
// class's name or bases.
std::optional<Item> ItemScanner::scanParenthesis(Index open, const Progress& seen, const ItemContext& context) const {
    using Shape = Item::Shape;
    const Item function{Shape::Function, open, open};
    const Index close = links_.partner(open);
    if (close == kNone) return function;
    const bool followsWord = seen.previous != kNone && isWord(kind(seen.previous));
    const Trn::Token name = followsWord ? tokens_.at(seen.previous) : Trn::Token();
    if (followsWord && takesArgument(name)) return std::nullopt;
    if (seen.sawColon) {
        if (seen.sawClassKey || seen.sawEnum) return std::nullopt;
        return Item{Shape::Data, open, 0};
    }
    const Index following = next(close);
    const int followingKind = kind(following);
    if (opensPointerDeclarator(open, following, seen)) {
        return declaresFunction(open) ? Item{Shape::Function, open, following} : Item{Shape::FunctionPointer, open, 0};
    }
    const bool isInClassName = seen.sawClassKey && seen.wordsBehindKey <= 1;
    if (isInClassName && (followingKind == Identifier || followingKind == OpenBrace || followingKind == Colon)) {
        return std::nullopt;
    }
    if (followingKind == OpenParen) {
        const HeadTail tail = scanTailOf(following);
        const bool hasBody = tail.isComplete && kind(tail.end) == OpenBrace;
        return hasBody ? Item{Shape::Function, open, following} : Item{Shape::FunctionPointer, open, 0};
    }
    const HeadTail tail = scanTailOf(open);
    if (tail.oldParameters != kNone) return function;
    const bool isLater = startsLaterLine(following, close);
    const bool isSpecial = name.text.starts_with('~') || isScopedName(name) || name.text == context.className;
    if (seen.isAlone() && followsWord && !isSpecial && name.kind == Identifier) {
        const bool isTail = isQualifier(followingKind) || followingKind == KeywordThrow || followingKind == KeywordTry;
        const bool endsHere = followingKind == CloseBrace || followingKind == Trn::kEndKind;
        const bool beginsItem = isWord(followingKind) || opensAttribute(following);
        if (findsMacros_ && (endsHere || (isLater && beginsItem && !(isTail && tail.isComplete)))) {
            return Item{Shape::Macro, close + 1, 0};
        }
        const bool continuesType = isWord(followingKind) || followingKind == Asterisk || followingKind == Ampersand;
        if (!isLater && continuesType && !(isTail && tail.isComplete)) {
            const bool isTailWord = followingKind == Identifier && kind(behindAnnotations(next(following))) == OpenBrace;
            if (!isTailWord) return std::nullopt;
        }
        return function;
    }
    const bool namesMacro = followsWord && isUpperCase(name.text);
    const Trn::Token word = tokens_.at(following);
    if (namesMacro && !isLater && (isTypeWord(word.kind) || (word.kind == Identifier && !isUpperCase(word.text)))) {
        const bool isTailWord = isQualifier(word.kind) || word.text == "noexcept" || word.text == "override" ||
                                word.text == "final" || word.text == "requires";
        if (!isTailWord) return std::nullopt;
    }
    return function;
}

// At a "(" whether it opens a declarator with a pointer mark inside.
bool ItemScanner::opensPointerDeclarator(Index open, Index behindGroup, const Progress& seen) const {
    const Index inside = next(open);
    const int first = kind(inside);
    const int second = kind(next(inside));
    if (first == Asterisk) return true;
    const bool followsMark = seen.previous != kNone && kind(seen.previous) == Asterisk;
    if (!seen.sawOperator && followsMark && !(first == Identifier && second == Asterisk)) return true;
    const int followingKind = kind(behindGroup);
    const bool mayFollow = followingKind == OpenParen || followingKind == OpenBracket ||
                           followingKind == Semicolon || followingKind == Assign;
    if (!mayFollow || seen.lastWords == 0 || seen.sawOperator) return false;
    if (first == Ampersand || first == LogicalAnd || first == Caret) return true;
    // void f(A* a) = 0
    if (followingKind == Assign && seen.typeWords > 0) return false;
    // (CALL * name)(…), (A::* name)(…)
    return first == Identifier && (second == Asterisk || second == Caret) && followingKind != Semicolon;
}

// `int (*f(int a))(int) {`: whether the declarator has parameters of its own, and a body follows.
bool ItemScanner::declaresFunction(Index open) const {
    const Index close = links_.partner(open);
    if (close == kNone || kind(next(close)) != OpenParen) return false;
    Index previous = open;
    for (Index place = next(open); place < close; previous = place, place = behind(place)) {
        if (kind(place) != OpenParen || kind(previous) != Identifier) continue;
        const HeadTail tail = scanTail(behind(next(close)));
        return tail.isComplete && kind(tail.end) == OpenBrace;
    }
    return false;
}

// A word by itself in its line, when what follows is complete without it.
bool ItemScanner::isWordMacro(Index place) const {
    const Trn::Token word = tokens_.at(place);
    if (word.kind != Identifier || isScopedName(word)) return false;
    const Index following = next(place);
    const int followingKind = kind(following);
    if (followingKind == CloseBrace || followingKind == Trn::kEndKind) return true;
    if (followingKind == KeywordNamespace || isAccessKeyword(followingKind)) return true;
    if (!startsLaterLine(following, place)) return false;
    if (onlyBeginsDeclarations(followingKind) || opensAttribute(following)) return true;
    return isUpperCase(word.text) && isWord(followingKind) && isCompleteDeclaration(following);
}

// Whether the words at the place are a type and a name, or a statement.
bool ItemScanner::isCompleteDeclaration(Index place) const {
    if (isControlKeyword(kind(place)) || isJumpKeyword(kind(place)) || kind(place) == KeywordCase) return true;
    if (tokens_.at(place).text.starts_with('~')) return true;
    int words = 0;
    Index previous = place;
    for (Index here = place;; previous = here, here = behind(here)) {
        const int kindHere = kind(here);
        if (isWord(kindHere)) {
            ++words;
        } else if (kindHere == OpenParen) {
            if (takesArgument(tokens_.at(previous))) continue;
            return words > 1 || (words == 1 && isUpperCase(tokens_.at(previous).text));
        } else if (kindHere != Asterisk && kindHere != Ampersand && kindHere != Less && kindHere != LogicalAnd) {
            return words > 1;
        }
    }
}

ItemScanner::Index ItemScanner::behindOperatorName(Index place) const {
    Index here = next(place);
    const int first = kind(here);
    if (first == OpenParen || first == OpenBracket) return behind(here);
    if (first == KeywordNew || first == KeywordDelete) {
        here = next(here);
        return kind(here) == OpenBracket ? behind(here) : here;
    }
    const bool isSign = first >= Comma && first <= ArrowAsterisk && first != OpenBrace && first != CloseBrace;
    if (isSign) return next(here);
    while (kind(here) != OpenParen && kind(here) != Semicolon && kind(here) != OpenBrace &&
           kind(here) != CloseBrace && !endsTokens(kind(here))) {
        here = behind(here);
    }
    return here;
}

HeadTail ItemScanner::scanTailOf(Index openParen) const {
    const Index close = links_.partner(openParen);
    const Index following = next(close);
    if (const Index body = oldStyleBody(openParen, following); body != kNone) {
        HeadTail tail;
        tail.end = body;
        tail.oldParameters = following;
        return tail;
    }
    return scanTail(following);
}

// Any run of words with or without arguments, attributes, marks, a trailing return type, conditions,
// `= 0`, `= default`, `= delete`, and the initializers of a constructor.
HeadTail ItemScanner::scanTail(Index place) const {
    HeadTail tail;
    bool isInType = false;  // of a trailing return
    const auto stop = [&](bool isComplete) {
        tail.end = place;
        tail.isComplete = isComplete;
        return tail;
    };
    while (true) {
        const Trn::Token token = tokens_.at(place);
        switch (token.kind) {
            case OpenBrace:
            case CloseBrace:
            case Semicolon:
            case Comma:
            case KeywordPublic:
            case KeywordProtected:
            case KeywordPrivate:
            case Unknown:
            case Trn::kEndKind: return stop(true);
            case Assign: {
                const Index value = next(place);
                const bool isZero = kind(value) == Number && tokens_.at(value).text == "0";
                if (!isZero && kind(value) != KeywordDefault && kind(value) != KeywordDelete) return stop(false);
                place = next(value);
                continue;
            }
            case Colon:
                tail.initializers = place;
                place = behindInitializers(place);
                continue;
            case Arrow: isInType = true; break;
            case OpenBracket:
            case Ampersand:
            case LogicalAnd:
            case Asterisk:
            case KeywordTry:
            case KeywordAsm:
            case KeywordMutable:
            case KeywordStatic:
            case KeywordConst:
            case KeywordVolatile: break;
            case KeywordThrow:
                if (kind(next(place)) != OpenParen) tail.brokenThrow = place;
                break;
            case Less:
            case OpenParen:
            case Dot:
            case ShiftRight:
                if (!isInType) return stop(false);
                break;
            case Identifier:
                if (token.text == "requires") {
                    place = behindRequires(place);
                    continue;
                }
                break;
            default:
                if (!isInType || !isWord(token.kind)) return stop(false);
        }
        const bool isWordHere = isWord(token.kind);
        place = behind(place);
        if (isWordHere && kind(place) == OpenParen) place = behind(place);
    }
}

// Behind `: a(1), b{2}`, where the body begins.
ItemScanner::Index ItemScanner::behindInitializers(Index colon) const {
    Index place = next(colon);
    while (true) {
        bool sawName = false;
        while (isWord(kind(place)) || (kind(place) == Less && links_.partner(place) != kNone)) {
            const bool hasArgument = takesArgument(tokens_.at(place));
            place = behind(place);
            if (hasArgument && kind(place) == OpenParen) place = behind(place);
            sawName = true;
        }
        const int following = kind(behind(place));
        const bool isBraced = kind(place) == OpenBrace && sawName &&
                              (following == Comma || following == OpenBrace || following == Dot);
        if (kind(place) == OpenParen || isBraced) place = behind(place);
        while (kind(place) == Dot) place = next(place);
        if (kind(place) != Comma) break;
        place = next(place);
    }
    while (kind(place) != OpenBrace && kind(place) != Semicolon && kind(place) != Trn::kEndKind &&
           kind(place) != CloseBrace) {
        place = behind(place);
    }
    return place;
}

// `f(a, b) int a; char *b; {`: the "{", where names and nothing else stand in the parentheses, and declarations of
// these follow.
ItemScanner::Index ItemScanner::oldStyleBody(Index open, Index behindGroup) const {
    if (!isWord(kind(behindGroup))) return kNone;
    std::vector<std::string_view> names;
    const Index close = links_.partner(open);
    for (Index place = next(open); place < close; place = next(place)) {
        const Trn::Token token = tokens_.at(place);
        if (token.kind == Identifier && names.size() < kMaximumOldParameters) {
            names.push_back(token.text);
        } else if (token.kind != Comma) {
            return kNone;
        }
    }
    bool declaresName = false;
    Index place = behindGroup;
    for (std::size_t count = 0; count <= names.size();) {
        const Trn::Token token = tokens_.at(place);
        switch (token.kind) {
            case Semicolon:
                if (!declaresName) return kNone;
                declaresName = false;
                ++count;
                if (kind(next(place)) == OpenBrace) return next(place);
                break;
            case OpenParen:
                if (kind(next(place)) != Asterisk && kind(next(place)) != CloseParen) return kNone;
                for (Index inside = next(place); inside < links_.partner(place); inside = next(inside)) {
                    declaresName |= std::ranges::find(names, tokens_.at(inside).text) != names.end();
                }
                break;
            case Asterisk:
            case Comma:
            case OpenBracket: break;
            default:
                if (!isWord(token.kind)) return kNone;
                declaresName |= std::ranges::find(names, token.text) != names.end();
        }
        place = behind(place);
    }
    return kNone;
}

ItemScanner::Index ItemScanner::behindRequires(Index place) const {
    place = next(place);
    while (true) {
        while (kind(place) == Exclamation) place = next(place);
        if (tokens_.at(place).text == "requires") {
            place = next(place);
            if (kind(place) == OpenParen) place = behind(place);
            if (kind(place) == OpenBrace) place = behind(place);
        } else if (kind(place) == OpenParen || isWord(kind(place))) {
            const bool isName = kind(place) == Identifier;
            const bool hasArgument = takesArgument(tokens_.at(place));
            place = behind(place);
            if (hasArgument && kind(place) == OpenParen) place = behind(place);
            while (isName && (kind(place) == Less || isScopedName(tokens_.at(place)))) place = behind(place);
        }
        if (!isJoiningOperator(kind(place))) return place;
        place = next(place);
    }
}

std::optional<ItemScanner::Index> ItemScanner::lambdaBody(Index openBracket) const {
    if (links_.partner(openBracket) == kNone || opensAttribute(openBracket)) return std::nullopt;
    Index place = behind(openBracket);
    if (kind(place) == Less) place = behind(place);
    if (tokens_.at(place).text == "requires") place = behindRequires(place);
    place = behindAnnotations(place);
    if (kind(place) == OpenParen) place = behind(place);
    const HeadTail tail = scanTail(place);
    if (kind(tail.end) != OpenBrace || tail.initializers != kNone) return std::nullopt;
    return tail.end;
}

bool ItemScanner::holdsValues(Index openBrace, Index previous) const {
    if (links_.partner(openBrace) == kNone) return false;
    const int followingKind = kind(behind(openBrace));
    switch (previous == kNone ? Trn::kEndKind : kind(previous)) {
        case Assign:
        case Comma:
        case OpenParen:
        case KeywordReturn: return true;
        case Identifier:
        case Greater:
        case CloseBracket:
        case CloseParen:
            return !links_.holdsStatements(openBrace) && followsValue(followingKind);
        default: break;
    }
    const int before = previous == kNone ? Trn::kEndKind : kind(previous);
    if (before >= KeywordChar && before <= KeywordVoid) {
        return !links_.holdsStatements(openBrace) && followsValue(followingKind);
    }
    return before >= Semicolon && before <= ArrowAsterisk && before != Semicolon && before != Colon &&
           before != OpenBrace && before != CloseBrace && !links_.holdsStatements(openBrace);
}

// `int a{1};`, `A b[2]{};`: the values of what is declared.
bool ItemScanner::isBraceInitializer(Index brace, const Progress& seen) const {
    const int following = kind(behind(brace));
    const bool mayFollow = following == Semicolon || following == Comma;
    if (seen.previous == kNone || links_.partner(brace) == kNone || links_.holdsStatements(brace) || !mayFollow) {
        return false;
    }
    if (seen.sawClassKey) return false;
    if (seen.sawColon) return true;
    const int before = kind(seen.previous);
    if (before == Identifier) return seen.typeWords + seen.lastWords > 1;
    return before == OpenBracket || before == Less;
}

bool ItemScanner::startsWithSpecifier(Index name) const {
    const Index open = next(name);
    if (kind(open) != OpenParen || links_.partner(open) == kNone) return false;
    Index place = behind(open);
    if (startsLaterLine(place, links_.partner(open))) return false;
    if (isTypeWord(kind(place))) return true;
    while (kind(place) == Asterisk || kind(place) == Ampersand) place = next(place);
    if (kind(place) != Identifier) return false;
    const int following = kind(next(place));
    return following == Assign || following == Semicolon || following == Comma || following == OpenBracket;
}

Item ItemScanner::scanMacroStatement(Index start) const {
    using Shape = Item::Shape;
    if (!findsMacros_) return {};
    const Trn::Token word = tokens_.at(start);
    if (word.kind != Identifier || isScopedName(word) || takesArgument(word) || isAssemblerWord(word.text)) return {};
    Index following = next(start);
    if (kind(following) == OpenBrace) {
        return links_.holdsStatements(following) || !followsValue(kind(behind(following)))
                   ? Item{Shape::MacroHead, following, 0}
                   : Item{};
    }
    if (kind(following) != OpenParen) {
        const bool isMacro = isWordMacro(start) || isFollowedByCall(start, following);
        return isMacro ? Item{Shape::Macro, start + 1, 0} : Item{};
    }
    const Index close = links_.partner(following);
    if (close == kNone) return {};
    following = next(close);
    if (kind(following) == CloseBrace || kind(following) == Trn::kEndKind) return {Shape::Macro, close + 1, 0};
    if (kind(following) == OpenBrace) {
        const bool isBlock = links_.holdsStatements(following) || !followsValue(kind(behind(following)));
        return isBlock ? Item{Shape::MacroHead, following, 0} : Item{};
    }
    if (isFollowedByStatement(start, links_.partner(close))) return {Shape::MacroStatement, following, 0};
    const bool isLater = startsLaterLine(following, close);
    if (isLater && (isWord(kind(following)) || opensAttribute(following))) return {Shape::Macro, close + 1, 0};
    return {};
}

// Whether a word by itself in its line has a statement behind it that no declaration begins like.
bool ItemScanner::isFollowedByCall(Index word, Index following) const {
    if (!startsLaterLine(following, word) || kind(following) != Identifier) return false;
    switch (kind(next(following))) {
        case OpenParen:
        case Dot:
        case Arrow:
        case PlusAssign:
        case MinusAssign:
        case BarAssign:
        case AmpersandAssign:
        case Increment:
        case Decrement: return true;
        case Assign: return isUpperCase(tokens_.at(word).text);
        default: return false;
    }
}

// Whether what follows a macro and its arguments is the statement that it governs: on their line, or on the next one
// and indented further.
bool ItemScanner::isFollowedByStatement(Index head, Index open) const {
    const Index close = links_.partner(open);
    const Index following = next(close);
    const Trn::Token first = tokens_.at(following);
    if (startsLaterLine(following, close)) return first.kind == Identifier && isIndentedFrom(head, open, following);
    if (isControlKeyword(first.kind)) return first.kind != KeywordElse && first.kind != KeywordCatch;
    if (isJumpKeyword(first.kind)) return true;
    if (first.kind != Identifier) return false;
    switch (kind(next(following))) {
        case OpenParen:
        case Dot:
        case Arrow:
        case Increment:
        case Decrement:
        case PlusAssign: return true;
        default: return false;
    }
}

// Whether the line after the one that begins with the macro has the same white space in front, and more. Columns would
// not do: how wide a tab is, only the scheme knows.
bool ItemScanner::isIndentedFrom(Index head, Index open, Index following) const {
    const Trn::Token bracket = tokens_.at(open);
    const char* const source = bracket.text.data() - bracket.offset;
    const auto lineStart = [source](const Trn::Token& token) {
        const std::size_t length = token.start.column - 1;
        return std::string_view(source + token.offset - length, length);
    };
    const std::string_view outer = lineStart(tokens_.at(head));
    const std::string_view inner = lineStart(tokens_.at(following));
    return inner.size() > outer.size() && inner.starts_with(outer) &&
           inner.find_first_not_of(" \t") == std::string_view::npos;
}

}  // namespace Cpp
