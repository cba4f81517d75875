#pragma once

#include <cstddef>
#include <cstdint>
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

    void reserve(Index count) { entries_.reserve(count); }
    void add(const Token& token) { entries_.push_back(pack(token)); }

    Index size() const { return entries_.size(); }
    int kind(Index place) const { return entries_[place].kind; }
    void setKind(Index place, int kind) { entries_[place].kind = static_cast<std::int16_t>(kind); }
    Token operator[](Index place) const;

    // Puts the token at `from` into `to`, whatever stands there.
    void move(Index from, Index to) { entries_[to] = entries_[from]; }
    // Makes one token of that kind, at `to`, of all that lies in [first, last).
    void merge(Index first, Index last, int kind, Index to);
    // Drops the tokens from that place on.
    void truncate(Index count) { entries_.resize(count); }

private:
    // Most tokens are the characters of one line.
    struct Entry {
        Position start;
        std::uint32_t offset;
        std::uint32_t length;  // of one in special_: its place there
        std::int16_t kind;
        ValueType valueType;
        bool isSpecial;
    };
    struct Special {
        Position end;
        std::uint32_t length;
        std::string_view text;
    };

    // Both positions are those behind a character.
    static Position endInLine(Position start, std::uint32_t length) {
        return {start.line, start.column + length - 1};
    }
    bool isPlain(const Token& token) const {
        return token.text.data() == source_.data() + token.offset && token.text.size() == token.length &&
               token.end == endInLine(token.start, token.length);
    }
    static Entry packPlain(const Token& token) {
        return {token.start, token.offset, token.length, static_cast<std::int16_t>(token.kind), token.valueType, false};
    }
    Entry packSpecial(const Token& token);
    Entry pack(const Token& token) { return isPlain(token) ? packPlain(token) : packSpecial(token); }

    std::string_view source_;
    std::vector<Entry> entries_;
    std::vector<Special> special_;
};

inline Token TokenList::operator[](Index place) const {
    const Entry& entry = entries_[place];
    if (entry.isSpecial) {
        const Special& special = special_[entry.length];
        return {entry.kind, entry.start, special.end, entry.offset, special.length, entry.valueType, special.text};
    }
    const std::string_view text(source_.data() + entry.offset, entry.length);
    return {entry.kind,   entry.start,  endInLine(entry.start, entry.length),
            entry.offset, entry.length, entry.valueType,
            text};
}

}  // namespace Trn
