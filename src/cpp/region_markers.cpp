#include "cpp/region_markers.h"

#include "cpp/comment_text.h"
#include "cpp/directive_text.h"
#include "cpp/token_kind.h"
#include "cpp/token_sets.h"

namespace Cpp {

bool opensUnusedBlock(const Trn::Lexeme& token) {
    return token.kind == Directive && directiveStartsWith(token.text, "#if0");
}

int unusedBlockStep(const Trn::Lexeme& token) {
    return token.kind == Directive ? conditionalStep(token.text) : 0;
}

bool opensProtectedRegion(const Trn::Lexeme& token) {
    return isComment(token.kind) && trimmedCommentBody(token.text) == kRegionOff;
}

int protectedRegionStep(const Trn::Lexeme& token) {
    if (!isComment(token.kind)) return 0;
    const std::string_view body = trimmedCommentBody(token.text);
    if (body.starts_with(kRegionOff)) return 1;
    return body == kRegionOn ? -1 : 0;
}

}  // namespace Cpp
