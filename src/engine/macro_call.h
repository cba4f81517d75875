#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "cpp/leaf_nodes.h"

namespace Tessel {

// Whether an item that no rule recognises, `NAME(a, b)`, reads like a call: what its parentheses hold are words,
// literals, and operators that mean the same in expressions and types. It stands on one line, or its lines are kept.
bool isMacroCall(const Cpp::KeptNode& item, bool keepsLines = false);

// Where the parts of `NAME(a = b; c();)`, or of `NAME(a, { b(); })`, begin and end in it.
struct CallOfStatements {
    std::size_t nameEnd;
    std::size_t open;
    std::size_t argumentsEnd;  // behind the "(", or the "," in front of a block
    std::size_t statements;
    std::size_t statementsEnd;
    std::size_t close;
};

// Of an item that no rule recognises, on one line: its parentheses hold statements, or declarations, with their ends.
std::optional<CallOfStatements> callOfStatements(std::string_view item);

}  // namespace Tessel
