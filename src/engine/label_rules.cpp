// case 1 :f();  end :g();
//
// case 1:
//     f();
// end:
//     g();
#include <algorithm>
#include <string>

#include "cpp/token_kind.h"
#include "engine/columns.h"
#include "engine/cpp_formatter.h"
#include "engine/formatter_scopes.h"
#include "engine/gap.h"
#include "engine/one_line_rules.h"

namespace Tessel {

using Zelmor::IndentScope;
using Zelmor::LeadingSpaceScope;

// Labels are indented from the column of their switch.
void CppFormatter::visit(Cpp::CaseNode* label) {
    LabelScope scope(*this, *label, caseIndent(), labelIndent(caseIndent()));
    const std::string_view gap = writer_.readGap(label->start());
    const bool followsText = out().column() > 0 && gap.find('\n') == std::string_view::npos;
    if (followsText && settings_.afterCaseLabel.hasLineFeed()) {
        const Keyed<bool>& kept = settings_.keepsOneLineStatements;
        writer_.writeMerged(gap, kept ? WantedText(" ", kept.key) : WantedText("\n", settings_.afterCaseLabel.key));
    } else {
        writer_.write(gap);
    }
    if (settings_.formatsLabels && label->value()) writeCaseValue(*label);
    writeLabel(*label);
    lastLabel_ = label;
}

void CppFormatter::writeCaseValue(const Cpp::CaseNode& label) {
    writer_.copyThrough(label.keyword()->end());
    const std::string_view gap = writer_.readGap(label.value()->start());
    writer_.writeMerged(gap, isLineBreak(gap) ? kAsInInput : WantedText(" ", settings_.formatsLabels.key));
    writeExpression(writer_.readThrough(label.value()->end()), label.value()->bodies(), HangingLines::Text::List);
}

void CppFormatter::visit(Cpp::LabelNode* label) {
    const Keyed<bool>& kept = settings_.keepsFirstColumnLabels;
    writer_.measure(kept.key, sourceFrom(*label), inIndentedBlock_ && lineBefore(*label).empty());
    const OptionalText setting = standsInFirstColumn(*label) ? OptionalText{true, "", kept.key} : settings_.labelIndent;
    LabelScope scope(*this, *label, setting, indentOf(*label));
    writer_.copyGap(label->start());
    writeLabel(*label);
}

std::string CppFormatter::indentOf(const Cpp::LabelNode& label) {
    if (standsInFirstColumn(label)) return {};
    const OptionalText& wanted = settings_.labelIndent;
    return wanted.present ? labelIndent(wanted) : out().indent();
}

// Whether it does so among what is indented, and stays there.
bool CppFormatter::standsInFirstColumn(const Cpp::LabelNode& label) const {
    return settings_.keepsFirstColumnLabels && inIndentedBlock_ && lineBefore(label).empty();
}

// What has not been written of a label yet, its ":" among it.
void CppFormatter::writeLabel(const Cpp::SyntaxNode& label) {
    std::string_view text = writer_.readThrough(label.end());
    const KeyId key = settings_.formatsLabels.key;
    if (!settings_.formatsLabels || writer_.holdsOpaque(text)) {
        const std::string_view front = text.substr(0, text.rfind(':'));
        const std::string_view gap = trailingBlanks(front);
        writer_.write(trimRight(front));
        writer_.leave(gap, OptionalText{false, {}, key});
        return writer_.write(text.substr(front.size() - gap.size()));
    }
    while (!text.empty()) {
        const std::string_view gap = leadingBlanks(text);
        text.remove_prefix(gap.size());
        if (text.starts_with(':')) {
            writer_.writeMerged(gap, WantedText("", key));
        } else if (!gap.empty()) {
            writer_.replace(gap, WantedText(" ", key));
        }
        const std::string_view word(text.begin(), std::ranges::find_if(text, isWhitespace));
        writer_.write(word);
        text.remove_prefix(word.size());
    }
}

// case 1: {        goes by the column of its label, and stays below a comment behind that
//     a();
// }
void CppFormatter::formatCaseBlock(Cpp::BlockNode& block, const Cpp::SyntaxNode& previous) {
    const std::string labelIndentation = labelIndent(caseIndent());
    BaseColumnScope base(*this, columnAfter(labelIndentation, 0, out().tabSize()), &block);
    LeadingSpaceScope leadingSpace(out(), caseIndent().present ? false : out().keepLeadingSpace());
    IndentScope indent(out(), labelIndentation);
    const bool staysBelow =
        keepsLines() && Cpp::as<Cpp::CommentNode>(&previous) && previous.end().line < block.start().line;
    formatBody(block, staysBelow ? kLineFeed : settings_.beforeCaseOpen, settings_.keepsOneLineBlocks,
               [&] { formatBlock(block, settings_.global); });
}

// Writes what separates a label from its first statement. Comments on the label's line stay there, and those
// below it keep theirs. Returns the last child that has been written.
Cpp::InteriorNode::iterator CppFormatter::formatBehindLabel(Cpp::InteriorNode::iterator label,
                                                            Cpp::InteriorNode::iterator end) {
    const std::uint32_t line = (*label)->end().line;
    auto next = label + 1;
    for (; next != end && (*next)->start().line == line; label = next++) {
        if (!Cpp::as<Cpp::CommentNode>(next->get())) break;
        (*next)->accept(*this);
    }
    if (next != end && settings_.beforeCaseOpen.present) {
        if (auto* block = Cpp::as<Cpp::BlockNode>(next->get()); block && block->hasBrackets()) {
            formatCaseBlock(*block, **label);
            return next;
        }
    }
    if (next != end && settings_.keepsOneLineStatements && (*next)->start().line == line) {
        if (Cpp::as<Cpp::CaseNode>(next->get())) return label;
        const bool isPlaced = placesItself(**next);
        const auto format = [&] {
            const WantedText blank(kBlank.text, settings_.keepsOneLineStatements.key);
            if (!isPlaced) writer_.writeMerged(writer_.readGap((*next)->start()), blank);
            (*next)->accept(*this);
        };
        // Where statements have a line each, only a single one stays behind its label.
        const bool isSingle = next + 1 == end || (*(next + 1))->start().line != line || isTrivia(**(next + 1));
        const bool staysOnLine = isSingle || !settings_.betweenStatements.hasLineFeed();
        const KeyId keptBy = settings_.keepsOneLineStatements.key;
        if (!isTrivia(**next) && staysOnLine && tryOnOneLine(**next, keptBy, format)) return next;
    }
    if (!settings_.afterCaseLabel.present) {
        if (next != end) placeBefore(**next, settings_.afterCaseLabel);
        return label;
    }
    if (next != end && isTrivia(**next) && !settings_.afterCaseLabel.hasLineFeed()) return label;
    if (next != end) {
        const std::string_view gap = writer_.readGap((*next)->start());
        const std::string_view blanks = leadingBlanks(gap);
        OptionalText behind = settings_.afterCaseLabel;
        const bool keepsLines = settings_.global.keepsBlankLines && behind.hasLineFeed();
        const std::string text = withBlankLines(behind.text, keepsLines ? blanks : std::string_view());
        if (text.size() > behind.text.size()) behind = {true, text, settings_.blankLines.key};
        writer_.replace(blanks, asOutputStands(behind));
        writer_.writeWithoutLeading(gap);
    } else {
        writer_.replace(leadingBlanks(writer_.ahead()), asOutputStands(settings_.afterCaseLabel));
        writer_.skipBlanks();
    }
    return label;
}

}  // namespace Tessel
