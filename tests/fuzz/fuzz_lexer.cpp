// Positions: every token's text is what the source holds between its positions, and no gap holds a token.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "cpp/lexer.h"
#include "cpp/token_kind.h"
#include "textstream/text_document.h"

namespace {

void require(bool condition) {
    if (!condition) std::abort();
}

bool isBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

std::string withoutBlanks(std::string_view text) {
    std::string result;
    for (const char c : text) {
        if (!isBlank(c)) result += c;
    }
    return result;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Zelmor::TextDocument document(std::string(reinterpret_cast<const char*>(data), size));
    const std::string_view text = document.text();
    Cpp::Lexer lexer(text);
    std::size_t end = 0;
    while (true) {
        const Trn::Token token = lexer.nextToken();
        require(token.offset >= end && token.offset + token.length <= text.size());
        const std::string_view gap = text.substr(end, token.offset - end);
        require(Cpp::Lexer(gap).nextToken().kind == Trn::kEndKind);
        if (token.kind == Trn::kEndKind) break;
        end = token.offset + token.length;
        const auto startLine = static_cast<int>(token.start.line);
        const auto startColumn = static_cast<int>(token.start.column);
        require(document.offsetOf(startLine, startColumn) == token.offset + 1);
        require(document.offsetOf(static_cast<int>(token.end.line), static_cast<int>(token.end.column)) == end);
        require(withoutBlanks(token.text) == withoutBlanks(text.substr(token.offset, token.length)));
    }
    return 0;
}
