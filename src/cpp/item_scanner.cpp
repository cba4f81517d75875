// Declarations, by the roles of their parentheses:
//
//     API(2) static int f(int a) const noexcept(true) {      a specifier, parameters, part of the tail
//     void (*handler)(int);                                  a declarator, parameters
//     class ALIGNED(8) A {                                   part of the class's name
//     REGISTER(f)                                            a macro that stands by itself
#include "cpp/item_scanner.h"

#include <algorithm>

#include "cpp/token_classes.h"
#include "cpp/token_kind.h"
#include "cpp/token_sets.h"
#include "cpp/words.h"

namespace Cpp {

// What has been read of a declaration.
struct ItemScanner::Progress {
    Index start = kNone;     // the first token
    Index previous = kNone;  // the last token that is no comment
    Index second = kNone;    // the one in front of that, but for what stands in brackets
    Index third = kNone;     // and the one in front of the second
    int typeWords = 0;       // words in front of the last one that are no specifiers
    int lastWords = 0;       // 1 when the last word may be the name, or a part of the type
    int wordsBehindKey = 0;  // since the class key
    bool sawOperator = false;
    bool sawEnum = false;
    bool sawTypedef = false;
    bool sawClassKey = false;
    bool sawColon = false;
    bool followsType = false;  // of ItemContext
    HeadTail tail;             // behind the last parentheses that have been looked behind

