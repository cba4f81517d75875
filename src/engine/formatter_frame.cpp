// What all rules stand on: the root, what stands between nodes, contents, comments and directives.
#include <algorithm>
#include <utility>

#include "cpp/token_kind.h"
#include "engine/columns.h"
#include "engine/conditional_bodies.h"
#include "engine/cpp_formatter.h"
#include "engine/formatter_scopes.h"
#include "engine/gap.h"
#include "engine/macro_blocks.h"
#include "engine/scheme_values.h"
#include "engine/source_copy.h"
#include "scheme/property_keys.h"

namespace Tessel {

using Zelmor::IndentScope;
using Zelmor::LeadingSpaceScope;

namespace {

// The output from its start, with the scheme's tab settings.
Zelmor::IndentState initialState(const PropertySet& scheme) {
    Zelmor::IndentState state;
    state.tabSize = readTabSize(scheme);
    state.tabMode = readTabMode(scheme);
    return state;
}

bool isLabel(const Cpp::SyntaxNode& node) {
    return Cpp::as<Cpp::CaseNode>(&node) || Cpp::as<Cpp::AccessSpecNode>(&node) || Cpp::as<Cpp::LabelNode>(&node);
}

// Whether a statement begins on the line that the block ends on.
bool startsBehind(const Cpp::BlockNode& block, Cpp::InteriorNode::iterator next, Cpp::InteriorNode::iterator end) {
    return next != end && (*next)->start().line == block.end().line;
}

bool isBreak(const Cpp::SyntaxNode& node) {
    const auto* statement = Cpp::as<Cpp::ExprNode>(&node);
    return statement && statement->firstWord() == "break" &&
           (statement->text() == "break" || statement->text() == "break;");
}

// Of the nodes of a list, those that stand one step further than the others.
struct FurtherNodes {
    // To be asked of each node in turn.
    bool contain(MacroBlocks::Place node, bool areIndented) {
        const bool isBody = bodies.isBody(**node);
        const bool isInMacros = macros.isInside(node);
        return isBody || (isInMacros && areIndented);
    }

