// Keys of control statements, expressions and long lines.
#include "scheme/key_examples.h"
#include "scheme/key_guide_rows.h"

namespace Tessel {

namespace {

using namespace KeyExamples;

void addControl(std::vector<KeyGuide>& rows) {
    constexpr KeyGroup group = KeyGroup::Control;
    rows.push_back({set(Keys::WS_AFTER_CS_KEY, " "), group, "Between if, for, while, switch, catch and \"(\".",
                    condition});
    rows.push_back({set(Keys::WS_AFTER_CS_MACRO, " "), group,
                    "Between a macro that governs a statement and \"(\"; when absent as FORMAT_MACRO_CALLS has it.",
                    "void f()\n{\n    FOR_EACH(a) {\n        b();\n    }\n}\n", {set(Keys::KEEP_UNRECOGNIZED, true)}});
    rows.push_back({set(Keys::WS_BEFORE_CS_MACRO_OPEN_BRACE, "\n"), group,
                    "Between such a macro and the \"{\" of what it governs; absent, as control statements have it.",
                    "void f()\n{\n    FOR_EACH(a) {\n        b();\n    }\n}\n", {set(Keys::KEEP_UNRECOGNIZED, true)}});
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
    rows.push_back({set(Keys::KEEP_FIRST_COLUMN_LABELS, true), group,
                    "Labels that goto goes to stay in the first column, where what is around them is indented.",
                    "void f()\n{\n    go();\nend:\n    stop();\n}\n", {set(Keys::INDENT_LABEL, "  ")}});
    rows.push_back({set(Keys::INDENT_CS_CASE_LABELS, "    "), group, "Indentation of case labels, from the switch.",
                    choice});
    rows.push_back({set(Keys::INDENT_CS_CASE_CONTENT, "        "), group,
                    "Indentation of the statements below case labels, from the switch.", choice,
                    {set(Keys::WS_AFTER_CS_CASE_LABELS, "\n")}});
    rows.push_back({set(Keys::FORMAT_LABELS, true), group,
                    "Labels are laid out, those in classes too: a blank between their words, none in front of their "
                    "\":\", what stands behind case as an expression. Comments in front of one, in its column, stay "
                    "in it. What stands in front of the first one of a switch is indented as in other blocks.",
                    "void f()\n{\n    switch (x)\n    {\n    case  A|B :\n        g();\n    default :\n        h();\n"
                    "    }\n}\n",
                    {set(Keys::WS_BETWEEN_EXPR_OP_OPERANDS, " ")}});
    rows.push_back({set(Keys::WS_AFTER_CS_CASE_LABELS, "\n"), group,
                    "Between a case label and its first statement; without a line break, comments below the label stay "
                    "there.", choice});
    rows.push_back(
        {set(Keys::WS_BEFORE_CASE_OPEN_BRACE, " "), group,
         "Between a case label and the \"{\" behind it; the block then goes by the column of the label.",
         "void f()\n{\n    switch (key)\n    {\n    case 1:\n    {\n        go();\n    }\n    }\n}\n"});
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
    rows.push_back({set(Keys::FORMAT_OTHER_GAPS, true), group,
                    "Between tokens that no other key is about: a blank between words, behind `return`, "
                    "`new` and `...`, and where words follow what ends in brackets, "
                    "nothing behind `!` and its like, in front of subscripts, `,` and `;`, and at `.` and `->`. "
                    "Operands of assembler stand as arguments do, and the braces of lambdas behind their heads where "
                    "those of functions do.",
                    "int f()\n{\n    delete [] p;\n    return(! a [i] && a  ->  b);\n}\n"});
    rows.push_back({set(Keys::KEEP_UNARY_BLANKS, true), group,
                    "Blanks behind `!`, `-` and their like stay, where FORMAT_OTHER_GAPS would take them away.",
                    "int x = ! a - - b;\n", {set(Keys::FORMAT_OTHER_GAPS, true)}});
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
    rows.push_back({set(Keys::WRAP_WHOLE_PARTS, true), group,
                    "What fits on a line of its own stays whole: lines begin behind `=`, and at operators, before they "
                    "begin in the arguments of calls.", "int x = a_function(its_first, its_second);\n",
                    wrapping({set(Keys::WRAP_INDENT, "    "), set(Keys::COMMA_WRAP_STYLE, 2)})});
    rows.push_back(
        {set(Keys::WRAP_BY_WEIGHT, 1), group,
         "The lines of a statement, a declaration or a head begin where all of them together weigh least: one weighs "
         "the more, the closer what it parts belongs together and the deeper that stands in brackets. 1: elements "
         "stand below the name of their list sooner; 2: beside its bracket sooner. With KEEP_LINE_BREAKS and "
         "HANGING_OPERAND_INDENT.",
         "a_template<of, three> some_name(its_argument);\n",
         wrapping({set(Keys::WRAP_INDENT, "    "), set(Keys::COMMA_WRAP_STYLE, 2), set(Keys::KEEP_LINE_BREAKS, true),
                   set(Keys::HANGING_OPERAND_INDENT, "    ")})});
    rows.push_back(
        {set(Keys::LITERALS_BEYOND_MARGIN, true), group,
         "With WRAP_BY_WEIGHT, a string literal may run over the margin where a line that begins in front of it would "
         "part what belongs together.",
         "print(\"a text that is longer than the line\");\n",
         wrapping({set(Keys::WRAP_INDENT, "    "), set(Keys::COMMA_WRAP_STYLE, 2), set(Keys::KEEP_LINE_BREAKS, true),
                   set(Keys::HANGING_OPERAND_INDENT, "    "), set(Keys::WRAP_BY_WEIGHT, 2)})});
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

void addStatementKeys(std::vector<KeyGuide>& rows) {
    addControl(rows);
    addExpressions(rows);
    addLongLines(rows);
    addWithoutEffect(rows);
}

}  // namespace Tessel
