#pragma once

#include <algorithm>
#include <utility>
#include <vector>

#include "engine/declaration_columns.h"

namespace Tessel {

// Declarations that follow each other and get one column.
class DeclarationRun {
public:
    void add(const Cpp::SyntaxNode* declaration) { members_.push_back(declaration); }
    void widen(int measure) { widest_ = std::max(widest_, measure); }

    // The largest measure so far.
    int widest() const { return widest_; }

    // Gives every member the offset, and starts over.
    void close(int offset, ColumnMap& offsets) {
        for (const Cpp::SyntaxNode* member : std::exchange(members_, {})) offsets[member] = offset;
        widest_ = 0;
    }

private:
    std::vector<const Cpp::SyntaxNode*> members_;
    int widest_ = 0;
};

}  // namespace Tessel
