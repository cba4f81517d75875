#pragma once

#include <cstddef>
#include <vector>

#include "engine/expr_tokens.h"

// (T)-x        a cast
// (n) - x      no cast
namespace Tessel {

// What stands between two parentheses: words of which one is a type's, one name, several of them, or something else.
enum class Parenthesised { Type, Name, Names, Expression };

// `open` is the place of the "(", which has a partner. The roles of what is inside are known.
Parenthesised contentsOf(const ExprTokens& tokens, std::size_t open);
// `(size_t)`: whether a name that only types have is all that the parentheses hold.
bool isNamedAsType(const ExprTokens& tokens, std::size_t open);

// `(int(a) + 1)`, as opposed to `(int (*)(int))`: whether a type makes a value of what stands in the parentheses behind
// it.
bool holdsMadeValue(const ExprTokens& tokens, std::size_t open);

// Whether the token at `place` is the "]" of "delete[]".
bool endsDelete(const ExprTokens& tokens, std::size_t place);

// Whether the token at `place` begins the operand of the cast that the one at `previous` ends. All roles are known.
bool startsCastOperand(const ExprTokens& tokens, std::size_t previous, std::size_t place);

// Whether the group that ends at `close`, in front of the sign at `sign`, is a cast only with a blank behind it:
// `(n) -x`, but `(n)-x`.
bool isCastByBlank(const ExprTokens& tokens, std::size_t close, std::size_t sign);

}  // namespace Tessel