    void takeWord(int kind) {
        if (isStorageWord(kind)) return;
        typeWords += lastWords;
        lastWords = 1;
        ++wordsBehindKey;
    }
    // The last word and its argument are a specifier.
    void takeSpecifier() { lastWords = 0; }
    void pass(Index place) {
        third = second;
        second = previous;
        previous = place;
    }
    // Only specifiers stand in front of the name.
    bool isAlone() const { return typeWords == 0 && !sawOperator; }
};

// A ";" or a brace ends a declaration even where a "<" before it found no ">": it was a comparison then.
Item ItemScanner::scanDeclaration(Index start, const ItemContext& context, Index& noBraceBefore) const {
    using Shape = Item::Shape;
    Progress seen;
    Index place = links_.significant(start);
    seen.start = place;
    seen.followsType = context.followsType;
    const auto found = [&](Shape shape) {
        noBraceBefore = std::max(noBraceBefore, place);
        return Item{shape, place, 0};
    };
    if (findsMacros_ && context.scope == ItemContext::Scope::Outside) {
        if (const Index end = macros_.endOfClassHead(place); end != kNone) return {Shape::Class, end, 0};
    }
    if (findsMacros_ && macros_.isWordMacro(place)) return {Shape::Macro, place + 1, 0};
    while (true) {
        const int kindHere = kind(place);
        Index following = behind(place);
        switch (kindHere) {
            case Trn::kEndKind:
            case CloseBrace:
                return found(Shape::None);
            case Unknown:
            case Semicolon:
                return found(Shape::Data);
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
            case Assign:
                return found(Shape::Data);
            case Comma:
                if (isInFrontOfFunction(place, seen)) return found(Shape::Data);
                break;
            case Dot:
            case Arrow:
            case ShiftLeft:
                if (isStatement(place, seen, context)) return found(Shape::Statement);
                break;
            case KeywordOperator:
                seen.sawOperator = true;
                following = heads_.behindOperatorName(place);
                break;
            case OpenParen:
                if (auto item = scanParenthesis(place, seen, context)) {
                    noBraceBefore = std::max(noBraceBefore, place);
                    return *item;
                }
                seen.takeSpecifier();
                break;
            case KeywordIf:
            case KeywordElse:
            case KeywordFor:
            case KeywordDo:
            case KeywordWhile:
            case KeywordSwitch:
                if (findsMacros_) return found(Shape::None);
                break;
            case KeywordEnum:
                seen.sawEnum = true;
                break;
            case KeywordTypedef:
                seen.sawTypedef = true;
                break;
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
        // void f [[noreturn]] ();
        if (kindHere != OpenBracket || !opensAttribute(place)) seen.pass(place);
        place = following;
    }
}

// A ":" in front of base classes, or a "{" in front of members: a macro is the class key in front of the
// name, should there be none.
bool ItemScanner::makesClass(Index end) const {
    if (kind(end) == Colon) return isAccessKeyword(kind(next(end)));
    if (findsMacros_ && opensWithLabel(end)) return true;
    // Behind a slice of the tokens stands the text of what follows it.
    return kind(end) == OpenBrace && links_.holdsStatements(end) && tokens_.at(behind(end)).text == ";";
}

// The role of a group in parentheses. Nothing when it is part of what stands in front of the declared name,
// or of a class's name or bases.
std::optional<Item> ItemScanner::scanParenthesis(Index open, Progress& seen, const ItemContext& context) const {
    using Shape = Item::Shape;
    const Item function{Shape::Function, open, open};
    const Index close = links_.closing(open);
    if (close == kNone) return function;
    const bool followsWord = seen.previous != kNone && isWord(kind(seen.previous));
    const Trn::Token name = followsWord ? tokens_.at(seen.previous) : Trn::Token();
    if (followsWord && takesArgument(name)) return std::nullopt;
    if (findsMacros_ && name.text.starts_with("__") && marksItem(open)) return std::nullopt;
    if (findsMacros_ && followsWord && endsWithAssign(open)) return Item{Shape::Data, open, 0};
    if (seen.sawColon) {
        if (seen.sawClassKey || seen.sawEnum) return std::nullopt;
        return Item{Shape::Data, open, 0};
    }
    const Index following = next(close);
    const int followingKind = kind(following);
    if (findsMacros_ && followingKind == Colon && makesClass(following)) return std::nullopt;
    if (findsMacros_ && seen.isAlone() && opensWithLabel(following)) return std::nullopt;
    if (findsMacros_ && followingKind == Semicolon && holdsMarkedName(open) && followsTypedName(seen)) {
        return Item{Shape::Data, open, 0};
    }
    const bool endsItem = followingKind == Semicolon || followingKind == Assign;
    if (findsMacros_ && endsItem && kind(next(open)) == Ampersand && followsMacroOfName(seen)) {
        return Item{Shape::Data, open, 0};
    }
    if (opensPointerDeclarator(open, following, seen)) {
        const Index inside = findsMacros_ ? parametersOfArray(open) : kNone;
        if (inside != kNone) return Item{Shape::Function, open, inside};
        return declaresFunction(open) ? Item{Shape::Function, open, following}
                                      : Item{Shape::FunctionPointer, open, 0};
    }
    if (holdsClassKey(open) && followingKind == Identifier) return std::nullopt;
    const bool isInClassName = seen.sawClassKey && seen.wordsBehindKey <= 1;
    if (isInClassName &&
        (followingKind == Identifier || followingKind == OpenBrace || followingKind == Colon)) {
        return std::nullopt;
    }
    if (followingKind == OpenParen) {
        if (const Index end = behindMacroOfHeader(open, seen); end != kNone) return Item{Shape::Macro, end, 0};
        return heads_.hasBody(following) ? Item{Shape::Function, open, following}
                                         : Item{Shape::FunctionPointer, open, 0};
    }
    // int *f(int) attribute((pure)), *g(int);
    const bool mayBeFirst = name.kind == Identifier && seen.typeWords > 0 && !seen.sawOperator;
    if (findsMacros_ && mayBeFirst && kind(behindCalls(following)) == Comma) return Item{Shape::Data, open, 0};
    if (heads_.oldStyleTail(open)) return function;
    const bool hasValue = followingKind == Assign && !hasCompleteTail(open, seen) && endsValue(following);
    if (findsMacros_ && hasValue && followsWord && !seen.sawOperator) return Item{Shape::Data, open, 0};
    // HEAD(a, "b") "c";
    const bool isOutside = context.scope == ItemContext::Scope::Outside;
    if (findsMacros_ && isOutside && seen.isAlone() && endsInLiterals(following)) {
        return Item{Shape::Statement, open, 0};
    }
    // DECLARE_ALIGNED(8, int, a)[2] = {}
    if (findsMacros_ && isOutside && seen.isAlone() && holdsElements(following)) {
        return Item{Shape::Data, open, 0};
    }
    const bool isLater = startsLaterLine(following, close);
    const bool isQualified = name.text.find("::") != std::string_view::npos;
    const bool isSpecial = name.text.starts_with('~') || isQualified || name.text == context.className;
    if (seen.isAlone() && followsWord && !isSpecial && name.kind == Identifier) {
        if (findsMacros_ && isOutside && isCommaAtLineEnd(following)) {
            return Item{Shape::Macro, following + 1, 0};
        }
        const bool beginsTail = isQualifier(followingKind) || followingKind == KeywordThrow ||
                                followingKind == KeywordTry || (findsMacros_ && promisesNoThrow(following));
        const bool isTail = beginsTail && hasCompleteTail(open, seen);
        const bool endsHere = followingKind == CloseBrace || followingKind == Trn::kEndKind;
        const bool beginsItem = isWord(followingKind) || opensAttribute(following);
        // EXPORT(int)
        // f(int a) PURE;
        const bool isTyped = followsMacroCall(seen.start) && !isUpperCase(name.text);
        // module_exit(stop)
        // LICENSE("GPL");
        const bool isMacroBelow = isLater && kind(next(following)) == OpenParen;
        if (findsMacros_ && isTyped && !isMacroBelow && endOfAnnotations(following) != kNone) return function;
        // static DEFINE(name)
        //     aligned(64);
        const bool followsStorage = seen.second != kNone && isStorageWord(kind(seen.second));
        const bool isBelow = isLater && macros_.isIndentedFrom(seen.previous, following);
        const bool isBehind = !isLater && tokens_.at(following).text.starts_with("__");
        if (findsMacros_ && (followsStorage || isBelow || isBehind) && endsWithValue(following)) return function;
        // extern EXPORT(int)
        // f(int a);
        const bool declaresFunctionBelow =
            kind(next(following)) == OpenParen && kind(behind(next(following))) != OpenParen;
        const bool namesType =
            findsMacros_ && followsStorage && kind(seen.second) == KeywordExtern && declaresFunctionBelow;
        const bool goesOn = (isBelow && endsInAnnotations(following)) || (namesType && beginsItem);
        const bool endsLine = isLater && beginsItem && !beginsBases(following) && !goesOn;
        if (findsMacros_ && (endsHere || (endsLine && !isTail))) {
            return Item{Shape::Macro, close + 1, 0};
        }
        const bool isMark = followingKind == Asterisk || followingKind == Ampersand;
        const bool continuesType =
            isMark || ((!isLater || goesOn) && isWord(followingKind)) || beginsBases(following);
        if (continuesType && !isTail) {
            const bool isTailWord =
                followingKind == Identifier && kind(behindAnnotations(next(following))) == OpenBrace;
            if (!isTailWord) return std::nullopt;
        }
        return function;
    }
    const bool namesMacro = followsWord && isUpperCase(name.text);
    // const int PRIVATE(sizes)[] = {}
    const bool namesArrayOf = namesMacro && followingKind == OpenBracket && !opensAttribute(following);
    if (findsMacros_ && namesArrayOf && !seen.sawOperator) return Item{Shape::Data, open, 0};
    // API STACK_OF(int) *f(int a);
    if (findsMacros_ && namesMacro && followingKind == Asterisk && marksFunction(following)) return std::nullopt;
    // COMMON_HEADER BUFFER_INFO(u8)
    // u32 length;
    const bool mayEndMacros = followsWord && (namesMacro || name.text.starts_with("__"));
    const bool endsMacros = mayEndMacros && isLater && (followsMacro(seen) || followsNamesOnLines(seen));
    if (findsMacros_ && endsMacros && !macros_.isIndentedFrom(seen.previous, following) &&
        macros_.isCompleteDeclaration(following)) {
        return Item{Shape::Macro, close + 1, 0};
    }
    const Trn::Token word = tokens_.at(following);
    const bool endsData = followingKind == Semicolon || (word.kind == Identifier && isUpperCase(word.text));
    const bool holdsParameters = kind(next(open)) == OpenParen;
    if (findsMacros_ && endsData && !holdsParameters && followsDeclaredName(seen)) return Item{Shape::Data, open, 0};
    if (findsMacros_ && namesMacro && beginsBases(following)) return std::nullopt;
    // char aligned(16) bytes[] = {}
    const bool namesArray = word.kind == Identifier && kind(next(following)) == OpenBracket;
    if (findsMacros_ && namesArray && !opensAttribute(next(following))) return std::nullopt;
    const bool namesFunction = word.kind == Identifier && kind(next(following)) == OpenParen;
    if (namesMacro && isLater && namesFunction && heads_.hasBody(next(following))) return std::nullopt;
    // void PRINTF(1, 2)
    // log(const char *format, ...);
    const bool isDeclared = followsType(seen) && kind(behind(next(following))) == Semicolon;
    const bool isPlainName = !isUpperCase(word.text) && !word.text.starts_with("__");
    if (findsMacros_ && namesMacro && isLater && namesFunction && isDeclared && isPlainName) return std::nullopt;
    // int size PARAMS((int a)) pure_function;
    const bool isMacroOfList =
        findsMacros_ && holdsParameters && seen.typeWords > 1 && kind(next(following)) == Semicolon;
    if (namesMacro && !isLater && !isMacroOfList &&
        (isTypeWord(word.kind) || (word.kind == Identifier && !isUpperCase(word.text)))) {
        const bool isTailWord = isQualifier(word.kind) || word.text == "noexcept" ||
                                word.text == "override" || word.text == "final" || word.text == "requires";
        if (!isTailWord) return std::nullopt;
    }
    return function;
}

// Behind an element of a list that another file has the braces of:
//
//     DEVICE(0x04cb, "camera"),
//     DEVICE(0x04cc, "reader"),
bool ItemScanner::isCommaAtLineEnd(Index place) const {
    const Index following = next(place);
    return kind(place) == Comma && (kind(following) == Trn::kEndKind || startsLaterLine(following, place));
}

// A macro that makes the header of a template, and has its conditions behind its parameters:
//
//     template_(typename T)(requires is_range<T>)
//     void f(T a);
//
// Told by the line that begins behind it; kNone for anything else.
ItemScanner::Index ItemScanner::behindMacroOfHeader(Index open, const Progress& seen) const {
    const bool isMacro = findsMacros_ && seen.isAlone() && seen.previous != kNone && kind(seen.previous) == Identifier;
    if (!isMacro || tokens_.at(next(behind(open))).text != "requires") return kNone;
    Index last = open;
    while (kind(behind(last)) == OpenParen) last = behind(last);
    const Index close = links_.closing(last);
    const Index following = behind(last);
    return isWord(kind(following)) && startsLaterLine(following, close) ? close + 1 : kNone;
}

// `int size GUARDED_BY(lock);`: whether the last word stands behind a name and its type.
bool ItemScanner::followsDeclaredName(const Progress& seen) const {
    return seen.third != kNone &&
           isMacroBehindName(tokens_.at(seen.third), tokens_.at(seen.second), tokens_.at(seen.previous));
}

// Whether nothing but a macro stands in front of the last word, on its line, or a name on a line of its own.
bool ItemScanner::followsMacro(const Progress& seen) const {
    if (seen.typeWords != 1 || seen.second == kNone) return false;
    const Trn::Token word = tokens_.at(seen.second);
    return word.kind == Identifier && (isUpperCase(word.text) || startsLaterLine(seen.previous, seen.second));
}

// The same of names that stand on a line each.
bool ItemScanner::followsNamesOnLines(const Progress& seen) const {
    for (Index place = seen.start; place < seen.previous; place = next(place)) {
        if (kind(place) != Identifier || !startsLaterLine(next(place), place)) return false;
    }
    return seen.start < seen.previous;
}

// Whether a pointer mark or a type that is built in stands in front of the last word.
bool ItemScanner::followsType(const Progress& seen) const {
    if (seen.second == kNone) return false;
    const int kindInFront = kind(seen.second);
    return (kindInFront == Asterisk && seen.typeWords > 0) || isBuiltinTypeKeyword(kindInFront);
}

// Whether what may stand between a head and its body follows the parentheses. A tail that begins within another ends
// with it.
bool ItemScanner::hasCompleteTail(Index open, Progress& seen) const {
    const bool isWithin = seen.tail.end > links_.closing(open) && seen.tail.initializers == kNone;
    if (!isWithin) seen.tail = heads_.scanTailOf(open);
    return seen.tail.isComplete;
}

// `list.add(1);`, `out << a;`: no declaration has such a sign behind its first name. Parts of texts have, which are
// put into functions elsewhere.
bool ItemScanner::isStatement(Index sign, const Progress& seen, const ItemContext& context) const {
    const bool isFirst = seen.previous == seen.start && kind(seen.start) == Identifier;
    if (!findsMacros_ || !isFirst || context.scope != ItemContext::Scope::Outside) return false;
    if (kind(sign) == ShiftLeft) return true;
    Index following = next(next(sign));
    while (kind(next(sign)) == Identifier && isMemberAccess(kind(following))) {
        sign = following;
        following = next(next(sign));
    }
    const int end = kind(following);
    return kind(next(sign)) == Identifier && (end == OpenParen || end == OpenBracket || end == Assign);
}

// `int *a, *f(int);`, as opposed to the bases of a class.
bool ItemScanner::isInFrontOfFunction(Index comma, const Progress& seen) const {
    if (!findsMacros_ || seen.typeWords == 0 || seen.sawColon) return false;
    return marksFunction(next(comma));
}

// `A a(&b);`, as opposed to `API int (*a);`: whether a type stands in front of a name that is no macro's.
bool ItemScanner::followsTypedName(const Progress& seen) const {
    if (seen.sawOperator || seen.sawTypedef || seen.second == kNone) return false;
    const Trn::Token name = tokens_.at(seen.previous);
    if (name.kind != Identifier || isUpperCase(name.text) || name.text.starts_with("__")) return false;
    const Trn::Token type = tokens_.at(seen.second);
    switch (type.kind) {
        case Identifier: return !isUpperCase(type.text);
        case Less: return seen.third != kNone && kind(seen.third) == Identifier;
        case Asterisk:
        case Ampersand: return seen.typeWords > 0;
        default: return isBuiltinTypeKeyword(type.kind);
    }
}

// `A* a GUARDED_BY(&b)`: whether a macro stands behind a name that has its type.
bool ItemScanner::followsMacroOfName(const Progress& seen) const {
    if (seen.sawOperator || seen.sawTypedef || seen.second == kNone || seen.third == kNone) return false;
    const Trn::Token name = tokens_.at(seen.second);
    const bool isMacro = kind(seen.previous) == Identifier && isUpperCase(tokens_.at(seen.previous).text);
    if (!isMacro || name.kind != Identifier || isUpperCase(name.text)) return false;
    const int type = kind(seen.third);
    return type == Identifier || type == Less || type == Asterisk || type == Ampersand || isBuiltinTypeKeyword(type);
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
    const bool isMarked = first == Identifier && (second == Asterisk || second == Caret);
    return isMarked && followingKind != Semicolon && kind(next(next(inside))) != Comma;  // as opposed to M(T *, name)
}

// `int a{1};`, `A b[2]{};`: the values of what is declared.
bool ItemScanner::isBraceInitializer(Index brace, const Progress& seen) const {
    const int following = kind(behind(brace));
    const bool mayFollow = following == Semicolon || following == Comma;
    if (seen.previous == kNone || links_.closing(brace) == kNone || links_.holdsStatements(brace) ||
        !mayFollow) {
        return false;
    }
    // struct timeval wait { .tv_sec = 1 };
    if (seen.sawClassKey) return findsMacros_ && seen.wordsBehindKey > 1 && startsValue(next(brace));
    if (seen.sawColon) return true;
    const int before = kind(seen.previous);
    const bool isNamed = seen.typeWords + seen.lastWords > 1;
    // struct { int a; } b{1};
    if (before == Identifier) return isNamed || seen.followsType;
    return before == OpenBracket || before == Less;
}

}  // namespace Cpp
