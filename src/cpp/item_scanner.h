#pragma once

#include <optional>
#include <string_view>

#include "cpp/head_scanner.h"
#include "cpp/item.h"
#include "cpp/macro_scanner.h"
#include "cpp/token_view.h"

namespace Cpp {

// Where an item stands.
struct ItemContext {
    enum class Scope { Outside, Class, Block } scope = Scope::Outside;
    std::string_view className;  // of the class around, whose constructors have it for a name
    bool followsType = false;    // what is declared has a class or an enum, with its body, in front of it on the line
};

// Declarations, and what the braces and parentheses of an item are to it.
class ItemScanner : public TokenView {
public:
    // Both are borrowed. Macros without a ";" are told only when `findsMacros` says so.
    ItemScanner(const Trn::TokenBuffer& tokens, const TokenLinks& links, bool findsMacros)
        : TokenView(tokens, links),
          heads_(tokens, links),
          macros_(tokens, links),
          findsMacros_(findsMacros) {}

    // The declaration at a place that is no comment. Whether a "{" may follow has been looked into for the
    // declarations in front of `noBraceBefore`; the scan moves that on.
    Item scanDeclaration(Index start, const ItemContext& context, Index& noBraceBefore) const;
    // Whether the statement that begins with the name is a declaration whose type a macro makes, `TYPE(a) b =
    // 1;`.
    bool startsWithSpecifier(Index name) const;
    // `= { a, b } TABLE_END(c)`: whether the name behind the values is a macro's that brings the ";".
    bool bringsSemicolon(Index name) const;
    // Whether a class begins with the ":" or the "{" at the place, whatever stands in front of its name.
    bool makesClass(Index end) const;
    // Whether values, not statements, stand in the braces of an expression or a declaration, by what stands
    // around them; `previous` is the place of the token in front.
    bool holdsValues(Index openBrace, Index previous) const;

private:
    struct Progress;
    class Group;

    // The role of a group in parentheses. Nothing when it is part of what stands in front of the declared name, or of
    // a class's name or bases.
    std::optional<Item> scanParenthesis(Index open, Progress& seen, const ItemContext& context) const;
    bool opensPointerDeclarator(Index open, Index behindGroup, const Progress& seen) const;
    bool declaresFunction(Index open) const;
    Index parametersOfArray(Index open) const;
    bool marksItem(Index open) const;
    bool holdsElements(Index place) const;
    bool followsDeclaredName(const Progress& seen) const;
    bool followsMacros(const Progress& seen) const;
    bool followsType(const Progress& seen) const;
    Index behindMacroOfHeader(Index open, const Progress& seen) const;
    bool isCommaAtLineEnd(Index place) const;
    bool isInFrontOfFunction(Index comma, const Progress& seen) const;
    bool marksFunction(Index place) const;
    bool followsTypedName(const Progress& seen) const;
    bool followsMacroOfName(const Progress& seen) const;
    bool hasCompleteTail(Index open, Progress& seen) const;
    bool isStatement(Index sign, const Progress& seen, const ItemContext& context) const;
    bool holdsMarkedName(Index open) const;
    bool holdsClassKey(Index open) const;
    Index behindMarkedType(Index type) const;
    bool isListOfPointers(Index inside) const;
    bool endsInLiterals(Index place) const;
    bool opensClassBody(Index place) const;
    bool beginsBasesOfClass(Index colon) const;
    bool endsWithValue(Index word) const;
    Index endOfAnnotations(Index place) const;
    bool endsInAnnotations(Index place) const;
    bool followsMacroCall(Index start) const;
    bool beginsBases(Index name) const;
    bool endsValue(Index assign) const;
    bool startsValue(Index place) const;
    bool isBraceInitializer(Index brace, const Progress& seen) const;

    HeadScanner heads_;
    MacroScanner macros_;
    bool findsMacros_;
};

}  // namespace Cpp
