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

// new (place) T
bool closesPlacement(const ExprTokens& tokens, std::size_t close) {
    const std::size_t open = tokens[close].partner;
    return open != kNoToken && open > 0 && allocates(tokens, open - 1);
}

// alignas(4) int, explicit(a) A(), [[a]] int
bool closesAnnotation(const ExprTokens& tokens, std::size_t close) {
    const std::size_t open = tokens[close].partner;
    if (open == kNoToken) return false;
    if (kindAt(tokens, close) == Cpp::CloseBracket) return kindAt(tokens, open + 1) == Cpp::OpenBracket;
    return open > 0 && Cpp::takesArgument(tokens[open - 1]);
}

// [](int a) mutable, int (A::*f)(int a) const: whether the word at `next` goes with the parameters in front of it.
bool qualifiesParameters(const ExprTokens& tokens, std::size_t close, int next) {
    const std::size_t open = tokens[close].partner;
    if (open == kNoToken || open == 0) return false;
    return followsCapture(tokens, open) || (Cpp::isQualifier(next) && kindAt(tokens, open - 1) == Cpp::CloseParen);
}

// if (int a = b; a), { requirement; } noexcept, f() const& noexcept, extern "C", [] () mutable: whether the token in
// front ends something, and what is next begins something else.
bool parts(const ExprTokens& tokens, std::size_t before, std::size_t behind) {
    const int kind = kindAt(tokens, before);
    const int next = kindAt(tokens, behind);
    const bool isWord = Cpp::isWord(next) && !tokens[behind].text().starts_with("::");
    switch (kind) {
        case Cpp::KeywordReturn: return next != Cpp::Semicolon;
        case Cpp::KeywordNew: return next == Cpp::OpenParen && allocates(tokens, before);
        case Cpp::Semicolon: return next != Cpp::Semicolon && next != Cpp::CloseParen && next != Cpp::CloseBrace;
        case Cpp::CloseParen:
            return isWord && (closesPlacement(tokens, before) || closesAnnotation(tokens, before) ||
                              qualifiesParameters(tokens, before, next));
        case Cpp::CloseBracket: return isWord && closesAnnotation(tokens, before);
        case Cpp::CloseBrace: return isWord;
        case Cpp::Greater:
        case Cpp::ShiftRight: return isWord && tokens[before].role == ExprRole::TemplateClose;
        case Cpp::Ampersand:
        case Cpp::LogicalAnd: return isWord && tokens[before].role == ExprRole::Operand;
        case Cpp::Dot: return endsPack(tokens, before, next);
        default: return next == Cpp::StringLiteral && Cpp::isKeyword(kind);
    }
}

}  // namespace

OtherGap otherGap(const ExprTokens& tokens, std::size_t before, std::size_t behind, bool isEmpty) {
    const int kind = kindAt(tokens, before);
    const int next = kindAt(tokens, behind);
    if (parts(tokens, before, behind)) return OtherGap::Blank;
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
    if (isMember || next == Cpp::Arrow || (Cpp::isMemberAccess(kind) && Cpp::isWord(next))) return OtherGap::Nothing;
    return Cpp::isWord(kind) && Cpp::isWord(next) ? OtherGap::Blank : OtherGap::AsItIs;
}

}  // namespace Tessel
