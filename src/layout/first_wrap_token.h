#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "engine/expr_tokens.h"

namespace Tessel {

// A token and the kinds of the tokens beside it in its text; comments and directives count for nothing.
struct TokenPlace {
    const ExprToken& token;
    int previousKind;  // Trn::kEndKind at the start of the text
    int nextKind;      // Trn::kEndKind at its end
    // Of the bracket that the token closes: what it stands behind, and what stands first in it. Trn::kEndKind
    // for other tokens.
    int kindBeforeBracket = Trn::kEndKind;
    int firstKindInBracket = Trn::kEndKind;
};

// Tells which tokens of one kind of separator a text may be broken at. A text is a range of tokens; what
// stands in brackets that open inside of it is no concern of a finder.
class FirstWrapToken {
public:
    virtual ~FirstWrapToken() = default;

    // The place of the first break token of tokens[from, last) outside of brackets, or kNoToken. `first` is
    // where the text begins.
    std::size_t find(const std::vector<ExprToken>& tokens, std::size_t first, std::size_t from,
                     std::size_t last) const;
    // Whether the finder breaks at tokens of the kind.
    virtual bool isWrapToken(int kind) const = 0;
    virtual bool breaksAt(const TokenPlace& place) const = 0;
};

// The place's neighbours in tokens[first, last).
TokenPlace placeOf(const std::vector<ExprToken>& tokens, std::size_t first, std::size_t place,
                   std::size_t last);

using TokenClass = std::span<const int>;

// The classes of tokens that separate the parts of an expression.
namespace TokenClasses {
extern const TokenClass commaTokens;
extern const TokenClass semicolonTokens;
extern const TokenClass shiftTokens;
extern const TokenClass logicalTokens;
extern const TokenClass conditionalTokens;
extern const TokenClass factorTokens;
extern const TokenClass comparisonTokens;
extern const TokenClass binaryTokens;
extern const TokenClass assignmentTokens;
}  // namespace TokenClasses

bool isIn(TokenClass tokens, int kind);

// Separators of one class. Of two in a row neither is taken.
class FindFirstElem : public FirstWrapToken {
public:
    explicit FindFirstElem(TokenClass separators) : separators_(separators) {}

    bool isWrapToken(int kind) const override { return isIn(separators_, kind); }
    bool breaksAt(const TokenPlace& place) const override;

private:
    TokenClass separators_;
};

// Operators between operands. "*", "&", "^", "<=", ">=" and the logical ones hold their operands together.
class FindFirstBinaryOp : public FirstWrapToken {
public:
    bool isWrapToken(int kind) const override;
    bool breaksAt(const TokenPlace& place) const override;
};

// The ">" of a static_cast and its kin.
class FindFirstCast : public FirstWrapToken {
public:
    bool isWrapToken(int kind) const override;
    bool breaksAt(const TokenPlace& place) const override;
};

// The ")" of a cast in the manner of C.
class FindFirstOldCast : public FirstWrapToken {
public:
    bool isWrapToken(int kind) const override;
    bool breaksAt(const TokenPlace& place) const override;
};

}  // namespace Tessel
