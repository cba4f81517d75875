#include "cpp/access_words.h"

#include "cpp/token_kind.h"
#include "cpp/token_sets.h"

namespace Cpp {

namespace {

class AccessWords {
public:
    using Index = TokenLinks::Index;

    AccessWords(Trn::TokenList& tokens, const TokenLinks& links) : tokens_(tokens), links_(links) {}

    void nameThem() {
        int ahead = Semicolon;
        for (Index place = links_.significant(0); place < tokens_.size(); place = links_.behind(place)) {
            const bool isFirst = ahead == Semicolon || ahead == OpenBrace;
            const bool isWord = isFirst && isAccessKeyword(tokens_.kind(place));
            if (isWord && beginsDeclaration(links_.significant(place + 1))) {
                tokens_.setKind(place, Identifier);
            }
            ahead = tokens_.kind(place);
        }
    }

private:
    int kind(Index place) const { return place < tokens_.size() ? tokens_.kind(place) : Trn::kEndKind; }

    bool beginsDeclaration(Index place) const {
        switch (kind(place)) {
            case Colon:
            case KeywordClass: return false;
            case Identifier: return kind(links_.behind(place)) != Colon;
            case KeywordStatic: return !isClassKey(kind(links_.behind(place)));
            case KeywordStruct:
            case KeywordUnion:
            case KeywordEnum: return !endsInBody(place);
            default: return true;
        }
    }

    // `struct A : B { … }` without a ";" or a name: such is a type of another language.
    bool endsInBody(Index place) const {
        while (kind(place) != OpenBrace) {
            if (kind(place) == Semicolon || kind(place) == OpenParen || kind(place) == Trn::kEndKind) return false;
            place = links_.behind(place);
        }
        const int following = kind(links_.behind(place));
        return following != Semicolon && following != Identifier && following != Asterisk;
    }

    Trn::TokenList& tokens_;
    const TokenLinks& links_;
};

}  // namespace

void nameAccessWords(Trn::TokenList& tokens, const TokenLinks& links) {
    AccessWords(tokens, links).nameThem();
}

}  // namespace Cpp
