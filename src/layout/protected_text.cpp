#include "layout/protected_text.h"

#include <algorithm>
#include <string>

#include "cpp/comment_text.h"
#include "cpp/lexer.h"
#include "cpp/token_kind.h"
#include "cpp/token_sets.h"
#include "engine/gap.h"

namespace Tessel {

namespace {

constexpr std::string_view kRegionOff = "VANTREL-OFF";
constexpr std::string_view kUnusedBlock = "#if0";

bool opensUnusedBlock(std::string_view directive) {
    std::string words;
    for (const char c : directive) {
        if (!isWhitespace(c)) words += c;
        if (words.size() == kUnusedBlock.size()) break;
    }
    return words == kUnusedBlock;
}

bool isMarker(std::string_view body, const MarkerPairs& markers) {
    return body == kRegionOff || std::any_of(markers.begin(), markers.end(),
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
        if (token.kind == Cpp::Directive && opensUnusedBlock(token.text)) return true;
        if (Cpp::isComment(token.kind) && isMarker(Cpp::trimmedCommentBody(token.text), markers)) return true;
    }
    return false;
}

}  // namespace Tessel
