// Keys of the whole text, braces, and what stays as its author laid it out.
#include "scheme/key_examples.h"
#include "scheme/key_guide_rows.h"

namespace Tessel {

namespace {

using namespace KeyExamples;

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
    rows.push_back({set(Keys::TABS_IN_INDENT_ONLY, true), group,
                    "Where CONVERT_WS turns blanks into tabs, it does so in front of the first text of a line only; "
                    "where it leaves both as they come, columns are reached by blanks, behind the tabs of the "
                    "indentation.",
                    "void f()\n{\n    int  a;        // why\n}\n",
                    {set(Keys::CONVERT_WS, 2), set(Keys::TAB_SIZE, 4)}});
    rows.push_back(
        {set(Keys::MAX_BLANK_LINES, 1), group,
         "So many empty lines may follow each other; those of literals, comments and protected regions stay.",
         "int a;\n\n\n\nint b;\n"});
    rows.push_back({set(Keys::FORMAT_DIRECTIVES, true), group,
                    "The conditions of #if and #elif, and what #define has a name stand for, where that cannot be "
                    "anything but an expression, are laid out as other expressions are, as are the commas between a "
                    "macro's parameters. Kept are bodies that hold statements, \"#\" or types at their start, and what "
                    "may be the name of a file. What stands under an indented #if 0 that goes to the margin moves as "
                    "far as the code around it.",
                    "#if (A)&&B\n#define sum(a,b) ((a)+(b))\n#endif\n",
                    {set(Keys::WS_BEFORE_EXPR_OP, " "), set(Keys::WS_BETWEEN_EXPR_OP_OPERANDS, " "),
                     set(Keys::WS_BETWEEN_FN_CALL_ARGS, " ")}});
    rows.push_back({set(Keys::FORMAT_CONDITIONS, true), group,
                    "The conditions of #if and #elif are laid out as other expressions are, also where "
                    "FORMAT_DIRECTIVES leaves what macros stand for as it is.",
                    "#if (A)&&B\n#define bit(n) (1<<n)\n#endif\n",
                    {set(Keys::WS_BEFORE_EXPR_OP, " "), set(Keys::WS_BETWEEN_EXPR_OP_OPERANDS, " ")}});
    rows.push_back({set(Keys::FORMAT_MACRO_BODIES, true), group,
                    "With FORMAT_DIRECTIVES, statements and members of classes that a macro stands for are laid out as "
                    "others are, in the lines that they stand in, with their braces. A body is indented as that of a "
                    "function is, but where it begins in the line of the directive, or in the first column. Kept are "
                    "bodies that cannot be read.",
                    "#define swap(a,b) \\\n  do { \\\n  t=a; \\\n  a=b; \\\n  } while(0)\n",
                    {set(Keys::FORMAT_DIRECTIVES, true), set(Keys::WS_BEFORE_EXPR_OP, " "),
                     set(Keys::WS_BETWEEN_EXPR_OP_OPERANDS, " "), set(Keys::INDENT_FN_CONTENT, "    "),
                     set(Keys::INDENT_CS_CONTENT, "    "), set(Keys::WS_AFTER_CS_KEY, " ")}});
    rows.push_back({set(Keys::INDENT_FROM_DIRECTIVE, true), group,
                    "What macros stand for is indented from the word behind the #, where blanks stand in front of it; "
                    "else from the #.",
                    "#  define swap(a, b) \\\n  do { \\\n    a = b; \\\n  } while (0)\n",
                    {set(Keys::FORMAT_DIRECTIVES, true), set(Keys::FORMAT_MACRO_BODIES, true),
                     set(Keys::INDENT_FN_CONTENT, "    "), set(Keys::INDENT_CS_CONTENT, "    ")}});
    rows.push_back({set(Keys::WS_AROUND_PASTE, ""), group,
                    "On both sides of the \"##\" that joins names in what a macro stands for.",
                    "#define named(a) a ## _name\n"});
    rows.push_back({set(Keys::ALIGN_LINE_SPLICES, 1), group,
                    "With FORMAT_DIRECTIVES, where the backslashes stand that go on with a macro in the next line: 0 a "
                    "blank behind the text, 1 behind the longest line, 2 at the right margin. Absent, they stay; where "
                    "bodies are laid out, in the column that they have in common.",
                    "#define swap(a, b) \\\n    t = a; \\\n    a = b;\n",
                    {set(Keys::FORMAT_DIRECTIVES, true)}});
    rows.push_back({set(Keys::STRIP_TRAILING_WS, true), group,
                    "Blanks and tabs at line ends go, those of comments too; those of literals, directives of several "
                    "lines, splices and protected regions stay.", "int a;  // why   \nint b;   \n"});
    rows.push_back({set(Keys::WS_BETWEEN_STATEMENTS, " "), group,
                    "Between two statements or declarations on one line, also behind `private:`; absent, they stay as "
                    "they are.",
                    "void f()\n{\n    a();b();\n}\n"});
    rows.push_back({set(Keys::WS_BEFORE_LINE_COMMENT, "  "), group,
                    "Between code and the // behind it. Such comments below each other stay in one column, with the "
                    "lines of nothing but a comment that go on with one; one behind #else stays in the column of that "
                    "behind its #endif. Block comments that end their lines below each other stay in one column too, "
                    "but with KEEP_COLUMNS.", "int a; // why\n"});
    rows.push_back({set(Keys::ALIGN_LINE_COMMENTS, true), group,
                    "Line comments behind the code of lines that follow each other stand in one column, as long as "
                    "they fit in RIGHT_MARGIN; else those do that stand below each other in the source. So do block "
                    "comments that end their lines, a blank behind the longest code.",
                    "int a; // one\nint bcd; // two\n", {set(Keys::WS_BEFORE_LINE_COMMENT, " ")}});
    rows.push_back({set(Keys::ALIGN_ASSIGNMENTS, true), group,
                    "The = of assignments and declarations on lines that follow each other stand in one column, a "
                    "blank behind the longest text in front of them, as long as the lines fit in RIGHT_MARGIN: of "
                    "members, enumerators and parameters too. They do so until an empty line, one without an =, or "
                    "one that is indented otherwise comes, or braces of several lines; other lines in brackets "
                    "behind an = go along with it. Of several in a line the last one counts, for the lines below.",
                    "int a = 1;\nint bcd = 2;\n"});
    rows.push_back({set(Keys::ALIGN_LIST_COLUMNS, true), group,
                    "The elements of a list in braces whose rows hold as many each stand in columns, a blank behind "
                    "the widest of each, where the rows are those that as few columns as make as few rows would have "
                    "in RIGHT_MARGIN: lists of six elements or more, of twenty in other brackets. Those with wider "
                    "gaps, or comments between elements, stay as they are.",
                    "const char* names[] = {\"red\", \"orange\", \"yellow\", \"green\",\n"
                    "                       \"blue\", \"indigo\", \"violet\"};\n",
                    {set(Keys::RIGHT_MARGIN, 60), set(Keys::KEEP_LINE_BREAKS, true)}});
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
                    "match, are kept as written; statements go on behind directives where they cannot have ended. Off "
                    "or absent: such a source is refused, and a directive ends the statement in front of it.",
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
    rows.push_back({set(Keys::WS_BEFORE_STRUCT_OPEN_BRACE, " "), group,
                    "White space before the \"{\" of a struct or union; absent, that of a class.",
                    "struct A\n{\n    int size;\n};\n", {set(Keys::WS_BEFORE_CLASS_OPEN_BRACE, "\n")}});
    rows.push_back({set(Keys::WS_BEFORE_UNION_OPEN_BRACE, " "), group,
                    "White space before the \"{\" of a union; absent, that of a struct.",
                    "union A\n{\n    int size;\n};\n", {set(Keys::WS_BEFORE_STRUCT_OPEN_BRACE, "\n")}});
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
    rows.push_back({set(Keys::JOIN_SHORT_FUNCTIONS, 3), group,
                    "Bodies of functions that come to stand on one line where they fit up to the right margin, and up "
                    "to 80 columns without one: 0 none, 1 empty ones, 2 those of one statement in class bodies too, 3 "
                    "all of one statement. Not those with comments or with blocks.", "int f()\n{\n    return 1;\n}\n",
                    {set(Keys::WS_BEFORE_FN_OPEN_BRACE, " "), set(Keys::WS_AFTER_FN_OPEN_BRACE, "\n"),
                     set(Keys::WS_BEFORE_FN_CLOSE_BRACE, "\n")}});
    rows.push_back({set(Keys::KEEP_ONE_LINE_STATEMENTS, true), group,
                    "Bodies without braces stay on the line of their if, else or loop, statements on that of their "
                    "label.", "void f()\n{\n    if (ready) go();\n}\n", {set(Keys::WS_AFTER_CS_OPEN_BRACE, "\n")}});
    rows.push_back({set(Keys::JOIN_SHORT_STATEMENTS, true), group,
                    "Bodies without braces come to stand on the line of their if, for or while, where they fit up to "
                    "the right margin, and up to 80 columns without one. Not with an else behind them, a comment or a "
                    "block.",
                    "void f()\n{\n    if (ready)\n        go();\n}\n", {set(Keys::WS_AFTER_CS_OPEN_BRACE, "\n")}});
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
                    "longer expression (`a || b &&`) or one of several elements, twice as far in a condition in front "
                    "of `?`, and how far the members of a chain stand behind what is assigned or passed; absent, below "
                    "the expression's first operand.",
                    "void f()\n{\n    call(first, second +\n    third);\n}\n",
                    {set(Keys::KEEP_LINE_BREAKS, true), set(Keys::INDENT_FN_CONTENT, "    ")}});
    rows.push_back({set(Keys::HANGING_FROM_STATEMENT, true), group,
                    "Operators and operands that begin kept lines outside all brackets hang from their statement, by "
                    "WRAP_INDENT, where HANGING_OPERAND_INDENT is present; else behind what they go on with.",
                    "void f()\n{\n    total = first +\n    second;\n}\n",
                    {set(Keys::KEEP_LINE_BREAKS, true), set(Keys::INDENT_FN_CONTENT, "    "),
                     set(Keys::WRAP_INDENT, "  "), set(Keys::HANGING_OPERAND_INDENT, "  ")}});
    rows.push_back({set(Keys::HANGING_FROM_LINE, true), group,
                    "Kept lines inside brackets hang from the line of the bracket, or of the element that they go on "
                    "with, by WRAP_INDENT; else below the first element.",
                    "void f()\n{\n    call(first,\n    second);\n}\n",
                    {set(Keys::KEEP_LINE_BREAKS, true), set(Keys::INDENT_FN_CONTENT, "    "),
                     set(Keys::WRAP_INDENT, "  ")}});
    rows.push_back({set(Keys::HANGING_COMMAS, true), group,
                    "What follows a comma operator in a kept line, in a clause of `for` too, hangs from the statement, "
                    "by WRAP_INDENT; else it stands below the first operand.",
                    "void f()\n{\n    for (i = 1,\n    j = 2; i < j; ++i) go();\n}\n",
                    {set(Keys::KEEP_LINE_BREAKS, true), set(Keys::INDENT_FN_CONTENT, "    "),
                     set(Keys::WRAP_INDENT, "  "), set(Keys::WS_BETWEEN_CS_FOR_CLAUSES, " ")}});
    rows.push_back({set(Keys::KEEP_LINE_INDENT, true), group,
                    "Lines that are kept, and that hang under nothing, stay as far behind the first line of their "
                    "construct as they are. Lines of a comment that begin in front of it stay there, as do, in "
                    "the first column, string literals, and line comments among what is indented.",
                    "void f()\n{\n    go(\n            first);\n}\n",
                    {set(Keys::KEEP_LINE_BREAKS, true), set(Keys::INDENT_FN_CONTENT, "    "),
                     set(Keys::WRAP_INDENT, "  ")}});
    rows.push_back({set(Keys::KEEP_NS_INDENT, true), group,
                    "The contents of a namespace stay in its column where the first of them stands there; others are "
                    "indented by INDENT_NS_CONTENT.", "namespace a {\nnamespace b {\n  int i;\n}\n}\n",
                    {set(Keys::INDENT_NS_CONTENT, "    ")}});
    rows.push_back({set(Keys::INDENT_INNER_NS_ONLY, true), group,
                    "INDENT_NS_CONTENT goes for namespaces within others; the contents of the outermost ones stand in "
                    "their column.", "namespace a {\nint i;\nnamespace b {\nint j;\n}\n}\n",
                    {set(Keys::INDENT_NS_CONTENT, "    ")}});
    rows.push_back({set(Keys::KEEP_FN_RETURN_TYPE_BREAK, true), group,
                    "The name of a function stays on the line below its return type.", "int\nf();\n",
                    {set(Keys::WS_AFTER_FN_DECL_RETURN_TYPE, " ")}});
    rows.push_back({set(Keys::KEEP_BLANK_LINES, 2), group,
                    "Empty lines that stay where the scheme asks for a line end: 1 behind { and in front of } of "
                    "namespaces, classes, enumerations and extern \"C\", and between enumerators; 2 in all bodies, "
                    "behind the labels of switch and in front of blocks; 3 in front of else and its kin, too; "
                    "4 in front of the { of "
                    "bodies, too.",
                    "int f()\n{\n\n    return 1;\n}\n", {set(Keys::WS_AFTER_FN_OPEN_BRACE, "\n")}});
    rows.push_back({set(Keys::KEEP_REGION_INDENT, true), group,
                    "The lines of protected regions keep the white space at their start.",
                    "void f()\n{\n        // VT-FORMAT-OFF\n            a  =  b;\n        // VT-FORMAT-ON\n}\n",
                    {set(Keys::INDENT_FN_CONTENT, "    ")}});
    rows.push_back({set(Keys::KEEP_DIRECTIVE_COMMENTS, true), group,
                    "Comments in the first column in front of a directive that stands there, too, stay in it, and so "
                    "do those in the column of one that ALIGN_PPD_LEFT_MOST leaves where it is.",
                    "void f()\n{\n// not everywhere\n#ifdef fast\n    go();\n#endif\n}\n",
                    {set(Keys::INDENT_FN_CONTENT, "    ")}});
    rows.push_back({set(Keys::KEEP_FOREIGN_REGIONS, true), group,
                    "What stands between comments that fence it off from other formatters, `clang-format off` and "
                    "`clang-format on`, or `*INDENT-OFF*` and `*INDENT-ON*`, is a protected region too.",
                    "// clang-format off\nint   a;\n// clang-format on\nint   b;\n",
                    {set(Keys::WS_AFTER_DD_TYPE_ID, " ")}});
    rows.push_back({set(Keys::KEEP_COLUMNS, true),
                    group,
                    "A tab, or several blanks, stays where the scheme asks for one blank.",
                    "int    size;\nchar*  name;\n",
                    {set(Keys::WS_AFTER_DD_TYPE_ID, " ")}});
    rows.push_back({set(Keys::KEEP_TABS, true),
                    group,
                    "The tabs and blanks in front of a line stay as they are where they end in the column that is "
                    "wanted.",
                    "void f()\n{\n\tg();\n}\n",
                    {set(Keys::INDENT_FN_CONTENT, "        "), set(Keys::TAB_SIZE, 8), set(Keys::CONVERT_WS, 1)}});
    rows.push_back(
        {set(Keys::INDENT_FROM_LINE, true),
         group,
         "Bodies are indented from the indentation of the line on which their construct begins, not from the "
         "construct's own column.",
         "void f()\n{\n    int m = w(); if (m > 9)\n    m = 9;\n}\n",
         {set(Keys::INDENT_CS_CONTENT, "    ")}});
}

}  // namespace

void addLayoutKeys(std::vector<KeyGuide>& rows) {
    addWholeText(rows);
    addBraces(rows);
    addOneLine(rows);
    addKeptLayout(rows);
}

}  // namespace Tessel
