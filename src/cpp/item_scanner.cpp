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

// More macros in a row than anyone writes at the end of a body, for the same reason.
constexpr int kMaximumMacroRun = 16;

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

// Whether no item goes on at a token of the kind.
constexpr bool endsStatements(int kind) {
    return kind == CloseBrace || kind == KeywordElse || kind == KeywordCatch || kind == KeywordCase ||
           kind == Trn::kEndKind;
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
    bool sawTypedef = false;
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
            if (const Index close = links_.closing(place); close != kNone) return next(close);
            [[fallthrough]];
        default: return next(place);
    }
}

bool ItemScanner::startsLaterLine(Index place, Index than) const {
    return tokens_.at(place).start.line > tokens_.at(than).end.line;
}

bool ItemScanner::opensAttribute(Index place) const {
    if (kind(place) != OpenBracket || kind(place + 1) != OpenBracket) return false;
    const Index inner = links_.closing(place + 1);
    return inner != kNone && links_.closing(place) == inner + 1;
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
            case KeywordTypedef: seen.sawTypedef = true; break;
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
    const Index close = links_.closing(open);
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
    if (findsMacros_ && followingKind == Colon && makesClass(following)) return std::nullopt;
    if (opensPointerDeclarator(open, following, seen)) {
        return declaresFunction(open) ? Item{Shape::Function, open, following} : Item{Shape::FunctionPointer, open, 0};
    }
    if (holdsClassKey(open) && followingKind == Identifier) return std::nullopt;
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
    const bool hasValue = followingKind == Assign && !tail.isComplete && endsValue(following);
    if (findsMacros_ && hasValue && followsWord && !seen.sawOperator) return Item{Shape::Data, open, 0};
    const bool isLater = startsLaterLine(following, close);
    const bool isQualified = name.text.find("::") != std::string_view::npos;
    const bool isSpecial = name.text.starts_with('~') || isQualified || name.text == context.className;
    if (seen.isAlone() && followsWord && !isSpecial && name.kind == Identifier) {
        const bool isTail = isQualifier(followingKind) || followingKind == KeywordThrow || followingKind == KeywordTry;
        const bool endsHere = followingKind == CloseBrace || followingKind == Trn::kEndKind;
        const bool beginsItem = isWord(followingKind) || opensAttribute(following);
        const bool endsLine = isLater && beginsItem && !beginsBases(following);
        if (findsMacros_ && (endsHere || (endsLine && !(isTail && tail.isComplete)))) {
            return Item{Shape::Macro, close + 1, 0};
        }
        const bool isMark = followingKind == Asterisk || followingKind == Ampersand;
        const bool continuesType = isMark || (!isLater && isWord(followingKind)) || beginsBases(following);
        if (continuesType && !(isTail && tail.isComplete)) {
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

// `ALIGNED(class) A {`: whether a class key is all that stands in the parentheses.
bool ItemScanner::holdsClassKey(Index open) const {
    const Index inside = next(open);
    return isClassKey(kind(inside)) && kind(next(inside)) == CloseParen;
}

// At a "(" whether it opens a declarator with a pointer mark inside.
bool ItemScanner::opensPointerDeclarator(Index open, Index behindGroup, const Progress& seen) const {
    const Index inside = next(open);
    const int first = kind(inside);
    const int second = kind(next(inside));
    if ((first == Asterisk || first == Caret) && isListOfPointers(next(inside))) return false;
    if (first == Asterisk) return true;
    const bool followsMark = seen.previous != kNone && kind(seen.previous) == Asterisk;
    if (!seen.sawOperator && followsMark && !(first == Identifier && second == Asterisk)) return true;
    const int followingKind = kind(behindGroup);
    // A macro may stand in front of the parameters.
    const bool isMacro = findsMacros_ && seen.sawTypedef && followingKind == Identifier;
    const bool mayFollow = followingKind == OpenParen || followingKind == OpenBracket ||
                           followingKind == Semicolon || followingKind == Assign || isMacro;
    if (!mayFollow || seen.lastWords == 0 || seen.sawOperator) return false;
    if (first == Ampersand || first == LogicalAnd || first == Caret) return true;
    // void f(A* a) = 0
    if (followingKind == Assign && seen.typeWords > 0) return false;
    // (CALL * name)(…), (A::* name)(…)
    return first == Identifier && (second == Asterisk || second == Caret) && followingKind != Semicolon;
}

// `M(*, a)`, `M(*p, a)`: no declarator has a comma.
bool ItemScanner::isListOfPointers(Index inside) const {
    while (kind(inside) == Asterisk || isWord(kind(inside))) inside = next(inside);
    return kind(inside) == Comma;
}

// `int (*f(int a))(int) {`, `int* (f)(int) {`: whether the declarator is a name, or has parameters of its own, and a
// body follows.
bool ItemScanner::declaresFunction(Index open) const {
    const Index close = links_.closing(open);
    if (close == kNone || kind(next(close)) != OpenParen) return false;
    const auto hasBody = [&] {
        const HeadTail tail = scanTailOf(next(close));
        return tail.isComplete && kind(tail.end) == OpenBrace;
    };
    if (kind(next(open)) == Identifier && next(next(open)) == close) return hasBody();
    Index previous = open;
    for (Index place = next(open); place < close; previous = place, place = behind(place)) {
        if (kind(place) == OpenParen && kind(previous) == Identifier) return hasBody();
    }
    return false;
}

// `A : public B`: the name and the bases of a class whose key a macro in front makes.
bool ItemScanner::beginsBases(Index name) const {
    const Index colon = next(name);
    return kind(name) == Identifier && kind(colon) == Colon && isAccessKeyword(kind(next(colon)));
}

// Whether a ";" ends what the "=" introduces, should that be a list in braces.
bool ItemScanner::endsValue(Index assign) const {
    const Index value = next(assign);
    return kind(value) != OpenBrace || kind(behind(value)) == Semicolon;
}

// A word by itself in its line, when what follows is complete without it.
bool ItemScanner::isWordMacro(Index place) const {
    const Trn::Token word = tokens_.at(place);
    if (word.kind != Identifier || isScopedName(word)) return false;
    const Index following = next(place);
    const int followingKind = kind(following);
    if (endsStatements(followingKind)) return true;
    if (followingKind == KeywordNamespace || isAccessKeyword(followingKind)) return true;
    if (!startsLaterLine(following, place)) return false;
    if (onlyBeginsDeclarations(followingKind) || opensAttribute(following)) return true;
    if (!isUpperCase(word.text) || !isWord(followingKind)) return false;
    return isCompleteDeclaration(following) || endsInWordMacros(following);
}

// Whether nothing but words that may be macros, each in a line of its own, stands up to the end of the body or the text.
bool ItemScanner::endsInWordMacros(Index place) const {
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

// Whether the words at the place are a type and a name, or a statement.
bool ItemScanner::isCompleteDeclaration(Index place) const {
    if (isControlKeyword(kind(place)) || isJumpKeyword(kind(place)) || kind(place) == KeywordCase) return true;
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
        } else if (kindHere != Asterisk && kindHere != Ampersand && kindHere != Less && kindHere != LogicalAnd) {
            return false;
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
    const Index close = links_.closing(openParen);
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
        while (isWord(kind(place)) || (kind(place) == Less && links_.closing(place) != kNone)) {
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
    const Index close = links_.closing(open);
    for (Index place = next(open); place < close; place = next(place)) {
        const Trn::Token token = tokens_.at(place);
        if (token.kind == Identifier && names.size() < kMaximumOldParameters) {
            names.push_back(token.text);
        } else if (token.kind != Comma) {
            return kNone;
        }
    }
    bool declaresName = false;
    bool isMacroRun = false;  // since the last ";"
    Index place = behindGroup;
    for (std::size_t count = 0; count <= names.size();) {
        const Trn::Token token = tokens_.at(place);
        switch (token.kind) {
            case Semicolon:
                if (!declaresName) return kNone;
                declaresName = false;
                isMacroRun = true;
                ++count;
                if (kind(next(place)) == OpenBrace) return next(place);
                break;
            case OpenParen:
                if (kind(next(place)) != Asterisk && kind(next(place)) != CloseParen && kind(next(place)) != OpenParen) {
                    return kNone;
                }
                for (Index inside = next(place); inside < links_.closing(place); inside = next(inside)) {
                    declaresName |= std::ranges::find(names, tokens_.at(inside).text) != names.end();
                }
                break;
            case Asterisk:
            case Comma:
            case OpenBracket: break;
            case OpenBrace:
                // Macros may stand for the last declarations, with their ";".
                return count > 0 && isMacroRun ? place : kNone;
            default:
                if (!isWord(token.kind)) return kNone;
                isMacroRun &= token.kind == Identifier;
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
    if (links_.closing(openBracket) == kNone || opensAttribute(openBracket)) return std::nullopt;
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
    if (links_.closing(openBrace) == kNone) return false;
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
    if (seen.previous == kNone || links_.closing(brace) == kNone || links_.holdsStatements(brace) || !mayFollow) {
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
    if (kind(open) != OpenParen || links_.closing(open) == kNone) return false;
    Index place = behind(open);
    if (startsLaterLine(place, links_.closing(open))) return false;
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
    const Index open = next(start);
    if (kind(open) == OpenBrace) return scanMacroHead(open);
    if (kind(open) != OpenParen) {
        const bool isMacro = isWordMacro(start) || isFollowedByCall(start, open);
        return isMacro ? Item{Shape::Macro, start + 1, 0} : Item{};
    }
    const Index close = links_.closing(open);
    if (close == kNone) return {};
    const Index following = next(close);
    if (endsStatements(kind(following))) return {Shape::Macro, close + 1, 0};
    if (kind(following) == OpenBrace) return scanMacroHead(following);
    const bool isLater = startsLaterLine(following, close);
    if (!isLater) return beginsPlainStatement(following) ? Item{Shape::MacroHead, following, 0} : Item{};
    const bool begins = beginsPlainStatement(following) || beginsUnclearStatement(following);
    if (begins && isIndentedFrom(start, following)) return {Shape::MacroHead, following, 0};
    const bool beginsItem = begins || isWord(kind(following)) || opensAttribute(following);
    return beginsItem ? Item{Shape::Macro, close + 1, 0} : Item{};
}

// The head of the block whose "{" is at the place, unless values stand in it.
Item ItemScanner::scanMacroHead(Index openBrace) const {
    const bool isBlock = links_.holdsStatements(openBrace) || !followsValue(kind(behind(openBrace)));
    return isBlock ? Item{Item::Shape::MacroHead, openBrace, 0} : Item{};
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

// Whether a statement begins at the place that is one behind a macro on the same line too.
bool ItemScanner::beginsPlainStatement(Index place) const {
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
        case PlusAssign: return true;
        default: return false;
    }
}

// One that, were it on the same line as the macro, would be taken for a part of a declaration or an expression.
bool ItemScanner::beginsUnclearStatement(Index place) const {
    switch (kind(place)) {
        case Identifier:
        case Asterisk:
        case Increment:
        case Decrement: return true;
        default: return false;
    }
}

// Whether the line that begins with the token is indented further than that of the macro. A tab counts as 8 columns, as
// nearly everywhere; only the scheme knows.
bool ItemScanner::isIndentedFrom(Index head, Index following) const {
    constexpr std::size_t tabSize = 8;
    const Trn::Token word = tokens_.at(head);
    const char* const source = word.text.data() - word.offset;
    const auto indentation = [source](const Trn::Token& token) {
        const char* const start = source + token.offset;
        std::size_t column = 0;
        for (const char* c = start - (token.start.column - 1); c != start && (*c == ' ' || *c == '\t'); ++c) {
            column = *c == '\t' ? (column / tabSize + 1) * tabSize : column + 1;
        }
        return column;
    };
    return indentation(tokens_.at(following)) > indentation(tokens_.at(head));
}

}  // namespace Cpp
