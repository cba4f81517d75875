#pragma once

#include <unordered_map>

namespace Cpp {
class SyntaxNode;
}

namespace Tessel {

// Offsets in columns, measured from the first character of a declaration. A declaration without an entry is
// written without alignment.
using ColumnMap = std::unordered_map<const Cpp::SyntaxNode*, int>;

// Where the names and initialisers of aligned declarations start.
struct DeclarationColumns {
    ColumnMap dataNames;
    ColumnMap functionNames;
    ColumnMap initializers;
};

}  // namespace Tessel
