#pragma once

#include <string_view>

#include "cpp/leaf_nodes.h"
#include "engine/expr_settings.h"

// The widths that declared types take up where they are written, pointer and reference marks included.
namespace Tessel {

// "const char * *" is "const char" with two marks.
struct TypeText {
    explicit TypeText(std::string_view text);

    bool hasMarks() const { return markCount > 0; }

    std::string_view text;
    std::string_view head;  // without the marks at its end and the white space in front of them
    int markCount = 0;
};

// Whether marks stand at the type's end, or in front of the qualifiers there: `char *const`.
bool endsWithMarks(std::string_view type);

// The last line of a text, without indentation: only that stands in front of what follows it.
std::string_view lastLineOf(std::string_view text);

// What the scheme says about the placement of marks. The last mark of a type stands for all of them.
class MarkPlacement {
public:
    MarkPlacement(const PropertySet& scheme, int tabSize);

    const MarkSettings& of(const TypeText& type) const {
        return type.text.back() == '*' ? asterisk_ : ampersand_;
    }
    bool standsAgainstType(const TypeText& type) const { return type.hasMarks() && of(type).anchor == 0; }
    bool standsAgainstName(const TypeText& type) const { return type.hasMarks() && of(type).anchor == 1; }

    // How far from the type's first character an aligned name has to stand at least, less one column.
    int measure(const TypeText& type) const;

private:
    int measureBeforeMarks(const TypeText& type, bool isHanging) const;
    int width(std::string_view text) const;

    int tabSize_;
    MarkSettings asterisk_;
    MarkSettings ampersand_;
};

// Of a statement on one line: `using A::b;`, `namespace A = B;`.
bool isAlias(std::string_view statement);

// Of an expression statement: `using A = B;`.
bool givesTypeName(const Cpp::ExprNode& statement);

}  // namespace Tessel
