#pragma once

#include <cstddef>
#include <memory>
#include <string_view>
#include <utility>

#include "engine/expr_tokens.h"
#include "trn/token_list.h"

namespace Tessel {

// The tokens of a source as they were read for its tree, for the texts in it: what has been lexed is not lexed again.
class SourceTokens {
public:
    // None.
    SourceTokens() = default;
    explicit SourceTokens(std::shared_ptr<const Trn::TokenList> tokens) : tokens_(std::move(tokens)) {}

    // Adds the tokens of text.substr(first, last - first), their offsets those in `text`, their positions those in the
    // source. Says whether it could: not where the text is no view of the source, parts a token, or holds a region that
    // is one token in the tree. Quick where texts are asked for in their order.
    bool add(std::string_view text, std::size_t first, std::size_t last, ExprTokens& tokens);

private:
    using Index = Trn::TokenList::Index;

    Index firstFrom(std::size_t offset) const;

    std::shared_ptr<const Trn::TokenList> tokens_;
    Index next_ = 0;  // behind the last token that has been asked for
};

}  // namespace Tessel
