#pragma once

#include <cstddef>
#include <optional>
#include <utility>

#include "cpp/token_kind.h"
#include "cpp/token_sets.h"

namespace Cpp {

// Finds the keywords that are names: C uses words so that are keywords in C++, as in `int private = 1;`,
// `template.next = 0;` and `for (try = 0; …)`.
class KeywordNames {
public:
    // Whether `new`, `delete`, `class` and `this` are looked into wherever they stand, and the last word of a text.
    enum class Words { Some, All };

    explicit KeywordNames(Words words) : findsAll_(words == Words::All) {}

    // To be told of the kind and the place of each token in turn that is no comment or directive, and of the end. The
    // place of the one before it, where that is a keyword, and a name; nothing otherwise.
    std::optional<std::size_t> nameBefore(int kind, std::size_t place) {
        const bool isName = isKeyword(last_) && (isNameBefore(kind) || (findsAll_ && isNameOfC(kind)));
        const bool qualifiesMark = ahead_ == Asterisk && isQualifier(last_);  // `T *const new` is as `T *new`
        if (!qualifiesMark) {
            beforeAhead_ = ahead_;
            ahead_ = isName ? Identifier : last_;
        }
        last_ = kind;
        const std::size_t lastPlace = std::exchange(lastPlace_, place);
        return isName ? std::optional(lastPlace) : std::nullopt;
    }

private:
    bool isNameBefore(int following) const;
    bool isNameOfC(int following) const;
    bool isClassName(int following) const;
    bool followsTypeAndMark() const;

    bool findsAll_;
    int beforeAhead_ = Trn::kEndKind;
    int ahead_ = Trn::kEndKind;  // in front of the last one
    int last_ = Trn::kEndKind;
    std::size_t lastPlace_ = 0;
};

}  // namespace Cpp
