#pragma once

#include "cpp/keyword_names.h"
#include "cpp/lexer.h"
#include "trn/token_list.h"

namespace Cpp {

// All tokens of a text, the one of kEndKind at its end included. A region whose tokens nobody is to read is one
// token, of a kind of its own, with the text of its first one:
//
//     #if 0 … #endif                      UnreadBlock
//     // VANTREL-OFF … // VANTREL-ON      ProtectedRegion
//
// The tokens are views of the text and of what the lexer owns.
Trn::TokenList readTokens(Lexer& lexer, KeywordNames::Words words);

}  // namespace Cpp
