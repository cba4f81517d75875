#include "trn/token.h"

#include "textstream/string_escape.h"
#include "trn/exception.h"

namespace Trn {

namespace {

// What stands between a literal's quotes, escapes resolved. A prefix in front of the opening quote is no part
// of it.
std::string literalContents(std::string_view text, char quote) {
    const std::size_t open = text.find(quote);
    if (open == std::string_view::npos || open + 1 >= text.size()) return {};
    std::string contents(text.substr(open + 1, text.size() - open - 2));
    Zelmor::unescape(contents);
    return contents;
}

}  // namespace

char Token::charValue() const {
    if (valueType != ValueType::Character) throw InvalidValueType();
    return literalContents(text, '\'').front();
}

std::string Token::stringValue() const {
    if (valueType != ValueType::String) throw InvalidValueType();
    return text.find('"') == std::string_view::npos ? std::string(text) : literalContents(text, '"');
}

bool operator==(const Token& left, const Token& right) {
    return left.kind == right.kind && left.start == right.start && left.end == right.end &&
           left.text == right.text && left.valueType == right.valueType;
}

}  // namespace Trn
