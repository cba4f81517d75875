#pragma once

#include <optional>

#include "cpp/token_view.h"

namespace Cpp {

// What follows a function's parameters, up to the token that ends the head.
struct HeadTail {
    using Index = Trn::TokenBuffer::Index;

    Index end = 0;
    bool isComplete = true;                   // the token at `end` is one that may end a head
    Index initializers = TokenLinks::kNone;   // the ":" of a constructor's initializers
    Index oldParameters = TokenLinks::kNone;  // the first declaration of parameters in the old style
    Index brokenThrow = TokenLinks::kNone;    // a "throw" without its list
};

// What belongs to the head of a function or a lambda, in front of the body.
class HeadScanner : public TokenView {
public:
    using TokenView::TokenView;

    // From the first token behind the parameters, or behind the declarations of these that an old-style head has there.
    HeadTail scanTailOf(Index openParen) const;
    // Only the latter; nothing where there are none.
    std::optional<HeadTail> oldStyleTail(Index openParen) const;
    // Whether a body follows the parameters.
    bool hasBody(Index openParen) const;
    // The "{" of the lambda whose captures stand in the brackets at the place.
    std::optional<Index> lambdaBody(Index openBracket) const;
    // Behind the conditions of a template or a function, from "requires" on.
    Index behindRequires(Index place) const;
    // Behind the name that begins with "operator" at the place.
    Index behindOperatorName(Index place) const;

private:
    enum class Owner { Function, Lambda };

    // From the first token behind the parameters.
    HeadTail scanTail(Index place, Owner owner) const;
    Index behindArrays(Index place) const;
    Index behindInitializers(Index colon) const;
    Index oldStyleBody(Index open, Index behindGroup) const;
};

}  // namespace Cpp
