#include "cpp/qualified_name.h"

#include "cpp/token_classes.h"
#include "cpp/token_kind.h"
#include "cpp/token_sets.h"

namespace Cpp {

std::size_t findQualifiedNameStart(Trn::TokenBuffer& tokens, std::size_t distance) {
    if (!isScopedName(tokens.peek(distance))) return distance;
    std::size_t start = distance;
    int angleDepth = 0;
    for (std::size_t place = distance - 1; place >= 1; --place) {
        const Trn::Token token = tokens.peek(place);
        if (isTrivia(token.kind)) continue;
        if (endsTokens(token.kind)) break;
        if (token.kind == Greater) ++angleDepth;
        if (token.kind == ShiftRight) angleDepth += 2;
        if (token.kind == Less) --angleDepth;
        if (angleDepth != 0 || token.kind == Less) continue;
        if (token.kind != Identifier) break;
        start = place;
        // An empty name stands in front of a "::operator" that no name qualifies directly.
        if (!isScopedName(token) && !token.text.empty()) break;
    }
    return start;
}

}  // namespace Cpp
