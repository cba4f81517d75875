#pragma once

#include <array>
#include <string_view>

#include "scheme/property_type.h"

// The catalogue of schemes: its property keys, spelled once, and the type that their values have.
//
// A key is built of a position word, the element, and the point within it: WS_BEFORE_FN_CLOSE_PAREN is the
// white space before the ")" of a function's parameters. NS is a namespace, TP template parameters, FN a
// function, DD a data declaration, CS a control statement, EXPR an expression, PPD a preprocessor directive.
namespace Tessel {

namespace Keys {

inline constexpr std::string_view VANTREL_VERSION = "VANTREL_VERSION";

// Braces of any kind, and the layout of the whole text.
inline constexpr std::string_view GLOBAL_INDENT_CONTENT = "GLOBAL_INDENT_CONTENT";
inline constexpr std::string_view GLOBAL_WS_BEFORE_OPEN_BRACE = "GLOBAL_WS_BEFORE_OPEN_BRACE";
inline constexpr std::string_view GLOBAL_WS_AFTER_OPEN_BRACE = "GLOBAL_WS_AFTER_OPEN_BRACE";
inline constexpr std::string_view GLOBAL_WS_BEFORE_CLOSE_BRACE = "GLOBAL_WS_BEFORE_CLOSE_BRACE";
inline constexpr std::string_view GLOBAL_WS_AFTER_OPEN_PAREN = "GLOBAL_WS_AFTER_OPEN_PAREN";
inline constexpr std::string_view GLOBAL_WS_BEFORE_CLOSE_PAREN = "GLOBAL_WS_BEFORE_CLOSE_PAREN";
inline constexpr std::string_view GLOBAL_WS_BEFORE_COMMA = "GLOBAL_WS_BEFORE_COMMA";
inline constexpr std::string_view LEFT_MARGIN = "LEFT_MARGIN";
inline constexpr std::string_view RIGHT_MARGIN = "RIGHT_MARGIN";
inline constexpr std::string_view LINE_WRAP = "LINE_WRAP";
inline constexpr std::string_view WRAP_STYLE = "WRAP_STYLE";
inline constexpr std::string_view WRAP_INDENT = "WRAP_INDENT";
inline constexpr std::string_view EXPR_WRAP_STYLE = "EXPR_WRAP_STYLE";
inline constexpr std::string_view SHIFT_WRAP_STYLE = "SHIFT_WRAP_STYLE";
inline constexpr std::string_view COMMA_WRAP_STYLE = "COMMA_WRAP_STYLE";
inline constexpr std::string_view LIST_WRAP_STRATEGY = "LIST_WRAP_STRATEGY";
inline constexpr std::string_view LINE_WRAP_DO_NOT_FORMAT = "LINE_WRAP_DO_NOT_FORMAT";
inline constexpr std::string_view TAB_SIZE = "TAB_SIZE";
inline constexpr std::string_view CONVERT_WS = "CONVERT_WS";
inline constexpr std::string_view WS_AFTER_LBRACKET = "WS_AFTER_LBRACKET";
inline constexpr std::string_view WS_BEFORE_RBRACKET = "WS_BEFORE_RBRACKET";
inline constexpr std::string_view FN_DO_NOT_FORMAT = "FN_DO_NOT_FORMAT";
inline constexpr std::string_view DATA_DO_NOT_FORMAT = "DATA_DO_NOT_FORMAT";
inline constexpr std::string_view ALIGN_PPD_LEFT_MOST = "ALIGN_PPD_LEFT_MOST";
inline constexpr std::string_view ASTERISK_ANCHOR = "ASTERISK_ANCHOR";
inline constexpr std::string_view WS_BETWEEN_ASTERISK_ANCHOR = "WS_BETWEEN_ASTERISK_ANCHOR";
inline constexpr std::string_view WS_BETWEEN_AMPERSAND_ANCHOR = "WS_BETWEEN_AMPERSAND_ANCHOR";
inline constexpr std::string_view AMPERSAND_ANCHOR = "AMPERSAND_ANCHOR";
inline constexpr std::string_view HANGING_ASTERISK = "HANGING_ASTERISK";
inline constexpr std::string_view HANGING_AMPERSAND = "HANGING_AMPERSAND";

// Namespaces.
inline constexpr std::string_view WS_BEFORE_NS_OPEN_BRACE = "WS_BEFORE_NS_OPEN_BRACE";
inline constexpr std::string_view WS_AFTER_NS_OPEN_BRACE = "WS_AFTER_NS_OPEN_BRACE";
inline constexpr std::string_view INDENT_NS_CONTENT = "INDENT_NS_CONTENT";
inline constexpr std::string_view WS_BEFORE_NS_CLOSE_BRACE = "WS_BEFORE_NS_CLOSE_BRACE";

// Classes, their bases, access labels and constructor initialisers.
inline constexpr std::string_view WS_AFTER_CLASS_NAME = "WS_AFTER_CLASS_NAME";
inline constexpr std::string_view WS_BEFORE_CLASS_OPEN_BRACE = "WS_BEFORE_CLASS_OPEN_BRACE";
inline constexpr std::string_view WS_BEFORE_BASE_CLAUSES = "WS_BEFORE_BASE_CLAUSES";
inline constexpr std::string_view WS_BETWEEN_BASE_CLAUSES = "WS_BETWEEN_BASE_CLAUSES";
inline constexpr std::string_view WS_BEFORE_BASE_CLAUSES_COMMA = "WS_BEFORE_BASE_CLAUSES_COMMA";
inline constexpr std::string_view ALIGN_BASE_CLAUSES_LEFT = "ALIGN_BASE_CLAUSES_LEFT";
inline constexpr std::string_view ALIGN_BASE_CLAUSES_LEFT_ON_WRAP = "ALIGN_BASE_CLAUSES_LEFT_ON_WRAP";
inline constexpr std::string_view WS_AFTER_CLASS_OPEN_BRACE = "WS_AFTER_CLASS_OPEN_BRACE";
inline constexpr std::string_view WS_BEFORE_ACCESS_SPECS = "WS_BEFORE_ACCESS_SPECS";
inline constexpr std::string_view INDENT_ACCESS_SPEC_LABEL = "INDENT_ACCESS_SPEC_LABEL";
inline constexpr std::string_view WS_AFTER_ACCESS_SPEC_LABEL = "WS_AFTER_ACCESS_SPEC_LABEL";
inline constexpr std::string_view INDENT_CLASS_CONTENT = "INDENT_CLASS_CONTENT";
inline constexpr std::string_view WS_BEFORE_CLASS_CLOSE_BRACE = "WS_BEFORE_CLASS_CLOSE_BRACE";
inline constexpr std::string_view WS_BEFORE_CLASS_INIT_LIST = "WS_BEFORE_CLASS_INIT_LIST";
inline constexpr std::string_view WS_BEFORE_CLASS_INITS = "WS_BEFORE_CLASS_INITS";
inline constexpr std::string_view WS_BETWEEN_CLASS_INITS = "WS_BETWEEN_CLASS_INITS";
inline constexpr std::string_view WS_AFTER_CLASS_INIT_LIST = "WS_AFTER_CLASS_INIT_LIST";
inline constexpr std::string_view INDENT_CLASS_INITS = "INDENT_CLASS_INITS";
inline constexpr std::string_view WS_BEFORE_CLASS_INITS_COMMA = "WS_BEFORE_CLASS_INITS_COMMA";
inline constexpr std::string_view ALIGN_CLASS_MEMBER_NAMES_LEFT = "ALIGN_CLASS_MEMBER_NAMES_LEFT";

// Template parameters.
inline constexpr std::string_view WS_BEFORE_TP_OPEN_BRACKET = "WS_BEFORE_TP_OPEN_BRACKET";
inline constexpr std::string_view WS_AFTER_TP_OPEN_BRACKET = "WS_AFTER_TP_OPEN_BRACKET";
inline constexpr std::string_view WS_BETWEEN_TP_PARAMS = "WS_BETWEEN_TP_PARAMS";
inline constexpr std::string_view WS_BEFORE_TP_CLOSE_BRACKET = "WS_BEFORE_TP_CLOSE_BRACKET";
inline constexpr std::string_view WS_AFTER_TP_CLOSE_BRACKET = "WS_AFTER_TP_CLOSE_BRACKET";
inline constexpr std::string_view WS_BEFORE_TP_COMMA = "WS_BEFORE_TP_COMMA";
inline constexpr std::string_view ALIGN_TP_PARAMS_LEFT = "ALIGN_TP_PARAMS_LEFT";

// Functions.
inline constexpr std::string_view WS_AFTER_FN_DECL_RETURN_TYPE = "WS_AFTER_FN_DECL_RETURN_TYPE";
inline constexpr std::string_view WS_AFTER_FN_DEFN_RETURN_TYPE = "WS_AFTER_FN_DEFN_RETURN_TYPE";
inline constexpr std::string_view WS_AFTER_FN_NAME = "WS_AFTER_FN_NAME";
inline constexpr std::string_view ALIGN_FN_DECL_NAMES_LEFT = "ALIGN_FN_DECL_NAMES_LEFT";
inline constexpr std::string_view WS_AFTER_FN_OPEN_PAREN = "WS_AFTER_FN_OPEN_PAREN";
inline constexpr std::string_view WS_BETWEEN_FN_PARAMS = "WS_BETWEEN_FN_PARAMS";
inline constexpr std::string_view WS_BEFORE_FN_COMMA = "WS_BEFORE_FN_COMMA";
inline constexpr std::string_view WS_AFTER_PARAM_TYPE_ID = "WS_AFTER_PARAM_TYPE_ID";
inline constexpr std::string_view ALIGN_FN_PARAMS_LEFT = "ALIGN_FN_PARAMS_LEFT";
inline constexpr std::string_view ALIGN_FN_PARAMS_LEFT_ON_WRAP = "ALIGN_FN_PARAMS_LEFT_ON_WRAP";
inline constexpr std::string_view INDENT_FN_PARAMS = "INDENT_FN_PARAMS";
inline constexpr std::string_view WS_BEFORE_FN_CLOSE_PAREN = "WS_BEFORE_FN_CLOSE_PAREN";
inline constexpr std::string_view WS_BEFORE_FN_OPEN_BRACE = "WS_BEFORE_FN_OPEN_BRACE";
inline constexpr std::string_view WS_AFTER_FN_OPEN_BRACE = "WS_AFTER_FN_OPEN_BRACE";
inline constexpr std::string_view INDENT_FN_CONTENT = "INDENT_FN_CONTENT";
inline constexpr std::string_view WS_BEFORE_FN_CLOSE_BRACE = "WS_BEFORE_FN_CLOSE_BRACE";
inline constexpr std::string_view WS_AFTER_FN_DECL = "WS_AFTER_FN_DECL";

// Data declarations.
inline constexpr std::string_view WS_AFTER_DD_TYPE_ID = "WS_AFTER_DD_TYPE_ID";
inline constexpr std::string_view WS_BETWEEN_DD_ELEMENTS = "WS_BETWEEN_DD_ELEMENTS";
inline constexpr std::string_view WS_BEFORE_DD_OPEN_BRACE = "WS_BEFORE_DD_OPEN_BRACE";
inline constexpr std::string_view WS_AFTER_DD_OPEN_BRACE = "WS_AFTER_DD_OPEN_BRACE";
inline constexpr std::string_view WS_BEFORE_DD_CLOSE_BRACE = "WS_BEFORE_DD_CLOSE_BRACE";
inline constexpr std::string_view INDENT_DD_CONTENT = "INDENT_DD_CONTENT";
inline constexpr std::string_view WS_BEFORE_DD_COMMA = "WS_BEFORE_DD_COMMA";
inline constexpr std::string_view WS_AFTER_DD_RBRACKET = "WS_AFTER_DD_RBRACKET";
inline constexpr std::string_view WS_AFTER_DD_NAME = "WS_AFTER_DD_NAME";
inline constexpr std::string_view ALIGN_DD_NAMES_LEFT = "ALIGN_DD_NAMES_LEFT";
inline constexpr std::string_view ALIGN_DD_INITIALIZERS = "ALIGN_DD_INITIALIZERS";

// Control statements.
inline constexpr std::string_view WS_AFTER_CS_KEY = "WS_AFTER_CS_KEY";
inline constexpr std::string_view WS_AFTER_CS_OPEN_PAREN = "WS_AFTER_CS_OPEN_PAREN";
inline constexpr std::string_view WS_BEFORE_CS_CLOSE_PAREN = "WS_BEFORE_CS_CLOSE_PAREN";
inline constexpr std::string_view WS_BEFORE_CS_OPEN_BRACE = "WS_BEFORE_CS_OPEN_BRACE";
inline constexpr std::string_view WS_AFTER_CS_OPEN_BRACE = "WS_AFTER_CS_OPEN_BRACE";
inline constexpr std::string_view INDENT_CS_CONTENT = "INDENT_CS_CONTENT";
inline constexpr std::string_view WS_BEFORE_CS_CLOSE_BRACE = "WS_BEFORE_CS_CLOSE_BRACE";
inline constexpr std::string_view WS_BETWEEN_CS = "WS_BETWEEN_CS";
inline constexpr std::string_view INDENT_CS_CASE_LABELS = "INDENT_CS_CASE_LABELS";
inline constexpr std::string_view WS_AFTER_CS_CASE_LABELS = "WS_AFTER_CS_CASE_LABELS";
inline constexpr std::string_view INDENT_CS_CASE_CONTENT = "INDENT_CS_CASE_CONTENT";
inline constexpr std::string_view WS_BETWEEN_CS_CASES = "WS_BETWEEN_CS_CASES";
inline constexpr std::string_view WS_BETWEEN_CS_FOR_CLAUSES = "WS_BETWEEN_CS_FOR_CLAUSES";
inline constexpr std::string_view ALIGN_CS_FOR_CLAUSES_LEFT = "ALIGN_CS_FOR_CLAUSES_LEFT";
inline constexpr std::string_view ALIGN_CS_FOR_CLAUSES_ON_WRAP = "ALIGN_CS_FOR_CLAUSES_ON_WRAP";

// Expressions.
inline constexpr std::string_view WS_AFTER_EXPR_OPEN_PAREN = "WS_AFTER_EXPR_OPEN_PAREN";
inline constexpr std::string_view WS_BEFORE_EXPR_CLOSE_PAREN = "WS_BEFORE_EXPR_CLOSE_PAREN";
inline constexpr std::string_view WS_BETWEEN_EXPR_OP_OPERANDS = "WS_BETWEEN_EXPR_OP_OPERANDS";

// Enumerations.
inline constexpr std::string_view WS_BEFORE_ENUM_OPEN_BRACE = "WS_BEFORE_ENUM_OPEN_BRACE";
inline constexpr std::string_view WS_AFTER_ENUM_OPEN_BRACE = "WS_AFTER_ENUM_OPEN_BRACE";
inline constexpr std::string_view WS_BETWEEN_ENUM_ELEMENTS = "WS_BETWEEN_ENUM_ELEMENTS";
inline constexpr std::string_view WS_BEFORE_ENUM_CLOSE_BRACE = "WS_BEFORE_ENUM_CLOSE_BRACE";
inline constexpr std::string_view ALIGN_ENUM_INITIALIZERS = "ALIGN_ENUM_INITIALIZERS";
inline constexpr std::string_view INDENT_ENUM_CONTENT = "INDENT_ENUM_CONTENT";
inline constexpr std::string_view WS_BEFORE_ENUM_COMMA = "WS_BEFORE_ENUM_COMMA";

// Function calls.
inline constexpr std::string_view WS_AFTER_FN_CALL_NAME = "WS_AFTER_FN_CALL_NAME";
inline constexpr std::string_view WS_BETWEEN_FN_CALL_ARGS = "WS_BETWEEN_FN_CALL_ARGS";
inline constexpr std::string_view ALIGN_FN_CALL_ARGS_LEFT = "ALIGN_FN_CALL_ARGS_LEFT";
inline constexpr std::string_view WS_BEFORE_FN_CALL_COMMA = "WS_BEFORE_FN_CALL_COMMA";

// Every key, in the order in which listings show them.
inline constexpr std::array CATALOGUE = {
    VANTREL_VERSION,
    GLOBAL_INDENT_CONTENT,
    GLOBAL_WS_BEFORE_OPEN_BRACE,
    GLOBAL_WS_AFTER_OPEN_BRACE,
    GLOBAL_WS_BEFORE_CLOSE_BRACE,
    GLOBAL_WS_AFTER_OPEN_PAREN,
    GLOBAL_WS_BEFORE_CLOSE_PAREN,
    GLOBAL_WS_BEFORE_COMMA,
    LEFT_MARGIN,
    RIGHT_MARGIN,
    LINE_WRAP,
    WRAP_STYLE,
    WRAP_INDENT,
    EXPR_WRAP_STYLE,
    SHIFT_WRAP_STYLE,
    COMMA_WRAP_STYLE,
    LIST_WRAP_STRATEGY,
    LINE_WRAP_DO_NOT_FORMAT,
    TAB_SIZE,
    CONVERT_WS,
    WS_AFTER_LBRACKET,
    WS_BEFORE_RBRACKET,
    FN_DO_NOT_FORMAT,
    DATA_DO_NOT_FORMAT,
    ALIGN_PPD_LEFT_MOST,
    ASTERISK_ANCHOR,
    WS_BETWEEN_ASTERISK_ANCHOR,
    WS_BETWEEN_AMPERSAND_ANCHOR,
    AMPERSAND_ANCHOR,
    HANGING_ASTERISK,
    HANGING_AMPERSAND,
    WS_BEFORE_NS_OPEN_BRACE,
    WS_AFTER_NS_OPEN_BRACE,
    INDENT_NS_CONTENT,
    WS_BEFORE_NS_CLOSE_BRACE,
    WS_AFTER_CLASS_NAME,
    WS_BEFORE_CLASS_OPEN_BRACE,
    WS_BEFORE_BASE_CLAUSES,
    WS_BETWEEN_BASE_CLAUSES,
    WS_BEFORE_BASE_CLAUSES_COMMA,
    ALIGN_BASE_CLAUSES_LEFT,
    ALIGN_BASE_CLAUSES_LEFT_ON_WRAP,
    WS_AFTER_CLASS_OPEN_BRACE,
    WS_BEFORE_ACCESS_SPECS,
    INDENT_ACCESS_SPEC_LABEL,
    WS_AFTER_ACCESS_SPEC_LABEL,
    INDENT_CLASS_CONTENT,
    WS_BEFORE_CLASS_CLOSE_BRACE,
    WS_BEFORE_CLASS_INIT_LIST,
    WS_BEFORE_CLASS_INITS,
    WS_BETWEEN_CLASS_INITS,
    WS_AFTER_CLASS_INIT_LIST,
    INDENT_CLASS_INITS,
    WS_BEFORE_CLASS_INITS_COMMA,
    ALIGN_CLASS_MEMBER_NAMES_LEFT,
    WS_BEFORE_TP_OPEN_BRACKET,
    WS_AFTER_TP_OPEN_BRACKET,
    WS_BETWEEN_TP_PARAMS,
    WS_BEFORE_TP_CLOSE_BRACKET,
    WS_AFTER_TP_CLOSE_BRACKET,
    WS_BEFORE_TP_COMMA,
    ALIGN_TP_PARAMS_LEFT,
    WS_AFTER_FN_DECL_RETURN_TYPE,
    WS_AFTER_FN_DEFN_RETURN_TYPE,
    WS_AFTER_FN_NAME,
    ALIGN_FN_DECL_NAMES_LEFT,
    WS_AFTER_FN_OPEN_PAREN,
    WS_BETWEEN_FN_PARAMS,
    WS_BEFORE_FN_COMMA,
    WS_AFTER_PARAM_TYPE_ID,
    ALIGN_FN_PARAMS_LEFT,
    ALIGN_FN_PARAMS_LEFT_ON_WRAP,
    INDENT_FN_PARAMS,
    WS_BEFORE_FN_CLOSE_PAREN,
    WS_BEFORE_FN_OPEN_BRACE,
    WS_AFTER_FN_OPEN_BRACE,
    INDENT_FN_CONTENT,
    WS_BEFORE_FN_CLOSE_BRACE,
    WS_AFTER_FN_DECL,
    WS_AFTER_DD_TYPE_ID,
    WS_BETWEEN_DD_ELEMENTS,
    WS_BEFORE_DD_OPEN_BRACE,
    WS_AFTER_DD_OPEN_BRACE,
    WS_BEFORE_DD_CLOSE_BRACE,
    INDENT_DD_CONTENT,
    WS_BEFORE_DD_COMMA,
    WS_AFTER_DD_RBRACKET,
    WS_AFTER_DD_NAME,
    ALIGN_DD_NAMES_LEFT,
    ALIGN_DD_INITIALIZERS,
    WS_AFTER_CS_KEY,
    WS_AFTER_CS_OPEN_PAREN,
    WS_BEFORE_CS_CLOSE_PAREN,
    WS_BEFORE_CS_OPEN_BRACE,
    WS_AFTER_CS_OPEN_BRACE,
    INDENT_CS_CONTENT,
    WS_BEFORE_CS_CLOSE_BRACE,
    WS_BETWEEN_CS,
    INDENT_CS_CASE_LABELS,
    WS_AFTER_CS_CASE_LABELS,
    INDENT_CS_CASE_CONTENT,
    WS_BETWEEN_CS_CASES,
    WS_BETWEEN_CS_FOR_CLAUSES,
    ALIGN_CS_FOR_CLAUSES_LEFT,
    ALIGN_CS_FOR_CLAUSES_ON_WRAP,
    WS_AFTER_EXPR_OPEN_PAREN,
    WS_BEFORE_EXPR_CLOSE_PAREN,
    WS_BETWEEN_EXPR_OP_OPERANDS,
    WS_BEFORE_ENUM_OPEN_BRACE,
    WS_AFTER_ENUM_OPEN_BRACE,
    WS_BETWEEN_ENUM_ELEMENTS,
    WS_BEFORE_ENUM_CLOSE_BRACE,
    ALIGN_ENUM_INITIALIZERS,
    INDENT_ENUM_CONTENT,
    WS_BEFORE_ENUM_COMMA,
    WS_AFTER_FN_CALL_NAME,
    WS_BETWEEN_FN_CALL_ARGS,
    ALIGN_FN_CALL_ARGS_LEFT,
    WS_BEFORE_FN_CALL_COMMA,
};

static_assert(CATALOGUE.size() == 119);

// The type that the readers of a catalogue key expect. Stored with another type, the key acts as absent.
constexpr PropertyType catalogueTypeOf(std::string_view key) {
    if (key == LINE_WRAP_DO_NOT_FORMAT) return PropertyType::Integer;
    if (key == LINE_WRAP || key.ends_with("_DO_NOT_FORMAT")) return PropertyType::Boolean;
    if (key.starts_with("ALIGN_") || key.starts_with("HANGING_")) return PropertyType::Boolean;
    if (key == VANTREL_VERSION || key == LEFT_MARGIN || key == WRAP_INDENT) return PropertyType::String;
    for (const std::string_view prefix : {"WS_", "INDENT_", "GLOBAL_"}) {
        if (key.starts_with(prefix)) return PropertyType::String;
    }
    return PropertyType::Integer;
}

}  // namespace Keys

}  // namespace Tessel
