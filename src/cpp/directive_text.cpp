#include "cpp/directive_text.h"

namespace Cpp {

namespace {

constexpr bool isBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

// Without white space, splices and comments; names and numbers stay apart, for they have operators between them.
std::string squeezed(std::string_view text) {
    std::string result;
    for (std::size_t place = 0; place < text.size(); ++place) {
        if (text.substr(place).starts_with("/*")) {
            const std::size_t end = text.find("*/", place + 2);
            if (end == std::string_view::npos) break;
            place = end + 1;
        } else if (!isBlank(text[place]) && text[place] != '\\') {
            result += text[place];
        }
    }
    return result;
}

bool isName(std::string_view text) {
    return !text.empty() && text.find_first_of("()!&|<>=+-*/%?:,.\"'") == std::string_view::npos;
}

// "if" of `# if defined(A)`; `#if defined` and `#ifdef` differ in nothing else once blanks are gone.
std::string_view wordOf(std::string_view directive) {
    const std::size_t first = directive.find_first_not_of("# \t");
    if (first == std::string_view::npos) return {};
    const std::size_t end = directive.find_first_not_of("abcdefghijklmnopqrstuvwxyz", first);
    return directive.substr(first, end - first);
}

bool takeStart(std::string_view& text, std::string_view start) {
    if (!text.starts_with(start)) return false;
    text.remove_prefix(start.size());
    return true;
}

std::string negated(std::string_view condition) { return std::string("!").append(condition); }

std::string_view withoutParentheses(std::string_view text) {
    return text.starts_with('(') && text.ends_with(')') ? text.substr(1, text.size() - 2) : text;
}

}  // namespace

bool directiveStartsWith(std::string_view text, std::string_view start) {
    for (const char c : text) {
        if (c == start.front()) {
            start.remove_prefix(1);
            if (start.empty()) return true;
        } else if (!isBlank(c)) {
            return false;
        }
    }
    return false;
}

bool beginsBranch(std::string_view directive) {
    return directiveStartsWith(directive, "#else") || directiveStartsWith(directive, "#elif");
}

int conditionalStep(std::string_view directive) {
    if (directiveStartsWith(directive, "#if")) return 1;
    return directiveStartsWith(directive, "#endif") ? -1 : 0;
}

std::string testedCondition(std::string_view directive) {
    const std::string_view word = wordOf(directive);
    if (word.empty()) return {};
    const std::size_t wordEnd = static_cast<std::size_t>(word.data() - directive.data()) + word.size();
    const std::string rest = squeezed(directive.substr(wordEnd));
    if (word == "ifdef" || word == "elifdef") return rest;
    if (word == "ifndef" || word == "elifndef") return negated(rest);
    if (word != "if" && word != "elif") return {};
    std::string_view condition = rest;
    const bool isNegated = takeStart(condition, "!");
    if (takeStart(condition, "defined")) {
        const std::string_view name = withoutParentheses(condition);
        if (isName(name)) return isNegated ? negated(name) : std::string(name);
    }
    return rest;
}

}  // namespace Cpp
