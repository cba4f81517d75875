// ONE = 1,            ONE       = 1,
// TWENTY = 20    →    TWENTY    = 20
#include <algorithm>
#include <vector>

#include "cpp/lexer.h"
#include "cpp/token_joining.h"
#include "cpp/token_kind.h"
#include "engine/columns.h"
#include "engine/cpp_expr_formatter.h"
#include "engine/gap.h"
#include "engine/opaque_text.h"

namespace Tessel {

namespace {

struct Initializer {
    std::size_t assign;  // offset of the "="
    int column;          // of it
    int nameEnd;         // the column at which the text in front of it ends
    std::size_t end;     // behind the value: that of the text, or the offset of the ","
};

// Whether every enumerator starts on a line of its own. A text that stands so because the scheme breaks its
// lines counts as one that stood so in the input, or formatting it again would align it.
bool standOneToALine(std::string_view text, const ExprTokens& tokens) {
    int depth = 0;
    std::size_t separator = std::string_view::npos;  // the last "," that no enumerator has followed
    for (const ExprToken& token : tokens) {
        if (token.role == ExprRole::Trivia) continue;
        if (separator != std::string_view::npos) {
            const std::string_view between = text.substr(separator, token.offset - separator);
            if (between.find('\n') == std::string_view::npos) return false;
            separator = std::string_view::npos;
        }
        switch (token.kind) {
            case Cpp::OpenParen:
            case Cpp::OpenBrace:
            case Cpp::OpenBracket: ++depth; break;
            case Cpp::CloseParen:
            case Cpp::CloseBrace:
            case Cpp::CloseBracket: --depth; break;
            case Cpp::Comma:
                if (depth == 0) separator = token.offset;
                break;
            default: break;
        }
    }
    return true;
}

// The "=" of each enumerator that has one. One without a name in front of it is not moved, nor one whose name stands
// behind a comment: what that is as wide as is no matter of the others.
std::vector<Initializer> findInitializers(std::string_view text, const ExprTokens& tokens, int column,
                                          int tabSize) {
    std::vector<Initializer> found;
    std::size_t measured = 0;
    int depth = 0;
    bool isInValue = false;
    bool followsComment = false;  // the name, on its line
    std::uint32_t commentLine = 0;
    bool awaitsName = true;
    bool endsLine = false;  // the token in front is a comment or directive that keeps its line end
    for (const ExprToken& token : tokens) {
        switch (token.kind) {
            case Cpp::OpenParen:
            case Cpp::OpenBrace:
            case Cpp::OpenBracket: ++depth; break;
            case Cpp::CloseParen:
            case Cpp::CloseBrace:
            case Cpp::CloseBracket: --depth; break;
            case Cpp::BlockComment: commentLine = token.lastLine(); break;
            case Cpp::Identifier:
                if (awaitsName) followsComment = commentLine == token.start.line;
                awaitsName = false;
                break;
            case Cpp::Comma:
                if (isInValue && depth == 0 && !found.empty()) {
                    found.back().end = std::min<std::size_t>(found.back().end, token.offset);
                }
                isInValue = isInValue && depth != 0;
                if (depth == 0) {
                    awaitsName = true;
                    commentLine = 0;
                }
                break;
            case Cpp::Assign:
                if (depth != 0 || isInValue) break;
                isInValue = true;
                if (!endsLine && !followsComment && token.offset > 0) {
                    const std::string_view before = trimRight(text.substr(measured, token.offset - measured));
                    column = columnBehind(before, column, tabSize);
                    measured += before.size();
                    const std::string_view gap = text.substr(measured, token.offset - measured);
                    found.push_back({token.offset, columnBehind(gap, column, tabSize), column, text.size()});
                }
                break;
            default: break;
        }
        // A directive may end with the line of the comments behind it.
        if (token.kind != Cpp::BlockComment) {
            endsLine = token.kind == Cpp::LineComment || token.kind == Cpp::Directive;
        }
    }
    return found;
}

// Writes text that stood at the column. The comments on its first line move with it.
void writeMoved(std::string_view text, int column, int tabSize, Zelmor::OIndentBuf& out) {
    if (text.find("/*") == std::string_view::npos) return writeRendered(text, out);
    std::size_t written = 0;
    for (const Cpp::OpaqueToken& token : Cpp::opaqueTokensOf(text)) {
        const std::string_view code = text.substr(written, token.offset - written);
        if (token.kind == Cpp::Directive || code.find('\n') != std::string_view::npos) break;
        writeRendered(code, out);
        column = columnAfter(code, column, tabSize);
        const std::string_view opaque = text.substr(token.offset, token.length);
        if (token.kind == Cpp::BlockComment) {
            writeLines(opaque, column, InnerBlanks::Convert, out);
        } else {
            writeRendered(opaque, out);
        }
        column = columnBehind(opaque, column, tabSize);
        written = token.offset + opaque.size();
        if (opaque.ends_with('\n')) break;
    }
    writeRendered(text.substr(written), out);
}

// Where the first line of a value ends whose others stand below it; its size, if there are none, or they go by the line
// that ends in a bracket, or hold tokens of several lines.
std::size_t firstLineEnd(std::string_view text) {
    constexpr std::string_view openings = "({[";
    const std::size_t lineFeed = text.find('\n');
    if (lineFeed == text.npos || openings.find(text[lineFeed - 1]) != openings.npos) return text.size();
    const bool isHeld = std::ranges::any_of(Cpp::opaqueTokensOf(text), [text](const Cpp::OpaqueToken& token) {
        return text.substr(token.offset, token.length).find('\n') != text.npos;
    });
    return isHeld ? text.size() : lineFeed;
}

// Writes the lines behind the first one of a value that much further to the right.
void writeFurtherLines(std::string_view lines, int shift, int tabSize, Zelmor::OIndentBuf& out) {
    while (!lines.empty()) {
        out.write("\n");
        lines.remove_prefix(1);
        const std::string_view line = lines.substr(0, lines.find('\n'));
        const std::string_view text = trimLeft(line);
        const int column = columnAfter(line.substr(0, line.size() - text.size()), 0, tabSize);
        if (!text.empty()) startLineAt(out, std::max(column + shift, 0));
        writeRendered(text, out);
        lines.remove_prefix(line.size());
    }
}

// Tokens in parts that are kept are no enumerators. The parts are in order.
void takeAsDirectives(const KeptRegions& kept, ExprTokens& tokens) {
    auto token = tokens.begin();
    for (const KeptRegion& part : kept) {
        while (token != tokens.end() && token->offset < part.start) ++token;
        for (; token != tokens.end() && token->offset < part.end; ++token) {
            token->role = ExprRole::Trivia;
            token->kind = Cpp::Directive;
        }
    }
}

}  // namespace

std::string CppExprFormatter::alignEnumInitializers(std::string_view text, const KeptRegions& kept,
                                                    const Zelmor::IndentState& state) {
    readExprTokens(text, ExprMode::Expression, exprTokens_);
    takeAsDirectives(kept, exprTokens_);
    if (!standOneToALine(text, exprTokens_)) return std::string(text);
    const int columnsToStop = std::max(tabSize(), 1);
    const auto initializers = findInitializers(text, exprTokens_, state.column, columnsToStop);
    int widest = 0;
    for (const Initializer& initializer : initializers) widest = std::max(widest, initializer.nameEnd);
    widest = columnAfter(settings_.beforeOperator.text, widest, columnsToStop);
    const int target =
        isMultipleOf(widest, columnsToStop) ? widest : roundUpToMultiple(widest, columnsToStop);

    Zelmor::OIndentBuf out(state);
    Zelmor::IndentScope noIndent(out, {});
    std::size_t written = 0;
    int column = state.column;
    for (const Initializer& initializer : initializers) {
        const std::string_view before = trimRight(text.substr(written, initializer.assign - written));
        writeMoved(before, column, columnsToStop, out);
        const bool needsBlank = target <= out.column() && Cpp::wouldJoin(before, "=");
        padColumns(out, needsBlank ? 1 : target - out.column());
        written = initializer.assign;
        column = initializer.column;
        if (!settings_.keepsLineBreaks) continue;
        const std::string_view value = text.substr(written, initializer.end - written);
        const std::size_t lineEnd = firstLineEnd(value);
        if (lineEnd == value.size()) continue;
        const int shift = out.column() - column;
        writeMoved(value.substr(0, lineEnd), column, columnsToStop, out);
        writeFurtherLines(value.substr(lineEnd), shift, columnsToStop, out);
        written = initializer.end;
        column = out.column();
    }
    writeMoved(text.substr(written), column, columnsToStop, out);
    return out.takeText();
}

}  // namespace Tessel
