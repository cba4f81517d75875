#include "textstream/string_escape.h"

#include <cstdarg>
#include <cstddef>
#include <cstdio>

namespace Zelmor {

namespace {

// The letter that stands for a character after the backslash; 0 when the character is written as itself.
char escapeLetter(char character) {
    switch (character) {
        case '\t':
            return 't';
        case '\n':
            return 'n';
        case '\v':
            return 'v';
        case '\r':
            return 'r';
        case '"':
        case '\'':
        case '\\':
            return character;
        default:
            return 0;
    }
}

// The character that an escape letter stands for. Unknown letters, and quotes, stand for themselves.
char escapedCharacter(char letter) {
    switch (letter) {
        case 't':
            return '\t';
        case 'n':
            return '\n';
        case 'v':
            return '\v';
        case 'r':
            return '\r';
        default:
            return letter;
    }
}

}  // namespace

void escape(std::string& text) {
    std::string escaped;
    escaped.reserve(text.size());
    for (char character : text) {
        if (char letter = escapeLetter(character)) {
            escaped += '\\';
            escaped += letter;
        } else {
            escaped += character;
        }
    }
    text.swap(escaped);
}

void unescape(std::string& text) {
    std::string plain;
    plain.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\') {
            plain += text[i];
        } else if (++i < text.size()) {
            plain += escapedCharacter(text[i]);
        }
    }
    text.swap(plain);
}

std::string formatString(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    std::va_list measured;
    va_copy(measured, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, measured);
    va_end(measured);

    std::string text;
    if (length > 0) {
        text.resize(static_cast<std::size_t>(length));
        std::vsnprintf(text.data(), text.size() + 1, format, arguments);
    }
    va_end(arguments);
    return text;
}

}  // namespace Zelmor
