#include "layout/list_parts.h"

#include "cpp/token_kind.h"
#include "cpp/token_sets.h"
#include "layout/long_lines.h"

namespace Tessel {

namespace {

// From the start of one token to the end of another one.
std::string_view textBetween(std::string_view first, std::string_view last) {
    return {first.data(), static_cast<std::size_t>(last.data() + last.size() - first.data())};
}

bool endsLine(const ExprTokens& tokens, std::size_t place) {
    const std::string_view next = tokens[place + 1].text();
    const std::string_view text = textBetween(tokens[place].text(), next);
    return text.find('\n') < text.size() - next.size();
}

// Behind a comment that has a line, a "," that ends one, the comment there, or what stands in front of the "}"; 0
// elsewhere.
std::size_t behindRow(const ExprTokens& tokens, std::size_t place, std::size_t first, std::size_t close) {
    const int kind = tokens[place].kind;
    if (kind == Cpp::LineComment && place == first) return place + 1;
    const bool mayEnd = kind == Cpp::Comma || place + 1 == close || (Cpp::isComment(kind) && place == first);
    if (!mayEnd) return 0;
    if (endsLine(tokens, place)) return place + 1;
    const int next = tokens[place + 1].kind;
    const bool isBehind = next == Cpp::LineComment || (next == Cpp::BlockComment && endsLine(tokens, place + 1));
    return kind == Cpp::Comma && isBehind ? place + 2 : 0;
}

}  // namespace

ListParts partsOfList(const ExprTokens& tokens, std::size_t open, const WrapSettings& settings) {
    ListParts parts;
    std::size_t first = open + 1;  // of the row
    const char* start = tokens[open].text().data() + 1;
    const auto add = [&](const char* end, bool mayBeElement) {
        const std::string_view text(start, static_cast<std::size_t>(end - start));
        const bool isElement = mayBeElement && LongLines(text, settings).next() != 0;
        if (isElement || parts.empty() || parts.back().isElement) {
            parts.push_back({text, isElement});
        } else {
            parts.back().text = textBetween(parts.back().text, text);
        }
        start = end;
    };
    bool holdsSeveral = false;
    const std::size_t close = tokens[open].partner;
    for (std::size_t place = first; place < close; ++place) {
        if (opensBracket(tokens, place)) place = tokens[place].partner;
        const std::size_t behind = behindRow(tokens, place, first, close);
        if (behind != 0) {
            const std::string_view last = tokens[behind - 1].text();
            add(last.data() + last.size(), !holdsSeveral && tokens[first].kind == Cpp::OpenBrace);
            first = behind;
        }
        holdsSeveral = behind == 0 && (holdsSeveral || tokens[place].kind == Cpp::Comma);
    }
    add(tokens[close].text().data(), false);
    return parts;
}

}  // namespace Tessel
