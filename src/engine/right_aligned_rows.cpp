#include "engine/right_aligned_rows.h"

#include <algorithm>

#include "cpp/token_kind.h"
#include "engine/columns.h"
#include "engine/gap.h"

namespace Tessel {

namespace {

bool isSignKind(int kind) { return kind == Cpp::Minus || kind == Cpp::Plus; }

// Behind the element of one token, or of a sign and one, that begins at the place; that itself where none does.
std::size_t behindElement(const ExprTokens& tokens, std::size_t place) {
    const std::size_t value = place + (isSignKind(tokens[place].kind) ? 1 : 0);
    const int kind = kindAt(tokens, value);
    const bool isValue = kind == Cpp::Number || kind == Cpp::Identifier;
    const int following = kindAt(tokens, value + 1);
    return isValue && (following == Cpp::Comma || following == Cpp::CloseBrace) ? value + 1 : place;
}

}  // namespace

std::optional<int> columnOfRightAlignedRows(std::string_view text, const ExprTokens& tokens, std::size_t open,
                                            int tabSize) {
    std::optional<int> end;
    int leftmost = 0;
    int rightmost = 0;
    for (std::size_t place = open + 1; place < tokens[open].partner; ++place) {
        if (tokens[place].partner != kNoToken) return std::nullopt;
        const std::size_t gapStart = tokens[place - 1].end();
        const std::string_view gap = text.substr(gapStart, tokens[place].offset - gapStart);
        const bool startsLine = isLineBreak(gap) || tokens[place - 1].kind == Cpp::LineComment;
        if (tokens[place].role == ExprRole::Trivia) continue;
        if (!startsLine && !end) return std::nullopt;
        if (!startsLine) continue;
        const std::size_t behind = behindElement(tokens, place);
        if (behind == place) return std::nullopt;
        const int column = columnBehind(gap, 0, tabSize);
        const int elementEnd = column + static_cast<int>(tokens[behind - 1].end() - tokens[place].offset);
        leftmost = end ? std::min(leftmost, column) : column;
        rightmost = end ? std::max(rightmost, column) : column;
        if (end.value_or(elementEnd) != elementEnd) return std::nullopt;
        end = elementEnd;
    }
    return leftmost < rightmost ? std::optional(leftmost) : std::nullopt;
}

}  // namespace Tessel
