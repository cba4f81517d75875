#include "cpp/lexer.h"

#include <algorithm>
#include <cstring>
#include <istream>
#include <ostream>
#include <utility>

#include "cpp/characters.h"
#include "cpp/operator_table.h"
#include "cpp/token_kind.h"

namespace Cpp {

Lexer::Lexer(std::istream& source)
    : ownText_(std::make_unique<Zelmor::TextDocument>(Zelmor::readAll(source))), text_(ownText_->text()) {}

Lexer::Lexer(std::string_view text) : text_(text) {}

Lexer::Lexer(std::string_view text, OpaqueTokens& opaque) : text_(text), opaque_(&opaque) {}

void Lexer::startLine(std::size_t place) {
    ++line_;
    previousLineStart_ = lineStart_;
    lineStart_ = place;
}

// Counts the line feeds of [first, last), which has been taken.
void Lexer::countLines(std::size_t first, std::size_t last) {
    while (first < last) {
        const void* found = std::memchr(text_.data() + first, '\n', last - first);
        if (!found) return;
        first = static_cast<std::size_t>(static_cast<const char*>(found) - text_.data()) + 1;
        startLine(first);
    }
}

void Lexer::printPosition(std::ostream& out) const {
    const std::size_t lastColumn = line_ > 1 ? lineStart_ - previousLineStart_ - 1 : 0;
    out << "line:\t" << line_ << "\tcol:\t" << place_ - lineStart_ << "\tlastlinecol:\t" << lastColumn
        << '\n';
}

void Lexer::recordOpaque(const Token& token) {
    switch (token.kind) {
        case Directive:
        case LineComment:
        case BlockComment:
        case Unknown:
            break;
        case CharLiteral:
        case StringLiteral:
            if (std::none_of(token.text.begin(), token.text.end(), isSpace)) return;
            break;
        case Identifier:
            // White space behind a "::" may change, but not a splice.
            if (token.text.find('\\') == std::string_view::npos) return;
            break;
        default:
            return;
    }
    opaque_->push_back({token.offset, token.length, token.kind});
}

bool Lexer::skipWhitespace() {
    while (place_ < text_.size()) {
        const char c = text_[place_];
        if (!isSpace(c)) return true;
        ++place_;
        if (c == '\n') startLine(place_);
    }
    return false;
}

Trn::Token Lexer::nextToken() {
    if (pending_.kind != Trn::kEndKind) return std::exchange(pending_, Token{});
    while (skipWhitespace()) {
        const char c = text_[place_];
        if (isNameStart(c)) return scanName();
        if (isDigit(c)) return scanNumber();
        const char second = charAt(place_ + 1);
        switch (c) {
            case ':':
                if (second == ':') return scanQualifiedName();
                break;
            case '~':
                if (isLetter(second)) return scanQualifiedName();
                break;
            case '"': return scanString(place_);
            case '\'': return scanCharacter(place_);
            case '#': return scanDirective();
            case '/':
                if (second == '/') return scanLineComment();
                if (second == '*') return scanBlockComment();
                break;
            case '\\':
                if (startsSplice(place_)) return scanSplice();
                break;
            default: break;
        }
        const Operator found = matchOperator(text_.substr(place_, 3));
        if (found.length > 0) return scanOperator(found.kind, found.length);
        ++place_;
    }
    Token end;
    end.start = end.end = positionOf(place_);
    end.offset = static_cast<std::uint32_t>(place_);
    return end;
}

Trn::Token Lexer::scanOperator(int kind, std::size_t length) {
    Token token = begin();
    place_ += length;
    finishPlain(token, kind);
    return token;
}

OpaqueTokens opaqueTokensOf(std::string_view text) {
    OpaqueTokens opaque;
    Lexer lexer(text, opaque);
    while (lexer.nextToken().kind != Trn::kEndKind) {
    }
    return opaque;
}

}  // namespace Cpp
