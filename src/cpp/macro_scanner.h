#pragma once

#include "cpp/item.h"
#include "cpp/token_view.h"

namespace Cpp {

// Macros without a ";", in sources that nobody has preprocessed. Often only lines tell where one ends.
class MacroScanner : public TokenView {
public:
    using TokenView::TokenView;

    // The macro that is a statement, or the head of one, at a place in a block; of Shape::None when it is
    // neither.
    Item scanStatement(Index start) const;
    // A word by itself in its line, when what follows is complete without it.
    bool isWordMacro(Index place) const;
    // The last token of the macro at the place, should it be the head of a class and bring the "{" of its body; else
    // kNone.
    Index endOfClassHead(Index name) const;
    // Behind a line that begins with the macro's call and ends with another macro, which make something of what stands
    // between them; else kNone.
    Index behindMacroLine(Index name) const;
    // Behind the "," of a row of a list that another file has the braces of: one in braces, or one that begins as no
    // declaration does. kNone where none begins.
    Index behindRow(Index start) const;
    // Whether the word at the place is the head of a namespace that the "{" behind it opens.
    bool opensNamespace(Index name) const;
    // Whether the words at the place are a type and a name, or a statement.
    bool isCompleteDeclaration(Index place) const;
    // Whether the line that begins with the token is indented further than that of the other.
    bool isIndentedFrom(Index head, Index following) const;

private:
    bool opensAccess(Index place) const;
    bool opensClass(Index name, Index last) const;
    bool opensNamedBlock(Index name) const;
    bool holdsDeclarations(Index open, bool mayBeFunction) const;
    bool opensNamedScope(Index place) const;
    bool endsInWordMacros(Index place) const;
    bool standsInOtherBranch(Index place, Index than) const;
    bool holdsStatement(Index open, Index close) const;
    Item scanHead(Index openBrace) const;
    bool isFollowedByCall(Index word, Index following) const;
    bool beginsPlainStatement(Index place) const;
    bool beginsUnclearStatement(Index place) const;
};

}  // namespace Cpp
