#pragma once

#include "cpp/token_links.h"
#include "trn/token_list.h"

namespace Cpp {

// Makes names of the access keywords that begin a declaration outside of classes: in C they are names, or macros for
// `static`. Those of other languages, whose classes begin so, remain.
//
//     private struct header {
//         int size;
//     };
void nameAccessWords(Trn::TokenList& tokens, const TokenLinks& links);

}  // namespace Cpp
