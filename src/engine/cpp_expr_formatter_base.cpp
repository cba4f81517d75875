#include "engine/cpp_expr_formatter_base.h"

#include <optional>

#include "engine/columns.h"
#include "engine/gap.h"
#include "engine/scheme_values.h"
#include "engine/source_copy.h"
#include "scheme/property_keys.h"

namespace Tessel {

namespace {

using Zelmor::IndentScope;
using Zelmor::IndentState;
using Zelmor::ITextDocStream;
using Zelmor::LeadingSpaceScope;
using Zelmor::OIndentBuf;

bool isOnOneLine(std::string_view text) {
    const std::size_t lineFeed = text.find('\n');
    return lineFeed == std::string_view::npos || lineFeed + 1 == text.size();
}

// How a token changes the number of brackets that are open around the next one.
int nestingStep(const ExprToken& token) {
    const bool isTemplate = token.partner != kNoToken;
    switch (token.token.kind) {
        case Cpp::OpenParen:
        case Cpp::OpenBrace:
        case Cpp::OpenBracket: return 1;
        case Cpp::CloseParen:
        case Cpp::CloseBrace:
        case Cpp::CloseBracket: return -1;
        case Cpp::Less: return isTemplate ? 1 : 0;
        case Cpp::Greater: return isTemplate ? -1 : 0;
        case Cpp::ShiftRight: return isTemplate ? -2 : 0;
        default: return 0;
    }
}

}  // namespace

CppExprFormatterBase::CppExprFormatterBase(const PropertySet& scheme) : scheme_(scheme) {
    applySchemeDefaults(scheme_);
    tabSize_ = readTabSize(scheme_);
    leftMargin_ = readText(scheme_, Keys::LEFT_MARGIN);
    directivesLeftMostSet_ = scheme_.getBool(std::string(Keys::ALIGN_PPD_LEFT_MOST), directivesLeftMost_);
}

std::string CppExprFormatterBase::respaceListSeparator(std::string_view text, int kind,
                                                       const OptionalText& before, const OptionalText& after,
                                                       const IndentState& state) {
    return respace(text, kind, {before, after}, true, state);
}

std::string CppExprFormatterBase::respaceSeparator(std::string_view text, int kind, const OptionalText& before,
                                                   const OptionalText& after, const IndentState& state) {
    return respace(text, kind, {before, after}, false, state);
}

std::string CppExprFormatterBase::respace(std::string_view text, int kind, SeparatorSpacing spacing, bool isList,
                                          const IndentState& state) {
    OIndentBuf out(state);
    readExprTokens(text, ExprMode::Declaration, tokens_);
    TextSweep sweep(text, tokens_, out);
    int depth = 0;
    std::optional<int> listColumn;
    std::optional<IndentScope> elementIndent;
    std::optional<LeadingSpaceScope> elementSpace;
    const auto startList = [&](int column) {
        listColumn = column;
        if (!isList || !spacing.breaksLines()) return;
        elementIndent.emplace(out, indentToColumn(out, column));
        elementSpace.emplace(out, false);
    };
    while (!sweep.atEnd()) {
        const ExprToken& token = sweep.current();
        if (token.role == ExprRole::Trivia) {
            writeTrivia(sweep, out);
            continue;
        }
        if (token.token.kind == kind && depth == 0) {
            // A text that begins with its separator continues a list whose elements stand at the indentation.
            if (!listColumn) startList(columnAfter(out.indent(), 0, tabSize_));
            writeSeparator(sweep, spacing, isList ? &*listColumn : nullptr, out);
            continue;
        }
        depth += nestingStep(token);
        sweep.writeGap();
        if (!listColumn) startList(nextColumn(out));
        sweep.writeToken();
    }
    sweep.writeGap();
    return out.takeText();
}

int CppExprFormatterBase::nextColumn(const OIndentBuf& out) const {
    return out.column() > 0 ? out.column() : columnAfter(out.indent(), 0, tabSize_);
}

void CppExprFormatterBase::writeSeparator(TextSweep& sweep, SeparatorSpacing spacing, const int* listColumn,
                                          OIndentBuf& out) {
    const std::string& before = spacing.before.text;
    if (listColumn && spacing.before.hasLineFeed()) {
        // The separator leads its line, so far to the left that the element behind it stands below the first.
        const std::size_t lineStart = before.rfind('\n') + 1;
        std::string front = before.substr(lineStart);
        front += sweep.currentText();
        if (spacing.after.present && !spacing.after.hasLineFeed()) front += spacing.after.text;
        sweep.writeGapWith(std::string_view(before).substr(0, lineStart));
        IndentScope indent(out, indentToColumn(out, columnBefore(front, *listColumn, tabSize_)));
        out.writeVerbatim(std::string_view(before).substr(lineStart));
        sweep.writeToken();
    } else {
        if (spacing.before.present) sweep.writeGapWith(before);
        sweep.writeGap();
        sweep.writeToken();
    }
    if (spacing.after.present) writeAfterSeparator(sweep, spacing.after, out);
}

void CppExprFormatterBase::writeAfterSeparator(TextSweep& sweep, const OptionalText& after, OIndentBuf& out) {
    switch (sweep.currentKind()) {
        case Cpp::Directive: sweep.writeGapWith(after.hasLineFeed() ? after.text : std::string("\n")); break;
        case Cpp::LineComment:
        case Cpp::BlockComment: writeTrivia(sweep, out); break;
        default: sweep.writeGapWith(after.text);
    }
}

void CppExprFormatterBase::writeTrivia(TextSweep& sweep, OIndentBuf& out) {
    const Trn::Token& token = sweep.current().token;
    const int inputColumn = static_cast<int>(token.start.column) - 1;
    if (token.kind == Cpp::Directive) {
        writeDirective(sweep.takeGap(), sweep.currentText(), inputColumn, out);
    } else {
        sweep.writeGap();
        writeLines(sweep.currentText(), inputColumn, out);
    }
    sweep.passToken();
}

void CppExprFormatterBase::formatCommentLines(Trn::Position start, Trn::Position end, ITextDocStream& in,
                                              OIndentBuf& out) {
    copyGap(in, out, start);
    writeLines(readThrough(in, end), inputColumnOf(in, start), out);
}

void CppExprFormatterBase::formatDirective(Trn::Position start, Trn::Position end, ITextDocStream& in,
                                           OIndentBuf& out) {
    const std::string_view gap = readGap(in, start);
    writeDirective(gap, readThrough(in, end), inputColumnOf(in, start), out);
}

void CppExprFormatterBase::writeDirective(std::string_view gap, std::string_view directive, int inputColumn,
                                          OIndentBuf& out) {
    if (!directivesLeftMostSet_) {
        IndentScope indent(out, {});
        LeadingSpaceScope keepSpace(out, true);
        out.write(gap);
        out.write(directive);
        return;
    }
    std::optional<IndentScope> margin;
    if (directivesLeftMost_ && leftMargin_.present) margin.emplace(out, leftMargin_.text);
    out.write(gap);
    writeLines(directive, inputColumn, out);
}

// `inputColumn` is where the text began in the input: white space up to there belongs to the place of the text,
// what goes beyond it to the text.
void CppExprFormatterBase::writeLines(std::string_view text, int inputColumn, OIndentBuf& out) {
    if (isOnOneLine(text)) {
        out.write(text);
        return;
    }
    IndentScope indent(out, indentToColumn(out, nextColumn(out)));
    std::size_t lineEnd = text.find('\n') + 1;
    out.write(text.substr(0, lineEnd));
    LeadingSpaceScope keepSpace(out, true);
    while (lineEnd < text.size()) {
        text.remove_prefix(lineEnd);
        for (int column = 0; column < inputColumn && !text.empty() && text.front() != '\n' &&
                             isWhitespace(text.front());) {
            column += charWidth(text.front(), column, tabSize_);
            text.remove_prefix(1);
        }
        const std::size_t lineFeed = text.find('\n');
        lineEnd = lineFeed == std::string_view::npos ? text.size() : lineFeed + 1;
        out.write(text.substr(0, lineEnd));
    }
}

int CppExprFormatterBase::inputColumnOf(const ITextDocStream& in, Trn::Position start) const {
    const Zelmor::TextDocument& document = in.document();
    const std::size_t lineStart = document.offsetOf(static_cast<int>(start.line), 0);
    const std::size_t column = start.column > 0 ? start.column - 1 : 0;
    return columnAfter(document.text().substr(lineStart, column), 0, tabSize_);
}

}  // namespace Tessel
