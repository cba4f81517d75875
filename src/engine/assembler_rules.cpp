// asm volatile ( "nop" : "=r" (a),"=r" (b) );    →    asm volatile("nop" : "=r" (a), "=r" (b));
#include "cpp/lexer.h"
#include "cpp/token_sets.h"
#include "engine/columns.h"
#include "engine/cpp_formatter.h"
#include "engine/gap.h"
#include "engine/opaque_text.h"

namespace Tessel {

namespace {

// Whether a statement holds literals and operands alone. What macros stand among the literals may make text of their
// arguments, in which a blank in `%0` means something.
bool holdsOperands(std::string_view statement) {
    Cpp::Lexer lexer(statement);
    Trn::Token previous;
    int depth = 0;
    for (Trn::Token token = lexer.nextToken(); token.kind != Trn::kEndKind; token = lexer.nextToken()) {
        switch (token.kind) {
            case Cpp::OpenParen:
                if (depth == 1 && previous.kind == Cpp::Identifier) return false;
                ++depth;
                break;
            case Cpp::CloseParen: --depth; break;
            case Cpp::OpenBrace:
            case Cpp::Percent:
            case Cpp::Directive:
            case Cpp::Unknown: return false;
            default: break;
        }
        if (!Cpp::isComment(token.kind)) previous = token;
    }
    return previous.kind == Cpp::CloseParen || previous.kind == Cpp::Semicolon;
}

// Whether all further lines are indented from the column, but for one with the last parenthesis.
bool indentsLinesFrom(int column, std::string_view statement, int tabSize) {
    for (std::size_t end = statement.find('\n'); end != statement.npos; end = statement.find('\n', end + 1)) {
        const std::string_view line = statement.substr(end + 1);
        const std::string_view blanks = leadingBlanks(line);
        const int indented = columnAfter(blanks, 0, tabSize) - column;
        if (indented < 0 || (indented == 0 && !line.substr(blanks.size()).starts_with(')'))) return false;
    }
    return true;
}

}  // namespace

// Assembler has a grammar of its own, in which line ends count. A statement without a ";" or a block goes as far as
// its line. Operands in parentheses are laid out as those of a call; where they stand below the statement, as in a
// file of assembler, they stay there.
void CppFormatter::visit(Cpp::AsmNode* statement) {
    copyUpTo(*statement);
    const std::string_view text = writer_.readThrough(statement->end());
    const std::size_t bracket = text.find_first_of("({");
    const bool isInParentheses = bracket != std::string_view::npos && text[bracket] == '(';
    const bool isLaidOut = settings_.formatsOtherGaps && keepsLines() && isInParentheses &&
                           !holdsLinesOfLiteral(text) && holdsOperands(text) &&
                           indentsLinesFrom(exprFormatter_.columnOfSourceLine(text), text, out().tabSize());
    if (isLaidOut) {
        writeExpression(text, {});
    } else if (settings_.keepsUnrecognized && isInParentheses) {
        writeLinesAsBlock(text);
    } else {
        writer_.write(text);
    }
    const char last = writer_.peekBehind();
    if (last != ';' && last != '}') writer_.keepLineEndBehind();
}

}  // namespace Tessel
