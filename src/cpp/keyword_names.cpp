#include "cpp/keyword_names.h"

namespace Cpp {

// Told by the token behind the keyword; in front of a ";", by the end of a type before it.
bool KeywordNames::isNameBefore(int following) const {
    const bool endsDeclaration = following == Semicolon && (ahead_ == Identifier || ahead_ == Asterisk);
    if (following < Semicolon || following > ArrowAsterisk || following == OpenBrace) return false;
    switch (last_) {
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

}  // namespace Cpp
