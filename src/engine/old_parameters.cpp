// int f(a, b)
// char * a;
// int  b;
//
// int f(a, b)
// char *a;
// int b;
#include "engine/old_parameters.h"

#include "cpp/lexer.h"
#include "cpp/token_kind.h"
#include "cpp/token_sets.h"
#include "cpp/words.h"
#include "engine/columns.h"
#include "engine/cpp_formatter.h"
#include "engine/gap.h"
#include "engine/opaque_text.h"

namespace Tessel {

using Zelmor::IndentScope;

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
                if (!Cpp::isWord(token.kind) && !Cpp::isComment(token.kind)) return false;
        }
    }
    return true;
}

void CppFormatter::writeOldParameters(Cpp::KeptNode& parameters) {
    if (!settings_.formatsTypeArguments || !areTypesAndNames(parameters)) return parameters.accept(*this);
    applyPendingWhitespace(parameters);
    writer_.copyGap(parameters.start());
    const int sourceColumn = sourceColumnOf(parameters);
    std::string_view rest = writer_.readThrough(parameters.end());
    while (!rest.empty()) {
        const std::string_view blanks = leadingBlanks(rest);
        writer_.write(blanks);
        rest.remove_prefix(blanks.size());
        std::string_view text = rest.substr(0, rest.find_first_of(";/"));
        if (text.empty() && rest.starts_with('/')) {
            text = rest.substr(0, Cpp::Lexer(rest).nextToken().length);
            writeOldComment(blanks, text, sourceColumn);
        } else {
            writeOldDeclaration(text);
        }
        rest.remove_prefix(text.size());
        if (!rest.starts_with(';')) continue;
        writer_.write(rest.substr(0, 1));
        rest.remove_prefix(1);
    }
}

// Where there are several names their marks are theirs.
void CppFormatter::writeOldDeclaration(std::string_view declaration) {
    const std::string_view blanks = trailingBlanks(declaration);
    declaration.remove_suffix(blanks.size());
    if (declaration.find(',') == declaration.npos) {
        exprFormatter_.formatDeclarationText(declaration, out(), kAsInInput);
    } else {
        writer_.write(declaration);
    }
    writer_.write(blanks);
}

// One on lines of its own stands as far behind the declarations, the first of which was in `sourceColumn`, as it stood.
void CppFormatter::writeOldComment(std::string_view blanks, std::string_view comment, int sourceColumn) {
    const std::size_t lineFeed = blanks.rfind('\n');
    const int behind = lineFeed == blanks.npos
                           ? 0 : columnsBehindStart(blanks.substr(lineFeed + 1), sourceColumn, out().tabSize());
    IndentScope indent(out(), indentToColumn(out(), indentColumn() + behind));
    exprFormatter_.writeComment(comment, out());
}

}  // namespace Tessel
