#include "scheme/key_guide_rows.h"

#include <utility>

#include "scheme/extension_keys.h"
#include "scheme/property_keys.h"

namespace Tessel {

namespace {

struct KeyName {
    KeyName(std::string_view key) : name(key) {}
    template <PropertyType type>
    KeyName(ExtensionKey<type> key) : name(key.name) {}
    std::string_view name;
};

Property set(KeyName key, decltype(Property::value) value) {
    return {std::string(key.name), std::move(value)};
}

// ---- sources that several keys show themselves on

constexpr const char* space = "namespace app{int size;}\n";
constexpr const char* classOfOne = "class A{int size;};\n";
constexpr const char* functionOfOne = "int f(){return 1;}\n";
constexpr const char* condition = "void f()\n{\n    if(ready){go();}\n}\n";
constexpr const char* enumeration = "enum Color{red,green};\n";
constexpr const char* enumerationOverLines = "enum Color\n{\nred,\ngreen\n};\n";
constexpr const char* block = "void f()\n{\n    {go();}\n}\n";
constexpr const char* linkage = "extern \"C\"{\nint f();\n}\n";
constexpr const char* table = "int sizes[]={1,2};\n";
constexpr const char* derived = "class A:public B,public C\n{\n};\n";
constexpr const char* constructor = "A::A(int size):size_(size),top_(0)\n{\n}\n";
constexpr const char* declaration = "int f(int a,int b);\n";
constexpr const char* call = "int x = f(a,b);\n";
constexpr const char* header = "template<class T,int n>\nclass A;\n";
constexpr const char* loop = "void f()\n{\n    for(int i = 0;i < n;++i) go(i);\n}\n";
constexpr const char* choice =
    "void f()\n{\n    switch (key)\n    {\n    case 1:go();\n    default:stop();\n    }\n}\n";
constexpr const char* sum = "int x = a+b;\n";
constexpr const char* longCall = "int x = call(first_argument, second_argument, third_argument);\n";
constexpr const char* longSum = "int x = first_operand + second_operand + third_operand;\n";
constexpr const char* longChain = "void f()\n{\n    out << first_operand << second_operand << third_operand;\n}\n";
constexpr const char* longParameters = "void f(int first_parameter, int second_parameter, int third_one);\n";
constexpr const char* pointers = "int * p;\nint & r = *p;\n";

std::vector<Property> wrapping(std::vector<Property> more = {}) {
    more.push_back(set(Keys::LINE_WRAP, true));
    more.push_back(set(Keys::RIGHT_MARGIN, 40));
    return more;
}

// ---- the groups

void addWholeText(std::vector<KeyGuide>& rows) {
    constexpr KeyGroup group = KeyGroup::WholeText;
    rows.push_back({set(Keys::VANTREL_VERSION, "1.2.1"), group,
                    "The version that the scheme was written for. A scheme without it is one of version 1.1.0, and is "
                    "converted.", ""});
    rows.push_back({set(Keys::REQUIRED_VERSION, "1"), group,
                    "The version of vantrel that the scheme needs; one of another major version refuses it.", ""});
    rows.push_back({set(Keys::LEFT_MARGIN, ""), group,
                    "Indentation of the outermost level. Absent: the white space at the start of its lines stays as it "
                    "is; the contents of bodies are still indented where their key is present.",
                    "    int a;\n  int b;\n"});
    rows.push_back(
        {set(Keys::TAB_SIZE, 8),
         group,
         "Columns to a tab stop, in the input and in the output; alignment goes by tab stops. 1 when absent.",
         "int\ta;\n",
         {set(Keys::CONVERT_WS, 1), set(Keys::DATA_DO_NOT_FORMAT, true)}});
    rows.push_back(
        {set(Keys::CONVERT_WS, 1),
         group,
         "0 tabs and blanks as they come, 1 tabs become blanks, 2 blanks become tabs. Kept are literals, "
         "comments but for the start of their lines, what stands as it is (protected regions, #if 0), and in "
         "a directive also the name of a header and all that follows an apostrophe in a word or number, a "
         "raw string, or a literal that goes on in the next line.",
         "int\ta;\n",
         {set(Keys::TAB_SIZE, 8)}});
    rows.push_back(
        {set(Keys::MAX_BLANK_LINES, 1), group,
         "So many empty lines may follow each other; those of literals, comments and protected regions stay.",
         "int a;\n\n\n\nint b;\n"});
    rows.push_back({set(Keys::STRIP_TRAILING_WS, true), group,
                    "Blanks and tabs at line ends go, those of comments too; those of literals, directives of several "
                    "lines, splices and protected regions stay.", "int a;  // why   \nint b;   \n"});
    rows.push_back({set(Keys::WS_BETWEEN_STATEMENTS, " "), group,
                    "Between two statements or declarations on one line; absent, they stay as they are.",
                    "void f()\n{\n    a();b();\n}\n"});
    rows.push_back({set(Keys::WS_BEFORE_LINE_COMMENT, "  "), group,
                    "Between code and the // behind it. Such comments below each other stay in one column, with the "
                    "lines of nothing but a comment that go on with one.", "int a; // why\n"});
    rows.push_back({set(Keys::ALIGN_PPD_LEFT_MOST, true), group,
                    "On: directives start at the left margin. Off: they are indented like the code around them. "
                    "Absent: they stay where they are.", "void f()\n{\n    #if FAST\n    go();\n    #endif\n}\n",
                    {set(Keys::LEFT_MARGIN, ""), set(Keys::INDENT_FN_CONTENT, "    ")}});
    rows.push_back({set(Keys::FN_DO_NOT_FORMAT, true), group,
                    "Return types that end in * or & stay as they are.", "int *  f();\n",
                    {set(Keys::ASTERISK_ANCHOR, 0), set(Keys::WS_AFTER_FN_DECL_RETURN_TYPE, " ")}});
    rows.push_back({set(Keys::DATA_DO_NOT_FORMAT, true), group,
                    "The text from a data declaration's type to its name stays as it is.", "int    size;\n",
                    {set(Keys::WS_AFTER_DD_TYPE_ID, " ")}});
    rows.push_back({set(Keys::KEEP_UNRECOGNIZED, true), group,
                    "Macros that stand by themselves without \";\", and what no rule recognises but whose brackets "
                    "match, are kept as written. Off or absent: such a source is refused.",
                    "MODULE(app)\nif (ready) go();\n"});
}

struct BraceKeys {
    KeyName beforeOpen, afterOpen, indent, beforeClose;
    const char* construct;
    const char* source;
    const char* lines;  // the same over several lines
};

void addBraces(std::vector<KeyGuide>& rows) {
    constexpr KeyGroup group = KeyGroup::Braces;
    const BraceKeys constructs[] = {
        {Keys::GLOBAL_WS_BEFORE_OPEN_BRACE, Keys::GLOBAL_WS_AFTER_OPEN_BRACE, Keys::GLOBAL_INDENT_CONTENT,
         Keys::GLOBAL_WS_BEFORE_CLOSE_BRACE, "a block on its own, and of extern \"C\"", block,
         "void f()\n{\n{\ngo();\n}\n}\n"},
        {Keys::WS_BEFORE_NS_OPEN_BRACE, Keys::WS_AFTER_NS_OPEN_BRACE, Keys::INDENT_NS_CONTENT,
         Keys::WS_BEFORE_NS_CLOSE_BRACE, "a namespace", space, "namespace app\n{\nint size;\n}\n"},
        {Keys::WS_BEFORE_CLASS_OPEN_BRACE, Keys::WS_AFTER_CLASS_OPEN_BRACE, Keys::INDENT_CLASS_CONTENT,
         Keys::WS_BEFORE_CLASS_CLOSE_BRACE, "a class, struct or union", classOfOne, "class A\n{\nint size;\n};\n"},
        {Keys::WS_BEFORE_FN_OPEN_BRACE, Keys::WS_AFTER_FN_OPEN_BRACE, Keys::INDENT_FN_CONTENT,
         Keys::WS_BEFORE_FN_CLOSE_BRACE, "a function", functionOfOne, "int f()\n{\nreturn 1;\n}\n"},
        {Keys::WS_BEFORE_CS_OPEN_BRACE, Keys::WS_AFTER_CS_OPEN_BRACE, Keys::INDENT_CS_CONTENT,
         Keys::WS_BEFORE_CS_CLOSE_BRACE, "a control statement", condition,
         "void f()\n{\n    if (ready)\n    {\n    go();\n    }\n}\n"},
        {Keys::WS_BEFORE_ENUM_OPEN_BRACE, Keys::WS_AFTER_ENUM_OPEN_BRACE, Keys::INDENT_ENUM_CONTENT,
         Keys::WS_BEFORE_ENUM_CLOSE_BRACE, "an enumeration", enumeration, enumerationOverLines},
        {Keys::WS_BEFORE_DD_OPEN_BRACE, Keys::WS_AFTER_DD_OPEN_BRACE, Keys::INDENT_DD_CONTENT,
         Keys::WS_BEFORE_DD_CLOSE_BRACE, "an initialiser", table, "int sizes[] =\n{\n1,\n2\n};\n"},
    };
    for (const BraceKeys& keys : constructs) {
        const std::string of = " of " + std::string(keys.construct);
        const bool isList = keys.source == table;
        const bool isStart = isList || keys.source == block;  // a line break there is hard to tell from none
        rows.push_back({set(keys.beforeOpen, isStart ? " " : "\n"), group, "White space before the \"{\"" + of + '.',
                        isList ? table : keys.source == block ? "void f()\n{\n    a();{go();}\n}\n" : keys.source});
        rows.push_back({set(keys.afterOpen, isList ? " " : "\n"), group, "White space after the \"{\"" + of + '.',
                        keys.source});
        rows.push_back({set(keys.indent, "    "), group, "Indentation of what is between the braces" + of + '.',
                        keys.lines});
        rows.push_back({set(keys.beforeClose, isList ? " " : "\n"), group, "White space before the \"}\"" + of + '.',
                        keys.source});
    }
    rows.push_back({set(Keys::INDENT_CS_SINGLE, "  "), group,
                    "Indentation of a body without braces; absent, that of one with braces.",
                    "void f()\n{\nif (ready)\ngo();\n}\n"});
    rows.push_back({set(Keys::WS_BEFORE_LINKAGE_OPEN_BRACE, "\n"), group,
                    "White space before the \"{\" of extern \"C\".", linkage});
    rows.push_back({set(Keys::INDENT_LINKAGE_CONTENT, "    "), group, "Indentation of what is between the braces of "
                    "extern \"C\".", linkage});
}

void addOneLine(std::vector<KeyGuide>& rows) {
    constexpr KeyGroup group = KeyGroup::OneLine;
    rows.push_back({set(Keys::KEEP_ONE_LINE_FUNCTIONS, 3), group,
                    "Bodies of functions that stay on one line: 0 none, 1 empty ones, 2 those in class bodies too, 3 "
                    "all.", "int f() { return 1; }\n",
                    {set(Keys::WS_BEFORE_FN_OPEN_BRACE, "\n"), set(Keys::WS_AFTER_FN_OPEN_BRACE, "\n")}});
    rows.push_back({set(Keys::KEEP_ONE_LINE_STATEMENTS, true), group,
                    "Bodies without braces stay on the line of their if, else or loop, statements on that of their "
                    "label.", "void f()\n{\n    if (ready) go();\n}\n", {set(Keys::WS_AFTER_CS_OPEN_BRACE, "\n")}});
    rows.push_back({set(Keys::KEEP_ONE_LINE_BLOCKS, true), group,
                    "Blocks of statements and of declarations stay on one line.",
                    "void f()\n{\n    if (ready) { go(); }\n}\n",
                    {set(Keys::WS_BEFORE_CS_OPEN_BRACE, "\n"), set(Keys::WS_AFTER_CS_OPEN_BRACE, "\n")}});
    rows.push_back({set(Keys::KEEP_ONE_LINE_LISTS, true), group,
                    "Enumerators, initialisers in braces and classes stay on one line.", "enum Color { red, green };\n",
                    {set(Keys::WS_BEFORE_ENUM_OPEN_BRACE, "\n"), set(Keys::WS_BETWEEN_ENUM_ELEMENTS, "\n")}});
    rows.push_back({set(Keys::KEEP_ONE_LINE_INITS, true), group,
                    "A constructor's initialisers stay on the line of its parameters.", "A::A() : size(0) { }\n",
                    {set(Keys::WS_BEFORE_CLASS_INIT_LIST, "\n    ")}});
}

void addKeptLayout(std::vector<KeyGuide>& rows) {
    constexpr KeyGroup group = KeyGroup::KeptLayout;
    rows.push_back(
        {set(Keys::KEEP_LINE_BREAKS, true),
         group,
         "Lines that begin inside lists, conditions and expressions, or behind a template header or the "
         "type of data, still do so. They hang under what they continue: the first element of their list, the "
         "first operand behind = or return, the first . of a chain; else WRAP_INDENT behind their statement. "
         "Off, such lines stand at the indentation.",
         "int x = f(first,\n  second);\n",
         {set(Keys::WS_BETWEEN_FN_CALL_ARGS, " ")}});
    rows.push_back({set(Keys::HANGING_OPERAND_INDENT, "    "), group,
                    "How far a kept line stands behind the first operand that it goes on with, where that is part of a "
                    "longer expression (`a || b &&`), one of several elements, or a condition in front of `?`, and how "
                    "far the members of a chain stand behind what is assigned or passed; absent, below the "
                    "expression's first operand.",
                    "void f()\n{\n    call(first, second +\n    third);\n}\n",
                    {set(Keys::KEEP_LINE_BREAKS, true), set(Keys::INDENT_FN_CONTENT, "    ")}});
    rows.push_back({set(Keys::KEEP_LINE_INDENT, true), group,
                    "Lines that are kept, and that hang under nothing, stay as far behind the first line of their "
                    "construct as they are.", "void f()\n{\n    go(\n            first);\n}\n",
                    {set(Keys::KEEP_LINE_BREAKS, true), set(Keys::INDENT_FN_CONTENT, "    "),
                     set(Keys::WRAP_INDENT, "  ")}});
    rows.push_back({set(Keys::KEEP_FN_RETURN_TYPE_BREAK, true), group,
                    "The name of a function stays on the line below its return type.", "int\nf();\n",
                    {set(Keys::WS_AFTER_FN_DECL_RETURN_TYPE, " ")}});
    rows.push_back({set(Keys::KEEP_BLANK_LINES, 2), group,
                    "Empty lines that stay where the scheme asks for a line end: 1 behind { and in front of } of "
                    "namespaces, classes, enumerations and extern \"C\", and between enumerators; 2 in all bodies.",
                    "int f()\n{\n\n    return 1;\n}\n", {set(Keys::WS_AFTER_FN_OPEN_BRACE, "\n")}});
    rows.push_back({set(Keys::KEEP_REGION_INDENT, true), group,
                    "The lines of protected regions keep the white space at their start.",
                    "void f()\n{\n        // VT-FORMAT-OFF\n            a  =  b;\n        // VT-FORMAT-ON\n}\n",
                    {set(Keys::INDENT_FN_CONTENT, "    ")}});
    rows.push_back({set(Keys::KEEP_COLUMNS, true),
                    group,
                    "A tab, or several blanks, stays where the scheme asks for one blank.",
                    "int    size;\nchar*  name;\n",
                    {set(Keys::WS_AFTER_DD_TYPE_ID, " ")}});
    rows.push_back(
        {set(Keys::INDENT_FROM_LINE, true),
         group,
         "Bodies are indented from the indentation of the line on which their construct begins, not from the "
         "construct's own column.",
         "void f()\n{\n    int m = w(); if (m > 9)\n    m = 9;\n}\n",
         {set(Keys::INDENT_CS_CONTENT, "    ")}});
}

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
    rows.push_back({set(Keys::WS_BEFORE_FN_QUALIFIER, " "), group,
                    "Between the parameters and the word behind them: const, noexcept, override, ->.",
                    "class A\n{\n    int size()const;\n};\n"});
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
                    "Template arguments in the types of data, and in those that functions return, are laid out as "
                    "others are.",
                    "map<int,char *> a;\n",
                    {set(Keys::WS_BETWEEN_TP_PARAMS, " "), set(Keys::ASTERISK_ANCHOR, 0)}});
    rows.push_back({set(Keys::WS_AFTER_DD_NAME, " "), group, "Between the name and \"[\".", "int a[2];\n"});
    rows.push_back({set(Keys::WS_AFTER_DD_RBRACKET, " "), group, "After the first \"]\".", "int a[2][3];\n"});
    rows.push_back({set(Keys::WS_BETWEEN_DECLARATORS, " "), group,
                    "Behind the commas between the names of one declaration; absent, as in an initialiser, unless that "
                    "breaks lines.", "int a,b;\n"});
    rows.push_back({set(Keys::WS_BEFORE_DECLARATOR_COMMA, " "), group,
                    "Before the commas between the names of one declaration; absent, as in an initialiser, unless that "
                    "breaks lines.", "int a,b;\n"});
    rows.push_back({set(Keys::WS_AROUND_BITFIELD_COLON, " "), group, "On both sides of the \":\" of a bit field.",
                    "struct A\n{\n    int bits:3;\n};\n"});
    rows.push_back(
        {set(Keys::WS_BEFORE_DD_COMMA, " "), group, "Before the commas of an initialiser in braces.", table});
    rows.push_back({set(Keys::WS_BETWEEN_DD_ELEMENTS, " "), group,
                    "After the commas of an initialiser in braces; absent, a table keeps its rows.", table});
    rows.push_back({set(Keys::WS_BETWEEN_ROW_ELEMENTS, " "), group,
                    "After the commas within kept rows, and in other braces of expressions (`T{a, b}`); what stands in "
                    "columns stays there.", "int sizes[] = {\n    1,2,\n    3,4,\n};\n"});
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
                    "Forward declarations, friends, `typedef`, constructors, destructors and conversions neither stand "
                    "in these columns nor end a run.", "struct A;\nunsigned long size;\nint count;\n",
                    {set(Keys::ALIGN_DD_NAMES_LEFT, true), set(Keys::TAB_SIZE, 4), set(Keys::CONVERT_WS, 1)}});
    rows.push_back({set(Keys::ALIGN_DD_INITIALIZERS, true), group, "The initialisers of data that follow each other.",
                    "int a = 1;\nint size = 2;\n",
                    {set(Keys::TAB_SIZE, 4), set(Keys::CONVERT_WS, 1)}});
    rows.push_back({set(Keys::ALIGN_ENUM_INITIALIZERS, true), group, "The = of enumerators that have a line each.",
                    "enum Color\n{\n    red = 1,\n    green = 2\n};\n",
                    {set(Keys::WS_BETWEEN_ENUM_ELEMENTS, "\n"), set(Keys::TAB_SIZE, 4), set(Keys::CONVERT_WS, 1)}});
}

