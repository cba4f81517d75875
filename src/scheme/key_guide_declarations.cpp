// Keys of classes, functions, templates, data and their columns.
#include "scheme/key_examples.h"
#include "scheme/key_guide_rows.h"

namespace Tessel {

namespace {

using namespace KeyExamples;

void addClasses(std::vector<KeyGuide>& rows) {
    constexpr KeyGroup group = KeyGroup::Classes;
    rows.push_back({set(Keys::WS_AFTER_CLASS_NAME, " "), group, "Before the \":\" of the base classes.", derived});
    rows.push_back({set(Keys::WS_BEFORE_BASE_CLAUSES, " "), group, "After the \":\" of the base classes.", derived});
    rows.push_back({set(Keys::WS_BEFORE_BASE_CLAUSES_COMMA, " "), group, "Before the commas between base classes.",
                    derived});
    rows.push_back({set(Keys::WS_BETWEEN_BASE_CLAUSES, " "), group, "After the commas between base classes.", derived});
    rows.push_back({set(Keys::ALIGN_BASE_CLAUSES_LEFT, true), group, "One base class to a line, under the first.",
                    derived});
    rows.push_back({set(Keys::INDENT_ACCESS_SPEC_LABEL, "  "), group,
                    "Indentation of public: and its kin, from the class.", "class A\n{\npublic:\n    int size;\n};\n"});
    rows.push_back({set(Keys::WS_BEFORE_ACCESS_SPECS, "\n\n"), group, "Before public: and its kin.",
                    "class A\n{\n    int size;\npublic:\n    int top;\n};\n"});
    rows.push_back({set(Keys::WS_BEFORE_CLASS_INIT_LIST, "\n    "), group,
                    "Before the \":\" of a constructor's initialisers; absent, as before the \"{\" of a function.",
                    constructor});
    rows.push_back({set(Keys::WS_BEFORE_CLASS_INITS, " "), group, "After the \":\" of a constructor's initialisers.",
                    constructor});
    rows.push_back({set(Keys::WS_BEFORE_CLASS_INITS_COMMA, " "), group,
                    "Before the commas between a constructor's initialisers.", constructor});
    rows.push_back({set(Keys::WS_BETWEEN_CLASS_INITS, "\n"), group,
                    "After the commas between a constructor's initialisers; with a line break they line up under the "
                    "first.", constructor});
    rows.push_back({set(Keys::WS_AFTER_CLASS_INIT_LIST, " "), group,
                    "Between a constructor's initialisers and its \"{\".", constructor});
}

void addFunctions(std::vector<KeyGuide>& rows) {
    constexpr KeyGroup group = KeyGroup::Functions;
    rows.push_back({set(Keys::WS_AFTER_FN_DECL_RETURN_TYPE, "\n"), group,
                    "Between return type and name, in declarations.", declaration});
    rows.push_back({set(Keys::WS_AFTER_FN_DEFN_RETURN_TYPE, "\n"), group,
                    "Between return type and name, in definitions.", functionOfOne});
    rows.push_back({set(Keys::WS_AFTER_FN_NAME, " "), group, "Between a function's name and its \"(\".", declaration});
    rows.push_back({set(Keys::WS_AFTER_FN_OPEN_PAREN, " "), group, "After the \"(\" of the parameters.", declaration});
    rows.push_back({set(Keys::WS_BEFORE_FN_CLOSE_PAREN, " "), group, "Before the \")\" of the parameters.",
                    declaration});
    rows.push_back({set(Keys::WS_BEFORE_FN_COMMA, " "), group, "Before the commas between parameters.", declaration});
    rows.push_back({set(Keys::WS_BETWEEN_FN_PARAMS, " "), group,
                    "After the commas between parameters; with a line break they line up under the first.",
                    declaration});
    rows.push_back({set(Keys::WS_AFTER_OPERATOR_KEY, ""), group, "Between operator and what it is that is no word.",
                    "bool operator ==(T a, T b);\n"});
    rows.push_back({set(Keys::WS_AFTER_OPERATOR_NAME, " "), group,
                    "Between such an operator and the \"(\" of its parameters; absent, as behind other names.",
                    "bool operator==(T a, T b);\n", {set(Keys::WS_AFTER_FN_NAME, "")}});
    rows.push_back({set(Keys::WS_BEFORE_FN_CONVENTION, ""), group,
                    "Between a type and the parenthesis of a pointer to function that begins with a calling "
                    "convention; absent, as where there is none.",
                    "int (WINAPI *f)(int a);\n", {set(Keys::WS_AFTER_FN_DECL_RETURN_TYPE, " ")}});
    rows.push_back({set(Keys::WS_BEFORE_BRACKETED_NAME, ""), group,
                    "Between a type and a function's name in parentheses; absent, as in front of one "
                    "without them.",
                    "typedef int (f)(int a);\n", {set(Keys::WS_AFTER_FN_DECL_RETURN_TYPE, " ")}});
    rows.push_back({set(Keys::WS_BEFORE_FN_QUALIFIER, " "), group,
                    "Between the parameters and the word behind them: const, noexcept, override, ->.",
                    "class A\n{\n    int size()const;\n};\n"});
    rows.push_back({set(Keys::WS_BEFORE_ENDED_FN_BODY, ""), group,
                    "Between the head of a function and an empty body that a \";\" follows, which is a declaration for "
                    "WS_AFTER_FN_DECL_RETURN_TYPE then; absent, and behind const, volatile and noexcept, as in "
                    "front of others.",
                    "void f() {};\n", {set(Keys::KEEP_ONE_LINE_FUNCTIONS, 1)}});
    rows.push_back({set(Keys::WS_IN_EMPTY_BRACES, ""), group, "Inside braces that hold nothing, and stay on one line.",
                    "void f() { }\n", {set(Keys::KEEP_ONE_LINE_FUNCTIONS, 1)}});
    rows.push_back({set(Keys::WS_IN_LIST_BRACES, ""), group,
                    "Behind the \"{\" and in front of the \"}\" of lists of values, on the same line. Where that is "
                    "nothing, nothing stands between a name and the \"{\" behind it either.",
                    "int a[][2] = {{ 1, 2 }, { 3, 4 }};\nT b = f({ a });\n"});
    rows.push_back({set(Keys::WS_BEFORE_ELLIPSIS, ""), group,
                    "Between a type, or an expression, and the \"...\" that makes a pack of it.",
                    "template<class ... T>\nvoid f(T ... a)\n{\n    g(a ...);\n}\n"});
    rows.push_back({set(Keys::FORMAT_MACRO_CALLS, true), group,
                    "Macros that stand by themselves, without a \";\", are laid out as calls are, and wrapped like "
                    "them, where they stand on one line, and their parentheses hold no marks, angles and braces. "
                    "So is the \"(\" of macros that govern a statement, but for those named as `foreach` is or where "
                    "WS_AFTER_CS_MACRO is present, and, with FORMAT_TYPE_ARGUMENTS, a macro that makes a function's "
                    "name. With FORMAT_MACRO_BODIES statements that a call on one line holds, each with its end, are "
                    "laid out too.",
                    "class A\n{\n    NO_COPY (A,B)\n};\n",
                    {set(Keys::KEEP_UNRECOGNIZED, true), set(Keys::WS_BETWEEN_FN_CALL_ARGS, " "),
                     set(Keys::WS_AFTER_FN_CALL_NAME, "")}});
    rows.push_back({set(Keys::WS_AFTER_PARAM_TYPE_ID, "  "), group,
                    "Between a parameter's type and its name; a blank when absent.", declaration});
    rows.push_back({set(Keys::ALIGN_FN_PARAMS_LEFT, true), group, "One parameter to a line.", declaration});
    rows.push_back({set(Keys::WS_AFTER_FN_CALL_NAME, " "), group, "Between the name and the \"(\" of a call.", call});
    rows.push_back({set(Keys::WS_AFTER_SHORT_CALL_NAME, ""), group,
                    "The same behind _, N_ and other names of one or two characters that end in _, the marks of texts "
                    "to be translated.", "const char* text = _(\"text\");\n", {set(Keys::WS_AFTER_FN_CALL_NAME, " ")}});
    rows.push_back({set(Keys::WS_BEFORE_FN_CALL_COMMA, " "), group, "Before the commas between arguments.", call});
    rows.push_back({set(Keys::WS_BETWEEN_FN_CALL_ARGS, " "), group, "After the commas between arguments.", call});
    rows.push_back({set(Keys::ALIGN_FN_CALL_ARGS_LEFT, true), group, "One argument to a line, under the first.", call});
}

void addTemplates(std::vector<KeyGuide>& rows) {
    constexpr KeyGroup group = KeyGroup::Templates;
    rows.push_back({set(Keys::WS_BEFORE_TP_OPEN_BRACKET, " "), group, "Between template and \"<\".", header});
    rows.push_back({set(Keys::WS_AFTER_TP_OPEN_BRACKET, " "), group, "After the \"<\" of parameters and of arguments.",
                    header});
    rows.push_back({set(Keys::WS_BEFORE_TP_CLOSE_BRACKET, " "), group,
                    "Before the \">\" of parameters and of arguments.", header});
    rows.push_back({set(Keys::WS_BEFORE_TP_COMMA, " "), group, "Before the commas between them.", header});
    rows.push_back({set(Keys::WS_BETWEEN_TP_PARAMS, " "), group, "After the commas between them.", header});
    rows.push_back({set(Keys::WS_AFTER_TP_CLOSE_BRACKET, " "), group, "Between the header and what it declares.",
                    header});
    rows.push_back({set(Keys::ALIGN_TP_PARAMS_LEFT, true), group, "One parameter to a line.", header});
}

void addData(std::vector<KeyGuide>& rows) {
    constexpr KeyGroup group = KeyGroup::Data;
    rows.push_back({set(Keys::WS_AFTER_DD_TYPE_ID, " "), group, "Between type and name.", "int    size;\n"});
    rows.push_back({set(Keys::FORMAT_TYPE_ARGUMENTS, true), group,
                    "Template arguments in the types of data, in those that functions return, and in the names of "
                    "classes and functions, are laid out as others are, and so are types behind `using A =` and those "
                    "that pointers to functions return; with them what stands in the parentheses of a declarator and "
                    "of a type, the types of a lambda's parameters, and parameters that old-style heads declare.",
                    "map<int,char *> a;\n",
                    {set(Keys::WS_BETWEEN_TP_PARAMS, " "), set(Keys::ASTERISK_ANCHOR, 0)}});
    rows.push_back({set(Keys::WS_AFTER_DD_NAME, " "), group, "Between the name and \"[\" or \";\".", "int a[2];\n"});
    rows.push_back({set(Keys::WS_AFTER_DD_RBRACKET, " "), group, "After the first \"]\".", "int a[2][3];\n"});
    rows.push_back({set(Keys::WS_BETWEEN_DECLARATORS, " "), group,
                    "Behind the commas between the names of one declaration, and between expressions; absent, those of "
                    "names as in an initialiser, unless that breaks lines. With it, the marks of several names stand "
                    "against each.", "int a,b;\n"});
    rows.push_back({set(Keys::WS_BEFORE_DECLARATOR_COMMA, " "), group,
                    "Before the commas between the names of one declaration, and between expressions; absent, those of "
                    "names as in an initialiser, unless that breaks lines.", "int a,b;\n"});
    rows.push_back({set(Keys::WS_AROUND_BITFIELD_COLON, " "), group, "On both sides of the \":\" of a bit field.",
                    "struct A\n{\n    int bits:3;\n};\n"});
    rows.push_back(
        {set(Keys::WS_BEFORE_DD_COMMA, " "), group, "Before the commas of an initialiser in braces.", table});
    rows.push_back({set(Keys::WS_BETWEEN_DD_ELEMENTS, " "), group,
                    "After the commas of an initialiser in braces; absent, a table keeps its rows.", table});
    rows.push_back({set(Keys::WS_BETWEEN_ROW_ELEMENTS, " "), group,
                    "After the commas within kept rows, and in other braces of expressions (`T{a, b}`); what stands in "
                    "columns stays there.", "int sizes[] = {\n    1,2,\n    3,4,\n};\n"});
    rows.push_back({set(Keys::WS_BETWEEN_CAPTURES, " "), group,
                    "After the commas in [ ]: of what a lambda captures, and of names that take a value apart.",
                    "auto [a,b] = f([a,b] { return a; });\n"});
    rows.push_back(
        {set(Keys::WS_BEFORE_ENUM_COMMA, " "), group, "Before the commas between enumerators.", enumeration});
    rows.push_back({set(Keys::WS_BETWEEN_ENUM_ELEMENTS, " "), group, "After the commas between enumerators.",
                    enumeration});
}

void addMarks(std::vector<KeyGuide>& rows) {
    constexpr KeyGroup group = KeyGroup::Marks;
    rows.push_back({set(Keys::ASTERISK_ANCHOR, 0), group,
                    "What \"*\" of a declaration is written against: 0 the type, 1 the name, -1 or absent as it is.",
                    pointers});
    rows.push_back({set(Keys::AMPERSAND_ANCHOR, 1), group,
                    "What \"&\" of a declaration is written against: 0 the type, 1 the name, -1 or absent as it is.",
                    pointers});
    rows.push_back({set(Keys::ANCHORS_FROM_SOURCE, true), group,
                    "Pointer and reference marks stand against the type or against the name, whichever most of the "
                    "source's do, in place of what the two keys about anchors say. These hold for a source that is out "
                    "of style otherwise: with other white space than the scheme's at most of its commas, \"=\", "
                    "conditions and calls.",
                    "int *p;\nint *q;\nint* r;\n", {set(Keys::ASTERISK_ANCHOR, 0)}});
    rows.push_back({set(Keys::WS_BETWEEN_ASTERISK_ANCHOR, "  "), group, "On the other side of \"*\".", "int*p;\n",
                    {set(Keys::ASTERISK_ANCHOR, 1)}});
    rows.push_back({set(Keys::WS_BETWEEN_AMPERSAND_ANCHOR, "  "), group, "On the other side of \"&\".", "int&r = a;\n",
                    {set(Keys::AMPERSAND_ANCHOR, 1)}});
    rows.push_back({set(Keys::HANGING_ASTERISK, true), group,
                    "Among aligned names, \"*\" with anchor 1 stands in the column before the names.",
                    "int *p;\nlong size;\n", {set(Keys::ASTERISK_ANCHOR, 1), set(Keys::ALIGN_DD_NAMES_LEFT, true),
                     set(Keys::TAB_SIZE, 4), set(Keys::CONVERT_WS, 1)}});
    rows.push_back({set(Keys::HANGING_AMPERSAND, true), group,
                    "Among aligned names, \"&\" with anchor 1 stands in the column before the names.",
                    "int &r = a;\nlong size;\n",
                    {set(Keys::AMPERSAND_ANCHOR, 1), set(Keys::ALIGN_DD_NAMES_LEFT, true),
                     set(Keys::TAB_SIZE, 4), set(Keys::CONVERT_WS, 1)}});
}

void addAlignment(std::vector<KeyGuide>& rows) {
    constexpr KeyGroup group = KeyGroup::Alignment;
    rows.push_back({set(Keys::ALIGN_DD_NAMES_LEFT, true), group, "The names of data that follow each other.",
                    "int a;\nlong size;\n",
                    {set(Keys::TAB_SIZE, 4), set(Keys::CONVERT_WS, 1)}});
    rows.push_back({set(Keys::ALIGN_FN_DECL_NAMES_LEFT, true), group,
                    "The names of function declarations that follow each other.", "int f();\nlong g();\n",
                    {set(Keys::TAB_SIZE, 4), set(Keys::CONVERT_WS, 1)}});
    rows.push_back({set(Keys::ALIGN_CLASS_MEMBER_NAMES_LEFT, true), group,
                    "The names of data and of functions, in one column, within a class.",
                    "class A\n{\n    int f();\n    unsigned long size;\n};\n",
                    {set(Keys::TAB_SIZE, 4), set(Keys::CONVERT_WS, 1)}});
    rows.push_back({set(Keys::ALIGN_DATA_ONLY, true), group,
                    "Forward declarations, friends, `typedef`, constructors, destructors and conversions, and names "
                    "behind the body of a class, neither stand in these columns nor end a run.",
                    "struct A;\nunsigned long size;\nint count;\n",
                    {set(Keys::ALIGN_DD_NAMES_LEFT, true), set(Keys::TAB_SIZE, 4), set(Keys::CONVERT_WS, 1)}});
    rows.push_back({set(Keys::ALIGN_DD_INITIALIZERS, true), group, "The initialisers of data that follow each other.",
                    "int a = 1;\nint size = 2;\n",
                    {set(Keys::TAB_SIZE, 4), set(Keys::CONVERT_WS, 1)}});
    rows.push_back({set(Keys::ALIGN_ENUM_INITIALIZERS, true), group, "The = of enumerators that have a line each.",
                    "enum Color\n{\n    red = 1,\n    green = 2\n};\n",
                    {set(Keys::WS_BETWEEN_ENUM_ELEMENTS, "\n"), set(Keys::TAB_SIZE, 4), set(Keys::CONVERT_WS, 1)}});
}

}  // namespace

void addDeclarationKeys(std::vector<KeyGuide>& rows) {
    addClasses(rows);
    addFunctions(rows);
    addTemplates(rows);
    addData(rows);
    addMarks(rows);
    addAlignment(rows);
}

}  // namespace Tessel
