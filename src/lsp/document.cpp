#include "lsp/document.h"

#include <algorithm>

namespace Lsp {

namespace {

// What the character that begins here adds to a column: those outside of the basic plane take two units, and the
// further bytes of one nothing.
std::size_t unitsOf(char c) {
    const auto byte = static_cast<unsigned char>(c);
    if ((byte & 0xC0) == 0x80) return 0;
    return byte >= 0xF0 ? 2 : 1;
}

// A carriage return ends a line, too, unless a line feed follows.
bool endsLine(std::string_view text, std::size_t place) {
    return text[place] == '\n' || (text[place] == '\r' && !text.substr(place + 1).starts_with('\n'));
}

bool isLineEnd(char c) {
    return c == '\n' || c == '\r';
}

bool continuesCharacter(char c) {
    return unitsOf(c) == 0;
}

}  // namespace

std::size_t offsetOf(std::string_view text, Position position) {
    std::size_t place = 0;
    for (std::size_t line = 0; line < position.line && place < text.size(); ++place) line += endsLine(text, place);
    std::size_t units = 0;
    while (place < text.size() && !isLineEnd(text[place]) && units < position.character) {
        units += unitsOf(text[place++]);
        while (place < text.size() && continuesCharacter(text[place])) ++place;
    }
    return place;
}

Position PositionWalk::positionOf(std::size_t offset) {
    for (const std::size_t end = std::min(offset, text_.size()); place_ < end; ++place_) {
        if (endsLine(text_, place_)) {
            position_ = {position_.line + 1, 0};
        } else {
            position_.character += unitsOf(text_[place_]);
        }
    }
    return position_;
}

}  // namespace Lsp