void addControl(std::vector<KeyGuide>& rows) {
    constexpr KeyGroup group = KeyGroup::Control;
    rows.push_back({set(Keys::WS_AFTER_CS_KEY, " "), group, "Between if, for, while, switch, catch and \"(\".",
                    condition});
    rows.push_back(
        {set(Keys::WS_AFTER_CS_OPEN_PAREN, " "), group, "After the \"(\" of control statements.", condition});
    rows.push_back({set(Keys::WS_BEFORE_CS_CLOSE_PAREN, " "), group, "Before the \")\" of control statements.",
                    condition});
    rows.push_back({set(Keys::WS_BETWEEN_CS, "\n"), group,
                    "Between \"}\" and else, catch, or the while of do; after a part without braces, always a line "
                    "break.", "void f()\n{\n    if (ready) {\n        go();\n    } else {\n    }\n}\n"});
    rows.push_back({set(Keys::WS_BEFORE_DO_WHILE, " "),
                    group,
                    "Between the \"}\" of a do and its while; absent, as in front of else.",
                    "void f()\n{\n    do {\n        go();\n    } while (ready);\n}\n",
                    {set(Keys::WS_BETWEEN_CS, "\n")}});
    rows.push_back({set(Keys::WS_BETWEEN_CS_FOR_CLAUSES, " "), group, "After each \";\" in the head of a for.", loop});
    rows.push_back({set(Keys::ALIGN_CS_FOR_CLAUSES_LEFT, true), group,
                    "Each clause of a for on a line of its own, under the first.", loop});
    rows.push_back({set(Keys::WS_BETWEEN_EMPTY_FOR_CLAUSES, ""), group,
                    "In front of a clause of a for with nothing in it.", "void f()\n{\n    for (; ;) go();\n}\n",
                    {set(Keys::WS_BETWEEN_CS_FOR_CLAUSES, " ")}});
    rows.push_back({set(Keys::INDENT_LABEL, ""), group,
                    "Indentation of the labels that goto goes to, from the construct in whose body they stand; absent, "
                    "that of statements.", "void f()\n{\n    go();\n    end:\n    stop();\n}\n",
                    {set(Keys::INDENT_FN_CONTENT, "    ")}});
    rows.push_back({set(Keys::INDENT_CS_CASE_LABELS, "    "), group, "Indentation of case labels, from the switch.",
                    choice});
    rows.push_back({set(Keys::INDENT_CS_CASE_CONTENT, "        "), group,
                    "Indentation of the statements below case labels, from the switch.", choice,
                    {set(Keys::WS_AFTER_CS_CASE_LABELS, "\n")}});
    rows.push_back({set(Keys::WS_AFTER_CS_CASE_LABELS, "\n"), group,
                    "Between a case label and its first statement; without a line break, comments below the label stay "
                    "there.", choice});
    rows.push_back(
        {set(Keys::WS_BEFORE_CASE_OPEN_BRACE, " "), group,
         "Between a case label and the \"{\" behind it; the block then goes by the column of the label.",
         "void f()\n{\n    switch (key)\n    {\n    case 1:\n        {\n            go();\n        }\n    }\n}\n"});
}

