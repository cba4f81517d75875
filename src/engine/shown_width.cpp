#include "engine/shown_width.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <iterator>

#include "engine/columns.h"

namespace Tessel {

namespace {

struct Range {
    std::uint32_t first;
    std::uint32_t last;
};

constexpr Range kWide[] = {
#define VANTREL_WIDE_CHARACTERS(first, last) {first, last},
#include "engine/wide_characters.def"
#undef VANTREL_WIDE_CHARACTERS
};

bool isWide(std::uint32_t character) {
    const auto range = std::lower_bound(std::begin(kWide), std::end(kWide), character,
                                        [](const Range& of, std::uint32_t value) { return of.last < value; });
    return range != std::end(kWide) && range->first <= character;
}

bool isAscii(char c) { return static_cast<unsigned char>(c) < 0x80; }

// Whether it is a column wide for certain. No byte of a longer character is positive.
bool isOneColumn(char c) { return static_cast<signed char>(c) >= ' '; }

struct Character {
    std::uint32_t code = 0;
    std::size_t length = 1;
};

// The one that the text begins with, which is no ASCII. A byte that begins none stands for itself.
Character firstCharacter(std::string_view text) {
    const auto lead = static_cast<std::uint8_t>(text.front());
    const auto length = static_cast<std::size_t>(std::countl_one(lead));
    constexpr std::size_t longest = 4;
    if (length < 2 || length > longest || length > text.size()) return {};
    std::uint32_t code = lead & (0x7Fu >> length);
    for (const char c : text.substr(1, length - 1)) {
        const auto byte = static_cast<std::uint8_t>(c);
        if ((byte & 0xC0u) != 0x80u) return {};
        code = code << 6 | (byte & 0x3Fu);
    }
    return {code, length};
}

}  // namespace

int shownColumnAfter(std::string_view text, int column, int tabSize) {
    if (std::all_of(text.begin(), text.end(), isOneColumn)) return column + static_cast<int>(text.size());
    while (!text.empty()) {
        const auto ascii = std::find_if_not(text.begin(), text.end(), isAscii);
        const auto plain = static_cast<std::size_t>(ascii - text.begin());
        if (plain > 0) column = columnAfter(text.substr(0, plain), column, tabSize);
        text.remove_prefix(plain);
        if (text.empty()) break;
        const Character character = firstCharacter(text);
        column += isWide(character.code) ? 2 : 1;
        text.remove_prefix(character.length);
    }
    return column;
}

int hiddenColumns(std::string_view text, int tabSize) {
    const std::string_view line = text.substr(text.rfind('\n') + 1);
    if (std::all_of(line.begin(), line.end(), isAscii)) return 0;
    return columnAfter(line, 0, tabSize) - shownColumnAfter(line, 0, tabSize);
}

}  // namespace Tessel
