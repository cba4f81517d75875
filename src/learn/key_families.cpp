#include "learn/key_families.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace Learn {

namespace {

using namespace Tessel::Keys;
using Tessel::KeyId;

// In a family those stand next to each other that are most alike.
using Family = std::vector<KeyId>;

const std::vector<Family>& families() {
    static const std::vector<Family> table = {
        {WS_BEFORE_LINKAGE_OPEN_BRACE, WS_BEFORE_NS_OPEN_BRACE, WS_BEFORE_CLASS_OPEN_BRACE, WS_BEFORE_ENUM_OPEN_BRACE,
         WS_BEFORE_FN_OPEN_BRACE, WS_AFTER_CLASS_INIT_LIST},
        {WS_AFTER_NS_OPEN_BRACE, WS_AFTER_CLASS_OPEN_BRACE, WS_AFTER_ENUM_OPEN_BRACE, WS_AFTER_FN_OPEN_BRACE,
         WS_AFTER_CS_OPEN_BRACE, GLOBAL_WS_AFTER_OPEN_BRACE},
        {WS_BEFORE_NS_CLOSE_BRACE, WS_BEFORE_CLASS_CLOSE_BRACE, WS_BEFORE_ENUM_CLOSE_BRACE, WS_BEFORE_FN_CLOSE_BRACE,
         WS_BEFORE_CS_CLOSE_BRACE, GLOBAL_WS_BEFORE_CLOSE_BRACE},
        {WS_BETWEEN_CS, WS_BEFORE_DO_WHILE},
        {INDENT_CLASS_CONTENT, INDENT_ENUM_CONTENT, INDENT_FN_CONTENT, INDENT_CS_CONTENT, GLOBAL_INDENT_CONTENT,
         INDENT_CS_CASE_CONTENT},
        {WS_BEFORE_BASE_CLAUSES_COMMA, WS_BEFORE_CLASS_INITS_COMMA, WS_BEFORE_FN_COMMA, WS_BEFORE_FN_CALL_COMMA,
         WS_BEFORE_DD_COMMA, WS_BEFORE_DECLARATOR_COMMA, WS_BEFORE_ENUM_COMMA, WS_BEFORE_TP_COMMA},
        {WS_BETWEEN_BASE_CLAUSES, WS_BETWEEN_CLASS_INITS, WS_BETWEEN_FN_PARAMS, WS_BETWEEN_FN_CALL_ARGS,
         WS_BETWEEN_ROW_ELEMENTS, WS_BETWEEN_DECLARATORS, WS_BETWEEN_ENUM_ELEMENTS, WS_BETWEEN_TP_PARAMS,
         WS_BETWEEN_CAPTURES},
        {WS_AFTER_CS_OPEN_PAREN, WS_AFTER_FN_OPEN_PAREN, WS_AFTER_EXPR_OPEN_PAREN, WS_AFTER_LBRACKET,
         WS_AFTER_TP_OPEN_BRACKET},
        {WS_BEFORE_CS_CLOSE_PAREN, WS_BEFORE_FN_CLOSE_PAREN, WS_BEFORE_EXPR_CLOSE_PAREN, WS_BEFORE_RBRACKET,
         WS_BEFORE_TP_CLOSE_BRACKET},
        {WS_AFTER_FN_NAME, WS_AFTER_FN_CALL_NAME, WS_BEFORE_CAST_OPEN_PAREN},
        {WS_AFTER_FN_DECL_RETURN_TYPE, WS_AFTER_FN_DEFN_RETURN_TYPE},
        {WS_AFTER_PARAM_TYPE_ID, WS_AFTER_DD_TYPE_ID},
        {WS_BETWEEN_ASTERISK_ANCHOR, WS_BETWEEN_AMPERSAND_ANCHOR},
        {WS_BEFORE_EXPR_OP, WS_BETWEEN_EXPR_OP_OPERANDS},
        {WS_BEFORE_BASE_CLAUSES, WS_BEFORE_CLASS_INITS},
        {ASTERISK_ANCHOR, AMPERSAND_ANCHOR},
    };
    return table;
}

struct NatureOfKeys {
    Nature nature;
    std::vector<KeyId> keys;
};

// Those of the keys whose values are texts. What is not listed stands within a line.
const std::vector<NatureOfKeys>& naturesOfTexts() {
    static const std::vector<NatureOfKeys> table = {
        {Nature::Breakable,
         {GLOBAL_WS_BEFORE_COMMA, WS_BEFORE_BASE_CLAUSES_COMMA, WS_BEFORE_CLASS_INITS_COMMA, WS_BEFORE_TP_COMMA,
          WS_AFTER_FN_DECL_RETURN_TYPE, WS_AFTER_FN_DEFN_RETURN_TYPE, WS_BEFORE_FN_COMMA, WS_BEFORE_DD_COMMA,
          WS_BEFORE_ENUM_COMMA, WS_BETWEEN_ENUM_ELEMENTS, WS_BEFORE_FN_CALL_COMMA, WS_BEFORE_DECLARATOR_COMMA}},
        {Nature::Together, {WS_BETWEEN_STATEMENTS}},
        {Nature::Structural,
         {GLOBAL_WS_BEFORE_OPEN_BRACE, GLOBAL_WS_AFTER_OPEN_BRACE, WS_AFTER_NS_OPEN_BRACE, WS_AFTER_CLASS_OPEN_BRACE,
          WS_BEFORE_ACCESS_SPECS, WS_AFTER_FN_OPEN_BRACE, WS_AFTER_CS_OPEN_BRACE, WS_BETWEEN_CS,
          WS_AFTER_CS_CASE_LABELS, WS_AFTER_ENUM_OPEN_BRACE, WS_BEFORE_DO_WHILE}},
        {Nature::Hanging,
         {GLOBAL_WS_BEFORE_CLOSE_BRACE, WS_BEFORE_NS_OPEN_BRACE, WS_BEFORE_NS_CLOSE_BRACE, WS_BEFORE_CLASS_OPEN_BRACE,
          WS_BEFORE_CLASS_CLOSE_BRACE, WS_BEFORE_CLASS_INIT_LIST, WS_AFTER_CLASS_INIT_LIST, WS_BEFORE_FN_OPEN_BRACE,
          WS_BEFORE_FN_CLOSE_BRACE, WS_BEFORE_CS_OPEN_BRACE, WS_BEFORE_CS_CLOSE_BRACE, WS_BEFORE_ENUM_OPEN_BRACE,
          WS_BEFORE_ENUM_CLOSE_BRACE, WS_BEFORE_LINKAGE_OPEN_BRACE, WS_BEFORE_CASE_OPEN_BRACE,
          WS_BEFORE_STRUCT_OPEN_BRACE, WS_BEFORE_UNION_OPEN_BRACE}},
        {Nature::Table, {WS_BETWEEN_DD_ELEMENTS, WS_AFTER_DD_OPEN_BRACE, WS_BEFORE_DD_CLOSE_BRACE}},
        {Nature::Indentation,
         {GLOBAL_INDENT_CONTENT, INDENT_NS_CONTENT, INDENT_ACCESS_SPEC_LABEL, INDENT_CLASS_CONTENT, INDENT_CLASS_INITS,
          INDENT_FN_PARAMS, INDENT_FN_CONTENT, INDENT_DD_CONTENT, INDENT_CS_CONTENT, INDENT_CS_CASE_LABELS,
          INDENT_CS_CASE_CONTENT, INDENT_ENUM_CONTENT, INDENT_LINKAGE_CONTENT, INDENT_CS_SINGLE, INDENT_LABEL}},
    };
    return table;
}

Nature findNature(KeyId key) {
    if (key.type() != Tessel::PropertyType::String) return Nature::Other;
    for (const auto& [nature, keys] : naturesOfTexts()) {
        if (std::find(keys.begin(), keys.end(), key) != keys.end()) return nature;
    }
    return Nature::Inline;
}

}  // namespace

// It is asked for at every gap.
Nature natureOf(KeyId key) {
    static const auto natures = [] {
        std::array<Nature, ALL.size()> all{};
        for (std::size_t place = 0; place < all.size(); ++place) all[place] = findNature(KeyId::at(place));
        return all;
    }();
    return natures[key.place()];
}

std::vector<KeyId> kinOf(KeyId key) {
    const auto hasKey = [key](const Family& family) {
        return std::find(family.begin(), family.end(), key) != family.end();
    };
    const auto family = std::find_if(families().begin(), families().end(), hasKey);
    if (family == families().end()) return {};
    const auto own = std::find(family->begin(), family->end(), key);
    std::vector<KeyId> nearest;
    auto before = own;
    auto after = own + 1;
    while (before != family->begin() || after != family->end()) {
        if (before != family->begin()) nearest.push_back(*--before);
        if (after != family->end()) nearest.push_back(*after++);
    }
    return nearest;
}

}  // namespace Learn
