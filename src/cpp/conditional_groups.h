#pragma once

#include <map>
#include <string>

#include "trn/token_list.h"

namespace Cpp {

// Which conditions were taken to hold, and which not, when a branch was chosen.
using TakenConditions = std::map<std::string, bool>;

// Sees to it that brackets match across conditional groups. Where every branch of an `#if` group leaves the
// brackets as it found them, all branches are read, one after the other. Where one does not,
//
//     #ifdef A
//         if (a) {
//     #else
//         if (b) {          ← this branch, with its "#else", becomes one token of kind UnreadBlock
//     #endif
//             c();
//         }
//
// one branch is read, and each other one becomes a token that nobody looks into. The branch that is read is the first
// whose condition agrees with what was chosen before, and that closes no bracket that is not open. The same goes for
// branches that hold different heads of one body, which follows the "#endif". An only branch that opens what no branch
// of its condition closes is not read, should the text else have no end. Returns what was chosen by.
TakenConditions foldUnreadBranches(Trn::TokenList& tokens);

}  // namespace Cpp
