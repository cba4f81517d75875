#include "learn/key_families.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

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
        {INDENT_NS_CONTENT, INDENT_LINKAGE_CONTENT},
        {INDENT_CLASS_CONTENT, INDENT_ENUM_CONTENT, INDENT_FN_CONTENT, INDENT_CS_CONTENT, GLOBAL_INDENT_CONTENT,
         INDENT_CS_CASE_CONTENT},
        {WS_BEFORE_BASE_CLAUSES_COMMA, WS_BEFORE_CLASS_INITS_COMMA, WS_BEFORE_FN_COMMA, WS_BEFORE_FN_CALL_COMMA,
         WS_BEFORE_DD_COMMA, WS_BEFORE_DECLARATOR_COMMA, WS_BEFORE_ENUM_COMMA, WS_BEFORE_TP_COMMA},
        {WS_BETWEEN_BASE_CLAUSES, WS_BETWEEN_CLASS_INITS, WS_BETWEEN_FN_PARAMS, WS_BETWEEN_FN_CALL_ARGS,
         WS_BETWEEN_ROW_ELEMENTS, WS_BETWEEN_DECLARATORS, WS_BETWEEN_ENUM_ELEMENTS, WS_BETWEEN_TP_PARAMS},
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

struct KeyNature {
    KeyId key;
    Nature nature;
};

// What names do not tell.
constexpr KeyNature kNatures[] = {
    {WS_BEFORE_CLASS_INIT_LIST, Nature::Hanging},
    {WS_AFTER_CLASS_INIT_LIST, Nature::Hanging},
    {GLOBAL_WS_BEFORE_OPEN_BRACE, Nature::Structural},
    {WS_AFTER_CS_CASE_LABELS, Nature::Structural},
    {WS_BETWEEN_CS, Nature::Structural},
    {WS_BEFORE_DO_WHILE, Nature::Structural},
    {WS_BEFORE_ACCESS_SPECS, Nature::Structural},
    {WS_BETWEEN_STATEMENTS, Nature::Together},
    {WS_AFTER_FN_DECL_RETURN_TYPE, Nature::Breakable},
    {WS_AFTER_FN_DEFN_RETURN_TYPE, Nature::Breakable},
    {WS_BEFORE_DD_OPEN_BRACE, Nature::Inline},
    {WS_AFTER_DD_OPEN_BRACE, Nature::Table},
    {WS_BEFORE_DD_CLOSE_BRACE, Nature::Table},
    {WS_BETWEEN_DD_ELEMENTS, Nature::Table},
};

Nature findNature(KeyId key) {
    if (key.type() != Tessel::PropertyType::String) return Nature::Other;
    for (const auto& [known, nature] : kNatures) {
        if (known == key) return nature;
    }
    const std::string_view name = key.name();
    if (name.find("INDENT_") != name.npos) return Nature::Indentation;
    if (name.find("WS_BEFORE_") != name.npos && name.ends_with("_COMMA")) return Nature::Breakable;
    if (!name.ends_with("_BRACE")) return Nature::Inline;
    return name.find("WS_BEFORE_") != name.npos ? Nature::Hanging : Nature::Structural;
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
