// asm volatile ( "nop" : "=r" (a),"=r" (b) );    →    asm volatile("nop" : "=r" (a), "=r" (b));
#include <algorithm>
#include <string>
#include <vector>

#include "cpp/lexer.h"
#include "cpp/token_sets.h"
#include "engine/columns.h"
#include "engine/cpp_formatter.h"
#include "engine/gap.h"
#include "engine/opaque_text.h"
#include "engine/text_lines.h"

namespace Tessel {

using Zelmor::IndentScope;

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

// That of the line that is indented least, but for labels.
int columnOfInstructions(const std::vector<std::string_view>& lines, int tabSize) {
    int least = kRightmostIndent;
    for (const std::string_view line : lines) {
        const int column = columnAfter(leadingBlanks(line), 0, tabSize);
        if (!line.empty() && !line.ends_with(':')) least = std::min(least, column);
    }
    return least == kRightmostIndent ? 0 : least;
}

// A "{" with lines behind it, up to a "}" in a line of its own, that holds no directive.
bool isPlainBlock(std::string_view block) {
    const bool isWhole = block.ends_with('}') && block.find('#') == block.npos && !holdsLinesOfLiteral(block);
    return isWhole && isLineBreak(trailingBlanks(block.substr(0, block.size() - 1))) &&
           block.find('\n') < block.find_last_not_of(" \t\n}");
}

}  // namespace

// Assembler has a grammar of its own, in which line ends count. A statement without a ";" or a block goes as far as
// its line. Operands in parentheses are laid out as those of a call; where they stand below the statement, as in a
// file of assembler, they stay there.
void CppFormatter::visit(Cpp::AsmNode* statement) {
    copyUpTo(*statement);
    const std::string_view text = writer_.readThrough(statement->end());
    const std::size_t bracket = text.find_first_of("({");
    const bool isInBraces = bracket != text.npos && text[bracket] == '{';
    const bool isIndented = settings_.keepsUnrecognized && settings_.functions.indent.present;
    if (isInBraces && isIndented && isPlainBlock(text.substr(bracket))) {
        writeAssemblerBlock(text.substr(0, bracket), text.substr(bracket + 1));
        return writer_.keepLineEndBehind();
    }
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

// Its lines keep their places among each other.
void CppFormatter::writeAssemblerBlock(std::string_view head, std::string_view rest) {
    writer_.write(head);
    const std::size_t close = rest.size() - 1;
    const std::size_t lineEnd = rest.find('\n');
    const std::vector<std::string_view> lines = linesOf(trimRight(rest.substr(lineEnd + 1, close - lineEnd - 1)));
    out().write("{");
    writer_.write(trimRight(rest.substr(0, lineEnd)));
    const int tabSize = out().tabSize();
    const int base = indentColumn();
    const int column = columnAfter(settings_.functions.indent.text, base, tabSize);
    const int shift = column - columnOfInstructions(lines, tabSize);
    for (const std::string_view line : lines) {
        const std::string_view blanks = leadingBlanks(line);
        out().write("\n");
        if (line.empty()) continue;
        IndentScope indent(out(), indentToColumn(out(), std::max(columnAfter(blanks, 0, tabSize) + shift, base)));
        out().startLine();
        Tessel::writeRendered(line.substr(blanks.size()), out());
    }
    out().write("\n}");
}

}  // namespace Tessel
