#include "tool/wrap_keys.h"

#include <algorithm>
#include <vector>

#include "scheme/property_keys.h"

namespace Tool {

namespace {

using namespace Tessel::Keys;
using Tessel::KeyId;

struct Wrapping {
    KeyId key;
    std::vector<KeyId> gaps;
};

const std::vector<Wrapping>& wrappings() {
    static const std::vector<Wrapping> table = {
        {CALL_ARGS_WRAP_STRATEGY, {WS_BETWEEN_FN_CALL_ARGS}},
        {LIST_WRAP_STRATEGY,
         {WS_BETWEEN_FN_PARAMS, WS_BETWEEN_TP_PARAMS, WS_BETWEEN_ENUM_ELEMENTS, WS_BETWEEN_DD_ELEMENTS,
          WS_BETWEEN_ROW_ELEMENTS, WS_BETWEEN_BASE_CLAUSES, WS_BETWEEN_CLASS_INITS}},
        {COMMA_WRAP_STYLE,
         {WS_BEFORE_FN_CALL_COMMA, WS_BEFORE_FN_COMMA, WS_BEFORE_TP_COMMA, WS_BEFORE_ENUM_COMMA, WS_BEFORE_DD_COMMA,
          WS_BEFORE_BASE_CLAUSES_COMMA, WS_BEFORE_CLASS_INITS_COMMA}},
        {WRAP_LAST_RESORT, {WS_AFTER_FN_OPEN_PAREN, WS_AFTER_EXPR_OPEN_PAREN, WS_AFTER_CS_OPEN_PAREN}},
        {EXPR_WRAP_STYLE, {WS_BETWEEN_EXPR_OP_OPERANDS, WS_BEFORE_EXPR_OP}},
    };
    return table;
}

bool isAssignment(std::string_view last) {
    return last.ends_with('=') && last != "==" && last != "!=" && last != "<=" && last != ">=";
}

// Around the marks of a conditional expression lines are broken alike in all styles.
KeyId wrapKeyOfOperator(std::string_view before, std::string_view behind) {
    const auto isShift = [](std::string_view mark) { return mark == "<<" || mark == ">>"; };
    const std::string_view last = before.substr(before.size() - std::min<std::size_t>(before.size(), 2));
    if (isShift(behind.substr(0, 2)) || isShift(last)) return SHIFT_WRAP_STYLE;
    if (isAssignment(last)) return WRAP_LAST_RESORT;
    const bool isConditional = last.ends_with('?') || behind.starts_with('?') || behind.starts_with(':');
    return isConditional ? KeyId() : KeyId(EXPR_WRAP_STYLE);
}

}  // namespace

KeyId wrapKeyOf(KeyId gapKey, std::string_view before, std::string_view behind) {
    for (const auto& [key, gaps] : wrappings()) {
        if (std::find(gaps.begin(), gaps.end(), gapKey) == gaps.end()) continue;
        return key == KeyId(EXPR_WRAP_STYLE) ? wrapKeyOfOperator(before, behind) : key;
    }
    return {};
}

bool isOfWrapping(KeyId key) {
    if (key == KeyId(RIGHT_MARGIN) || key == KeyId(SHIFT_WRAP_STYLE)) return true;
    const auto& all = wrappings();
    return std::any_of(all.begin(), all.end(), [key](const Wrapping& wrapping) { return wrapping.key == key; });
}

}  // namespace Tool
