// if(a){b();}else if( c )d();
//
// if (a) {
//     b();
// } else if (c)
//     d();
#include <algorithm>
#include <utility>

#include "cpp/characters.h"
#include "cpp/control_parts.h"
#include "cpp/lexer.h"
#include "cpp/token_kind.h"
#include "engine/columns.h"
#include "engine/conditional_bodies.h"
#include "engine/cpp_formatter.h"
#include "engine/formatter_scopes.h"
#include "engine/gap.h"
#include "engine/one_line_rules.h"
#include "engine/source_copy.h"
#include "scheme/extension_keys.h"

namespace Tessel {

using Cpp::continuesElseIf;
using Cpp::firstPart;
using Cpp::keywordOf;
using Zelmor::IndentScope;
using Zelmor::LeadingSpaceScope;

namespace {

// A(x) B(y) {   two macros on a line that govern one block
bool continuesMacro(const Cpp::CtrlSubStmtNode& part) {
    if (keywordOf(&part) != Cpp::Identifier || !part.body() || part.body()->hasBrackets()) return false;
    if (part.body()->size() != 1) return false;
    const auto* statement = Cpp::as<Cpp::CtrlStmtNode>(part.body()->childBegin()->get());
    const Cpp::CtrlSubStmtNode* first = statement ? firstPart(*statement) : nullptr;
    return keywordOf(first) == Cpp::Identifier && first->body() && first->body()->hasBrackets() &&
           part.head()->end().line == first->start().line;
}

// The handlers of a function whose body is a "try" block.
bool followsTryBlock(const Cpp::SyntaxNode* previous, const Cpp::CtrlStmtNode& statement) {
    return previous && keywordOf(firstPart(statement)) == Cpp::KeywordCatch &&
           (Cpp::as<Cpp::FunctionDeclNode>(previous) || Cpp::as<Cpp::CtrlStmtNode>(previous));
}

HangingLines::Text hangingOfCondition(int keyword) {
    switch (keyword) {
        case Cpp::KeywordIf: return HangingLines::Text::Condition;
        case Cpp::KeywordWhile:
        case Cpp::KeywordSwitch: return HangingLines::Text::LoopCondition;
        default: return HangingLines::Text::List;
    }
}

// The places of the first and the last ";" outside all brackets; the same when there are fewer than two.
struct ClauseEnds {
    std::size_t first = 0;
    std::size_t last = 0;
    bool areTwo() const { return first < last; }
};

ClauseEnds findClauseEnds(std::string_view inside) {
    ClauseEnds ends;
    bool sawFirst = false;
    Cpp::Lexer lexer(inside);
    for (Trn::Token token = lexer.nextToken(); token.kind != Trn::kEndKind; token = lexer.nextToken()) {
        // Clauses with directives among them are no three pieces.
        if (token.kind == Cpp::Directive) return {};
        if (token.kind != Cpp::Semicolon) continue;
        if (!sawFirst) ends.first = token.offset;
        sawFirst = true;
        ends.last = token.offset;
    }
    return ends;
}

// The comment that the text begins with, on the line that has ended in front of it but for that; with the blanks there.
std::string_view commentOfLine(std::string_view text) {
    const std::string_view line = text.substr(0, text.find('\n'));
    const std::string_view first = trimLeft(line);
    const bool isBlock = first.starts_with("/*") && first.find("*/") + 2 == trimRight(first).size();
    const bool endsLine = line.size() < text.size() && !line.ends_with('\\');
    return endsLine && (isBlock || first.starts_with("//")) ? trimRight(line) : std::string_view();
}

// `foreach (`: whether the name of the macro that a text begins with is one word of small letters, as keywords are.
bool readsLikeKeyword(std::string_view text) {
    const auto end = std::ranges::find_if_not(text, [](char c) { return c >= 'a' && c <= 'z'; });
    return end == text.end() || !Cpp::isNamePart(*end);
}

}  // namespace

// if (a) for (;;) {   in a macro's body, whose lines stay: the "}" stands below what the line begins with
bool CppFormatter::goesOnLineOfHead(const Cpp::CtrlStmtNode& statement, int lineColumn) {
    const bool isAhead = lineColumn < columnAfter(out().indent(), 0, out().tabSize());
    if (!settings_.indentsFromLine || !isAhead) return false;
    const std::string_view ahead = trimRight(lineBefore(statement));
    return ahead.ends_with(')') || ahead.ends_with("else");
}

void CppFormatter::visit(Cpp::CtrlStmtNode* statement) {
    if (statement->size() == 0) return;
    int base = baseColumn();
    if (followsTryBlock(previousSibling_, *statement) && settings_.betweenControlParts.present) {
        writer_.writeMerged(writer_.readGap(statement->start()), settings_.betweenControlParts);
        base = settings_.indentsFromLine ? textColumnOf(out()) : writer_.nextColumn();
    } else if (chainingElseIf_) {
        writeElseIfGap(writer_.readGap(statement->start()));
    } else if (copySettledStatement(*statement)) {
        return;
    } else {
        base = copyUpToConstruct(*statement);
    }
    BaseColumnScope scope(*this, base, chainingElseIf_ ? nullptr : statement);
    std::optional<IndentScope> line;
    if (goesOnLineOfHead(*statement, base)) line.emplace(out(), indentToColumn(out(), base));
    const auto format = [&] { formatParts(*statement); };
    const Keyed<bool>& kept = keepsStatement(*statement);
    if (kept && tryOnOneLine(*statement, kept.key, format)) return;
    if (joinsStatement(*statement)) {
        ValueScope<bool> joining(joinsBody_, true);
        if (tryLine(settings_.joiningMargin, settings_.joinsStatements.key, format)) return;
    }
    format();
}

// What stands between the parts of a statement.
WantedText CppFormatter::betweenParts(const Cpp::CtrlStmtNode& statement) const {
    const Cpp::CtrlSubStmtNode* first = firstPart(statement);
    const bool isUnbraced = first && first->body() && !first->body()->hasBrackets();
    const bool endsWithWhile = keywordOf(first) == Cpp::KeywordDo && !isUnbraced;
    const OptionalText& between = settings_.betweenControlParts;
    if (endsWithWhile && (settings_.beforeDoWhile.present || !between.present)) return settings_.beforeDoWhile;
    const bool breaksLine = between.present && isUnbraced && !isOnOneLine_;
    if (!between.present && isUnbraced) return kAsInInput;
    return breaksLine ? WantedText(kLineFeed.text, between.key) : between;
}

void CppFormatter::formatParts(Cpp::CtrlStmtNode& statement) {
    const WantedText between = betweenParts(statement);
    const bool joinsParts = between.present && !between.hasLineFeed() && !isOnOneLine_;
    const Cpp::SyntaxNode* previous = nullptr;
    for (auto place = statement.childBegin(); place != statement.childEnd(); ++place) {
        const auto& child = *place;
        if (previous && !isTrivia(*child) && !isTrivia(*previous)) placePart(*child, between);
        joinsNextPart_ = joinsParts && place + 1 != statement.childEnd();
        followsPart_ = previous != nullptr;
        child->accept(*this);
        previous = child.get();
    }
}

// An empty line in front of `else` stays where that is asked for.
void CppFormatter::placePart(const Cpp::SyntaxNode& part, const WantedText& between) {
    const std::string_view blanks = settings_.keepsBlankLinesBetweenParts ? gapBefore(part) : std::string_view();
    const bool hasBlankLine = isAllWhitespace(blanks) && std::count(blanks.begin(), blanks.end(), '\n') > 1;
    if (!hasBlankLine) return placeBefore(part, between);
    placeBefore(part, WantedText(withBlankLines({}, blanks), settings_.blankLines.key));
}

// "if" follows "else" on its line.
void CppFormatter::writeElseIfGap(std::string_view gap) {
    if (!settings_.laysOutStatements()) return writer_.write(gap);
    if (isAllWhitespace(gap)) {
        writer_.leave(gap, kBlank);
        out().write(kBlank.text);
        return;
    }
    if (startsWithLineEndToken(gap)) {
        writer_.writeMerged(gap, kBlank);
        return;
    }
    out().write(kBlank.text);
    writer_.writeMerged(trimLeft(gap), kBlank);
}

void CppFormatter::visit(Cpp::CtrlSubStmtNode* part) {
    const bool isChain = continuesElseIf(*part) || (settings_.keepsUnrecognized && continuesMacro(*part));
    chainingElseIf_ = false;
    const bool joinsNextPart = std::exchange(joinsNextPart_, false);
    if (part->head()) part->head()->accept(*this);
    Cpp::BlockNode* body = part->body();
    if (!body) return;
    const BraceSettings& braces = bracesOf(*body);
    if (isChain) {
        // What is chained is not indented further than what is in front of it.
        const OptionalText noIndent{!out().indent().empty() || !out().keepLeadingSpace(), ""};
        ValueScope<bool> chaining(chainingElseIf_, true);
        formatBlock(*body, braces, noIndent);
        return;
    }
    if (joinsBody_) {
        pend({true, " ", settings_.joinsStatements.key});
        formatBlock(*body, braces);
        return;
    }
    const bool hasBraces = body->hasBrackets();
    const bool beginsWithLabel = body->size() > 0 && Cpp::as<Cpp::CaseNode>(body->childBegin()->get());
    ValueScope<bool> bareLabels(hasBareLabels_, !hasBraces && beginsWithLabel);
    const bool isRepeated = settings_.keepsUnrecognized && repeatsHead(*part, source_);
    const OptionalText& ofBody = hasBraces ? braces.indent : settings_.indentOfBody(false);
    const OptionalText& indent = isRepeated ? kNothing : indentOfBody(keywordOf(part), ofBody, hasBraces);
    const bool isMacro = keywordOf(part) == Cpp::Identifier;
    const bool isGovernedBelow = isMacro && part->head()->end().line < body->start().line;
    const OptionalText& ofMacro = firstPresent(settings_.beforeControlMacroBrace, braces.beforeOpen);
    const OptionalText& beforeBrace = isMacro ? ofMacro : braces.beforeOpen;
    const OptionalText& ahead = hasBraces ? beforeBrace : isGovernedBelow ? kLineFeed : braces.afterOpen;
    const Keyed<bool>& kept = hasBraces ? settings_.keepsOneLineBlocks : settings_.keepsOneLineStatements;
    // if (a) { b(); } else {   is neither on one line nor in lines
    // for (;;) if (a) b();    hides what governs what
    const bool isNested = !hasBraces && body->size() == 1 && keywordOf(part) != Cpp::KeywordElse &&
                          Cpp::as<Cpp::CtrlStmtNode>(body->childBegin()->get());
    const bool mayStay = part->head() && !isNested && !(hasBraces && joinsNextPart);
    formatBody(*body, part->head() ? ahead : kAsInInput, mayStay ? kept : kNeverKept,
               [&] { formatBlock(*body, braces, indent); });
}

// Where lines stay what they are, braces may stand in either place. They stand on lines of their own where both
// begin one.
const BraceSettings& CppFormatter::bracesOf(const Cpp::BlockNode& body) const {
    if (!bracesBehindHeads_ || !body.hasBrackets()) return settings_.statements;
    const std::string_view front = source_.text().substr(0, offsetOf(source_, body.end()) - 1);
    const bool standApart = isAllWhitespace(lineBefore(body)) &&
                            (standsOnOneLine(body) || isLineBreak(trailingBlanks(front)));
    return standApart ? settings_.statements : *bracesBehindHeads_;
}

const OptionalText& CppFormatter::indentOfBody(int keyword, const OptionalText& indent, bool hasBraces) const {
    if (keyword == Cpp::KeywordSwitch && !hasBareLabels_) return settings_.caseContentIndent;
    // By its place alone a statement shows that the macro in the line before governs it.
    static const OptionalText leastIndent{true, " ", {}};
    return keyword == Cpp::Identifier && !hasBraces && indent.text.empty() ? leastIndent : indent;
}

void CppFormatter::visit(Cpp::CtrlSubStmtHeadNode* head) {
    const bool isLoop = !followsPart_;
    if (head->keyword()) copyThrough(*head->keyword());
    if (head->condition()) {
        const std::string_view gap = writer_.readGap(head->condition()->start());
        const bool isMacro = head->keyword() && head->keyword()->keyword() == Cpp::Identifier;
        const bool isCall = isMacro && settings_.formatsMacroCalls && !readsLikeKeyword(sourceFrom(*head->keyword()));
        if (settings_.afterControlKeyword.present && !isMacro) {
            const std::string_view kept = startsWithLineEndToken(gap) || isAllWhitespace(gap) ? gap : trimLeft(gap);
            writer_.writeMerged(kept, settings_.afterControlKeyword);
        } else {
            const OptionalText& own = settings_.afterControlMacro;
            const OptionalText& afterMacro = isCall ? firstPresent(own, exprFormatter_.settings().afterCallName) : own;
            writer_.writeMerged(gap, isMacro ? afterMacro : settings_.afterControlKeyword);
        }
        writer_.copyThrough(head->condition()->start());
        const Position end = head->condition()->end();
        const std::string_view inside = writer_.readThrough({end.line, end.column - 1});
        formatParenthesised(inside, *head->condition(),
                            head->keyword() ? head->keyword()->keyword() : Trn::kEndKind);
    }
    const bool mayHaveLine = settings_.keepsOneLineStatements || keepsLines();
    if (isLoop && head->condition() && mayHaveLine) return writeEmptyBody(*head);
    copyThrough(*head);
}

// while (a())
//     ;            on a line of its own the ";", or a comment in front of it, stands as any other body does
void CppFormatter::writeEmptyBody(const Cpp::CtrlSubStmtHeadNode& head) {
    const std::string_view text = writer_.readThrough(head.end());
    const std::string_view gap = leadingBlanks(text);
    const std::string_view rest = text.substr(gap.size());
    if (!isLineBreak(gap) || (rest != ";" && !rest.starts_with("/*"))) return writer_.write(writeGapBeforeEnd(text));
    ContentScope content(*this, settings_.indentOfBody(false));
    writer_.replace(gap, kLineFeed);
    writer_.write(rest);
}

// What stands between the parentheses, and the ")". Further lines start in the column behind the "(".
void CppFormatter::formatParenthesised(std::string_view inside, const Cpp::ExprNode& condition, int keyword) {
    WantedText closing;
    const std::string_view blanks = trailingBlanks(inside);
    {
        const bool movesLines = settings_.laysOutStatements();
        IndentScope indent(out(), movesLines ? indentToColumn(out(), writer_.nextColumn()) : out().indent());
        LeadingSpaceScope leadingSpace(out(), movesLines ? false : out().keepLeadingSpace());
        const bool mayHoldClauses = keyword == Cpp::KeywordFor && settings_.betweenForClauses.present &&
                                    condition.bodies().empty();
        const ClauseEnds ends = mayHoldClauses ? findClauseEnds(inside) : ClauseEnds{};
        if (keyword == Cpp::KeywordFor && !settings_.betweenForClauses.present) leaveForClauses(inside);
        closing = ends.areTwo() ? writeForClauses(inside, ends.first, ends.last)
                                : writeCondition(inside, keyword, condition.bodies());
    }
    writer_.leave(blanks, closing);
    out().writeVerbatim(closing.text());
    writer_.copyThrough(condition.end());
}

// Returns the white space that is to follow in front of the ")"; absent where it has been written.
WantedText CppFormatter::writeCondition(std::string_view inside, int keyword, const Cpp::ExprBodies& bodies) {
    const OptionalText& afterOpen = settings_.afterControlOpenParen;
    const OptionalText& beforeClose = settings_.beforeControlCloseParen;
    if (const std::string_view blanks = leadingBlanks(inside); keepsBreak(blanks, afterOpen)) {
        const std::string_view wrapIndent = exprFormatter_.settings().hanging.wrap.text;
        writeKeptBreakAt(blanks, columnAfter(wrapIndent, baseColumn(), out().tabSize()));
        inside.remove_prefix(blanks.size());
    } else if (afterOpen.present && !startsWithLineEndToken(inside)) {
        writer_.replace(leadingBlanks(inside), afterOpen);
        inside = trimLeft(inside);
    } else if (!afterOpen.present) {
        writer_.leave(leadingBlanks(inside), afterOpen);
    }
    const std::string_view condition = beforeClose.present ? trimRight(inside) : inside;
    const std::string_view closing = inside.substr(condition.size());
    if (keyword == Cpp::KeywordCatch) {
        exprFormatter_.formatDeclarationText(condition, out(), settings_.afterParameterType);
    } else {
        writeExpression(condition, bodies, hangingOfCondition(keyword));
    }
    if (!beforeClose.present) return beforeClose;
    if (keepsBreak(closing, beforeClose)) return WantedText(kLineFeed.text, Keys::KEEP_LINE_BREAKS);
    return endsWithLineEndToken(condition) ? WantedText(closing.substr(0, closing.find('\n') + 1)) : beforeClose;
}

// The clauses end at the first and at the last ";". Returns what writeCondition does.
WantedText CppFormatter::writeForClauses(std::string_view inside, std::size_t first, std::size_t last) {
    const std::string_view clauses[] = {inside.substr(0, first + 1), inside.substr(first + 1, last - first),
                                        inside.substr(last + 1)};
    const auto write = [&](std::string_view clause, bool isFirst = false) {
        clause = keepsLines() ? writeCommentsOfClause(trimLeft(clause)) : trimLeft(clause);
        const std::string_view text = endsWithLineEndToken(clause) ? clause : trimRight(clause);
        exprFormatter_.formatForClause(text, out(), baseColumn(), isFirst);
    };
    writer_.leave(leadingBlanks(inside), settings_.afterControlOpenParen);
    out().writeVerbatim(settings_.afterControlOpenParen.text);
    const bool hangsUnderFirst = settings_.alignsForClauses || hangsLines();
    IndentScope indent(out(), hangsUnderFirst ? indentToColumn(out(), writer_.nextColumn()) : out().indent());
    write(clauses[0], true);
    for (std::string_view clause : {clauses[1], clauses[2]}) {
        if (const std::string_view comment = commentOfLine(clause); !comment.empty()) {
            writer_.write(comment);
            clause.remove_prefix(comment.size());
            if (trimLeft(clause).empty()) return WantedText(kLineFeed.text);  // for (;; // a comment
            writer_.replace(leadingBlanks(clause), kLineFeed);
            write(clause);
            continue;
        }
        if (trimLeft(clause).empty()) continue;
        const bool isEmpty = trim(clause) == ";" && settings_.betweenEmptyForClauses.present;
        const OptionalText& between = isEmpty ? settings_.betweenEmptyForClauses : settings_.betweenForClauses;
        const std::string_view blanks = leadingBlanks(clause);
        const WantedText kept(kLineFeed.text, Keys::KEEP_LINE_BREAKS);
        writer_.replace(blanks, asOutputStands(keepsBreak(blanks, between) ? kept : between));
        write(clause);
    }
    return asOutputStands(settings_.beforeControlCloseParen);
}

// Comments on lines of their own in front of a clause stand in its column. Returns what follows them.
std::string_view CppFormatter::writeCommentsOfClause(std::string_view clause) {
    for (auto comment = commentOfLine(clause); !comment.empty(); comment = commentOfLine(clause)) {
        const std::string_view behind = clause.substr(comment.size());
        if (trimLeft(behind).empty()) break;
        const int column = writer_.nextColumn();
        writer_.write(comment);
        writeKeptBreakAt(leadingBlanks(behind), column);
        clause = trimLeft(behind);
    }
    return clause;
}

}  // namespace Tessel