void addExpressions(std::vector<KeyGuide>& rows) {
    constexpr KeyGroup group = KeyGroup::Expressions;
    rows.push_back({set(Keys::WS_BETWEEN_EXPR_OP_OPERANDS, " "), group, "After a binary operator.", sum});
    rows.push_back({set(Keys::WS_BEFORE_EXPR_OP, " "), group, "Before a binary operator.", sum});
    rows.push_back({set(Keys::WS_BEFORE_CAST_OPEN_PAREN, " "), group,
                    "Between static_cast<T> or its kin and \"(\"; absent, as behind a binary operator.",
                    "int x = static_cast<int>(a);\n"});
    rows.push_back({set(Keys::WS_AFTER_CAST, " "), group, "Between `(T)` and its operand.", "int x = (int)a;\n"});
    rows.push_back({set(Keys::WS_AFTER_DELETE_BRACKETS, " "), group, "Between `delete[]` and its operand.",
                    "void f()\n{\n    delete[]a;\n}\n"});
    rows.push_back({set(Keys::WS_AFTER_EXPR_OPEN_PAREN, " "), group, "After \"(\", that of calls too.", call});
    rows.push_back({set(Keys::WS_BEFORE_EXPR_CLOSE_PAREN, " "), group, "Before \")\", that of calls too.", call});
    rows.push_back({set(Keys::WS_AFTER_LBRACKET, " "), group, "After \"[\".", "int x = a[1];\n"});
    rows.push_back({set(Keys::WS_BEFORE_RBRACKET, " "), group, "Before \"]\".", "int x = a[1];\n"});
}

