#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>
#include <vector>

#include "trn/token.h"

namespace Trn {

// The tokens of one text, packed: what follows from the text is not stored.
class TokenList {
public:
    using Index = std::size_t;

    // Borrows the text that the tokens were read from.
    explicit TokenList(std::string_view source) : source_(source) {}

    void reserve(Index tokens, std::size_t lines) {
        entries_.reserve(tokens);
        lineStarts_.reserve(lines);
    }
    void add(const Token& token) { entries_.push_back(pack(token)); }

    std::string_view source() const { return source_; }
    Index size() const { return entries_.size(); }
    int kind(Index place) const { return entries_[place].kind; }
    void setKind(Index place, int kind) { entries_[place].kind = static_cast<std::int8_t>(kind); }
    Token operator[](Index place) const;
    // As those of the token.
    Position start(Index place) const;
    // Whether its text is all that it covers, and stands in one line.
    bool isPiece(Index place) const { return entries_[place].length > 0; }
    // Where the token begins and ends in the text.
    std::size_t offset(Index place) const { return entries_[place].offset; }
    std::size_t endOffset(Index place) const;

    // Puts the token at `from` into `to`, whatever stands there.
    void move(Index from, Index to) { entries_[to] = entries_[from]; }
    // Makes one token of that kind, at `to`, of all that lies in [first, last).
    void merge(Index first, Index last, int kind, Index to);
    // Drops the tokens from that place on.
    void truncate(Index count) { entries_.resize(count); }

private:
    // Most tokens are the characters of one line, few of them, and stand where the first token of the line says.
    struct Entry {
        std::uint32_t line;  // of a special one: its place among these
        std::uint32_t offset;
        std::uint16_t length;  // 0 for special ones
        std::int8_t kind;
        ValueType valueType;
    };
    struct Special {
        Position start;
        Position end;
        std::uint32_t length;
        std::string_view text;
    };

    static constexpr std::uint32_t kUnknown = std::numeric_limits<std::uint32_t>::max();

    // Both positions are those behind a character.
    static Position endInLine(Position start, std::uint32_t length) {
        return {start.line, start.column + length - 1};
    }
    Entry pack(const Token& token);
    Entry packSpecial(const Token& token);
    bool isPlain(const Token& token);

    std::string_view source_;
    std::vector<Entry> entries_;
    std::vector<Special> special_;
    std::vector<std::uint32_t> lineStarts_;  // of the lines up to that of the last token, where they have any
};

inline Token TokenList::operator[](Index place) const {
    const Entry& entry = entries_[place];
    if (entry.length == 0) {
        const Special& special = special_[entry.line];
        return {entry.kind,     special.start,   special.end, entry.offset,
                special.length, entry.valueType, special.text};
    }
    const Position first = start(place);
    const std::string_view text(source_.data() + entry.offset, entry.length);
    return {entry.kind, first, endInLine(first, entry.length), entry.offset, entry.length, entry.valueType, text};
}

inline Position TokenList::start(Index place) const {
    const Entry& entry = entries_[place];
    if (entry.length == 0) return special_[entry.line].start;
    return {entry.line, entry.offset + 1 - lineStarts_[entry.line]};
}

inline std::size_t TokenList::endOffset(Index place) const {
    const Entry& entry = entries_[place];
    return entry.offset + (entry.length == 0 ? special_[entry.line].length : std::uint32_t{entry.length});
}

// The first token of a line tells where the line starts.
inline bool TokenList::isPlain(const Token& token) {
    const std::uint32_t start = token.offset + 1 - token.start.column;
    while (token.start.line >= lineStarts_.size()) lineStarts_.push_back(kUnknown);
    std::uint32_t& lineStart = lineStarts_[token.start.line];
    if (lineStart == kUnknown) lineStart = start;
    return start == lineStart && token.length > 0 && token.length <= std::numeric_limits<std::uint16_t>::max() &&
           token.text.data() == source_.data() + token.offset && token.text.size() == token.length &&
           token.end == endInLine(token.start, token.length);
}

inline TokenList::Entry TokenList::pack(const Token& token) {
    if (!isPlain(token)) return packSpecial(token);
    const auto kind = static_cast<std::int8_t>(token.kind);
    return {token.start.line, token.offset, static_cast<std::uint16_t>(token.length), kind, token.valueType};
}

}  // namespace Trn
