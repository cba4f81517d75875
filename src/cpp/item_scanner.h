#pragma once

#include <optional>
#include <string_view>

#include "cpp/token_links.h"
#include "trn/token_buffer.h"

namespace Cpp {

// What begins at a place, as one look ahead tells. Every pair of brackets counts as one piece, and words that nobody
// knows are pieces too, so that only the role of each "( )" and the end of the item need a rule.
struct Item {
    using Index = Trn::TokenBuffer::Index;
    enum class Shape {
        None,             // nothing: the end of the text or of the body around
        Function,         // a head with parameters
        FunctionPointer,  // a declarator in parentheses
        Class,            // a body in braces behind words that have a class key, or should have one
        Enum,
        Data,       // all other declarations
        Macro,      // a macro that stands by itself, without a ";"
        MacroHead,  // a macro in front of a block or a statement, as a control statement's head
    };

    Shape shape = Shape::None;
    Index place = 0;       // the token that told; of a macro, the first one behind it
    Index parameters = 0;  // the "(" of a function's parameters
};

// What follows a function's parameters, up to the token that ends the head.
struct HeadTail {
    using Index = Trn::TokenBuffer::Index;

    Index end = 0;
    bool isComplete = true;              // the token at `end` is one that may end a head
    Index initializers = TokenLinks::kNone;   // the ":" of a constructor's initializers
    Index oldParameters = TokenLinks::kNone;  // the first declaration of parameters in the old style
    Index brokenThrow = TokenLinks::kNone;    // a "throw" without its list
};

// Where an item stands.
struct ItemContext {
    enum class Scope { Outside, Class, Block } scope = Scope::Outside;
    std::string_view className;  // of the class around, whose constructors have it for a name
};

class ItemScanner {
public:
    using Index = Trn::TokenBuffer::Index;

    // Both are borrowed. Macros without a ";" are told only when `findsMacros` says so.
    ItemScanner(const Trn::TokenBuffer& tokens, const TokenLinks& links, bool findsMacros)
        : tokens_(tokens), links_(links), findsMacros_(findsMacros) {}

    // The declaration at a place that is no comment. Whether a "{" may follow has been looked into for the
    // declarations in front of `noBraceBefore`; the scan moves that on.
    Item scanDeclaration(Index start, const ItemContext& context, Index& noBraceBefore) const;
    // The macro that is a statement, or the head of one, at a place in a block; of Shape::None when it is neither.
    Item scanMacroStatement(Index start) const;

    // From the first token behind the parameters.
    HeadTail scanTail(Index place) const;
    // The same with the declarations of parameters that an old-style head has behind them.
    HeadTail scanTailOf(Index openParen) const;
    // The "{" of the lambda whose captures stand in the brackets at the place.
    std::optional<Index> lambdaBody(Index openBracket) const;
    // Behind attributes and annotations with arguments, and behind those of the statement's first keyword.
    Index behindAnnotations(Index place) const;
    // Behind the conditions of a template or a function, from "requires" on.
    Index behindRequires(Index place) const;
    // Whether the statement that begins with the name is a declaration whose type a macro makes, `TYPE(a) b = 1;`.
    bool startsWithSpecifier(Index name) const;
    // Whether a class begins with the ":" or the "{" at the place, whatever stands in front of its name.
    bool makesClass(Index end) const;
    // Whether the "[" is one of "[[", with its "]]".
    bool opensAttribute(Index place) const;
    // Whether values, not statements, stand in the braces of an expression or a declaration, by what stands around
    // them; `previous` is the place of the token in front.
    bool holdsValues(Index openBrace, Index previous) const;

    Index next(Index place) const { return links_.significant(place + 1); }
    // Behind the token at the place, and behind the closing one when it opens a bracket.
    Index behind(Index place) const;

private:
    struct Progress;

    int kind(Index place) const { return tokens_.kindAt(place); }
    bool startsLaterLine(Index place, Index than) const;
    std::optional<Item> scanParenthesis(Index open, const Progress& seen, const ItemContext& context) const;
    bool opensPointerDeclarator(Index open, Index behindGroup, const Progress& seen) const;
    bool declaresFunction(Index open) const;
    bool holdsClassKey(Index open) const;
    bool isListOfPointers(Index inside) const;
    bool beginsBases(Index name) const;
    bool endsValue(Index assign) const;
    bool isWordMacro(Index place) const;
    bool endsInWordMacros(Index place) const;
    bool isCompleteDeclaration(Index place) const;
    Index behindOperatorName(Index place) const;
    Index behindInitializers(Index colon) const;
    Index oldStyleBody(Index open, Index behindGroup) const;
    Item scanMacroHead(Index openBrace) const;
    bool isFollowedByCall(Index word, Index following) const;
    bool beginsPlainStatement(Index place) const;
    bool beginsUnclearStatement(Index place) const;
    bool isIndentedFrom(Index head, Index following) const;
    bool isBraceInitializer(Index brace, const Progress& seen) const;

    const Trn::TokenBuffer& tokens_;
    const TokenLinks& links_;
    bool findsMacros_;
};

// A name that the language gives an argument in parentheses, which belongs to it: decltype, alignas, noexcept, …
bool takesArgument(const Trn::Token& word);
// Whether no letter of the word is a small one, as in the names of macros.
bool isUpperCase(std::string_view word);

}  // namespace Cpp
