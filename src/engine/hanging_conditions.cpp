#include "cpp/token_kind.h"
#include "engine/hanging_lines.h"

// Where the parts of conditional expressions hang.

namespace Tessel {

namespace {

constexpr std::size_t kOperatorsOfCondition = 2;  // "?" and ":"

}  // namespace

bool HangingLines::isOneOfConditions(std::size_t place) const {
    const OperandChains::Chain* chain =
        chains_ && kindAt(tokens_, place) == Cpp::Question ? chains_->of(place) : nullptr;
    return chain && chain->operators > kOperatorsOfCondition;
}

// Whether the ":" that begins a line stands in the column of the "?" in the line above, in the source.
bool HangingLines::standsBelowQuestion(const Level& level, std::size_t colon) const {
    if (level.question == kNoToken || !isOneOfConditions(level.question)) return false;
    const Trn::Position& question = tokens_[level.question].start;
    const Trn::Position& start = tokens_[colon].start;
    return question.line + 1 == start.line && question.column == start.column && question.line > 1;
}

// From where the ":" of a "?" hangs: the first condition, where several follow each other.
int HangingLines::columnOfQuestion(const Level& level, std::size_t place, int column) const {
    if (indents_.conditions && isOneOfConditions(place)) {
        const int start = columns_[chains_->of(place)->start];
        if (start != kNone) return start;
    }
    return level.element.otherwise != kNone ? level.element.otherwise : column;
}

}  // namespace Tessel
