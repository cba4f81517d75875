#pragma once

#include "trn/token.h"

namespace Cpp {

// Finds the keywords that are names: C uses words so that are keywords in C++, as in `int private = 1;`,
// `template.next = 0;` and `for (try = 0; …)`.
class KeywordNames {
public:
    // To be told of the kind of each token in turn. Says whether the last one before it that is no comment or directive,
    // a keyword, is a name.
    bool endsNameAt(int kind);

private:
    int ahead_ = Trn::kEndKind;  // in front of the last one
    int last_ = Trn::kEndKind;
};

}  // namespace Cpp
