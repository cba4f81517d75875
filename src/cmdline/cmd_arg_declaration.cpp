#include "cmdline/cmd_arg_declaration.h"

#include <cctype>
#include <string_view>
#include <utility>

#include "cmdline/cmd_arg.h"

namespace {

bool isWordCharacter(char character) {
    const auto byte = static_cast<unsigned char>(character);
    return std::isalnum(byte) || character == '_' || character == '-' || byte >= 0x80;
}

// Reads the parts in the order in which they may stand, each consuming the text that it recognises.
class DeclarationReader {
public:
    explicit DeclarationReader(std::string_view text) : rest_(text) {}

    CmdArgDeclaration read() {
        const bool isOptional = take('[');
        readNames();
        readValue();
        if (isOptional) {
            expectClosing();
        } else {
            result_.syntaxFlags |= CmdArg::SYNTAX_REQUIRED;
        }
        if (isOptional && isPositional() && takesValue()) makeValueOptional();
        readDescription();
        return std::move(result_);
    }

private:
    bool isPositional() const { return (result_.syntaxFlags & CmdArg::SYNTAX_POSITIONAL) != 0; }
    bool takesValue() const { return !result_.valueName.empty(); }

    void makeValueOptional() {
        result_.syntaxFlags &= ~CmdArg::SYNTAX_VALUE_REQUIRED;
        result_.syntaxFlags |= CmdArg::SYNTAX_VALUE_OPTIONAL;
    }

    void readNames() {
        skipBlanks();
        if (rest_.empty() || rest_.front() != '-') {
            result_.syntaxFlags |= CmdArg::SYNTAX_POSITIONAL;
            return;
        }
        if (rest_.starts_with("--")) {
            readKeyword();
        } else {
            rest_.remove_prefix(1);
            if (!rest_.empty()) {
                result_.optionCharacter = rest_.front();
                rest_.remove_prefix(1);
            }
            if (take('|')) readKeyword();
        }
    }

    void readKeyword() {
        skipBlanks();
        if (!rest_.starts_with("--")) return reportUnexpected();
        rest_.remove_prefix(2);
        result_.keyword = takeWord();
    }

    void readValue() {
        const bool mayBeOmitted = take('[');
        const bool isSticky = take('=');
        skipBlanks();
        result_.valueName = takeWord();
        if (takesValue()) {
            result_.syntaxFlags |=
                mayBeOmitted ? CmdArg::SYNTAX_VALUE_OPTIONAL : CmdArg::SYNTAX_VALUE_REQUIRED;
            if (isSticky) result_.syntaxFlags |= CmdArg::SYNTAX_VALUE_STICKY;
        } else if (mayBeOmitted || isSticky) {
            reportBadValue();
        }
        if (mayBeOmitted) expectClosing();
        skipBlanks();
        if (rest_.starts_with("...")) {
            rest_.remove_prefix(3);
            result_.syntaxFlags |= CmdArg::SYNTAX_LIST;
        }
    }

    void readDescription() {
        skipBlanks();
        if (rest_.empty()) return;
        if (rest_.front() == ']') return reportUnmatched(']');
        if (!take(':')) return reportUnexpected();
        skipBlanks();
        result_.description = rest_;
    }

    void expectClosing() {
        if (!take(']')) reportUnmatched('[');
    }

    bool take(char character) {
        skipBlanks();
        if (rest_.empty() || rest_.front() != character) return false;
        rest_.remove_prefix(1);
        return true;
    }

    std::string takeWord() {
        std::size_t length = 0;
        while (length < rest_.size() && isWordCharacter(rest_[length])) ++length;
        std::string word(rest_.substr(0, length));
        rest_.remove_prefix(length);
        return word;
    }

    void skipBlanks() {
        while (!rest_.empty() && (rest_.front() == ' ' || rest_.front() == '\t')) rest_.remove_prefix(1);
    }

    std::string nextToken() const { return std::string(rest_.substr(0, rest_.find_first_of(" \t"))); }

    void reportUnmatched(char bracket) {
        result_.errors.push_back(std::string("Error: unmatched '") + bracket + "'.\n");
    }
    void reportUnexpected() {
        result_.errors.push_back("Error: unexpected token \"" + nextToken() + "\".\n");
    }
    void reportBadValue() {
        result_.errors.push_back("*** Syntax error in value \"" + nextToken() + "\".\n");
    }

    std::string_view rest_;
    CmdArgDeclaration result_;
};

}  // namespace

CmdArgDeclaration readDeclaration(const char* declaration) {
    return DeclarationReader(declaration ? declaration : "").read();
}
