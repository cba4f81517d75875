#include "engine/directive_proof.h"

#include <algorithm>
#include <string>

#include "cpp/lexer.h"
#include "cpp/token_sets.h"
#include "engine/directive_parts.h"
#include "engine/gap.h"
#include "engine/token_boundary.h"

namespace Tessel {

namespace {

// A "#" in a directive begins none, as it would for the lexer. A "?" is a token by itself, as it is.
std::string withoutDirectives(std::string_view text) {
    std::string result(text);
    std::ranges::replace(result, '#', '?');
    return result;
}

// The tokens behind the "#", one after the other.
class DirectiveTokens {
public:
    explicit DirectiveTokens(std::string_view directive)
        : text_(trimRight(directive.substr(1))), lexed_(withoutDirectives(text_)), lexer_(lexed_) {}

    bool next() {
        const std::size_t end = std::size_t{token_.offset} + token_.length;
        const bool wasHash = isHash();
        token_ = lexer_.nextToken();
        isApart_ = token_.offset > end;
        isPaste_ = wasHash && isHash() && !isApart_;
        return token_.kind != Trn::kEndKind;
    }
    // Without the blanks that a qualified name may hold.
    std::string_view text() const {
        return token_.kind == Cpp::Identifier ? token_.text : text_.substr(token_.offset, token_.length);
    }
    bool isApart() const { return isApart_; }
    bool isPaste() const { return isPaste_; }  // the second "#" of one
    bool isComment() const { return Cpp::isComment(token_.kind); }

private:
    bool isHash() const { return text_.substr(token_.offset, token_.length) == "#"; }

    std::string_view text_;
    std::string lexed_;
    Cpp::Lexer lexer_;
    Trn::Token token_;
    bool isApart_ = false;
    bool isPaste_ = false;
};

// Whether all that differs is the white space that further lines begin with.
bool haveSameLines(std::string_view one, std::string_view other) {
    while (true) {
        const std::size_t end = std::min(one.find('\n'), one.size());
        if (one.substr(0, end) != other.substr(0, other.find('\n'))) return false;
        if (end == one.size() || end == other.size()) return one.size() == other.size();
        one.remove_prefix(end + 1);
        other.remove_prefix(end + 1);
        one.remove_prefix(kBlanks.skipIn(one));
        other.remove_prefix(kBlanks.skipIn(other));
    }
}

// Blanks may follow a splice at the end, behind which a comment stands.
bool endsLine(std::string_view directive) { return trailingBlanks(directive).find('\n') != std::string_view::npos; }

}  // namespace

bool holdSameDirective(std::string_view source, std::string_view result) {
    constexpr int behindMacroName = 2;
    if (!joinsNames(source) && partsOf(source).areNone()) return false;
    if (holdsSplicedToken(source) || holdsSplicedToken(result)) return false;
    DirectiveTokens left(source);
    DirectiveTokens right(result);
    bool isMacro = false;
    for (int place = 0;; ++place) {
        const bool goesOn = left.next();
        if (right.next() != goesOn) return false;
        if (!goesOn) return endsLine(source) == endsLine(result);
        const bool isSame = left.isComment() && right.isComment() ? haveSameLines(left.text(), right.text())
                                                                  : left.text() == right.text();
        if (!isSame || left.isPaste() != right.isPaste()) return false;
        if (place == 0) isMacro = left.text() == "define";
        if (isMacro && place == behindMacroName && left.isApart() != right.isApart()) return false;
    }
}

}  // namespace Tessel
