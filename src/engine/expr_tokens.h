#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <string_view>
#include <vector>

#include "cpp/token_kind.h"
#include "cpp/token_sets.h"
#include "engine/format_options.h"
#include "trn/token.h"

namespace Tessel {

// What a token does in an expression or a declaration text.
enum class ExprRole : std::uint8_t {
    Operand,         // names, literals, keywords, and all that has no role of its own
    Trivia,          // a comment or directive
    BinaryOperator,  // takes the scheme's white space; "?" and ":" too
    UnaryOperator,   // stays with its operand
    Mark,            // a "*" or "&" between a type and a name
    Name,            // a declared name that directly follows its type
    GroupOpen,       // "(" or "[" with its partner
    GroupClose,
    TemplateOpen,  // "<" with its partner
    TemplateClose,
    BraceOpen,  // the "{" of an "= {" with its partner
    BraceClose,
    Separator,  // "," or ";"
    Block,      // a block that somebody else lays out, as one token
};

inline constexpr std::size_t kNoToken = std::numeric_limits<std::uint32_t>::max();

// A token of a text, with what it does there. Its lines and columns count from the start of the text, or are those of
// the source.
class ExprToken {
public:
    ExprToken() = default;
    // `characters` are those of the text that it covers, from `place` on: a piece, unless white space or lines part it.
    ExprToken(int itsKind, Trn::Position itsStart, std::size_t place, std::string_view characters, bool isPiece)
        : offset(static_cast<std::uint32_t>(place)),
          start(itsStart),
          kind(static_cast<std::int8_t>(itsKind)),
          role(Cpp::isTrivia(itsKind) ? ExprRole::Trivia : ExprRole::Operand),
          isPlain(isPiece && isPlainText(itsKind, characters)),
          length_(static_cast<std::uint32_t>(characters.size())),
          text_(characters.data()) {}

    std::string_view text() const { return {text_, length_}; }
    void setText(std::string_view characters) {
        text_ = characters.data();
        length_ = static_cast<std::uint32_t>(characters.size());
    }
    void setPartner(std::size_t place) { partner = static_cast<std::uint32_t>(place); }

    // Of the text, the place behind its last character.
    std::size_t end() const { return std::size_t{offset} + length_; }
    std::uint32_t lastLine() const {
        return start.line + static_cast<std::uint32_t>(isPlain ? 0 : std::ranges::count(text(), '\n'));
    }
    operator Trn::Lexeme() const { return {kind, text()}; }

    std::uint32_t offset = 0;          // in characters from the start of the text
    Trn::Position start;               // as that of Trn::Token
    std::uint32_t partner = kNoToken;  // of an open or close role
    std::int8_t kind = Trn::kEndKind;
    ExprRole role = ExprRole::Operand;
    bool isRegion : 1 = false;     // kept as it is
    bool followsCall : 1 = false;  // a GroupOpen behind a name, "sizeof", "throw" or a cast's ">"
    bool isPlain = false;          // a piece of no literal, comment or directive: no white space, no quotes

private:
    static bool isPlainText(int kind, std::string_view text) {
        if (kind == Cpp::Number) return text.find('\'') == text.npos;
        return kind > Cpp::StringLiteral && !Cpp::isTrivia(kind);
    }

    std::uint32_t length_ = 0;
    const char* text_ = nullptr;
};

using ExprTokens = std::vector<ExprToken>;

// kEndKind behind the last token, and for kNoToken.
inline int kindAt(const ExprTokens& tokens, std::size_t place) {
    return place < tokens.size() ? tokens[place].kind : Trn::kEndKind;
}

// The place of the next token that is no comment or directive.
inline std::size_t nextPlace(const ExprTokens& tokens, std::size_t place) {
    do ++place;
    while (place < tokens.size() && tokens[place].role == ExprRole::Trivia);
    return place;
}

// Whether the token is a bracket whose partner stands behind it, or in front of it.
inline bool opensBracket(const ExprTokens& tokens, std::size_t place) {
    return tokens[place].partner != kNoToken && tokens[place].partner > place;
}
inline bool closesBracket(const ExprTokens& tokens, std::size_t place) {
    return tokens[place].partner != kNoToken && tokens[place].partner < place;
}

// The "]" in front of a lambda's parameters, behind which its template parameters may stand; kNoToken where there is
// none.
inline std::size_t bracketBeforeParameters(const ExprTokens& tokens, std::size_t openParen) {
    if (openParen == 0) return kNoToken;
    std::size_t place = openParen - 1;
    const bool closesAngle = tokens[place].role == ExprRole::TemplateClose && tokens[place].partner != kNoToken;
    if (closesAngle) place = tokens[place].partner > 0 ? tokens[place].partner - 1 : place;
    return kindAt(tokens, place) == Cpp::CloseBracket ? place : kNoToken;
}

// Whether the "(" opens a lambda's parameters.
inline bool followsCapture(const ExprTokens& tokens, std::size_t openParen) {
    const std::size_t bracket = bracketBeforeParameters(tokens, openParen);
    if (bracket == kNoToken) return false;
    const std::size_t open = tokens[bracket].partner;
    return open != kNoToken && !tokens[open].followsCall;
}

// The tokens of "...".
inline constexpr std::size_t kDotsOfPack = 3;

inline bool isPack(const ExprTokens& tokens, std::size_t place) {
    return kindAt(tokens, place) == Cpp::Dot && kindAt(tokens, place + 1) == Cpp::Dot &&
           kindAt(tokens, place + 2) == Cpp::Dot;
}

// `template A<B> f<C>(D);`, `extern template …`
inline bool isInstantiation(const ExprTokens& tokens) {
    const std::size_t first = kindAt(tokens, 0) == Cpp::KeywordExtern ? 1 : 0;
    return kindAt(tokens, first) == Cpp::KeywordTemplate;
}

// How a text is read: as an expression; as a declaration in which marks and names stand behind types; as the
// part of a data declaration behind its type, `a[10], *b = 0`; or as the end of a head that begins with the type it
// returns, `T & override`.
enum class ExprMode { Expression, Declaration, Declarators, ReturnedType };

// What stands between the parentheses of a lambda: by FORMAT_TYPE_ARGUMENTS, types that names follow. Two names in
// parentheses are a cast then.
enum class LambdaParameters { LikeOperands, Declared };

// A stretch of a text, in characters from its start.
struct TextExtent {
    std::size_t offset = 0;
    std::size_t length = 0;
};

class SourceTokens;

// Lexes a text into `tokens` (which is cleared first), or takes them from the source's, which may be null, and finds
// every token's role. The blocks, in order, are not looked into, nor are regions between the markers, which may be
// null. One pass over the text and three over the tokens, whatever the nesting.
void readExprTokens(std::string_view text, ExprMode mode, ExprTokens& tokens,
                    std::span<const TextExtent> blocks = {}, const MarkerPairs* markers = nullptr,
                    LambdaParameters parameters = LambdaParameters::LikeOperands, SourceTokens* source = nullptr);

// Whether the "{" at `open` begins statements, as those of a lambda do.
bool opensBlock(const ExprTokens& tokens, std::size_t open);
// `PACKED(struct A { int a; })`: whether what is between the braces ends with a ";".
bool holdsDeclarations(const ExprTokens& tokens, std::size_t open);

}  // namespace Tessel
