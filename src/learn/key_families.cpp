#include "learn/key_families.h"

#include <algorithm>

namespace Learn {

namespace {

using namespace Tessel::Keys;
using Tessel::KeyId;

// In a family those stand next to each other that are most alike.
struct Family {
    Nature nature;
    std::vector<KeyId> keys;
};

const std::vector<Family>& families() {
    static const std::vector<Family> table = {
        {Nature::Hanging,
         {WS_BEFORE_LINKAGE_OPEN_BRACE, WS_BEFORE_NS_OPEN_BRACE, WS_BEFORE_CLASS_OPEN_BRACE, WS_BEFORE_ENUM_OPEN_BRACE,
          WS_BEFORE_FN_OPEN_BRACE, WS_AFTER_CLASS_INIT_LIST}},
        {Nature::Hanging, {WS_BEFORE_CS_OPEN_BRACE}},
        {Nature::Hanging, {WS_BEFORE_CASE_OPEN_BRACE}},
        {Nature::Structural,
         {WS_AFTER_NS_OPEN_BRACE, WS_AFTER_CLASS_OPEN_BRACE, WS_AFTER_ENUM_OPEN_BRACE, WS_AFTER_FN_OPEN_BRACE,
          WS_AFTER_CS_OPEN_BRACE, GLOBAL_WS_AFTER_OPEN_BRACE}},
        {Nature::Hanging,
         {WS_BEFORE_NS_CLOSE_BRACE, WS_BEFORE_CLASS_CLOSE_BRACE, WS_BEFORE_ENUM_CLOSE_BRACE, WS_BEFORE_FN_CLOSE_BRACE,
          WS_BEFORE_CS_CLOSE_BRACE, GLOBAL_WS_BEFORE_CLOSE_BRACE}},
        {Nature::Structural, {GLOBAL_WS_BEFORE_OPEN_BRACE}},
        {Nature::Structural, {WS_AFTER_CS_CASE_LABELS}},
        {Nature::Together, {WS_BETWEEN_STATEMENTS}},
        {Nature::Structural, {WS_BETWEEN_CS, WS_BEFORE_DO_WHILE}},
        {Nature::Structural, {WS_BEFORE_ACCESS_SPECS}},
        {Nature::Hanging, {WS_BEFORE_CLASS_INIT_LIST}},
        {Nature::Indentation, {INDENT_NS_CONTENT, INDENT_LINKAGE_CONTENT}},
        {Nature::Indentation,
         {INDENT_CLASS_CONTENT, INDENT_ENUM_CONTENT, INDENT_FN_CONTENT, INDENT_CS_CONTENT, GLOBAL_INDENT_CONTENT,
          INDENT_CS_CASE_CONTENT}},
        {Nature::Indentation, {INDENT_DD_CONTENT}},
        {Nature::Indentation, {INDENT_CS_SINGLE}},
        {Nature::Indentation, {INDENT_CS_CASE_LABELS}},
        {Nature::Indentation, {INDENT_ACCESS_SPEC_LABEL}},
        {Nature::Indentation, {INDENT_LABEL}},
        {Nature::Inline,
         {WS_BEFORE_BASE_CLAUSES_COMMA, WS_BEFORE_CLASS_INITS_COMMA, WS_BEFORE_FN_COMMA, WS_BEFORE_FN_CALL_COMMA,
          WS_BEFORE_DD_COMMA, WS_BEFORE_DECLARATOR_COMMA, WS_BEFORE_ENUM_COMMA, WS_BEFORE_TP_COMMA}},
        {Nature::Inline,
         {WS_BETWEEN_BASE_CLAUSES, WS_BETWEEN_CLASS_INITS, WS_BETWEEN_FN_PARAMS, WS_BETWEEN_FN_CALL_ARGS,
          WS_BETWEEN_ROW_ELEMENTS, WS_BETWEEN_DECLARATORS, WS_BETWEEN_ENUM_ELEMENTS, WS_BETWEEN_TP_PARAMS}},
        {Nature::Inline,
         {WS_AFTER_CS_OPEN_PAREN, WS_AFTER_FN_OPEN_PAREN, WS_AFTER_EXPR_OPEN_PAREN, WS_AFTER_LBRACKET,
          WS_AFTER_TP_OPEN_BRACKET}},
        {Nature::Inline,
         {WS_BEFORE_CS_CLOSE_PAREN, WS_BEFORE_FN_CLOSE_PAREN, WS_BEFORE_EXPR_CLOSE_PAREN, WS_BEFORE_RBRACKET,
          WS_BEFORE_TP_CLOSE_BRACKET}},
        {Nature::Inline, {WS_AFTER_FN_NAME, WS_AFTER_FN_CALL_NAME, WS_BEFORE_CAST_OPEN_PAREN}},
        {Nature::Breakable, {WS_AFTER_FN_DECL_RETURN_TYPE, WS_AFTER_FN_DEFN_RETURN_TYPE}},
        {Nature::Inline, {WS_AFTER_PARAM_TYPE_ID, WS_AFTER_DD_TYPE_ID}},
        {Nature::Table, {WS_AFTER_DD_OPEN_BRACE}},
        {Nature::Table, {WS_BEFORE_DD_CLOSE_BRACE}},
        {Nature::Table, {WS_BETWEEN_DD_ELEMENTS}},
        {Nature::Inline, {WS_BETWEEN_ASTERISK_ANCHOR, WS_BETWEEN_AMPERSAND_ANCHOR}},
        {Nature::Inline, {WS_BEFORE_EXPR_OP, WS_BETWEEN_EXPR_OP_OPERANDS}},
        {Nature::Inline, {WS_BEFORE_BASE_CLAUSES, WS_BEFORE_CLASS_INITS}},
        {Nature::Other, {ASTERISK_ANCHOR, AMPERSAND_ANCHOR}},
    };
    return table;
}

const Family* familyOf(KeyId key) {
    for (const Family& family : families()) {
        if (std::find(family.keys.begin(), family.keys.end(), key) != family.keys.end()) return &family;
    }
    return nullptr;
}

}  // namespace

Nature natureOf(KeyId key) {
    if (key.type() != Tessel::PropertyType::String) return Nature::Other;
    const Family* const family = familyOf(key);
    return family ? family->nature : Nature::Inline;
}

std::vector<KeyId> kinOf(KeyId key) {
    const Family* const family = familyOf(key);
    if (!family) return {};
    const std::vector<KeyId>& keys = family->keys;
    const auto own = std::find(keys.begin(), keys.end(), key);
    std::vector<KeyId> nearest;
    auto before = own;
    auto after = own + 1;
    while (before != keys.begin() || after != keys.end()) {
        if (before != keys.begin()) nearest.push_back(*--before);
        if (after != keys.end()) nearest.push_back(*after++);
    }
    return nearest;
}

}  // namespace Learn
