#include "cpp/parser_messages.h"

#include <utility>

#include "cpp/parser.h"
#include "cpp/parser_nesting.h"

namespace Cpp {

namespace {

// No one reads more; a text that is no source at all would give millions.
constexpr std::size_t kMaximumMessages = 1000;

}  // namespace

const char* messageText(int code) {
    switch (code) {
        case UnexpectedEnd:
            return "Unexpected EOF found.";
        case ExpectedFunctionEnd:
            return "Unexpected token. Was expecting to find \";\" or \"{\".";
        case ExpectedDataEnd:
            return "Unexpected token. Was expecting to find \";\", \"(\" or \"=\".";
        case MissingType:
            return "Data declaration is missing a type specifier";
        case UnexpectedSemicolon:
        case StraySemicolon:
            return "An unexpected semicolon was found.";
        case CannotParse:
            return "The statement cannot be parsed.";
        case AccessLabelInBlock:
            return "public: protected: private: labels are not allowed inside block statements.";
        case TemplateInBlock:
            return "template declarations are not allowed inside block statements.";
        case NamespaceInBlock:
            return "Namespace declarations are not allowed inside block statements.";
        case ExpectedControlKeyword:
            return "Expected: if, else, for, do, while, try, catch, switch.";
        case ExpectedCloseParen:
            return "Expected \")\". Possible unbalanced parentheses.";
        case ExpectedOpenParen:
            return "Expected \"(\".";
        case ExpectedAccessKeyword:
            return "Expected one of \"public\", \"protected\" or \"private\".";
        default:
            return "Unknown error.";
    }
}

std::string shown(const Trn::Token& token) {
    return std::string(token.text.substr(0, token.text.find('\n')));
}

void Parser::append(Tessel::Diagnostic diagnostic) {
    const Position position = diagnostic.position;
    ++itemMessages_;
    diagnostics_.push_back(std::move(diagnostic));
    if (diagnostics_.size() >= kMaximumMessages) {
        throw ParseEnded{position, "There are too many messages; the rest of the source was not looked at."};
    }
}

void Parser::report(Position position, int code) {
    append({Tessel::Error, position, code, messageText(code)});
}

void Parser::report(Position position, std::string text) {
    append({Tessel::Error, position, 0, std::move(text)});
}

// What is wrong with the brackets: each that is not closed, and what stands where its own should.
void Parser::reportMismatches(const TokenBuffer& tokens) {
    for (const TokenLinks::Mismatch& mismatch : links_.mismatches()) {
        const Token open = tokens.at(mismatch.open);
        std::string text = "The \"" + std::string(open.text) + "\" that begins here is not closed: ";
        if (mismatch.where == TokenLinks::kNone) {
            text += "the text ends first.";
        } else {
            const Token close = tokens.at(mismatch.where);
            text += "a \"" + std::string(close.text) + "\" comes first, in line " +
                    std::to_string(close.start.line) + ".";
        }
        report(open.start, std::move(text));
    }
}

}  // namespace Cpp
