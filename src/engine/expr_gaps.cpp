// a+b   f (x)   (T) c    →    a + b   f(x)   (T)c
//
// What is wanted in front of a token, by what it does, or behind the one in front.
#include <algorithm>

#include "cpp/token_joining.h"
#include "cpp/token_sets.h"
#include "cpp/words.h"
#include "engine/expr_casts.h"
#include "engine/expr_run.h"
#include "engine/gap.h"
#include "engine/operator_kinds.h"
#include "engine/other_gaps.h"

namespace Tessel {

namespace {

// `_` and `N_`, the marks of texts to be translated.
bool isShortName(std::string_view name) { return name.size() <= 2 && name.ends_with('_'); }

// `T (*f)(int)`, `T (&a)[2]`, `T (A::*m)(int)`: whether the "(" at `open`, which has a partner, stands around a mark
// and a name.
bool opensDeclarator(const ExprTokens& tokens, std::size_t open) {
    std::size_t inside = nextPlace(tokens, open);
    if (inside < tokens.size() && tokens[inside].text().ends_with("::")) inside = nextPlace(tokens, inside);
    const int mark = kindAt(tokens, inside);
    const int behind = kindAt(tokens, nextPlace(tokens, tokens[open].partner));
    return (isPointerMark(mark) || mark == Cpp::LogicalAnd) &&
           (behind == Cpp::OpenParen || behind == Cpp::OpenBracket);
}

// Behind the type, in `Matcher<int(&)[2]>` and `function<void(T(*)(int))>`, but for `function<void(int (*)(int))>` and
// `Traits<T (*)(int)>`: whether parentheses that hold no name, only marks, stand close to it.
bool closesMarks(const ExprTokens& tokens, std::size_t type, std::size_t open, bool isArgument) {
    const std::size_t close = tokens[open].partner;
    for (std::size_t place = open + 1; place < close; ++place) {
        if (!isPointerMark(tokens[place].kind) && tokens[place].kind != Cpp::LogicalAnd) return false;
    }
    const bool isNamed = !isArgument && kindAt(tokens, type) == Cpp::Identifier;
    return isNamed || kindAt(tokens, nextPlace(tokens, close)) == Cpp::OpenBracket;
}

// T{a}, name{a}, A<B>{a}: whether the braces begin behind what they make, and hold no statements.
bool opensValue(const ExprTokens& tokens, std::size_t before, std::size_t open) {
    const std::size_t close = tokens[open].partner;
    if (close == kNoToken || holdsDeclarations(tokens, open)) return false;
    if (before > 0 && kindAt(tokens, before - 1) == Cpp::Arrow) return false;  // of a lambda that returns a T
    const ExprToken& type = tokens[before];
    const bool isName = type.kind == Cpp::Identifier && type.text() != "noexcept";
    return isName || type.role == ExprRole::TemplateClose || isBuiltinTypeKeyword(type.kind);
}

// `(*f)`, as opposed to what a name is called with.
bool endsFunctionByPointer(const ExprTokens& tokens, std::size_t close) {
    const std::size_t open = tokens[close].partner;
    return open != kNoToken && !tokens[open].followsCall && kindAt(tokens, nextPlace(tokens, open)) == Cpp::Asterisk;
}

}  // namespace

// What a token that opens no group wants behind itself. A ";" in front of a "*" or "&" counts as an operator.
const OptionalText* CppExprFormatter::wantedAfter(const Run& run, std::size_t place) const {
    const int kind = run.kindAt(place);
    if (introducesWidth(run, place)) return &settings_.aroundBitFieldColon;
    const bool isOperator = run.roleAt(place) == ExprRole::BinaryOperator ||
                            (kind == Cpp::Semicolon && isPointerMark(run.kindAt(place + 1)));
    // a ?: b
    if (kind == Cpp::Question && run.kindAt(place + 1) == Cpp::Colon && run.sweep.blanksBehind().empty()) {
        return &kNothing;
    }
    if (isOperator) return &settings_.afterOperator;
    if (kind == Cpp::Comma) {
        const CommaTexts* const commas = absentCommaOf(run, place);
        return commas ? &commas->behind : nullptr;
    }
    if (kind != Cpp::StringLiteral || !wrapsLines() || isJoinedToNext(run, place)) return nullptr;
    return run.kindFrom(place + 1) == Cpp::StringLiteral ? &kBlank : nullptr;
}

// The comma that the scheme has nothing for; null for others.
const CommaTexts* CppExprFormatter::absentCommaOf(const Run& run, std::size_t place) const {
    if (run.kindAt(place) != Cpp::Comma || run.roleAt(place) != ExprRole::Separator) return nullptr;
    const CommaTexts* commas = nullptr;
    if (!run.groups.empty()) {
        // Of an initialiser, those in rows that are kept go by another key.
        const Group& group = run.groups.back();
        const ExprToken& close = run.tokens[group.close];
        const bool isInRow = run.tokens[close.partner].start.line < close.start.line &&
                             !isLineBreak(run.sweep.blanksBehind());
        commas = group.kind == Group::Kind::Braces && !isInRow ? &settings_.commas.elements : commasOf(group);
    } else if (run.mode == ExprMode::Declarators) {
        commas = &settings_.commas.declarators;
    }
    return commas && commas->areAbsent() ? commas : nullptr;
}

// Whether nothing stands between a literal and a name or a prefix: they mean something else apart, as in "a"U"b".
bool CppExprFormatter::isJoinedToNext(const Run& run, std::size_t place) {
    if (place + 1 >= run.tokens.size()) return false;
    const ExprToken& literal = run.tokens[place];
    const ExprToken& next = run.tokens[place + 1];
    return literal.end() == next.offset && Cpp::wouldJoin(literal.text(), next.text());
}

// Whether the comment in front of the token, on its line, tells which argument it is: `/*size=*/0`.
bool CppExprFormatter::namesArgument(const Run& run, std::size_t place) {
    const bool followsComment = place > 0 && run.kindAt(place - 1) == Cpp::BlockComment;
    return followsComment && run.tokens[place - 1].text().ends_with("=*/") && !run.sweep.gap().empty() &&
           isBlanks(run.sweep.gap());
}

// Of the gap in front of the current token, about which no token has anything to say.
const OptionalText* CppExprFormatter::otherGapOf(const Run& run) const {
    const std::size_t place = run.sweep.place();
    const std::string_view gap = run.sweep.gap();
    if (namesArgument(run, place)) return isPresent(&settings_.otherGaps.none) ? &settings_.otherGaps.none : nullptr;
    if (place == 0 || run.previous != place - 1) return nullptr;
    const bool isUnary = run.previousRole() == ExprRole::UnaryOperator;
    if (isUnary && log()) log()->measured(settings_.keepsUnaryBlanks.key, gap, isBlanks(gap) && !gap.empty());
    if (gap.empty() && !mayNeedBlank(run.previousKind(), run.kindAt(place))) return nullptr;
    if (!isBlanks(gap)) return nullptr;
    const OtherGap wanted = otherGap(run.tokens, run.previous, place, gap.empty());
    const OptionalText& text = wanted == OtherGap::Blank ? settings_.otherGaps.blank : settings_.otherGaps.none;
    const bool isThere = !log() && text.text == gap;
    const bool isKept = isUnary && settings_.keepsUnaryBlanks;
    return wanted == OtherGap::AsItIs || isThere || isKept ? nullptr : &text;
}

// The ":" of a bit field, as opposed to operators and labels.
bool CppExprFormatter::introducesWidth(const Run& run, std::size_t place) {
    return run.mode == ExprMode::Declarators && run.groups.empty() && run.kindAt(place) == Cpp::Colon &&
           run.roleAt(place) == ExprRole::Operand;
}

// The "..." behind what is a pack, or is made one: `class... T`, `T... args`, `f(args...)`. Those of ranges,
// `case a ... b`, and those that fold stand between operands.
bool CppExprFormatter::startsEllipsis(const Run& run, std::size_t place) {
    if (!isPack(run.tokens, place)) return false;
    const int before = run.previousKind();
    const bool followsType = before == Cpp::KeywordTypename || before == Cpp::KeywordClass ||
                             before == Cpp::KeywordAuto || before == Cpp::KeywordSizeof ||
                             isBuiltinTypeKeyword(before);
    const bool followsName =
        before == Cpp::Identifier && !Cpp::isOperatorWord(run.tokens[run.previous].text());  // (a or ...)
    const bool followsOperand =
        followsName || before == Cpp::CloseParen || run.previousRole() == ExprRole::TemplateClose;
    switch (run.kindFrom(place + kDotsOfPack)) {
        case Cpp::Comma:
        case Cpp::CloseParen:
        case Cpp::CloseBracket:
        case Cpp::CloseBrace:
        case Cpp::Greater:
        case Cpp::ShiftRight:
        case Trn::kEndKind: return followsType || followsOperand;
        default: return followsType || (followsOperand && run.mode == ExprMode::Declaration);
    }
}

// What the next token that is no comment or directive, which stands at `place`, wants in front of itself;
// null when that is for the token before it to say.
const OptionalText* CppExprFormatter::wantedBefore(const Run& run, std::size_t place) const {
    if (run.previous == kNoToken) return nullptr;
    // Nearly all tokens are operands, which want nothing.
    const ExprRole role = run.roleAt(place);
    if (role == ExprRole::Operand && run.mode != ExprMode::Declarators && !looksBehind_) return nullptr;
    return wantedAtRole(run, place, role);
}

const OptionalText* CppExprFormatter::wantedAtRole(const Run& run, std::size_t place, ExprRole role) const {
    const OptionalText* const behind = looksBehind_ ? wantedBehindPrevious(run, place) : nullptr;
    if (isPresent(behind)) return behind;
    if (introducesWidth(run, place)) return run.previousKind() == Cpp::Comma ? behind : &settings_.aroundBitFieldColon;
    if (startsEllipsis(run, place)) return &settings_.beforeEllipsis;
    switch (role) {
        case ExprRole::BinaryOperator:
            if (run.previousRole() == ExprRole::BinaryOperator || run.previousRole() == ExprRole::Separator) {
                return behind;
            }
            if (settings_.formatsOtherGaps && run.previousRole() == ExprRole::GroupOpen) return behind;
            // asm("" ::: "memory")
            if (run.tokens[run.previous].text() == "::") return behind;
            return &settings_.beforeOperator;
        case ExprRole::GroupOpen:
            return !behind && run.kindAt(place) == Cpp::OpenParen ? wantedBeforeParen(run, place) : behind;
        case ExprRole::TemplateOpen:
            if (behind || !settings_.formatsTypeArguments) return behind;
            return run.previousKind() == Cpp::KeywordTemplate ? &settings_.beforeTemplateOpen : &kNothing;
        case ExprRole::BraceOpen: return &settings_.beforeDataBrace;
        case ExprRole::Name:
            // Behind the text stands the name that the type is for, and the line end, where one is kept.
            if (run.nameFollows && (run.groups.empty() || (run.keepsLines && run.typeWhitespace.hasLineFeed()))) {
                return behind;
            }
            return run.typeWhitespace.present ? &run.typeWhitespace : behind;
        case ExprRole::Separator:
            if (const CommaTexts* const commas = absentCommaOf(run, place)) return &commas->before;
            return behind;
        case ExprRole::Operand: return behind ? behind : wantedBeforeBrace(run, place);
        default: return behind;
    }
}

// Of what the previous token ends right in front: a cast, or "delete[]".
const OptionalText* CppExprFormatter::wantedBehindPrevious(const Run& run, std::size_t place) const {
    if (run.previous + 1 != place) return nullptr;  // a comment stands there
    switch (run.previousKind()) {
        case Cpp::CloseParen:
            // `(int) pure` behind the name of a function
            if (run.mode == ExprMode::Declarators && run.tokens[run.previous].partner == run.firstText) return nullptr;
            if (!startsCastOperand(run.tokens, run.previous, place)) return nullptr;
            return isCastByBlank(run.tokens, run.previous, place) ? &kAsInInput : &settings_.afterCast;
        case Cpp::CloseBracket: return endsDelete(run.tokens, run.previous) ? &settings_.afterDeleteBrackets : nullptr;
        default: return nullptr;
    }
}

// operator=(a), operator new(b), operator()(c)
bool CppExprFormatter::followsOperatorName(const Run& run) {
    const bool endsBracket = run.previousKind() == Cpp::CloseParen;
    const std::size_t name = endsBracket ? run.tokens[run.previous].partner : run.previous;
    return name != kNoToken && run.kindBefore(name) == Cpp::KeywordOperator;
}

// What is no name may: `T{}(a)`, `(*f)(a)`, and a type that a function returns, `function<void(int)>`,
// `MOCK(f, void(int))`, `using F = void(int);`.
bool CppExprFormatter::takesArguments(const Run& run, std::size_t open) {
    if (run.previousKind() == Cpp::CloseParen) {
        const std::size_t declarator = run.tokens[run.previous].partner;
        // A name in front of the parentheses is a type then, and calls nothing.
        const bool isParameter = run.mode == ExprMode::Declaration && run.groups.empty() && declarator != kNoToken &&
                                 declarator > 0 && opensDeclarator(run.tokens, declarator);
        return isParameter || endsFunctionByPointer(run.tokens, run.previous);
    }
    if (run.previousKind() == Cpp::CloseBrace) return run.previousRole() == ExprRole::Operand;
    if (!isBuiltinTypeKeyword(run.previousKind()) || opensDeclarator(run.tokens, open)) return false;
    const bool isArgument = !run.groups.empty() && run.groups.back().kind == Group::Kind::Template;
    return isArgument || isWholeFunctionType(run, open);
}

// Nothing but a type and its parentheses, which declare no name: an element of a list by itself.
bool CppExprFormatter::isWholeFunctionType(const Run& run, std::size_t open) {
    const int ahead = run.previous == 0 ? Trn::kEndKind : run.kindBefore(run.previous);
    const std::size_t close = run.tokens[open].partner;
    if (close == kNoToken || (ahead != Trn::kEndKind && ahead != Cpp::Comma && ahead != Cpp::OpenParen)) return false;
    const int behind = run.kindFrom(close + 1);
    const bool isLast = behind == Trn::kEndKind || behind == Cpp::Semicolon;
    if (!isLast && behind != Cpp::Comma && behind != Cpp::CloseParen) return false;
    const int first = run.kindFrom(open + 1);
    return close == open + 1 || isBuiltinTypeKeyword(first) || Cpp::isQualifier(first);
}

// Lists that their braces stand close around stand close to what they are the value of.
const OptionalText* CppExprFormatter::wantedBeforeBrace(const Run& run, std::size_t place) const {
    if (run.kindAt(place) != Cpp::OpenBrace || !settings_.closesLists()) return nullptr;
    // using A = enum B {
    const int ahead = run.previous == kNoToken ? Trn::kEndKind : run.kindBefore(run.previous);
    if (Cpp::isTagKey(ahead)) return nullptr;
    return opensValue(run.tokens, run.previous, place) ? &settings_.inListBraces : nullptr;
}

const OptionalText* CppExprFormatter::wantedBeforeParen(const Run& run, std::size_t place) const {
    // void (*f)(int)
    const bool isArgument = !run.groups.empty() && (run.groups.back().kind == Group::Kind::Template ||
                                                    run.groups.back().kind == Group::Kind::Cast);
    const bool followsType =
        run.mode == ExprMode::Declaration || (isArgument && run.previousKind() == Cpp::Identifier);
    const bool opensMarked = settings_.formatsOtherGaps && followsType &&
                             run.tokens[place].partner != kNoToken && opensDeclarator(run.tokens, place);
    if (opensMarked && Cpp::isWord(run.previousKind())) {
        const auto isTemplate = [](const Group& group) { return group.kind == Group::Kind::Template; };
        const bool isInArgument = std::ranges::any_of(run.groups, isTemplate);
        const bool isClose = isInArgument && closesMarks(run.tokens, run.previous, place, isArgument);
        return isClose ? &settings_.afterCallName : &settings_.otherGaps.blank;
    }
    if (run.previousRole() == ExprRole::TemplateClose) {
        const std::size_t open = run.tokens[run.previous].partner;
        if (isCastKeyword(run.kindBefore(open))) {
            return &firstPresent(settings_.beforeCastParen, settings_.afterOperator);
        }
        // make<T>(a), function<A<T>(int)>: what wants a blank behind names may do without one here.
        const bool standsClose = settings_.formatsOtherGaps && settings_.afterCallName.text.empty() &&
                                 run.kindBefore(open) == Cpp::Identifier &&
                                 run.tokens[place].partner != kNoToken && !opensDeclarator(run.tokens, place);
        return standsClose ? &settings_.afterCallName : nullptr;
    }
    switch (run.previousKind()) {
        case Cpp::Identifier: {
            if (Cpp::isOperatorWord(run.tokens[run.previous].text())) return nullptr;  // a and (b)
            // The name in front is a type.
            if (run.mode == ExprMode::Declaration && opensDeclarator(run.tokens, place)) return nullptr;
            // `defined(A)` is no call, so that a blank is not wanted in it.
            if (!settings_.afterCallName.text.empty() && run.tokens[run.previous].text() == "defined") return nullptr;
            if (!isShortName(run.tokens[run.previous].text())) return &settings_.afterCallName;
            return &firstPresent(settings_.afterShortCallName, settings_.afterCallName);
        }
        case Cpp::KeywordSizeof:
        case Cpp::KeywordThrow: return &settings_.afterCallName;
        case Cpp::KeywordAsm:
        case Cpp::KeywordVolatile:
            return Cpp::isAssemblerWord(run.tokens.front().text()) ? &settings_.afterCallName : nullptr;
        default: break;
    }
    if (settings_.formatsOtherGaps && (followsCapture(run.tokens, place) || followsOperatorName(run))) {
        return &settings_.afterCallName;
    }
    return settings_.formatsTypeArguments && takesArguments(run, place) ? &settings_.afterCallName : nullptr;
}

}  // namespace Tessel
