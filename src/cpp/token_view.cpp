#include "cpp/token_view.h"

#include "cpp/token_kind.h"
#include "cpp/token_sets.h"
#include "cpp/words.h"

namespace Cpp {

bool TokenView::startsLaterLine(Index place, Index than) const {
    return tokens_.at(place).start.line > tokens_.at(than).end.line;
}

bool TokenView::endsWithAssign(Index openParen) const {
    const Index close = links_.closing(openParen);
    if (close == kNone || close < openParen + 3 || kind(close - 1) != Assign) return false;
    return isWord(kind(close - 2)) || kind(close - 2) == CloseBracket;
}

bool TokenView::promisesNoThrow(Index place) const {
    const bool isReference = kind(place) == Ampersand || kind(place) == LogicalAnd;
    return tokens_.at(isReference ? next(place) : place).text == "noexcept";
}

TokenView::Index TokenView::behindTailWords(Index place) const {
    while (isQualifier(kind(place))) place = next(place);
    if (!promisesNoThrow(place)) return kind(place) == Ampersand || kind(place) == LogicalAnd ? next(place) : place;
    place = next(tokens_.at(place).text == "noexcept" ? place : next(place));
    return kind(place) == OpenParen ? behind(place) : place;
}

bool TokenView::opensAttribute(Index place) const {
    if (kind(place) != OpenBracket || kind(place + 1) != OpenBracket) return false;
    const Index inner = links_.closing(place + 1);
    return inner != kNone && links_.closing(place) == inner + 1;
}

TokenView::Index TokenView::behindAnnotations(Index place) const {
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

TokenView::Index TokenView::behindCalls(Index place, Index& lastEnd) const {
    if (place < lastEnd) return lastEnd;
    while (kind(place) == Identifier && kind(next(place)) == OpenParen) place = behind(next(place));
    lastEnd = place;
    return place;
}

}  // namespace Cpp
