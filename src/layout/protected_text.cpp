#include "layout/protected_text.h"

#include <algorithm>

#include "cpp/comment_text.h"
#include "cpp/lexer.h"
#include "cpp/region_markers.h"
#include "cpp/token_kind.h"
#include "cpp/token_sets.h"

namespace Tessel {

namespace {

bool isMarker(std::string_view body, const MarkerPairs& markers) {
    return body == Cpp::kRegionOff || std::any_of(markers.begin(), markers.end(),
                                             [body](const auto& pair) { return pair.first == body; });
}

}  // namespace

bool holdsProtectedText(std::string_view text, const MarkerPairs& markers) {
    if (text.find("//") == std::string_view::npos && text.find("/*") == std::string_view::npos &&
        text.find('#') == std::string_view::npos) {
        return false;
    }
    Cpp::Lexer lexer(text);
    for (Trn::Token token = lexer.nextToken(); token.kind != Trn::kEndKind; token = lexer.nextToken()) {
        if (Cpp::opensUnusedBlock(token)) return true;
        if (Cpp::isComment(token.kind) && isMarker(Cpp::trimmedCommentBody(token.text), markers)) return true;
    }
    return false;
}

}  // namespace Tessel
