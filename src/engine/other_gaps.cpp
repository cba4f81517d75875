#include "engine/other_gaps.h"

#include "cpp/token_sets.h"
#include "cpp/words.h"
#include "engine/operator_kinds.h"

namespace Tessel {

namespace {

// "new" or "delete", but for those that name an operator.
bool allocates(const ExprTokens& tokens, std::size_t place) {
    const int kind = kindAt(tokens, place);
    const bool isName = place > 0 && kindAt(tokens, place - 1) == Cpp::KeywordOperator;
    return (kind == Cpp::KeywordNew || kind == Cpp::KeywordDelete) && !isName;
}

bool isAccess(int kind) { return kind == Cpp::Dot || kind == Cpp::Arrow; }

bool endsOperand(const ExprToken& token) {
    return token.role == ExprRole::GroupClose || token.role == ExprRole::TemplateClose ||
           token.kind == Cpp::Identifier || token.kind == Cpp::KeywordThis;
}

// a [i], f() [i], new int [3], delete [] p: no attribute, and no lambda behind a macro.
bool opensSubscript(const ExprTokens& tokens, std::size_t before, std::size_t open) {
    if (kindAt(tokens, open) != Cpp::OpenBracket || tokens[open].partner == kNoToken) return false;
    if (allocates(tokens, before)) return true;
    if (kindAt(tokens, nextPlace(tokens, open)) == Cpp::OpenBracket) return false;
    const std::size_t behind = nextPlace(tokens, tokens[open].partner);
    const int following = kindAt(tokens, behind);
    const bool mayBeLambda = following == Cpp::OpenParen || following == Cpp::OpenBrace ||
                             (behind < tokens.size() && tokens[behind].role == ExprRole::Block);
    if (mayBeLambda) return false;
    return endsOperand(tokens[before]) || isBuiltinTypeKeyword(kindAt(tokens, before));
}

// class... T, T... args: `last` is the last of its dots.
bool endsPack(const ExprTokens& tokens, std::size_t last, int next) {
    return next == Cpp::Identifier && last + 1 >= kDotsOfPack && isPack(tokens, last + 1 - kDotsOfPack);
}

}  // namespace

OtherGap otherGap(const ExprTokens& tokens, std::size_t before, std::size_t behind, bool isEmpty) {
    const int kind = kindAt(tokens, before);
    const int next = kindAt(tokens, behind);
    const bool needsBlank = kind == Cpp::KeywordReturn ? next != Cpp::Semicolon : endsPack(tokens, before, next);
    if (needsBlank) return OtherGap::Blank;
    if (isEmpty) return OtherGap::AsItIs;
    if (opensSubscript(tokens, before, behind)) return OtherGap::Nothing;
    if (tokens[behind].role == ExprRole::Separator && kind != Cpp::Semicolon) return OtherGap::Nothing;
    if (allocates(tokens, before) && (next == Cpp::OpenParen || next == Cpp::Identifier)) return OtherGap::Blank;
    const bool isPostfix = next == Cpp::Increment || next == Cpp::Decrement;
    if (tokens[before].role == ExprRole::UnaryOperator || (isPostfix && tokens[behind].role == ExprRole::Operand)) {
        return OtherGap::Nothing;
    }
    const bool followsPack = before + 1 >= kDotsOfPack && isPack(tokens, before + 1 - kDotsOfPack);
    if (followsPack) return OtherGap::AsItIs;
    // The "." of a designator, `{ .a = 1, .b = 2 }`, follows no operand.
    const bool isMember = next == Cpp::Dot && endsOperand(tokens[before]) && !isPack(tokens, behind);
    if (isMember || next == Cpp::Arrow || (isAccess(kind) && Cpp::isWord(next))) return OtherGap::Nothing;
    return Cpp::isWord(kind) && Cpp::isWord(next) ? OtherGap::Blank : OtherGap::AsItIs;
}

}  // namespace Tessel
