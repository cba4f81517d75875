#include "token_compare.h"

#include <cctype>

#include "cpp/lexer.h"
#include "cpp/token_kind.h"

namespace TestSupport {

namespace {

bool isWhite(char c) {
    return std::isspace(static_cast<unsigned char>(c)) != 0;
}

std::string withoutWhite(std::string_view text) {
    std::string kept;
    for (const char c : text) {
        if (!isWhite(c)) kept += c;
    }
    return kept;
}

// Takes the white space off the starts and the ends of the lines.
std::string withTrimmedLines(std::string_view text, Tabs tabs) {
    std::string kept;
    std::string white;
    for (const char c : text) {
        if (c == '\n') {
            kept += '\n';
            white.clear();
        } else if (isWhite(c)) {
            white += c;
        } else {
            const bool startsLine = kept.empty() || kept.back() == '\n';
            if (!startsLine) kept += tabs == Tabs::Converted && !white.empty() ? " " : white;
            white.clear();
            kept += c;
        }
    }
    while (!kept.empty() && kept.back() == '\n') kept.pop_back();
    return kept;
}

bool mayMoveItsLines(const Trn::Token& token) {
    return token.kind == Cpp::Directive || token.kind == Cpp::LineComment || token.kind == Cpp::BlockComment;
}

// A text token by token, with what stands between them.
class Reader {
public:
    Reader(std::string_view text, Tabs tabs) : text_(text), tabs_(tabs), lexer_(text) {}

    void next() {
        const std::size_t gapStart = token_.offset + token_.length;
        token_ = lexer_.nextToken();
        const std::size_t gapEnd = atEnd() ? text_.size() : token_.offset;
        stray_ = withoutWhite(text_.substr(gapStart, gapEnd - gapStart));
        content_ = mayMoveItsLines(token_) ? withTrimmedLines(token_.text, tabs_) : std::string(token_.text);
    }

    bool atEnd() const { return token_.kind == Cpp::End; }
    bool equals(const Reader& other) const {
        return token_.kind == other.token_.kind && content_ == other.content_ && stray_ == other.stray_;
    }
    std::string describe() const {
        if (!stray_.empty()) return "\"" + stray_ + "\" outside of tokens, then \"" + content_ + '"';
        if (atEnd()) return "the end";
        return "\"" + content_ + "\" on line " + std::to_string(token_.start.line);
    }

private:
    std::string_view text_;
    Tabs tabs_;
    Cpp::Lexer lexer_;
    Trn::Token token_;
    std::string content_;
    std::string stray_;
};

}  // namespace

std::string tokenDifference(std::string_view before, std::string_view after, Tabs tabs) {
    Reader expected(before, tabs);
    Reader got(after, tabs);
    do {
        expected.next();
        got.next();
        if (!expected.equals(got)) return expected.describe() + " became " + got.describe();
    } while (!expected.atEnd());
    return {};
}

}  // namespace TestSupport
