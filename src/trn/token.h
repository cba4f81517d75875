#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "trn/position.h"

namespace Trn {

// The kind of a token that is none: the end of the input, or nothing read yet.
inline constexpr int kEndKind = -1;

enum class ValueType : std::uint8_t {
    None = 0,
    Character = 1,
    String = 9,
};

// One token of a source text.
//
//   start   the position just after the token's first character, so one more than that character's column
//   end     the position just after its last character; column 0 of the next line when it ends in a line feed
//   offset, length   the characters of the source that it covers, in characters from the start of the text
//   text    its characters; a view of the source wherever they stand there as one run, and of the lexer's own
//           storage for the few tokens whose text differs from the source. Lives as long as the lexer and the
//           text it reads.
struct Token {
    int kind = kEndKind;
    Position start;
    Position end;
    std::uint32_t offset = 0;
    std::uint32_t length = 0;
    ValueType valueType = ValueType::None;
    std::string_view text;

    // Whether the text is all that the token covers: what differs from the source is shorter.
    bool isAsInSource() const { return text.size() == length; }

    // The first character of a character literal, escapes resolved. Throws InvalidValueType.
    char charValue() const;
    // A string literal's contents with escapes resolved, a name's own text. Throws InvalidValueType.
    std::string stringValue() const;

    // Equal kind, positions, text and value type (the value follows from these).
    friend bool operator==(const Token& left, const Token& right);
};

// What a token is, wherever it stands.
struct Lexeme {
    Lexeme(int itsKind, std::string_view itsText) : kind(itsKind), text(itsText) {}
    Lexeme(const Token& token) : kind(token.kind), text(token.text) {}

    int kind;
    std::string_view text;
};

}  // namespace Trn
