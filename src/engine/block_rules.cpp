// Bodies in braces: what stands in front of "{", behind it, and around "}".
//
// namespace N{int a;}
//
// namespace N {
//     int a;
// }
#include <algorithm>

#include "engine/columns.h"
#include "engine/cpp_formatter.h"
#include "engine/formatter_scopes.h"
#include "engine/gap.h"
#include "engine/one_line_rules.h"
#include "engine/source_copy.h"

namespace Tessel {

using Zelmor::IndentScope;

namespace {

// Whether the node may take the end of its line along.
bool endsLine(const Cpp::SyntaxNode& node) {
    if (Cpp::as<Cpp::PreprocDirectiveNode>(&node)) return true;
    const auto* comment = Cpp::as<Cpp::CommentNode>(&node);
    return comment && (comment->isLineComment() || comment->protectedRegion());
}

std::string withoutLineFeeds(std::string_view wanted) {
    std::string text(wanted);
    text.erase(std::remove(text.begin(), text.end(), '\n'), text.end());
    return text;
}

// Whether a comment begins the last line, and goes with what follows it there: `/* nothing */ ;`
bool endsInLeadingComment(std::string_view gap) {
    const std::string_view text = trimRight(gap);
    if (!text.ends_with("*/") || isLineBreak(trailingBlanks(gap))) return false;
    const std::size_t comment = text.rfind("/*");
    return comment != text.npos && isLineBreak(trailingBlanks(text.substr(0, comment)));
}

}  // namespace

void CppFormatter::formatBlock(Cpp::BracketedNode& node, const BraceSettings& braces) {
    formatBlock(node, braces, braces.indent);
}

void CppFormatter::formatBlock(Cpp::BracketedNode& node, const BraceSettings& braces,
                               const OptionalText& indent) {
    const OptionalText pending = takePending();
    if (WantedText wanted = pending; wanted.present) {
        const std::string_view gap = writer_.readGap(node.start());
        const bool areOnOwnLines = isLineBreak(leadingBlanks(gap)) &&
                                   (isLineBreak(trailingBlanks(gap)) || wanted.hasLineFeed());
        if (keepsLines() && node.hasBrackets() && areOnOwnLines && writer_.holdsOnlyComments(gap)) {
            // They go with the head, and the "{" stands on its own line as it does without them, or below the head.
            writer_.write(trimRight(gap));
            const std::size_t lineStart = wanted.text().rfind('\n');
            writer_.replace(trailingBlanks(gap),
                            wanted.with(wanted.hasLineFeed() ? wanted.text().substr(lineStart) : "\n"));
        } else if (keepsLines() && !node.hasBrackets() && writer_.holdsOnlyComments(gap) &&
                   endsInLeadingComment(gap)) {
            ContentScope content(*this, indent);
            writer_.write(gap);
        } else if (writer_.holdsOnlyComments(gap)) {
            // Comments in front of a body stand as its contents do, but for one that its "{" follows on the line.
            const MergedGap merged = mergedGap(gap, wanted.text());
            const bool endsLine = merged.kept.ends_with('\n') || merged.added.find('\n') != std::string_view::npos;
            {
                std::optional<ContentScope> content;
                if (endsLine) content.emplace(*this, indent);
                writer_.write(merged.kept);
            }
            writer_.replace(trailingBlanks(gap), wanted.with(merged.added));
        } else {
            std::optional<ContentScope> content;
            if (writer_.holdsLineComment(gap)) content.emplace(*this, indent);
            writer_.writeMerged(gap, wanted);
        }
    } else {
        wanted.isOnOneLine = standsOnOneLine(node);
        placeBefore(node, wanted);
    }
    const bool isEmpty = node.size() == 0;
    if (!node.hasBrackets()) {
        if (isEmpty) {
            ContentScope content(*this, indent);
            copyThrough(node);
        } else if (Trn::isSet(node.open())) {
            // A protected region that holds the "{" stands where the head would, which it holds too.
            (*node.childBegin())->accept(*this);
            formatContent(node, node.childBegin() + 1, indent);
        } else {
            formatContent(node, indent);
        }
        return;
    }
    if (isEmpty) {
        formatEmptyBlock(node, braces, indent);
        return;
    }
    writer_.copyThrough(node.start());
    // Where nothing is wanted the first child copies the gap in front of itself.
    const Cpp::SyntaxNode& first = **node.childBegin();
    findEndOfComments(node.childBegin(), node.childEnd());
    const bool asksForIndent = exprFormatter_.keptIndent().isWanted() || settings_.keepsFirstColumnLabels || log_;
    ValueScope<bool> indented(inIndentedBlock_, asksForIndent && indentsInSource(node));
    writeGapBehindOpen(node, first, braces, indent);
    formatContent(node, indent);
    writeClosingGap(node, braces, indent);
    copyThrough(node);
}

void CppFormatter::writeGapBehindOpen(const Cpp::BracketedNode& node, const Cpp::SyntaxNode& first,
                                      const BraceSettings& braces, const OptionalText& indent) {
    const OptionalText& afterOpen = afterOpenOf(braces);
    if (afterOpen.present && !staysBehindBrace(first, afterOpen)) {
        ContentScope content(*this, indent);
        IndentScope firstColumn(out(), staysFlush(first) || goesWithDirective(first) ? std::string(lineBefore(first))
                                                                               : out().indent());
        const std::string_view gap = writer_.readGap(first.start());
        const std::string_view blanks = braces.keepsBlankLines ? leadingBlanks(gap) : std::string_view();
        writeWithBlankLines(gap, afterOpen, blanks);
    } else if (settings_.formatsOtherGaps && !isOnOneLine_ && afterOpen.present && gapBefore(first).empty()) {
        writer_.replace(writer_.readGap(first.start()), WantedText(" ", settings_.formatsOtherGaps.key));
    } else {
        leaveGapBehindOpen(node, first, braces, indent);
    }
}

// Empty lines in front of what stands in a body stay where they are asked for.
void CppFormatter::writeWithBlankLines(std::string_view gap, const OptionalText& afterOpen, std::string_view kept) {
    const std::string text = withBlankLines(afterOpen.text, kept);
    const bool isKept = text.size() > afterOpen.text.size();
    writer_.writePrepended(gap, WantedText(text, isKept ? settings_.blankLines.key : afterOpen.key));
}

bool CppFormatter::standsOnOneLine(const Cpp::SyntaxNode& node) { return node.start().line == node.end().line; }

// Where a protected region holds the "{", what is behind the region stays.
const OptionalText& CppFormatter::afterOpenOf(const BraceSettings& braces) {
    const bool isBehindRegion = !keptParts_.empty() && keptParts_.back().end == out().text().size();
    return isBehindRegion ? kAsInInput : braces.afterOpen;
}

// "{" and "}" with nothing but white space, or what is no node, between them. They never stand apart by an empty
// line.
void CppFormatter::formatEmptyBlock(Cpp::BracketedNode& node, const BraceSettings& braces,
                                    const OptionalText& indent) {
    writer_.copyThrough(node.start());
    const OptionalText& afterOpen = afterOpenOf(braces);
    const OptionalText& beforeClose = braces.beforeClose;
    std::string_view gap = writer_.readGap(node.end());
    if (isOnOneLine_ && isAllWhitespace(gap)) {
        const OptionalText& inside = settings_.inEmptyBraces;
        writer_.leave(gap, inside);
        out().write(inside.present ? inside.text : gap.empty() || isLineBreak(gap) ? std::string_view() : " ");
        copyThrough(node);
        return;
    }
    const std::string_view whole = gap;
    if (afterOpen.present) {
        writer_.replace(leadingBlanks(gap), afterOpen);
        gap = trimLeft(gap);
    }
    if (isAllWhitespace(gap)) {
        const bool breaksTwice = out().column() == 0 && beforeClose.hasLineFeed();
        if (!beforeClose.present) out().write(gap);
        const bool isByFirst = afterOpen.present && (breaksTwice || beforeClose.text.empty());
        if (!isByFirst) writer_.leave(whole, beforeClose.present ? beforeClose : kAsInInput);
        out().writeVerbatim(breaksTwice ? withoutLineFeeds(beforeClose.text) : std::string(beforeClose.text));
    } else {
        {
            ContentScope content(*this, indent);
            writer_.write(beforeClose.present ? mergedGap(gap, beforeClose.text).kept : gap);
        }
        if (beforeClose.present) {
            writer_.replace(trailingBlanks(gap), WantedText(beforeClose).with(mergedGap(gap, beforeClose.text).added));
        }
    }
    copyThrough(node);
}

// Whether the first node of a body is a comment that ends the line of the "{".
bool CppFormatter::staysBehindBrace(const Cpp::SyntaxNode& first, const OptionalText& afterOpen) const {
    if (!afterOpen.hasLineFeed() || !isCommentAtLineEnd(first)) return false;
    const std::string_view text = source_.text().substr(0, offsetOf(source_, first.start()) - 1);
    return text.substr(0, kBlanks.skipBackIn(text)).ends_with('{');
}

// Whether the node is a comment behind which nothing stands on its line.
bool CppFormatter::isCommentAtLineEnd(const Cpp::SyntaxNode& node) const {
    const auto* comment = Cpp::as<Cpp::CommentNode>(&node);
    if (!comment || comment->protectedRegion()) return false;
    const std::string_view behind = source_.text().substr(offsetOf(source_, comment->end()));
    const std::size_t next = kBlanks.skipIn(behind);
    return comment->isLineComment() || (next < behind.size() && behind[next] == '\n');
}

void CppFormatter::writeClosingGap(Cpp::BracketedNode& node, const BraceSettings& braces,
                                   const OptionalText& indent) {
    const OptionalText& beforeClose = braces.beforeClose;
    std::string_view gap = writer_.readGap(node.end());
    // What is no node stands like the rest.
    if (!isAllWhitespace(gap) && !writer_.holdsOpaque(gap)) {
        ContentScope content(*this, indent);
        writer_.write(trimRight(gap));
        gap = trailingBlanks(gap);
    }
    if (!beforeClose.present) {
        WantedText absent = beforeClose;
        absent.isOnOneLine = standsOnOneLine(node);
        writer_.writeMerged(gap, absent);
        return;
    }
    const Cpp::SyntaxNode& last = **(node.childEnd() - 1);
    const bool lineHasEnded = out().column() == 0 && isAllWhitespace(gap);
    const bool endsWithLabel = lastLabel_ == &last && settings_.afterCaseLabel.hasLineFeed();
    const bool needsNoLineEnd = (endsLine(last) || endsWithLabel) && lineHasEnded;
    const std::string wanted = needsNoLineEnd ? withoutLineFeeds(beforeClose.text) : std::string(beforeClose.text);
    const bool keepsLines = braces.keepsBlankLines && beforeClose.hasLineFeed();
    const std::string text = withBlankLines(wanted, keepsLines ? trailingBlanks(gap) : std::string_view());
    writer_.writeMerged(gap, WantedText(beforeClose).with(text));
}

// What goes in front of the body, with the empty lines that stay there.
OptionalText CppFormatter::withLinesInFront(const Cpp::BracketedNode& body, const OptionalText& ahead) {
    const bool isAsked = settings_.keepsBlankLinesInFront && ahead.hasLineFeed() && body.hasBrackets();
    if (!isAsked) return ahead;
    const std::string_view gap = gapBefore(body);
    if (!isAllWhitespace(gap)) return ahead;
    std::string text = withBlankLines(ahead.text, gap);
    if (text.size() == ahead.text.size()) return ahead;
    return {true, madeTexts_.keep(std::move(text)), settings_.blankLines.key};
}

// A head, and a body whose contents are indented from the column at which the head began.
void CppFormatter::formatHeadAndBody(Cpp::SyntaxNode* head, Cpp::BracketedNode* body,
                                     const OptionalText& beforeOpen, const Keyed<bool>& isKept) {
    BaseColumnScope base(*this, head ? copyUpToConstruct(*head) : indentColumn(), head);
    if (head) head->accept(*this);
    if (!body) return;
    formatBody(*body, head ? beforeOpen : kAsInInput, head ? isKept : kNeverKept, [&] { body->accept(*this); });
}

// Whether the block stands where it would be put behind a case label: one that is indented further is a statement like
// any other.
bool CppFormatter::goesByLabel(const Cpp::BlockNode& block) const {
    const bool followsLabel = lastLabel_ && lastLabel_ == previousSibling_;
    return followsLabel && sourceColumnOf(block) <= sourceColumnOf(*lastLabel_);
}

// again: {   as that of a case, it goes by the column of its label
bool CppFormatter::standsBehindLabel(const Cpp::BlockNode& block) const {
    const auto* label = Cpp::as<Cpp::LabelNode>(previousSibling_);
    const bool mayStay = settings_.beforeCaseOpen.present && !settings_.global.beforeOpen.hasLineFeed();
    return label && mayStay && block.hasBrackets() && label->end().line == block.start().line;
}

// Empty lines in front of it stay where they are asked for.
void CppFormatter::placeBlock(const Cpp::BlockNode& block) {
    const bool keepsLines = settings_.global.keepsBlankLines && settings_.global.beforeOpen.hasLineFeed();
    WantedText wanted = settings_.global.beforeOpen;
    if (wanted.text().starts_with('\n') && out().column() == 0) wanted = wanted.with(wanted.text().substr(1));
    const std::string_view kept = keepsLines ? trailingBlanks(gapBefore(block)) : std::string_view();
    const std::string text = withBlankLines(wanted.text(), kept);
    if (text.size() > wanted.text().size()) wanted = WantedText(text, settings_.blankLines.key);
    placeBefore(block, !wanted.present && goesByLabel(block) ? settings_.beforeCaseOpen : wanted);
}

void CppFormatter::visit(Cpp::BlockNode* block) {
    const bool goesByItsLabel = standsBehindLabel(*block);
    const std::string ofLabel = goesByItsLabel ? indentOf(*Cpp::as<Cpp::LabelNode>(previousSibling_)) : std::string();
    const int column = goesByItsLabel ? columnAfter(ofLabel, 0, out().tabSize()) : indentColumn();
    BaseColumnScope base(*this, column, block);
    IndentScope indent(out(), goesByItsLabel ? ofLabel : indentToColumn(out(), column));
    placeBlock(*block);
    const auto format = [&] { formatBlock(*block, settings_.global); };
    if (settings_.keepsOneLineBlocks) {
        applyPendingWhitespace(*block);
        writer_.copyGap(block->start());
        if (tryOnOneLine(*block, settings_.keepsOneLineBlocks.key, format)) return;
    }
    format();
}

void CppFormatter::visit(Cpp::LinkageBlockNode* linkage) {
    formatHeadAndBody(linkage->linkage(), linkage->body(), settings_.linkage.beforeOpen,
                      settings_.keepsOneLineBlocks);
}

void CppFormatter::visit(Cpp::LinkageBlockBodyNode* body) {
    applyPendingWhitespace(*body);
    formatBlock(*body, settings_.linkage);
}

}  // namespace Tessel
