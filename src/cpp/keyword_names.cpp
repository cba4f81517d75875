#include "cpp/keyword_names.h"

#include "cpp/token_kind.h"
#include "cpp/token_sets.h"

namespace Cpp {

namespace {

// Told by the token behind the keyword; in front of a ";", by the end of a type before it.
bool isNameBefore(int word, int ahead, int following) {
    const bool endsDeclaration = following == Semicolon && (ahead == Identifier || ahead == Asterisk);
    if (following < Semicolon || following > ArrowAsterisk || following == OpenBrace) return false;
    switch (word) {
        case KeywordPublic:
        case KeywordProtected:
        case KeywordPrivate: return following != Colon && following != CloseBrace;
        case KeywordTry: return following != Colon;
        case KeywordCatch: return following != OpenParen;
        case KeywordNamespace: return following != OpenBracket && (following != Semicolon || endsDeclaration);
        case KeywordTemplate: return following != Less && (following != Semicolon || endsDeclaration);
        case KeywordFriend:
        case KeywordUsing:
        case KeywordVirtual: return following != OpenBracket && following != Tilde;
        case KeywordClass: return following == Semicolon || following == Dot || following == Arrow;
        default: return false;
    }
}

}  // namespace

bool KeywordNames::endsNameAt(int kind) {
    if (isTrivia(kind)) return false;
    const bool isName = isNameBefore(last_, ahead_, kind);
    ahead_ = isName ? Identifier : last_;
    last_ = kind;
    return isName;
}

}  // namespace Cpp