    ConditionalBodies bodies;
    MacroBlocks macros;
};

// What stands behind a "}" and belongs to what that ends: the declarators of a class or enumeration, and handlers.
bool goesOnBehindBrace(const Cpp::SyntaxNode& previous, const Cpp::SyntaxNode& node) {
    if (Cpp::as<Cpp::ClassDeclNode>(&previous) || Cpp::as<Cpp::EnumDeclNode>(&previous)) {
        return true;
    }
    const auto* statement = Cpp::as<Cpp::CtrlStmtNode>(&node);
    if (!statement || statement->size() == 0) return false;
    const auto* part = Cpp::as<Cpp::CtrlSubStmtNode>(statement->childBegin()->get());
    const Cpp::KeywordNode* keyword = part && part->head() ? part->head()->keyword() : nullptr;
    return keyword && keyword->keyword() == Cpp::KeywordCatch;
}

}  // namespace

CppFormatter::CppFormatter(const Zelmor::TextDocument& source, const Cpp::OpaqueTokens& opaque,
                           const FormatOptions& options, const LayoutPasses& passes, LayoutObserver* observer)
    : scheme_(withSchemeDefaults(options.scheme)),
      settings_(scheme_),
      passes_(passes),
      source_(source),
      log_(observer ? std::optional<LayoutLog>(std::in_place, *observer, scheme_, source.text()) : std::nullopt),
      result_(initialState(scheme_)),
      exprFormatter_(scheme_, &source, log_ ? &*log_ : nullptr),
      writer_(source, opaque, result_, exprFormatter_, log_ ? &*log_ : nullptr),
      rightMargin_(readRightMargin(scheme_)) {
    // Formatted text is seldom much longer than its source.
    result_.reserve(source.size() + source.size() / 4);
    if (settings_.formatsMacroBodies) exprFormatter_.setMacroBodies(macroBodies_.emplace(scheme_, passes_));
}

void CppFormatter::visit(Cpp::RootNode* root) {
    columns_ = passes_.measure(scheme_, source_, *root);
    LeadingSpaceScope leadingSpace(out(), !settings_.leftMargin.present);
    formatContent(*root, settings_.leftMargin);
    writer_.write(writer_.rest());
}

std::string CppFormatter::takeText() { return result_.takeText(); }

void CppFormatter::writeRendered(const std::string& text) { Tessel::writeRendered(text, out()); }

int CppFormatter::copyUpTo(const Cpp::SyntaxNode& node) {
    writer_.copyGap(node.start());
    return writer_.nextColumn();
}

// The same for the first node of a construct: tells the column from which its body is indented.
int CppFormatter::copyUpToConstruct(const Cpp::SyntaxNode& node) {
    const int column = copyUpTo(node);
    return settings_.indentsFromLine ? textColumnOf(out()) : column;
}

void CppFormatter::pend(const OptionalText& whitespace) {
    if (whitespace.present) {
        pendingWhitespace_.push_back(whitespace);
    } else {
        absentPending_ = whitespace.key;
    }
}

OptionalText CppFormatter::takePending() {
    const KeyId absent = std::exchange(absentPending_, {});
    if (pendingWhitespace_.empty()) return {false, {}, absent};
    OptionalText wanted = pendingWhitespace_.back();
    pendingWhitespace_.pop_back();
    if (out().column() == 0) wanted.text = asOutputStands(wanted).text();
    return wanted;
}

// Where a comment or directive has just ended its line, only further line ends are left to be written.
WantedText CppFormatter::asOutputStands(const WantedText& wanted) {
    if (out().column() != 0) return wanted;
    const std::size_t lineFeed = wanted.text().find('\n');
    return wanted.with(lineFeed == std::string_view::npos ? std::string_view() : wanted.text().substr(lineFeed + 1));
}

// A comment that begins a line is part of what follows it there: `/* static */ void f()`, in the line below
// `template <class T>`.
bool CppFormatter::isLedByComment(const Cpp::SyntaxNode& node) {
    const auto* comment = previousSibling_ ? Cpp::as<Cpp::CommentNode>(previousSibling_) : nullptr;
    if (!comment || comment->isLineComment() || !keepsLines()) return false;
    const bool isRightBehind = offsetOf(source_, comment->end()) == writer_.in().offset();
    return isRightBehind && !isLineBreak(gapBefore(node)) && isAllWhitespace(lineBefore(*comment));
}

void CppFormatter::applyPendingWhitespace(const Cpp::SyntaxNode& node) {
    const OptionalText wanted = takePending();
    if (wanted.hasLineFeed() && isLedByComment(node)) return writer_.copyGap(node.start());
    placeBefore(node, wanted);
}

// What is wanted in front of the node. Where that is absent, the rule of the node copies the white space.
void CppFormatter::placeBefore(const Cpp::SyntaxNode& node, const WantedText& wanted) {
    if (wanted.present) {
        writer_.writeMerged(writer_.readGap(node.start()), wanted);
    } else if (log_ && wanted.key) {
        writer_.leave(trailingBlanks(gapBefore(node)), wanted);
    }
}

// The gap in front of the node, its trailing white space replaced when the scheme says by what.
void CppFormatter::writeGapBefore(const Cpp::SyntaxNode& node, const OptionalText& wanted) {
    writer_.writeMerged(writer_.readGap(node.start()), wanted);
}

std::string CppFormatter::contentIndent(const OptionalText& indent) {
    if (!indent.present) return out().indent();
    return indentToColumn(out(), baseColumn()) + indent;
}

// switch (a)
// case 0:          in the column of the "switch", without braces around them
const OptionalText& CppFormatter::caseIndent() const {
    return hasBareLabels_ && settings_.caseIndent.present ? kNothing : settings_.caseIndent;
}

int CppFormatter::indentColumn() { return columnAfter(out().indent(), 0, out().tabSize()); }

// Of the first text on the line of the source that the node begins on.
int CppFormatter::sourceColumnOf(const Cpp::SyntaxNode& node) const {
    return exprFormatter_.columnOfSourceLine(sourceFrom(node));
}

std::string_view CppFormatter::sourceFrom(const Cpp::SyntaxNode& node) const {
    return source_.text().substr(offsetOf(source_, node.start()) - 1);
}

// What stands in front of the node on its line.
std::string_view CppFormatter::lineBefore(const Cpp::SyntaxNode& node) const {
    const std::size_t lineStart = source_.offsetOf(static_cast<int>(node.start().line), 0);
    return source_.text().substr(lineStart, offsetOf(source_, node.start()) - 1 - lineStart);
}

void CppFormatter::formatContent(Cpp::InteriorNode& node, const OptionalText& indent) {
    formatContent(node, node.childBegin(), indent);
}

void CppFormatter::formatContent(Cpp::InteriorNode& node, Cpp::InteriorNode::iterator first,
                                 const OptionalText& indent) {
    ContentScope content(*this, indent);
    measureContent(node, first, indent.key);
    const std::size_t pendingOutside = pendingWhitespace_.size();
    const Cpp::SyntaxNode* previous = nullptr;
    bool isCaseBlock = false;  // the one in front, as in `case 1: { … } break;`
    auto commentsEnd = first;
    FurtherNodes furtherNodes{ConditionalBodies(source_), {source_, first, node.childEnd(), out().tabSize()}};
    const bool isOfSwitch = settings_.formatsLabels && indent.key == settings_.caseContentIndent.key;
    const auto firstLabel = isOfSwitch ? findFirstLabel(first, node.childEnd()) : first;
    std::optional<IndentScope> inFrontOfLabels;
    if (firstLabel != first) inFrontOfLabels.emplace(out(), contentIndent(settings_.statements.indent));
    for (auto child = first; child != node.childEnd(); ++child) {
        if (child == firstLabel) inFrontOfLabels.reset();
        previousSibling_ = previous;
        if (child >= commentsEnd) commentsEnd = findEndOfComments(child, node.childEnd());
        std::optional<IndentScope> further;
        if (settings_.keepsUnrecognized && furtherNodes.contain(child, !out().keepLeadingSpace())) {
            const OptionalText& step = furtherNodes.bodies.isEnd() ? exprFormatter_.settings().hanging.wrap
                                                                   : settings_.indentOfBody(false);
            further.emplace(out(), indentToColumn(out(), indentColumn()) + step);
        }
        const auto* block = Cpp::as<Cpp::BlockNode>(child->get());
        const bool isLabelBlock =
            block && standsBehindLabel(*block) && startsBehind(*block, child + 1, node.childEnd());
        formatChild(**child, isCaseBlock);
        isCaseBlock = isLabelBlock;
        if (lastLabel_ == child->get()) {
            child = formatBehindLabel(child, node.childEnd());
            isCaseBlock = Cpp::as<Cpp::BlockNode>(child->get());
        }
        previous = child->get();
    }
    directiveBehind_ = nullptr;
    // What a template header left for a declaration that never came is not for the next one outside.
    templateColumn_.reset();
    absentPending_ = {};
    pendingWhitespace_.resize(std::min(pendingWhitespace_.size(), pendingOutside));
}

void CppFormatter::formatChild(Cpp::SyntaxNode& child, bool followsCaseBlock) {
    if (followsCaseBlock && settings_.beforeCaseOpen.present && isBreak(child)) return formatByLabel(child);
    if (previousSibling_) writeStatementGap(*previousSibling_, child);
    child.accept(*this);
}

// What it finds begins with the comments in front of the label.
Cpp::InteriorNode::iterator CppFormatter::findFirstLabel(Cpp::InteriorNode::iterator first,
                                                         Cpp::InteriorNode::iterator end) {
    auto label = std::find_if(first, end, [](const auto& child) { return Cpp::as<Cpp::CaseNode>(child.get()); });
    while (label != end && label != first && Cpp::as<Cpp::CommentNode>((label - 1)->get())) --label;
    return label;
}

// The `break` behind the block of a case stands in the column of its "}".
void CppFormatter::formatByLabel(Cpp::SyntaxNode& statement) {
    LeadingSpaceScope leadingSpace(out(), caseIndent().present ? false : out().keepLeadingSpace());
    IndentScope indent(out(), labelIndent(caseIndent()));
    if (gapBefore(statement).empty()) placeBefore(statement, kBlank);
    statement.accept(*this);
}

// Sets what the comments from `child` on, on lines that follow each other, end in front of: a directive that has
// nothing in front of it, or a label. Returns where they end.
Cpp::InteriorNode::iterator CppFormatter::findEndOfComments(Cpp::InteriorNode::iterator child,
                                                            Cpp::InteriorNode::iterator end) {
    directiveBehind_ = nullptr;
    labelBehind_ = nullptr;
    while (child != end) {
        const auto* comment = Cpp::as<Cpp::CommentNode>(child->get());
        if (!comment) break;
        const std::uint32_t next = comment->end().line + (comment->isLineComment() ? 0 : 1);
        if (++child == end || (*child)->start().line != next) break;
        directiveBehind_ = staysInItsColumn(**child) ? child->get() : nullptr;
        labelBehind_ = isLabel(**child) ? child->get() : nullptr;
    }
    return child;
}

// Of directives.
bool CppFormatter::staysInItsColumn(const Cpp::SyntaxNode& node) const {
    if (!Cpp::isDirective(node) || exprFormatter_.indentsDirectives()) return false;
    const std::string_view front = lineBefore(node);
    return front.empty() || (exprFormatter_.keepsDirectivePlaces() && isAllWhitespace(front));
}

// Comments that stand in the column of the directive behind them stay in it.
bool CppFormatter::goesWithDirective(const Cpp::SyntaxNode& node) {
    if (!directiveBehind_ || !Cpp::as<Cpp::CommentNode>(&node)) return false;
    const bool stands = lineBefore(node) == lineBefore(*directiveBehind_);
    writer_.measure(settings_.keepsDirectiveComments.key, sourceFrom(node), stands);
    return stands && settings_.keepsDirectiveComments;
}

// The first of a block's contents that is no comment, directive or label tells whether its author indents them.
bool CppFormatter::indentsInSource(const Cpp::InteriorNode& node) const {
    const auto& children = node.children();
    const auto first = std::ranges::find_if(
        children, [](const auto& child) { return !Cpp::isTrivia(*child) && !isLabel(*child); });
    return first != children.end() && isAllWhitespace(lineBefore(**first)) && !lineBefore(**first).empty();
}

// Code that has been put aside, by a comment in front of its lines.
bool CppFormatter::staysFlush(const Cpp::SyntaxNode& node) const {
    const auto* comment = Cpp::as<Cpp::CommentNode>(&node);
    return exprFormatter_.keptIndent().isWanted() && inIndentedBlock_ && comment && comment->isLineComment() &&
           lineBefore(node).empty();
}

// Comments that stand in the column of the label behind them stay in it.
bool CppFormatter::goesWithLabel(const Cpp::CommentNode& comment) const {
    return labelBehind_ && settings_.formatsLabels && isAllWhitespace(lineBefore(comment)) &&
           sourceColumnOf(comment) == sourceColumnOf(*labelBehind_);
}

std::string CppFormatter::commentIndent(const Cpp::CommentNode& comment) {
    if (staysFlush(comment) || goesWithDirective(comment)) return std::string(lineBefore(comment));
    if (!goesWithLabel(comment)) return out().indent();
    if (Cpp::as<Cpp::CaseNode>(labelBehind_)) return labelIndent(caseIndent());
    if (Cpp::as<Cpp::AccessSpecNode>(labelBehind_)) return labelIndent(settings_.accessLabelIndent);
    return indentOf(*Cpp::as<Cpp::LabelNode>(labelBehind_));
}

// Between two statements, or declarations, on one line: `a();b();`, also behind `private:`.
void CppFormatter::writeStatementGap(const Cpp::SyntaxNode& previous, const Cpp::SyntaxNode& next) {
    const bool isAsked = settings_.betweenStatements.present || log_;
    if (!isAsked || Cpp::isTrivia(previous) || Cpp::isTrivia(next)) return;
    const std::string_view gap = gapBefore(next);
    const std::string_view blanks = trailingBlanks(gap);
    if (writer_.holdsOpaque(gap)) return;
    if (blanks.find('\n') != std::string_view::npos) {
        if (!settings_.betweenStatements.present) placeBefore(next, settings_.betweenStatements);
        return;
    }
    // A stray ";" is no node.
    const char last = blanks.size() < gap.size() ? gap[gap.size() - blanks.size() - 1] : writer_.peekBehind();
    const bool isEnd = last == ';' || last == '}' || Cpp::as<Cpp::AccessSpecNode>(&previous);
    if (!isEnd || writer_.peek(gap.size()) == ';' || (last == '}' && goesOnBehindBrace(previous, next))) return;
    const bool staysOnLine = isOnOneLine_ && settings_.betweenStatements.hasLineFeed();
    const OptionalText& wanted = staysOnLine ? kBlank : settings_.betweenStatements;
    if (!wanted.hasLineFeed() && placesItself(next)) return;
    placeBefore(next, asOutputStands(wanted));
}

// Whether the rule of the node writes what stands between it and the statement in front on its line.
bool CppFormatter::placesItself(const Cpp::SyntaxNode& node) const {
    if (Cpp::as<Cpp::CaseNode>(&node)) return settings_.afterCaseLabel.hasLineFeed();
    return Cpp::as<Cpp::BlockNode>(&node) && settings_.global.beforeOpen.present;
}

void CppFormatter::visit(Cpp::CommentNode* comment) {
    // A protected region is kept as it is, but for the white space at the start of its lines.
    if (comment->protectedRegion()) {
        writer_.copyGap(comment->start());
        const std::size_t start = out().text().size();
        const std::string_view region = writer_.readThrough(comment->end());
        if (settings_.keepsRegionIndent) {
            if (out().column() == 0) Tessel::writeRendered(trailingBlanks(lineBefore(*comment)), out());
            Tessel::writeRendered(region, out());
        } else {
            writer_.writeProtected(region);
        }
        keptParts_.push_back({start, out().text().size()});
        return;
    }
    IndentScope indent(out(), commentIndent(*comment));
    if (standsAgainstCode(*comment)) {
        writer_.replace(writer_.readGap(comment->start()), WantedText(" ", settings_.formatsOtherGaps.key));
    }
    writer_.copyGap(comment->start());
    if (!copySettledNode(*comment)) exprFormatter_.writeComment(writer_.readThrough(comment->end()), out());
}

// `int a;/* b */`, `A() : a(1)/* b */ {`: behind what ends in a bracket, one in front of a body comes to end its line.
bool CppFormatter::standsAgainstCode(const Cpp::CommentNode& comment) {
    if (!settings_.formatsOtherGaps || out().column() == 0 || !gapBefore(comment).empty()) return false;
    const std::size_t start = offsetOf(source_, comment.start()) - 1;
    const char inFront = start > 0 ? source_.text()[start - 1] : '\n';
    const std::string_view behind = source_.text().substr(offsetOf(source_, comment.end()));
    const bool isBehindBracket = inFront == ')' || inFront == '}';
    const bool leadsBody = isBehindBracket && behind.substr(kBlanks.skipIn(behind)).starts_with('{');
    if (!leadsBody && !isCommentAtLineEnd(comment)) return false;
    const bool followsOther = inFront == '/' || inFront == '{';  // another comment, or a brace with a gap of its own
    return !isWhitespace(inFront) && !followsOther;
}

bool CppFormatter::isSettled(const Cpp::SyntaxNode& node) const {
    return settledLines_ && settledLines_->contain(node.start(), node.end());
}

// The gap in front of the node has been written. Says false where the node may come to stand otherwise.
bool CppFormatter::copySettledNode(const Cpp::SyntaxNode& node) {
    if (!isSettled(node) || writer_.nextColumn() != sourceColumnOf(node)) return false;
    // Blanks in front of tabs, behind a text that is aligned, are in front of all its lines or of none.
    const bool mixesBlanks = out().indent().find(" \t") != std::string::npos;
    if (mixesBlanks && node.start().line != node.end().line && lineBefore(node) != out().indent()) return false;
    out().startLine();
    writeRendered(std::string(writer_.readThrough(node.end())));
    return true;
}

// Whether the node is settled, begins a line, and comes to stand in its column.
bool CppFormatter::startsSettledLine(const Cpp::SyntaxNode& node) {
    if (!isSettled(node) || isOnOneLine_ || !pendingWhitespace_.empty() || out().keepLeadingSpace()) return false;
    const std::string_view gap = gapBefore(node);
    const bool startsLine = isAllWhitespace(gap) && (out().column() == 0 || gap.find('\n') != std::string_view::npos);
    return startsLine && isAllWhitespace(lineBefore(node)) && indentColumn() == sourceColumnOf(node);
}

// Says false, with nothing written, where the statement has to be formatted.
bool CppFormatter::copySettledStatement(const Cpp::SyntaxNode& node) {
    if (!startsSettledLine(node)) return false;
    writer_.copyGap(node.start());
    return copySettledNode(node);
}

void CppFormatter::visit(Cpp::PreprocDirectiveNode* directive) {
    const bool isKept = directive->text().empty();
    const std::size_t start = isKept ? out().text().size() : 0;
    const DirectiveText text = isKept                  ? DirectiveText::Kept
                               : isSettled(*directive) ? DirectiveText::Settled
                                                       : DirectiveText::LaidOut;
    exprFormatter_.formatDirective(directive->start(), directive->end(), writer_.in(), out(), text);
    if (isKept) keptParts_.push_back({start, out().text().size()});
}

// What has not been written of the node: all of it, or what ends it, like the ";" of a declaration.
void CppFormatter::copyThrough(const Cpp::SyntaxNode& node) {
    writer_.write(writeGapBeforeEnd(writer_.readThrough(node.end())));
}

// Where the text is the blanks in front of a ";", no more than the ";" is left to be written.
std::string_view CppFormatter::writeGapBeforeEnd(std::string_view text) {
    const std::size_t blanks = kBlanks.skipIn(text);
    const bool isEnd = blanks > 0 && text.substr(blanks) == ";";
    if (!settings_.formatsOtherGaps || !isEnd) return text;
    writer_.replace(text.substr(0, blanks), WantedText("", settings_.formatsOtherGaps.key));
    return text.substr(blanks);
}

}  // namespace Tessel
