#include "cpp/leaf_nodes.h"

#include "cpp/comment_text.h"
#include "cpp/token_kind.h"

namespace Cpp {

bool CommentNode::isDelimitedBy(std::string_view delimiter) const {
    return !protectedRegion_ && text().starts_with(delimiter);
}

std::string CommentNode::body() const {
    return std::string(commentBody(text()));
}

int KeywordNode::checked(int keyword) {
    const bool isKeyword = keyword >= KeywordClass && keyword <= KeywordDefault;
    if (!isKeyword && keyword != Identifier) throw InvalidKeyword();
    return keyword;
}

}  // namespace Cpp
