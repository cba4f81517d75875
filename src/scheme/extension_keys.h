#pragma once

#include <array>
#include <stdexcept>
#include <string_view>

#include "scheme/property_type.h"

// The keys that stand beside the catalogue. A row tells everything about its key. An absent key leaves
// everything as it is without: a scheme of catalogue keys alone lays out what it always did.
//
// A key comes about by a row here, a member of ExtensionSettings that names it, and its use in a rule.
namespace Tessel {

// What a key is about; listings put the keys of a group together.
enum class KeyGroup { Text, Braces, Classes, Functions, Data, Statements, Expressions, Comments, Wrapping };

struct ExtensionKey {
    std::string_view name;
    PropertyType type;
    KeyGroup group;
    std::string_view meaning;  // of a text: the place of the white space
    std::string_view example;  // a source that comes out different with the key
};

namespace Keys {

inline constexpr std::array EXTENSIONS = {
    ExtensionKey{"KEEP_UNRECOGNIZED", PropertyType::Boolean, KeyGroup::Text,
                 "what no rule recognises is kept as it is, where it would else be refused",
                 "BEGIN_TABLE(int, 3) [x] { }"},
    ExtensionKey{"WS_BEFORE_LINKAGE_OPEN_BRACE", PropertyType::String, KeyGroup::Braces,
                 "between extern \"C\" and its brace", "extern \"C\"{ int a; }"},
    ExtensionKey{"INDENT_LINKAGE_CONTENT", PropertyType::String, KeyGroup::Braces,
                 "in front of what stands in the braces of extern \"C\"", "extern \"C\" {\nint a;\n}"},
    ExtensionKey{"INDENT_CS_SINGLE", PropertyType::String, KeyGroup::Statements,
                 "in front of the body of a control statement that has no braces",
                 "void f() { if (a)\nb(); }"},
    ExtensionKey{"WS_BEFORE_CASE_OPEN_BRACE", PropertyType::String, KeyGroup::Statements,
                 "between a case label and the brace behind it; contents and closing brace then go by the "
                 "label's column",
                 "void f() { switch (a) { case 1: { b(); } } }"},
    ExtensionKey{"KEEP_ONE_LINE_FUNCTIONS", PropertyType::Integer, KeyGroup::Functions,
                 "bodies that stay on one line: 1 empty ones, 2 those in class bodies too, 3 all",
                 "void f() { a(); }"},
    ExtensionKey{"KEEP_ONE_LINE_INITS", PropertyType::Boolean, KeyGroup::Classes,
                 "a constructor's initialisers stay on the line of its parameters", "S::S() : a(1) { b(); }"},
    ExtensionKey{
        "KEEP_ONE_LINE_STATEMENTS", PropertyType::Boolean, KeyGroup::Statements,
        "bodies without braces stay on the line of their if, else or loop, statements on that of their label",
        "void f() { if (a) b(); }"},
    ExtensionKey{"KEEP_ONE_LINE_BLOCKS", PropertyType::Boolean, KeyGroup::Statements,
                 "blocks of statements and of declarations stay on one line", "void f() { if (a) { b(); } }"},
    ExtensionKey{"KEEP_ONE_LINE_LISTS", PropertyType::Boolean, KeyGroup::Data,
                 "enumerators, initialisers in braces and classes stay on one line", "enum E { a, b };"},
    ExtensionKey{"KEEP_LINE_BREAKS", PropertyType::Boolean, KeyGroup::Wrapping,
                 "lines that begin inside lists, conditions and expressions still do so, and hang under what "
                 "they continue",
                 "int a = b +\n c;"},
    ExtensionKey{"KEEP_LINE_INDENT", PropertyType::Boolean, KeyGroup::Wrapping,
                 "lines that KEEP_LINE_BREAKS keeps, and that hang under nothing, stay as far behind the first line "
                 "of their construct as they are",
                 "int a = b +\n    c;"},
    ExtensionKey{"KEEP_BLANK_LINES", PropertyType::Integer, KeyGroup::Text,
                 "empty lines that stay where the scheme asks for a line end: 1 inside the braces of namespaces, "
                 "classes and enumerations, 2 inside all braces",
                 "namespace a {\n\nint b;\n\n}"},
    ExtensionKey{"KEEP_COLUMNS", PropertyType::Boolean, KeyGroup::Text,
                 "a tab, or several blanks, stays where the scheme asks for a blank", "int    a = b;"},
    ExtensionKey{"KEEP_FN_RETURN_TYPE_BREAK", PropertyType::Boolean, KeyGroup::Functions,
                 "the name of a function stays on the line below its return type", "int\nf(int a);"},
    ExtensionKey{"INDENT_LABEL", PropertyType::String, KeyGroup::Statements,
                 "in front of a label that goto goes to, from the column of the construct in whose body it stands",
                 "void f() { a(); out: b(); }"},
    ExtensionKey{"WS_BEFORE_DO_WHILE", PropertyType::String, KeyGroup::Statements,
                 "between the body of a do and its while", "void f() { do { a(); }while (b); }"},
    ExtensionKey{"WS_BETWEEN_EMPTY_FOR_CLAUSES", PropertyType::String, KeyGroup::Statements,
                 "between the \";\" of a for that has nothing between them", "void f() { for (; ;) a(); }"},
    ExtensionKey{"KEEP_REGION_INDENT", PropertyType::Boolean, KeyGroup::Text,
                 "lines of protected regions keep the white space at their start",
                 "// VT-FORMAT-OFF\n  int a;\n// VT-FORMAT-ON"},
    ExtensionKey{"WS_BEFORE_FN_QUALIFIER", PropertyType::String, KeyGroup::Functions,
                 "between the parameters and the word behind them: const, noexcept, override, ->",
                 "struct A { int f()const; };"},
    ExtensionKey{"WS_BETWEEN_DECLARATORS", PropertyType::String, KeyGroup::Data,
                 "behind the commas between the names of one declaration", "int a,b;"},
    ExtensionKey{"WS_BEFORE_CAST_OPEN_PAREN", PropertyType::String, KeyGroup::Expressions,
                 "between the \">\" of a cast and its parenthesis", "int a = static_cast<int> (b);"},
    ExtensionKey{"WS_AFTER_SHORT_CALL_NAME", PropertyType::String, KeyGroup::Expressions,
                 "between a name as short as _ or N_ and the parenthesis of a call, as translated texts have it",
                 "const char *a = _ (\"text\");"},
    ExtensionKey{"WS_BEFORE_EXPR_OP", PropertyType::String, KeyGroup::Expressions,
                 "between an operand and the operator behind it", "int a = b-c;"},
};

constexpr const ExtensionKey* findExtension(std::string_view name) {
    for (const ExtensionKey& key : EXTENSIONS) {
        if (key.name == name) return &key;
    }
    return nullptr;
}

}  // namespace Keys

// The name of a key of the table. One that the table lacks, or has with another type, does not compile.
template <PropertyType type>
class ExtensionName {
public:
    consteval ExtensionName(const char* name) : name_(name) {
        const ExtensionKey* key = Keys::findExtension(name);
        if (!key || key->type != type) throw std::invalid_argument("no such extension key of that type");
    }

    constexpr std::string_view text() const { return name_; }

private:
    std::string_view name_;
};

}  // namespace Tessel
