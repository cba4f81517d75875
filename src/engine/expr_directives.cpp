// #define f(a,b) a+b    →    #define f(a, b) a + b
//
// The parts of directives that are laid out as other code is.
#include "engine/columns.h"
#include "engine/cpp_expr_formatter.h"
#include "engine/directive_parts.h"
#include "engine/macro_bodies.h"
#include "engine/opaque_text.h"
#include "scheme/property_keys.h"
#include "scheme/single_line.h"

namespace Tessel {

using Zelmor::IndentScope;
using Zelmor::IndentState;
using Zelmor::OIndentBuf;

namespace {

// Further lines that stay as they are may be indented by tabs of the scheme.
bool isLaidOutFromFirstLine(std::string_view directive) {
    const std::size_t lineEnd = directive.find('\n');
    if (lineEnd >= directive.size() - 1) return true;
    const TextExtent value = partsOf(directive).expression;
    return value.length > 0 && value.offset < lineEnd;
}

}  // namespace

bool CppExprFormatter::layOutDirective(std::string_view directive, OIndentBuf& out) {
    const std::optional<int> tabSize = tabSizeOf(directive, out);
    if (!tabSize) return layOutText(directive, out);
    const Zelmor::TabSizeScope tabsOfSource(out, *tabSize);
    if (!layOutText(directive, out)) writeInPlace(directive, InnerBlanks::Convert, out);
    return true;
}

// Where tabs become blanks, what stood in one column with the tabs of the source still does.
std::optional<int> CppExprFormatter::tabSizeOf(std::string_view directive, const OIndentBuf& out) {
    const bool mayDiffer = settings_.formatsDirectives && out.tabMode() == Zelmor::TabsToSpaces;
    if (!mayDiffer || directive.find('\t') == directive.npos) return std::nullopt;
    if (!DefineTabs::mayTell(directive)) return std::nullopt;
    const std::optional<std::size_t> place = sourceColumns().offsetInDocument(directive);
    const int size = place ? defineTabs_.sizeAt(*place) : tabSize();
    // The blanks around the lines of a literal stay.
    if (size == tabSize() || continuesLiteral(directive) || !isLaidOutFromFirstLine(directive)) return std::nullopt;
    return size;
}

bool CppExprFormatter::layOutText(std::string_view directive, OIndentBuf& out) {
    if (!settings_.aroundPaste.present) return layOutParts(directive, out);
    const std::string joined = withPasteGaps(directive, settings_.aroundPaste.text);
    if (joined == directive) return layOutParts(directive, out);
    const int column = sourceColumns().columnOf(directive);
    if (!layOutParts(joined, out)) writeLines(joined, column, InnerBlanks::Convert, out);
    return true;
}

// Says false where nothing is laid out; then nothing has been written.
bool CppExprFormatter::layOutParts(std::string_view directive, OIndentBuf& out) {
    if (!settings_.formatsDirectives && !settings_.formatsConditions) return false;
    const DirectiveParts parts = partsOf(directive);
    const bool isWanted = settings_.formatsDirectives || parts.isCondition;
    if (!isWanted || parts.areNone()) return false;
    const bool isOneLine = directive.find('\n') >= directive.size() - 1;
    const bool placesSplices = !isOneLine && (macroBodies_ || splices_.areAligned());
    if (!placesSplices) return writeParts(directive, parts, out);
    OIndentBuf lines{IndentState(out)};
    if (!writeParts(directive, parts, lines)) {
        if (!splices_.areAligned()) return false;
        writeRendered(directive, lines);
    }
    writeRendered(splices_.placed(directive, lines.takeText(), out.column()), out);
    return true;
}

// Says false where nothing in the directive is laid out; then nothing has been written.
bool CppExprFormatter::writeParts(std::string_view directive, const DirectiveParts& parts, OIndentBuf& out) {
    std::optional<std::string> body;
    if (macroBodies_ && parts.body.length > 0) body = macroBodies_->laidOut(directive, parts, out.column());
    if (!body && parts.parameters.length == 0 && parts.expression.length == 0) return false;
    // A directive's line goes on only where a splice stands. It may stand in an expression, whose tokens stay.
    if (!inDirectives_) {
        inDirectives_ = std::make_unique<CppExprFormatter>(schemeOfDirectives(), source_, log());
        inDirectives_->isInDirective_ = true;
    }
    const int start = columnToIndentFrom(out);
    std::size_t written = 0;
    OpaqueWriter rest(directive, InnerBlanks::Convert, out);
    const auto writeBetween = [&](std::size_t end) {
        out.startLine();
        IndentScope noIndent(out, {});
        rest.write(directive.substr(written, end - written));
    };
    for (const TextExtent& part : {parts.parameters, parts.expression}) {
        if (part.length == 0) continue;
        writeBetween(part.offset);
        const bool hangsFromStart = parts.isCondition && settings_.operandIndent.present;
        // Lines that keep their own blanks stand where those end.
        const int column = out.keepLeadingSpace() ? 0 : hangsFromStart ? start : out.column();
        IndentScope indent(out, indentToColumn(out, column));
        const std::string_view text = directive.substr(part.offset, part.length);
        inDirectives_->formatExpression(text, out, nullptr,
                                        hangsFromStart ? HangingLines::Text::Statement : HangingLines::Text::List);
        written = part.offset + part.length;
    }
    if (body) {
        writeBetween(parts.body.offset);
        writeRendered(*body, out);
        written = parts.body.offset + parts.body.length;
    }
    writeBetween(directive.size());
    return true;
}

// Nothing ends lines; operands that begin some hang from the directive, where operands hang at all.
PropertySet CppExprFormatter::schemeOfDirectives() const {
    PropertySet lines = withoutLineEnds(scheme());
    if (settings_.operandIndent.present) lines.setBool(Keys::HANGING_FROM_STATEMENT.name, true);
    return lines;
}

}  // namespace Tessel
