#pragma once

#include <cstddef>
#include <forward_list>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>

#include "cpp/opaque_tokens.h"
#include "textstream/text_document.h"
#include "trn/lexer.h"

namespace Cpp {

// Breaks C++ source into tokens, comments and directives among them. White space is no token, nor is a
// character that C++ has no use for ("@", a lone backslash, a control character): such characters are part of
// the gaps between tokens. Malformed literals become tokens of kind Unknown; nothing is reported.
//
// Where this lexer is more careful than it has to be, it is so that no pass ever changes the meaning of a
// line: raw strings and prefixed literals are one token, a line comment goes on behind a backslash at its
// end, a directive takes in a comment over several lines when more of the directive follows it, a backslash
// that splices two lines of code keeps its line end as a line comment does, and "<=>" stays in one piece.
class Lexer final : public Trn::Lexer {
public:
    // Reads the stream to its end at once.
    explicit Lexer(std::istream& source);
    // Borrows a text whose line ends are line feeds; it must outlive the lexer and its tokens.
    explicit Lexer(std::string_view text);
    // Adds the opaque tokens that it meets to `opaque`, which is borrowed.
    Lexer(std::string_view text, OpaqueTokens& opaque);

    Trn::Token nextToken() override;
    // The whole text.
    std::string_view text() const { return text_; }
    // The line, the column, and the column at which the line before ended.
    void printPosition(std::ostream& out) const override;

private:
    using Token = Trn::Token;
    using Position = Trn::Position;

    bool atEnd() const { return place_ >= text_.size(); }
    char charAt(std::size_t place) const { return place < text_.size() ? text_[place] : '\0'; }
    Position positionOf(std::size_t place) const { return {line_, static_cast<std::uint32_t>(place - lineStart_)}; }
    void startLine(std::size_t place);
    void countLines(std::size_t first, std::size_t last);

    // Names (lexer_names.cpp), numbers and literals (lexer_literals.cpp), and what the ends of lines end
    // (lexer_lines.cpp): comments, directives and splices. The rest is in lexer.cpp.
    bool skipWhitespace();
    std::size_t behindWord(std::size_t place) const;
    // A token that begins here; its first character is not a line feed.
    Token begin() const {
        Token token;
        token.start = positionOf(place_ + 1);
        token.offset = static_cast<std::uint32_t>(place_);
        return token;
    }
    // Ends the token at the current place. The lines that it runs over have been counted.
    Token finish(Token token, int kind) {
        finishPlain(token, kind);
        if (opaque_) recordOpaque(token);
        return token;
    }
    // The same for one that is not opaque.
    void finishPlain(Token& token, int kind) {
        token.kind = kind;
        token.length = static_cast<std::uint32_t>(place_ - token.offset);
        token.text = {text_.data() + token.offset, token.length};
        token.end = positionOf(place_);
    }
    void recordOpaque(const Token& token);

    Token scanName();
    Token scanWord(std::size_t end);
    Token scanQualifiedName();
    Token scanPrefixedLiteral(std::size_t quote, bool isRaw);
    Token splitScopedOperator(Token name, std::size_t scope);
    Token scanNumber();
    Token scanString(std::size_t quote);
    Token scanRawString(std::size_t quote);
    Token scanCharacter(std::size_t quote);
    Token scanLineComment();
    bool startsSplice(std::size_t backslash) const;
    Token scanSplice();
    Token scanBlockComment();
    Token scanDirective();
    Token scanOperator(int kind, std::size_t length);
    bool isContinued(std::size_t lineFeed, std::size_t start) const;
    std::size_t closingQuote(std::size_t quote) const;
    std::size_t blockCommentEnd(std::size_t start) const;
    std::size_t directiveGoesOn(std::size_t comment) const;
    bool startsSplicedLine(std::size_t place, std::size_t directiveStart) const;

    std::unique_ptr<Zelmor::TextDocument> ownText_;
    std::string_view text_;
    std::size_t place_ = 0;
    std::uint32_t line_ = 1;
    std::size_t lineStart_ = 0;
    std::size_t previousLineStart_ = 0;
    Token pending_;                     // kEndKind when there is none
    std::forward_list<std::string> ownTexts_;  // of tokens whose text differs from the source
    OpaqueTokens* opaque_ = nullptr;
};

// Those of the whole text.
OpaqueTokens opaqueTokensOf(std::string_view text);

}  // namespace Cpp
