#include "cpp/leaf_text.h"

#include <algorithm>
#include <memory>
#include <string>

#include "cpp/characters.h"
#include "cpp/lexer.h"
#include "cpp/token_kind.h"

namespace Cpp {

namespace {

std::string joined(std::string_view source, bool isStatement) {
    std::string text;
    Lexer lexer(source);
    for (Trn::Token token = lexer.nextToken(); token.kind != Trn::kEndKind; token = lexer.nextToken()) {
        if (token.text.empty() || (isStatement && isLeftOutOfStatements(token.kind))) continue;
        const bool endsStatement = isStatement && token.kind == Semicolon && token.offset + 1 == source.size();
        if (!text.empty() && !endsStatement) text.push_back(' ');
        text += token.text;
    }
    return text;
}

}  // namespace

bool isLeftOutOfStatements(int kind) {
    switch (kind) {
        case OpenParen:
        case CloseParen:
        case Less:
        case Greater:
        case KeywordTemplate: return true;
        default: return false;
    }
}

LeafText::LeafText(std::string_view text) : characters_(copyOf(text)) {}

LeafText::LeafText(const Trn::Token& token)
    : LeafText(token.isAsInSource() ? borrowed(token.text, Form::AsWritten) : LeafText(token.text)) {}

LeafText::LeafText(const LeafText& other)
    : LeafText(other.extent().isOwn ? LeafText(other.stored()) : borrowed(other.stored(), other.extent().form)) {}

LeafText LeafText::borrowed(std::string_view source, Form form) {
    return LeafText(Characters(source.data(), {static_cast<std::uint32_t>(source.size()), form, false}));
}

LeafText::Characters LeafText::copyOf(std::string_view text) {
    auto copy = std::make_unique<char[]>(text.size());
    std::copy(text.begin(), text.end(), copy.get());
    return Characters(copy.release(), {static_cast<std::uint32_t>(text.size()), Form::AsWritten, true});
}

std::string_view LeafText::firstWord() const {
    const std::string_view text = stored();
    const auto* end = std::find_if_not(text.begin(), text.end(), isNamePart);
    return text.substr(0, static_cast<std::size_t>(end - text.begin()));
}

void LeafText::join() const {
    characters_ = copyOf(joined(stored(), extent().form == Form::JoinedStatement));
}

}  // namespace Cpp
