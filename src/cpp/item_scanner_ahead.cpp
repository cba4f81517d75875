// What the scan sees at a place, whatever it has passed in front of that.
#include "cpp/item_scanner.h"
#include "cpp/token_classes.h"
#include "cpp/token_kind.h"
#include "cpp/token_sets.h"
#include "cpp/words.h"

namespace Cpp {

// `*f(int)`, `f(int)`
bool ItemScanner::marksFunction(Index place) const {
    while (kind(place) == Asterisk || kind(place) == Ampersand) place = next(place);
    return kind(place) == Identifier && kind(next(place)) == OpenParen;
}

// `ALIGNED(class) A {`: whether a class key is all that stands in the parentheses.
bool ItemScanner::holdsClassKey(Index open) const {
    const Index inside = next(open);
    return isClassKey(kind(inside)) && kind(next(inside)) == CloseParen;
}

// `(&a)`, `(*a.b)`, `(&a->b)`
bool ItemScanner::holdsMarkedName(Index open) const {
    const int mark = kind(next(open));
    if (mark != Asterisk && mark != Ampersand) return false;
    Index name = next(next(open));
    while (kind(name) == Identifier && (kind(next(name)) == Dot || kind(next(name)) == Arrow)) name = next(next(name));
    return kind(name) == Identifier && (mark == Ampersand || kind(next(name)) == CloseParen);
}

// `M(*, a)`, `M(*p, a)`: no declarator has a comma.
bool ItemScanner::isListOfPointers(Index inside) const {
    while (kind(inside) == Asterisk || isWord(kind(inside))) inside = next(inside);
    return kind(inside) == Comma;
}

// `int (*f(int a))(int) {`, `int* (f)(int) {`: whether the declarator is a name, or has parameters of its
// own, and a body follows.
bool ItemScanner::declaresFunction(Index open) const {
    const Index close = links_.closing(open);
    if (close == kNone || kind(next(close)) != OpenParen) return false;
    if (kind(next(open)) == Identifier && next(next(open)) == close) return heads_.hasBody(next(close));
    Index previous = open;
    for (Index place = next(open); place < close; previous = place, place = behind(place)) {
        if (kind(place) == OpenParen && kind(previous) == Identifier) return heads_.hasBody(next(close));
    }
    return false;
}

// `int (&f(int a))[3] {`: the parameters that stand in the declarator, where a body follows; kNone for others.
ItemScanner::Index ItemScanner::parametersOfArray(Index open) const {
    const Index close = links_.closing(open);
    if (close == kNone || kind(next(close)) != OpenBracket) return kNone;
    Index name = next(open);
    while (kind(name) == Asterisk || kind(name) == Ampersand) name = next(name);
    const Index list = next(name);
    const bool isWhole = kind(name) == Identifier && kind(list) == OpenParen && behindTailWords(behind(list)) == close;
    return isWhole && heads_.hasBody(list) ? list : kNone;
}

// `__nonnull__ ((1)) static void f(int *a);`: what follows its own parentheses, two of each, begins a declaration.
bool ItemScanner::marksItem(Index open) const {
    return kind(next(open)) == OpenParen && isStorageWord(kind(behind(open)));
}

// `[2][3] = { a, b }`
bool ItemScanner::holdsElements(Index place) const {
    if (kind(place) != OpenBracket || opensAttribute(place)) return false;
    while (kind(place) == OpenBracket) place = behind(place);
    return kind(place) == Assign && kind(next(place)) == OpenBrace;
}

// `"a" "b";`
bool ItemScanner::endsInLiterals(Index place) const {
    if (kind(place) != StringLiteral) return false;
    while (kind(place) == StringLiteral) place = next(place);
    return kind(place) == Semicolon;
}

// `{ public:`, `{ int a; private:`: the body of no function.
bool ItemScanner::opensClassBody(Index place) const {
    return kind(place) == OpenBrace && (isAccessKeyword(kind(next(place))) || links_.holdsLabels(place));
}

// `: A<T>, B {`, with such a body, or one that a ";" follows: nothing is initialized.
bool ItemScanner::beginsBasesOfClass(Index colon) const {
    if (kind(colon) != Colon) return false;
    Index place = next(colon);
    while (isWord(kind(place)) || kind(place) == Comma || kind(place) == Less) place = behind(place);
    return opensClassBody(place) || (kind(place) == OpenBrace && kind(behind(place)) == Semicolon);
}

// `aligned(64);`, `aligned(sizeof(int));`: no parameter begins so.
bool ItemScanner::endsWithValue(Index word) const {
    const Index open = next(word);
    const int first = kind(next(open));
    return kind(word) == Identifier && kind(open) == OpenParen && (first == Number || first == KeywordSizeof) &&
           kind(behind(open)) == Semicolon;
}

// `__aligned(64) HIDDEN;`: the ";" behind words that may be annotations; kNone behind anything else.
ItemScanner::Index ItemScanner::endOfAnnotations(Index place) const {
    while (kind(place) == Identifier) {
        const std::string_view word = tokens_.at(place).text;
        if (!word.starts_with("__") && !isUpperCase(word)) return kNone;
        place = next(place);
        if (kind(place) == OpenParen) place = behind(place);
    }
    return kind(place) == Semicolon ? place : kNone;
}

// The last one has no arguments.
bool ItemScanner::endsInAnnotations(Index place) const {
    const Index end = endOfAnnotations(place);
    return end != kNone && kind(end - 1) != CloseParen;
}

// Nothing but a macro of its own ends with a ")" in the line before a declaration.
bool ItemScanner::followsMacroCall(Index start) const {
    return start > 0 && kind(start - 1) == CloseParen && startsLaterLine(start, start - 1);
}

// `A : public B`: the name and the bases of a class whose key a macro in front makes.
bool ItemScanner::beginsBases(Index name) const {
    const Index colon = next(name);
    return kind(name) == Identifier && kind(colon) == Colon && isAccessKeyword(kind(next(colon)));
}

// Whether a ";" ends what the "=" introduces, should that be a list in braces, or a macro that brings one.
bool ItemScanner::endsValue(Index assign) const {
    const Index value = next(assign);
    if (kind(value) != OpenBrace || kind(behind(value)) == Semicolon) return true;
    return findsMacros_ && bringsSemicolon(behind(value));
}

bool ItemScanner::bringsSemicolon(Index name) const {
    const Index open = next(name);
    const Index close = kind(name) == Identifier && kind(open) == OpenParen ? links_.closing(open) : kNone;
    if (close == kNone) return false;
    const Index following = next(close);
    if (kind(following) == Trn::kEndKind || kind(following) == CloseBrace) return true;
    return isWord(kind(following)) && startsLaterLine(following, close);
}

// No member begins so.
bool ItemScanner::startsValue(Index place) const {
    switch (kind(place)) {
        case Dot:
        case Number:
        case CharLiteral:
        case StringLiteral: return true;
        default: return false;
    }
}

bool ItemScanner::startsWithSpecifier(Index name) const {
    const Index open = next(name);
    if (kind(open) != OpenParen || links_.closing(open) == kNone) return false;
    Index place = behind(open);
    if (startsLaterLine(place, links_.closing(open))) return false;
    if (isTypeWord(kind(place))) return true;
    if (findsMacros_ && kind(place) == Identifier) place = behindMarkedType(place);
    while (kind(place) == Asterisk || kind(place) == Ampersand) place = next(place);
    if (kind(place) != Identifier) return false;
    const int following = kind(next(place));
    return following == Assign || following == Semicolon || following == Comma || following == OpenBracket;
}

// Behind a type that pointer marks follow, or else in front of it: `CLEANUP(f) A *a = b;`
ItemScanner::Index ItemScanner::behindMarkedType(Index type) const {
    Index marks = next(type);
    if (kind(marks) == Less) marks = behind(marks);
    return kind(marks) == Asterisk || kind(marks) == Ampersand ? marks : type;
}

bool ItemScanner::holdsValues(Index openBrace, Index previous) const {
    if (links_.closing(openBrace) == kNone) return false;
    const int followingKind = kind(behind(openBrace));
    switch (previous == kNone ? Trn::kEndKind : kind(previous)) {
        case Assign:
        case Comma:
        case OpenParen:
        case KeywordReturn:
            return true;
        case Identifier:
        case Greater:
        case CloseBracket:
        case CloseParen:
            return !links_.holdsStatements(openBrace) && followsValue(followingKind);
        default:
            break;
    }
    const int before = previous == kNone ? Trn::kEndKind : kind(previous);
    if (isBuiltinTypeKeyword(before)) {
        return !links_.holdsStatements(openBrace) && followsValue(followingKind);
    }
    return isPunctuation(before) && before != Semicolon && before != Colon &&
           before != OpenBrace && before != CloseBrace && !links_.holdsStatements(openBrace);
}

}  // namespace Cpp