void addLongLines(std::vector<KeyGuide>& rows) {
    constexpr KeyGroup group = KeyGroup::LongLines;
    rows.push_back({set(Keys::LINE_WRAP, true), group, "Breaks lines that are longer than the right margin.", longCall,
                    {set(Keys::RIGHT_MARGIN, 40)}});
    rows.push_back({set(Keys::RIGHT_MARGIN, 40), group, "Columns that a line may have; 0: any number.", longCall,
                    {set(Keys::LINE_WRAP, true)}});
    rows.push_back({set(Keys::WRAP_STYLE, 2), group,
                    "Where the continuation starts: 0 at the indentation of the construct, 1 under its first piece, 2 "
                    "at the indentation with WRAP_INDENT added.", longCall,
                    wrapping({set(Keys::WRAP_INDENT, "        ")})});
    rows.push_back({set(Keys::WRAP_INDENT, "        "), group, "Indentation of continuations, with WRAP_STYLE 2.",
                    longCall, wrapping({set(Keys::WRAP_STYLE, 2)})});
    rows.push_back({set(Keys::EXPR_WRAP_STYLE, 2), group,
                    "2: operators end the lines that are broken at them; 0, 1: they start the next one.", longSum,
                    wrapping()});
    rows.push_back(
        {set(Keys::COMMA_WRAP_STYLE, 1), group,
         "2: commas end the lines that are broken at them; 0, 1: they start the next one. With 0, a list that "
         "would be filled (LIST_WRAP_STRATEGY 1) is not broken.",
         longCall, wrapping({})});
    rows.push_back({set(Keys::SHIFT_WRAP_STYLE, 2), group,
                    "How chains of << and >> are broken: 0 never, 1 the operators start lines, 2 they end them.",
                    longChain, wrapping()});
    rows.push_back({set(Keys::LIST_WRAP_STRATEGY, 1), group,
                    "Lists of parameters, initialisers and enumerators: 0 are not broken, 1 are filled line by line, 2 "
                    "are broken like expressions, at every comma if they do not fit.", longParameters,
                    wrapping({set(Keys::COMMA_WRAP_STYLE, 2)})});
    rows.push_back({set(Keys::CALL_ARGS_WRAP_STRATEGY, 1), group,
                    "The arguments of calls: 0 are not broken, 1 are filled line by line, 2, or absent, are broken at "
                    "every comma.", "int x = call(first, second, third, fourth, fifth);\n",
                    wrapping({set(Keys::COMMA_WRAP_STYLE, 2)})});
    rows.push_back({set(Keys::EXPR_WRAP_STRATEGY, 1), group,
                    "Operands: 1 are filled line by line; 2, or absent: lines are broken at all operators of a rank.",
                    longSum, wrapping()});
    rows.push_back({set(Keys::WRAP_LAST_RESORT, true), group,
                    "Where nothing else brings a line within the margin, one begins behind `=` or `(`, WRAP_INDENT "
                    "behind the indentation.", "a_long_name_of_a_type a_long_name = a_function_with_a_name();\n",
                    wrapping({set(Keys::WRAP_INDENT, "    ")})});
}

