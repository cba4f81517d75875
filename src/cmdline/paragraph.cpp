#include "cmdline/paragraph.h"

#include <algorithm>
#include <ostream>
#include <string>

namespace {

constexpr std::size_t tabWidth = 8;
constexpr std::size_t leastTextWidth = 10;

bool isLineEnd(char character) {
    return character == '\n' || character == '\f' || character == '\r';
}

struct Piece {
    std::string_view line;  // what fits on one line, the line end that closes it included
    std::size_t used = 0;   // the length of the line and of the blanks dropped behind it
    bool isBroken = false;  // the text was broken here and needs a line feed
};

// The break for a text of which only the first `fitting` characters have room: at the last blank, else hard.
Piece breakText(std::string_view text, std::size_t fitting) {
    const std::size_t lastBlank = text.find_last_of(' ', fitting);
    const std::size_t wordEnd =
        lastBlank == std::string_view::npos ? lastBlank : text.find_last_not_of(' ', lastBlank);
    const std::size_t length = wordEnd == std::string_view::npos ? fitting : wordEnd + 1;
    const std::size_t next = std::min(text.find_first_not_of(' ', length), text.size());
    return {text.substr(0, length), next, next < text.size()};
}

// Cuts off what fits into `width` columns.
Piece nextPiece(std::string_view text, std::size_t width) {
    std::size_t column = 0;
    for (std::size_t index = 0; index < text.size(); ++index) {
        const char character = text[index];
        if (isLineEnd(character)) return {text.substr(0, index + 1), index + 1, false};
        column += character == '\t' ? tabWidth : 1;
        if (column > width) return breakText(text, index);
    }
    return {text, text.size(), false};
}

}  // namespace

void printParagraph(std::ostream& out, const ParagraphShape& shape, std::string_view title,
                    std::string_view text) {
    const auto textColumn = static_cast<std::size_t>(shape.indent + shape.titleWidth);
    const auto lineWidth = static_cast<std::size_t>(shape.lineWidth);
    const std::size_t width = std::max(lineWidth, textColumn + leastTextWidth) - textColumn;
    const std::string indent(textColumn, ' ');

    bool atLineStart = true;
    if (shape.titleWidth > 0) {
        out << std::string(static_cast<std::size_t>(shape.indent), ' ') << title;
        if (title.size() >= static_cast<std::size_t>(shape.titleWidth)) {
            out << '\n';
        } else {
            out << std::string(static_cast<std::size_t>(shape.titleWidth) - title.size(), ' ');
            atLineStart = false;
        }
    }
    while (!text.empty()) {
        const Piece piece = nextPiece(text, width);
        if (atLineStart && !isLineEnd(piece.line.front())) out << indent;
        out << piece.line;
        if (piece.isBroken) out << '\n';
        atLineStart = piece.isBroken || piece.line.back() == '\n' || piece.line.back() == '\f';
        text.remove_prefix(piece.used);
    }
    if (!atLineStart) out << '\n';
}
