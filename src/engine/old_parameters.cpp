// int f(a, b)
// char * a;
// int  b;
//
// int f(a, b)
// char *a;
// int b;
#include "engine/old_parameters.h"

#include <algorithm>

#include "cpp/lexer.h"
#include "cpp/token_kind.h"
#include "cpp/words.h"
#include "engine/cpp_formatter.h"
#include "engine/gap.h"

namespace Tessel {

bool areTypesAndNames(const Cpp::KeptNode& declarations) {
    Cpp::Lexer lexer{declarations.text()};
    for (Trn::Token token = lexer.nextToken(); token.kind != Trn::kEndKind; token = lexer.nextToken()) {
        switch (token.kind) {
            case Cpp::Asterisk:
            case Cpp::Comma:
            case Cpp::Semicolon:
            case Cpp::OpenBracket:
            case Cpp::CloseBracket:
            case Cpp::Number: break;
            default:
                if (!Cpp::isWord(token.kind)) return false;
        }
    }
    return true;
}

void CppFormatter::writeOldParameters(Cpp::KeptNode& parameters) {
    if (!settings_.formatsTypeArguments || !areTypesAndNames(parameters)) return parameters.accept(*this);
    applyPendingWhitespace(parameters);
    writer_.copyGap(parameters.start());
    std::string_view rest = writer_.readThrough(parameters.end());
    const bool holdsComments = rest.find_first_of("/#") != rest.npos;
    if (holdsComments) return writeLinesAsBlock(rest);
    while (!rest.empty()) {
        const std::string_view blanks = leadingBlanks(rest);
        writer_.write(blanks);
        rest.remove_prefix(blanks.size());
        const std::string_view declaration = rest.substr(0, rest.find(';'));
        // Where there are several names their marks are theirs.
        if (declaration.find(',') == declaration.npos) {
            exprFormatter_.formatDeclarationText(declaration, out(), kAsInInput);
        } else {
            writer_.write(declaration);
        }
        rest.remove_prefix(declaration.size());
        writer_.write(rest.substr(0, 1));
        rest.remove_prefix(std::min<std::size_t>(rest.size(), 1));
    }
}

}  // namespace Tessel
