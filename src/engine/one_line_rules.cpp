#include "engine/one_line_rules.h"

#include <algorithm>

#include "cpp/token_kind.h"
#include "engine/columns.h"
#include "engine/gap.h"
#include "engine/shown_width.h"
#include "engine/source_copy.h"
#include "engine/weighed_breaks.h"

namespace Tessel {

namespace {

// Characters; longer ones are not tried where there is no margin.
constexpr std::size_t kLongestLine = 1000;

}  // namespace

bool CppFormatter::mayFitOnLine(const Cpp::SyntaxNode& node) const {
    // White space makes up no more than that of what fits.
    constexpr std::size_t widestSpacing = 4;
    const std::size_t length = node.end().column - node.start().column;
    const auto margin = static_cast<std::size_t>(settings_.wrapMargin);
    return length < (margin > 0 ? widestSpacing * margin : kLongestLine);
}

// Whether a line is too long that `text` would be written to, and reach up to `end` with as many columns as bytes.
bool CppFormatter::runsOver(int margin, int end, std::string_view text) {
    constexpr int longestCharacter = 4;
    if (margin <= 0 || end <= margin) return false;
    if (end > longestCharacter * margin || !weighsBreaks(settings_)) return true;
    const std::string_view written = out().text();
    const auto hidden = [this](std::string_view piece) {
        return columnAfter(piece, 0, out().tabSize()) - shownColumnAfter(piece, 0, out().tabSize());
    };
    return end - hidden(written.substr(written.rfind('\n') + 1)) - hidden(text) > margin;
}

// The columns of what cannot leave the line: brackets and separators.
int CppFormatter::widthBehind() {
    const std::string_view rest = source_.text().substr(writer_.in().offset(), kLongestLine);
    return static_cast<int>(std::min(rest.find_first_not_of(")]};,"), rest.size()));
}

// How far what ends at the position may reach when its lines are joined: a comment that ends its line stays there.
int CppFormatter::joiningMargin(Trn::Position end) {
    const std::string_view rest = source_.text().substr(offsetOf(source_, end), kLongestLine);
    const std::string_view line = rest.substr(0, rest.find('\n'));
    const std::size_t start = std::min(line.find_first_not_of(" \t)]};,"), line.size());
    const std::string_view comment = line.substr(start);
    const bool isLineComment = comment.starts_with("//");
    if (!isLineComment && !comment.starts_with("/*")) return settings_.joiningMargin;
    const int apart = isLineComment && settings_.beforeLineComment.present
                          ? columnAfter(settings_.beforeLineComment.text, 0, out().tabSize())
                          : static_cast<int>(leadingBlanks(line).size());
    return std::max(settings_.joiningMargin - apart - columnAfter(comment, 0, out().tabSize()), 1);
}

// What stands between the place that the sweep has reached and the node.
std::string_view CppFormatter::gapBefore(const Cpp::SyntaxNode& node) {
    const std::size_t start = writer_.in().offset();
    const std::size_t end = std::max(offsetOf(source_, node.start()), start + 1) - 1;
    return source_.text().substr(start, end - start);
}

// Of functions: what may have a body on one line.
enum { Never, WhenEmpty, InClasses, Always };

Keyed<bool> CppFormatter::keepsFunction(const Cpp::BracketedNode& body) const {
    return standsOnLine(body, settings_.oneLineFunctions);
}

Keyed<bool> CppFormatter::standsOnLine(const Cpp::BracketedNode& body, const Keyed<int>& setting) const {
    switch (setting) {
        case Never: return {false, setting.key};
        case WhenEmpty: return {body.size() == 0, setting.key};
        case InClasses: return {body.size() == 0 || inClassBody_, setting.key};
        default: return {true, setting.key};
    }
}

// Whether a body is to be put on one line, or stays there: it holds a statement without blocks at most.
bool CppFormatter::joinsFunction(const Cpp::BracketedNode& body) {
    constexpr std::size_t mostStatements = 1;
    if (settings_.joinedFunctions == Never || !standsOnLine(body, settings_.joinedFunctions)) return false;
    if (!body.hasBrackets() || body.size() > mostStatements) return false;
    const std::string_view gap = gapBefore(body);
    if (!isAllWhitespace(gap) || writer_.peek(gap.size()) != '{') return false;
    const std::size_t start = offsetOf(source_, body.start());
    if (offsetOf(source_, body.end()) - start > kLongestLine) return false;
    if (body.size() == 0) return true;
    const Cpp::SyntaxNode& statement = **body.childBegin();
    const auto* data = Cpp::as<Cpp::DataDeclNode>(&statement);
    const auto* expression = data ? data->tail() : Cpp::as<Cpp::ExprNode>(&statement);
    return expression ? expression->bodies().empty() : data != nullptr;
}

// Of several parts: `if (a) b(); else c();`.
const Keyed<bool>& CppFormatter::keepsStatement(const Cpp::CtrlStmtNode& statement) const {
    const auto isUnbraced = [](const auto& child) {
        const auto* part = Cpp::as<Cpp::CtrlSubStmtNode>(child.get());
        return part && part->body() && !part->body()->hasBrackets();
    };
    const bool isAnyUnbraced = std::any_of(statement.childBegin(), statement.childEnd(), isUnbraced);
    if (statement.size() < 2) return kNeverKept;
    return isAnyUnbraced ? settings_.keepsOneLineStatements : settings_.keepsOneLineBlocks;
}

// `if (a)` and a statement in the next line. What stands on one line already is kept there, or laid out like that.
bool CppFormatter::joinsStatement(const Cpp::CtrlStmtNode& statement) const {
    if (!settings_.joinsStatements || isOnOneLine_ || chainingElseIf_ || statement.size() != 1) return false;
    const auto* part = Cpp::as<Cpp::CtrlSubStmtNode>(statement.childBegin()->get());
    if (!part || !part->head() || !part->head()->keyword() || !part->body()) return false;
    const int keyword = part->head()->keyword()->keyword();
    if (keyword != Cpp::KeywordIf && keyword != Cpp::KeywordFor && keyword != Cpp::KeywordWhile) return false;
    const Cpp::BlockNode& body = *part->body();
    if (body.hasBrackets() || body.size() != 1) return false;
    if (settings_.keepsOneLineStatements && standsOnOneLine(statement)) return false;
    const auto* governed = Cpp::as<Cpp::ExprNode>(body.childBegin()->get());
    if (!governed || !governed->bodies().empty()) return false;
    if (keepsLines() && !standsOnOneLine(*part->head())) return false;
    const std::size_t headEnd = offsetOf(source_, part->head()->end());
    const std::size_t start = offsetOf(source_, governed->start()) - 1;
    const std::size_t end = offsetOf(source_, governed->end());
    const std::string_view behind = source_.text().substr(end, source_.text().find('\n', end) - end);
    const std::string_view next = trimLeft(behind);
    // Another statement behind it begins a line of its own.
    const bool endsLine = next.empty() || (settings_.betweenStatements.hasLineFeed() && !next.starts_with('/'));
    return end - start <= kLongestLine && endsLine &&
           isAllWhitespace(source_.text().substr(headEnd, start - headEnd));
}

}  // namespace Tessel