void addWithoutEffect(std::vector<KeyGuide>& rows) {
    const std::string meaning = "Part of the catalogue and kept in scheme files, but nothing is laid out by it.";
    for (const std::string_view key :
         {Keys::GLOBAL_WS_AFTER_OPEN_PAREN, Keys::GLOBAL_WS_BEFORE_CLOSE_PAREN, Keys::GLOBAL_WS_BEFORE_COMMA,
          Keys::WS_AFTER_ACCESS_SPEC_LABEL, Keys::INDENT_CLASS_INITS, Keys::INDENT_FN_PARAMS, Keys::WS_AFTER_FN_DECL,
          Keys::WS_BETWEEN_CS_CASES}) {
        rows.push_back({set(key, ""), KeyGroup::WithoutEffect, meaning, ""});
    }
    for (const std::string_view key : {Keys::ALIGN_BASE_CLAUSES_LEFT_ON_WRAP, Keys::ALIGN_FN_PARAMS_LEFT_ON_WRAP,
                                       Keys::ALIGN_CS_FOR_CLAUSES_ON_WRAP}) {
        rows.push_back({set(key, false), KeyGroup::WithoutEffect, meaning, ""});
    }
    rows.push_back({set(Keys::LINE_WRAP_DO_NOT_FORMAT, 0), KeyGroup::WithoutEffect, meaning, ""});
}

}  // namespace

std::vector<KeyGuide> keyGuideRows() {
    std::vector<KeyGuide> rows;
    addWholeText(rows);
    addBraces(rows);
    addOneLine(rows);
    addKeptLayout(rows);
    addClasses(rows);
    addFunctions(rows);
    addTemplates(rows);
    addData(rows);
    addMarks(rows);
    addAlignment(rows);
    addControl(rows);
    addExpressions(rows);
    addLongLines(rows);
    addWithoutEffect(rows);
    return rows;
}

}  // namespace Tessel
