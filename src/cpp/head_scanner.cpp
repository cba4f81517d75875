#include "cpp/head_scanner.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "cpp/token_classes.h"
#include "cpp/token_kind.h"
#include "cpp/token_sets.h"
#include "cpp/words.h"

namespace Cpp {

namespace {

// Old-style heads with more parameters than anyone writes; the look for them ends there.
constexpr std::size_t kMaximumOldParameters = 64;

constexpr bool isJoiningOperator(int kind) {
    return kind == LogicalAnd || kind == LogicalOr || kind == Exclamation;
}

}  // namespace

HeadTail HeadScanner::scanTailOf(Index openParen) const {
    if (const std::optional<HeadTail> tail = oldStyleTail(openParen)) return *tail;
    return scanTail(behindArrays(next(links_.closing(openParen))), Owner::Function);
}

std::optional<HeadTail> HeadScanner::oldStyleTail(Index openParen) const {
    const Index following = behindArrays(next(links_.closing(openParen)));
    const Index body = oldStyleBody(openParen, following);
    if (body == kNone) return std::nullopt;
    HeadTail tail;
    tail.end = body;
    tail.oldParameters = following;
    return tail;
}

// `(&f(int a) noexcept)[3]`: behind the rest of the declarator that the parameters stand in.
HeadScanner::Index HeadScanner::behindArrays(Index place) const {
    const Index close = behindTailWords(place);
    if (kind(close) != CloseParen || kind(next(close)) != OpenBracket) return place;
    place = next(close);
    while (kind(place) == OpenBracket) place = behind(place);
    return place;
}

bool HeadScanner::hasBody(Index openParen) const {
    const HeadTail tail = scanTailOf(openParen);
    return tail.isComplete && kind(tail.end) == OpenBrace;
}

// Any run of words with or without arguments, attributes, marks, a trailing return type, conditions,
// `= 0`, `= default`, `= delete`, and the initializers of a constructor.
HeadTail HeadScanner::scanTail(Index place, Owner owner) const {
    HeadTail tail;
    bool isInType = false;      // of a trailing return
    Index macroClose = kNone;  // of the call that was passed last
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
            case Trn::kEndKind:
                return stop(true);
            case Assign: {
                const Index value = next(place);
                const bool isZero = kind(value) == Number && tokens_.at(value).text == "0";
                if (!isZero && kind(value) != KeywordDefault && kind(value) != KeywordDelete)
                    return stop(false);
                place = next(value);
                continue;
            }
            case Colon:
                if (owner == Owner::Lambda) return stop(false);
                tail.initializers = place;
                place = behindInitializers(place);
                continue;
            case Arrow:
                isInType = true;
                break;
            case OpenBracket:
            case Ampersand:
            case LogicalAnd:
            case Asterisk:
            case KeywordTry:
            case KeywordAsm:
            case KeywordMutable:
            case KeywordStatic:
            case KeywordConst:
            case KeywordVolatile:
                break;
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
                if (!isWord(token.kind)) return stop(false);
                // auto f() AUTO_RETURN(a)
                // template <class T>
                if (macroClose != kNone && startsLaterLine(place, macroClose)) return stop(true);
                if (!isInType) return stop(false);
        }
        const bool isWordHere = isWord(token.kind);
        const bool isMacro = token.kind == Identifier && isUpperCase(token.text);
        place = behind(place);
        macroClose = kNone;
        if (isWordHere && kind(place) == OpenParen) {
            if (isMacro) macroClose = links_.closing(place);
            place = behind(place);
        }
    }
}

// Behind `: a(1), b{2}`, where the body begins. Branches of an #if may have a ":" each.
HeadScanner::Index HeadScanner::behindInitializers(Index colon) const {
    Index place = next(colon);
    while (true) {
        bool sawName = false;
        while (isWord(kind(place)) || opensArguments(place)) {
            const bool hasArgument = takesArgument(tokens_.at(place));
            place = behind(place);
            if (hasArgument && kind(place) == OpenParen) place = behind(place);
            sawName = true;
        }
        const int following = kind(behind(place));
        const bool goesOn = following == Comma || following == Colon || following == OpenBrace || following == Dot;
        const bool isBraced = kind(place) == OpenBrace && sawName && goesOn;
        if (kind(place) == OpenParen || isBraced) place = behind(place);
        while (kind(place) == Dot) place = next(place);
        if (kind(place) != Comma && kind(place) != Colon) break;
        place = next(place);
    }
    while (kind(place) != OpenBrace && kind(place) != Semicolon && kind(place) != Trn::kEndKind &&
           kind(place) != CloseBrace) {
        place = behind(place);
    }
    return place;
}

// `f(a, b) int a; char *b; {`: the "{", where names and nothing else stand in the parentheses, and
// declarations of these follow.
HeadScanner::Index HeadScanner::oldStyleBody(Index open, Index behindGroup) const {
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
    if (names.empty()) return kNone;
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
                if (links_.closing(place) == kNone) return kNone;
                if (kind(next(place)) != Asterisk && kind(next(place)) != CloseParen &&
                    kind(next(place)) != OpenParen) {
                    return kNone;
                }
                for (Index inside = next(place); inside < links_.closing(place); inside = next(inside)) {
                    declaresName |= std::ranges::find(names, tokens_.at(inside).text) != names.end();
                }
                break;
            case Asterisk:
            case Comma:
            case OpenBracket:
                break;
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

HeadScanner::Index HeadScanner::behindRequires(Index place) const {
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

std::optional<HeadScanner::Index> HeadScanner::lambdaBody(Index openBracket) const {
    if (links_.closing(openBracket) == kNone || opensAttribute(openBracket)) return std::nullopt;
    Index place = behind(openBracket);
    if (kind(place) == Less) place = behind(place);
    if (tokens_.at(place).text == "requires") place = behindRequires(place);
    place = behindAnnotations(place);
    if (kind(place) == OpenParen) place = behind(place);
    const HeadTail tail = scanTail(place, Owner::Lambda);
    if (kind(tail.end) != OpenBrace) return std::nullopt;
    return tail.end;
}

HeadScanner::Index HeadScanner::behindOperatorName(Index place) const {
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

}  // namespace Cpp
