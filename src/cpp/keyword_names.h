#pragma once

#include "cpp/token_kind.h"
#include "cpp/token_sets.h"

namespace Cpp {

// Finds the keywords that are names: C uses words so that are keywords in C++, as in `int private = 1;`,
// `template.next = 0;` and `for (try = 0; …)`.
class KeywordNames {
public:
    // To be told of the kind of each token in turn. Says whether the last one before it that is no comment or directive,
    // a keyword, is a name.
    bool endsNameAt(int kind) {
        if (isTrivia(kind)) return false;
        const bool isName = isKeyword(last_) && isNameBefore(kind);
        ahead_ = isName ? Identifier : last_;
        last_ = kind;
        return isName;
    }

private:
    bool isNameBefore(int following) const;

    int ahead_ = Trn::kEndKind;  // in front of the last one
    int last_ = Trn::kEndKind;
};

}  // namespace Cpp
