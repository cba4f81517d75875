#include "textstream/text_encoding.h"

#include <algorithm>

#include "textstream/byte_order_mark.h"

namespace Zelmor {

namespace {

constexpr std::string_view utf16Marks[] = {"\xFF\xFE", "\xFE\xFF"};
constexpr std::size_t sampledPairs = 512;
constexpr std::size_t leastPairs = 2;

std::size_t countCarriageReturnLineFeeds(std::string_view text) {
    std::size_t count = 0;
    for (std::size_t at = text.find('\r'); at != std::string_view::npos; at = text.find('\r', at + 1)) {
        if (at + 1 < text.size() && text[at + 1] == '\n') ++count;
    }
    return count;
}

std::size_t countOf(std::string_view text, char character) {
    std::size_t count = 0;
    for (std::size_t at = text.find(character); at != text.npos; at = text.find(character, at + 1)) ++count;
    return count;
}

}  // namespace

TextEncoding detectEncoding(std::string_view text) {
    if (text.find('\r') == text.npos) return {text.starts_with(BYTE_ORDER_MARK), false};
    const std::size_t both = countCarriageReturnLineFeeds(text);
    const std::size_t lineEnds = countOf(text, '\n') + countOf(text, '\r') - both;
    return {text.starts_with(BYTE_ORDER_MARK), both > lineEnds - both};
}

bool isUtf16(std::string_view text) {
    for (const std::string_view mark : utf16Marks) {
        if (text.starts_with(mark)) return true;
    }
    const std::size_t pairs = std::min(text.size() / 2, sampledPairs);
    if (pairs < leastPairs) return false;
    std::size_t nulsFirst = 0;
    std::size_t nulsSecond = 0;
    for (std::size_t pair = 0; pair < pairs; ++pair) {
        nulsFirst += text[2 * pair] == '\0';
        nulsSecond += text[2 * pair + 1] == '\0';
    }
    const auto [fewer, more] = std::minmax(nulsFirst, nulsSecond);
    // A letter outside the first 256 characters has no NUL in it, so that a few may be missing.
    return fewer == 0 && more * 4 >= pairs * 3;
}

std::string addCarriageReturns(std::string_view text) {
    std::string result;
    result.reserve(text.size() + countOf(text, '\n'));
    while (!text.empty()) {
        const std::size_t length = text.find('\n');
        result += text.substr(0, length);
        if (length == std::string_view::npos) break;
        result += "\r\n";
        text.remove_prefix(length + 1);
    }
    return result;
}

}  // namespace Zelmor
