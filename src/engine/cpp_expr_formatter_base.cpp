#include "engine/cpp_expr_formatter_base.h"

#include <optional>

#include "cpp/directive_text.h"
#include "cpp/lexer.h"
#include "cpp/token_kind.h"
#include "cpp/token_sets.h"
#include "engine/columns.h"
#include "engine/format_options.h"
#include "engine/gap.h"
#include "engine/opaque_text.h"
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

// How a token changes the number of brackets that are open around the next one.
int nestingStep(const ExprToken& token) {
    const bool isTemplate = token.partner != kNoToken;
    switch (token.kind) {
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

CppExprFormatterBase::CppExprFormatterBase(const PropertySet& scheme, const Zelmor::TextDocument* source,
                                           LayoutLog* log)
    : scheme_(withSchemeDefaults(scheme)),
      tabSize_(readTabSize(scheme)),
      columns_(source, tabSize_),
      wrapsLines_(readSwitch(scheme, Keys::LINE_WRAP)),
      extensions_(scheme),
      markers_(markersOfScheme(scheme)),
      log_(log) {
    leftMargin_ = readIndent(scheme_, Keys::LEFT_MARGIN);
    directivesLeftMostSet_ = scheme_.getBool(KeyId(Keys::ALIGN_PPD_LEFT_MOST), directivesLeftMost_);
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
    readExprTokens(text, ExprMode::Declaration, tokens_, {}, &markers_);
    TextSweep sweep(text, tokens_, out, keepsColumns(), log_);
    int depth = 0;
    std::optional<int> listColumn;
    std::optional<IndentScope> elementIndent;
    std::optional<LeadingSpaceScope> elementSpace;
    const auto startList = [&](int column) {
        listColumn = column;
        if (!isList || !spacing.breaksLines()) return;
        elementIndent.emplace(sweep.out(), indentToColumn(out, column));
        elementSpace.emplace(out, false);
    };
    while (!sweep.atEnd()) {
        const ExprToken& token = sweep.current();
        if (token.role == ExprRole::Trivia) {
            writeTrivia(sweep);
            continue;
        }
        if (token.kind == kind && depth == 0) {
            // A text that begins with its separator continues a list whose elements stand at the indentation.
            if (!listColumn) startList(columnAfter(out.indent(), 0, tabSize_));
            writeSeparator(sweep, spacing, isList ? &*listColumn : nullptr);
            continue;
        }
        depth += nestingStep(token);
        sweep.writeGap();
        if (!listColumn) startList(sweep.columnToIndentFrom());
        sweep.writeToken();
    }
    sweep.writeEnd();
    return out.takeText();
}

void CppExprFormatterBase::writeSeparator(TextSweep& sweep, const SeparatorSpacing& spacing, const int* listColumn) {
    const std::string_view before = spacing.before.text;
    if (listColumn && spacing.before.hasLineFeed()) {
        // The separator leads its line, so far to the left that the element behind it stands below the first.
        const std::size_t lineStart = before.rfind('\n') + 1;
        std::string front(before.substr(lineStart));
        front += sweep.currentText();
        const bool endsLine = spacing.after.hasLineFeed() ||
                              (extensions_.keepsLineBreaks && !spacing.after.present && isLineBreak(sweep.blanksBehind()));
        if (!endsLine) {
            front += spacing.after.present ? std::string_view(spacing.after.text) : sweep.blanksBehind();
        }
        sweep.writeGapWith(WantedText(spacing.before).with(before.substr(0, lineStart)));
        OIndentBuf& out = sweep.out();
        IndentScope indent(out, indentToColumn(out, columnBefore(front, *listColumn, tabSize_)));
        out.writeVerbatim(before.substr(lineStart));
        sweep.writeToken();
    } else {
        sweep.writeGapWith(spacing.before);
        sweep.writeToken();
    }
    writeAfterSeparator(sweep, spacing.after);
}

void CppExprFormatterBase::writeAfterSeparator(TextSweep& sweep, const OptionalText& after) {
    if (!after.present) {
        // Whoever comes next copies it.
        if (after.key) sweep.leave(sweep.gap(), after);
        return;
    }
    switch (sweep.currentKind()) {
        case Cpp::Directive: sweep.writeGapWith(after.hasLineFeed() ? after : kLineFeed); break;
        case Cpp::BlockComment:
            if (spacesCommentBehindComma(sweep)) sweep.writeGapWith(after);
            [[fallthrough]];
        case Cpp::LineComment: writeTrivia(sweep); break;
        default: sweep.writeGapWith(after);
    }
}

// A comment in front of an element stands where the element would.
bool CppExprFormatterBase::spacesCommentBehindComma(const TextSweep& sweep) const {
    const bool isPressed = extensions_.formatsOtherGaps && sweep.gap().empty();
    return (isPressed || (wrapsLines_ && isJoinable(sweep.gap()))) && !sweep.endsItsLine();
}

bool CppExprFormatterBase::isJoinable(std::string_view gap) {
    return gap.size() > (gap.starts_with(' ') ? 1 : 0) && isAllWhitespace(gap);
}

void CppExprFormatterBase::writeTrivia(TextSweep& sweep) {
    if (sweep.current().isRegion) {
        writeRegion(sweep.takeGap(), sweep.currentText(), sweep.currentKind(), sweep.out());
    } else if (sweep.currentKind() == Cpp::Directive) {
        writeDirective(sweep.takeGap(), sweep.currentText(), sweep.out());
    } else {
        sweep.writeGap();
        writeLines(sweep.currentText(), columns_, InnerBlanks::Convert, sweep.out());
    }
    sweep.passToken();
}

void CppExprFormatterBase::writeRegion(std::string_view gap, std::string_view region, int kind, OIndentBuf& out) {
    const auto offset = columns_.offsetInDocument(region);
    if (offset) keptRegions_.push_back({*offset, *offset + region.size()});
    if (kind == Cpp::Directive) return writeDirective(gap, region, out, DirectiveText::Kept);
    if (log_) log_->copied(gap);
    out.write(gap);
    if (extensions_.keepsRegionIndent) {
        if (out.column() == 0) writeRendered(gap.substr(gap.rfind('\n') + 1), out);
        writeRendered(region, out);
    } else {
        writeLines(region, columns_, InnerBlanks::Keep, out);
    }
}

void CppExprFormatterBase::formatCommentLines(Trn::Position start, Trn::Position end, ITextDocStream& in,
                                              OIndentBuf& out) {
    out.write(readGap(in, start));
    writeComment(readThrough(in, end), out);
}

void CppExprFormatterBase::formatDirective(Trn::Position start, Trn::Position end, ITextDocStream& in,
                                           OIndentBuf& out, DirectiveText text) {
    const std::string_view gap = readGap(in, start);
    const std::string_view directive = readThrough(in, end);
    // It has been written where the list that it is part of went into the head in front of it.
    if (directive.empty()) return;
    const std::string_view comments = trimRight(gap);
    writeComments(comments, out);
    writeDirective(gap.substr(comments.size()), directive, out, text);
}

// A gap that ends with its last comment. Where a source is broken, it may hold literals too.
void CppExprFormatterBase::writeComments(std::string_view gap, OIndentBuf& out) {
    if (gap.empty()) return;
    std::size_t written = 0;
    for (const Cpp::OpaqueToken& token : Cpp::opaqueTokensOf(gap)) {
        const std::string_view text = gap.substr(token.offset, token.length);
        out.write(gap.substr(written, token.offset - written));
        if (Cpp::isComment(token.kind)) {
            writeComment(text, out);
        } else {
            writeLiteral(text, out);
        }
        written = token.offset + text.size();
    }
    out.write(gap.substr(written));
}

void CppExprFormatterBase::writeComment(std::string_view text, OIndentBuf& out) {
    const bool staysOutside = extensions_.keepsLineBreaks || extensions_.keepsLineIndent;
    const OuterLines outer = staysOutside ? OuterLines::AsTheyWere : OuterLines::BelowStart;
    writeLines(text, columns_, InnerBlanks::Convert, out, outer);
}

// A directive that is not to be moved keeps the white space in front of it, of which `gap` is the end.
void CppExprFormatterBase::writeDirective(std::string_view gap, std::string_view directive, OIndentBuf& out,
                                          DirectiveText text) {
    const InnerBlanks inner = text == DirectiveText::Kept ? InnerBlanks::Keep : InnerBlanks::Convert;
    const auto isLaidOut = [&] {
        if (text == DirectiveText::Kept) return false;
        if (text == DirectiveText::LaidOut || columnToIndentFrom(out) != columns_.columnOf(directive)) {
            return layOutDirective(directive, out);
        }
        writeInPlace(directive, InnerBlanks::Keep, out);
        return true;
    };
    const std::string_view ahead = directivesLeftMostSet_ ? std::string_view("\n") : gap;
    // Where lines are not indented, it stands in the first column anyway.
    const KeyId key = out.indent().empty() ? KeyId() : KeyId(Keys::ALIGN_PPD_LEFT_MOST);
    if (log_) log_->decided(gap, WantedText(ahead, key));
    if (!directivesLeftMostSet_) {
        IndentScope indent(out, {});
        LeadingSpaceScope keepSpace(out, true);
        out.write(gap);
        startDirectiveLine(directive, out);
        if (!isLaidOut()) writeInPlace(directive, inner, out);
        return;
    }
    const int codeColumn = columnAfter(out.indent(), 0, out.tabSize());
    std::optional<IndentScope> margin;
    if (directivesLeftMost_ && leftMargin_.present) margin.emplace(out, std::string(leftMargin_.text));
    out.write(gap);
    startDirectiveLine(directive, out);
    if (isLaidOut()) return;
    if (continuesLiteral(directive)) {
        writeLiteral(directive, out);
    } else if (text == DirectiveText::Kept && movesFromCode(directive, codeColumn, out)) {
        // What a branch stands among has been written for another one.
        const int column = columns_.columnOf(directive);
        const bool isBranch = Cpp::beginsBranch(directive);
        writeAmongCode(directive, column, isBranch ? column : codeColumn, out);
    } else {
        writeLines(directive, columns_, inner, out);
    }
}

// Whether the directive, which begins its line, leaves its column for one in front of the code around it.
bool CppExprFormatterBase::movesFromCode(std::string_view directive, int codeColumn, const OIndentBuf& out) const {
    if (!extensions_.formatsDirectives) return false;
    const int margin = columnAfter(out.indent(), 0, out.tabSize());
    const bool isNear = margin < codeColumn && codeColumn <= kRightmostIndent;
    return isNear && columns_.startsLine(directive) && columns_.columnOf(directive) > margin;
}

// A directive begins its line, whatever white space a rule has put in front of it.
void CppExprFormatterBase::startDirectiveLine(std::string_view directive, OIndentBuf& out) const {
    if (out.lineHasText() && columns_.startsLine(directive)) out.write("\n");
}

}  // namespace Tessel
