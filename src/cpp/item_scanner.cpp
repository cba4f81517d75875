// Declarations, by the roles of their parentheses:
//
//     API(2) static int f(int a) const noexcept(true) {      a specifier, parameters, part of the tail
//     void (*handler)(int);                                  a declarator, parameters
//     class ALIGNED(8) A {                                   part of the class's name
//     REGISTER(f)                                            a macro that stands by itself
#include "cpp/item_scanner.h"

#include <algorithm>

#include "cpp/item_progress.h"
#include "cpp/token_classes.h"
#include "cpp/token_kind.h"
#include "cpp/token_sets.h"
#include "cpp/words.h"

namespace Cpp {

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
                if (seen.sawBases || makesClass(place)) return found(Shape::Class);
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
    if (findsMacros_ && opensClassBody(end)) return true;
    // Behind a slice of the tokens stands the text of what follows it.
    return kind(end) == OpenBrace && links_.holdsStatements(end) && tokens_.at(behind(end)).text == ";";
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

// Whether macros and specifiers alone stand in front of the last word, each macro on a line of its own or in upper case.
bool ItemScanner::followsMacros(const Progress& seen) const {
    if (seen.sawGroup) return false;
    bool sawMacro = false;
    for (Index place = seen.start; place < seen.previous; place = next(place)) {
        if (isStorageWord(kind(place))) continue;
        const bool endsLine = startsLaterLine(next(place), place);
        if (kind(place) != Identifier || (!endsLine && !isUpperCase(tokens_.at(place).text))) return false;
        sawMacro = true;
    }
    return sawMacro;
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
    // DECORATE(* label("a"))
    // SUITE(b)
    const bool beginsItem = isWord(kind(behindGroup)) && startsLaterLine(behindGroup, links_.closing(open));
    if (first == Asterisk) return !(findsMacros_ && seen.isAlone() && beginsItem);
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
