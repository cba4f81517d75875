#include "engine/cpp_expr_formatter.h"

#include <algorithm>
#include <optional>

#include "cpp/token_joining.h"
#include "cpp/token_sets.h"
#include "engine/columns.h"
#include "engine/gap.h"
#include "engine/operator_kinds.h"
#include "engine/source_hanging.h"

namespace Tessel {

namespace {

using Zelmor::IndentScope;
using Zelmor::IndentState;
using Zelmor::LeadingSpaceScope;
using Zelmor::OIndentBuf;

constexpr int kAnchoredToType = 0;
constexpr int kAnchoredToName = 1;

// A name, or a qualifier in front of one.
bool isWord(int kind) { return kind >= Cpp::KeywordClass && !Cpp::isComment(kind); }

// `_` and `N_`, the marks of texts to be translated.
bool isShortName(std::string_view name) { return name.size() <= 2 && name.ends_with('_'); }

const OptionalText& onLine(const OptionalText& wanted, bool isOnOneLine) {
    return isOnOneLine && wanted.hasLineFeed() ? kBlank : wanted;
}

const OptionalText* ifPresent(const OptionalText& setting) { return setting.present ? &setting : nullptr; }

}  // namespace

// The indentation of the elements of a group that break lines.
struct CppExprFormatter::Group::ElementScope {
    ElementScope(OIndentBuf& out, std::string indent, bool keepLeadingSpace)
        : indentScope(out, std::move(indent)), leadingSpace(out, keepLeadingSpace) {}

    IndentScope indentScope;
    LeadingSpaceScope leadingSpace;
};

// One sweep over a text.
struct CppExprFormatter::Run {
    Run(std::string_view wholeText, const std::vector<ExprToken>& tokensOfText, OIndentBuf& output, ExprMode textMode,
        const OptionalText& whitespace, bool isNameFollowing, bool keepsColumns)
        : text(wholeText),
          sweep(wholeText, tokensOfText, output, keepsColumns),
          tokens(tokensOfText),
          out(output),
          mode(textMode),
          typeWhitespace(whitespace),
          nameFollows(isNameFollowing) {}

    const ExprToken& current() const { return sweep.current(); }
    int kindAt(std::size_t place) const {
        return place < tokens.size() ? tokens[place].token.kind : Trn::kEndKind;
    }
    // Of the last token in front of `place` that is no comment or directive.
    int kindBefore(std::size_t place) const {
        while (place > 0 && roleAt(place - 1) == ExprRole::Trivia) --place;
        return place > 0 ? kindAt(place - 1) : Trn::kEndKind;
    }
    // The same behind it, or at it.
    int kindFrom(std::size_t place) const {
        while (roleAt(place) == ExprRole::Trivia) ++place;
        return kindAt(place);
    }
    ExprRole roleAt(std::size_t place) const {
        return place < tokens.size() ? tokens[place].role : ExprRole::Operand;
    }
    int previousKind() const { return previous == kNoToken ? Trn::kEndKind : kindAt(previous); }
    ExprRole previousRole() const { return previous == kNoToken ? ExprRole::Operand : tokens[previous].role; }

    std::string_view text;
    TextSweep sweep;
    const std::vector<ExprToken>& tokens;
    OIndentBuf& out;
    ExprMode mode;
    const OptionalText& typeWhitespace;
    bool nameFollows;
    std::optional<HangingLines> hanging;    // of lines that are kept
    HangingLines::Text hangingText = HangingLines::Text::Statement;
    FirstLine firstLine;
    std::optional<SourceHanging> sourceHanging;  // made when it is asked first
    std::size_t previous = kNoToken;        // the last token that is no comment or directive
    const OptionalText* after = nullptr;    // what it wants behind itself, before any comment
    bool sawMark = false;
    int literalColumn = 0;  // of the first of the literals that follow each other
    std::vector<Group> groups;
    BlocksInText* blocks = nullptr;
    std::size_t blocksWritten = 0;
};

CppExprFormatter::CppExprFormatter(const PropertySet& scheme, const Zelmor::TextDocument* source)
    : CppExprFormatterBase(scheme, source),
      settings_(CppExprFormatterBase::scheme()),
      keptIndent_(settings_.keepsLineIndent, tabSize()) {}

std::string CppExprFormatter::formatExpression(std::string_view text, const IndentState& state,
                                               BlocksInText* blocks, HangingLines::Text hanging) {
    return format(text, state, ExprMode::Expression, kAsInInput, false, blocks, hanging);
}

std::string CppExprFormatter::formatDeclarationText(std::string_view text, const IndentState& state,
                                                    const OptionalText& typeWhitespace) {
    return format(text, state, ExprMode::Declaration, typeWhitespace, false, nullptr, HangingLines::Text::List);
}

std::string CppExprFormatter::formatTypeText(std::string_view text, const IndentState& state,
                                             const OptionalText& typeWhitespace) {
    return format(text, state, ExprMode::Declaration, typeWhitespace, true, nullptr, HangingLines::Text::List);
}

std::string CppExprFormatter::formatDeclarators(std::string_view text, const IndentState& state,
                                                BlocksInText* blocks) {
    return format(text, state, ExprMode::Declarators, kAsInInput, false, blocks);
}

std::string CppExprFormatter::format(std::string_view text, const IndentState& state, ExprMode mode,
                                     const OptionalText& typeWhitespace, bool nameFollows, BlocksInText* blocks,
                                     HangingLines::Text hanging) {
    OIndentBuf out(state);
    // The blocks hold expressions of their own.
    std::vector<ExprToken> ownTokens;
    std::vector<ExprToken>& tokens = blocks ? ownTokens : exprTokens_;
    readExprTokens(text, mode, tokens, blocks ? blocks->extents() : std::span<const TextExtent>());
    Run run(text, tokens, out, mode, typeWhitespace, nameFollows, keepsColumns());
    run.blocks = blocks;
    if (settings_.keepsLineBreaks && !state.keepLeadingSpace) {
        const int indentColumn = columnAfter(state.indent, 0, state.tabSize);
        run.hanging.emplace(tokens, hanging, indentColumn, settings_.hanging, tabSize());
        run.hangingText = hanging;
    }
    while (!run.sweep.atEnd()) writeCurrent(run);
    if (nameFollows) writeTypeEnd(run);
    run.sweep.writeGap();
    run.groups.clear();
    return out.takeText();
}

// A block stays on the line, or begins the line, where its author put it.
void CppExprFormatter::writeBlock(Run& run) {
    if (run.hanging && keepsLine(run)) {
        keepLine(run);
    } else if (isLineBreak(run.sweep.gap())) {
        const int column = run.out.textColumn();
        IndentScope indent(run.out, indentToColumn(run.out, column));
        LeadingSpaceScope leadingSpace(run.out, false);
        run.sweep.writeGap();
        run.out.startLine();
    } else if (isAllWhitespace(run.sweep.gap())) {
        run.sweep.writeGapWith(run.previousKind() == Cpp::OpenParen ? run.sweep.gap() : kBlank.text);
    } else {
        run.sweep.writeGap();
    }
    passToken(run);
    run.blocks->write(run.blocksWritten++, run.out);
    run.previous = run.sweep.place();
    run.after = nullptr;
    run.sweep.passToken();
}

void CppExprFormatter::writeCurrent(Run& run) {
    const ExprToken& token = run.current();
    if (token.role == ExprRole::Trivia) {
        // Operators keep the gap in front of a block comment; brackets do not.
        if (token.token.kind == Cpp::BlockComment) {
            const bool endsLineOfOpen =
                run.after && run.after->hasLineFeed() && run.sweep.endsItsLine() && !isLineBreak(run.sweep.gap());
            if (run.after && run.previousRole() != ExprRole::BinaryOperator && !endsLineOfOpen) {
                run.sweep.writeGapWith(run.after->text);
            } else if (wrapsLines() && !endsLine(run) && joinedLine(run)) {
                run.sweep.writeGapWith(" ");
            }
        }
        run.after = nullptr;
        if (token.token.kind != Cpp::Directive && keepsLine(run)) keepLine(run);
        passToken(run);
        writeTrivia(run.sweep, run.out);
        return;
    }
    if (isComma(run)) {
        writeComma(run);
        return;
    }
    if (token.role == ExprRole::Block) {
        if (!run.groups.empty()) startElements(run, run.groups.back());
        writeBlock(run);
        return;
    }
    const bool closes = !run.groups.empty() && run.groups.back().close == run.sweep.place();
    if (closes) {
        closeGroup(run);
        return;
    }
    if (token.role == ExprRole::Mark) {
        writeMarks(run);
        return;
    }
    writeGapBefore(run);
    if (token.token.kind == Cpp::StringLiteral && run.previousKind() != Cpp::StringLiteral) {
        run.out.startLine();
        run.literalColumn = run.out.column();
    }
    if (!run.groups.empty()) startElements(run, run.groups.back());
    run.previous = run.sweep.place();
    run.after = wantedAfter(run, run.previous);
    const bool opens = token.role == ExprRole::GroupOpen || token.role == ExprRole::TemplateOpen ||
                       token.token.kind == Cpp::OpenBrace;
    writeToken(run);
    if (opens && token.partner != kNoToken) openGroup(run);
}

// Whether the comment ends its line, and will: the next token may have to stand behind it.
bool CppExprFormatter::endsLine(const Run& run) const {
    const OptionalText* behind = wantedBefore(run, run.sweep.place() + 1);
    return run.sweep.endsItsLine() && !(behind && behind->present && !behind->hasLineFeed());
}

// What a token that opens no group wants behind itself. A ";" in front of a "*" or "&" counts as an operator.
const OptionalText* CppExprFormatter::wantedAfter(const Run& run, std::size_t place) const {
    const int kind = run.kindAt(place);
    const bool isOperator = run.roleAt(place) == ExprRole::BinaryOperator ||
                            (kind == Cpp::Semicolon && isPointerMark(run.kindAt(place + 1)));
    if (isOperator) return ifPresent(settings_.afterOperator);
    if (kind != Cpp::StringLiteral || !wrapsLines() || isJoinedToNext(run, place)) return nullptr;
    return run.kindFrom(place + 1) == Cpp::StringLiteral ? &kBlank : nullptr;
}

// Whether nothing stands between a literal and a name or a prefix: they mean something else apart, as in "a"U"b".
bool CppExprFormatter::isJoinedToNext(const Run& run, std::size_t place) {
    if (place + 1 >= run.tokens.size()) return false;
    const Trn::Token& literal = run.tokens[place].token;
    const Trn::Token& next = run.tokens[place + 1].token;
    return literal.offset + literal.length == next.offset && Cpp::wouldJoin(literal.text, next.text);
}

void CppExprFormatter::writeGapBefore(Run& run) {
    const OptionalText* wanted = wantedBefore(run, run.sweep.place());
    if (!wanted) wanted = run.after;
    if (keepsLine(run) && !(wanted && wanted->hasLineFeed())) return keepLine(run);
    if (isStacked(run)) return startLiteralLine(run);
    if (wanted && wanted->present) {
        run.sweep.writeGapWith(wanted->text);
    } else if (const OptionalText* joined = wrapsLines() ? joinedLine(run) : nullptr) {
        run.sweep.writeGapWith(joined->text);
    } else {
        run.sweep.writeGap();
    }
}

// Whether the current token begins a line that is kept.
bool CppExprFormatter::keepsLine(const Run& run) const {
    if (!settings_.keepsLineBreaks || run.sweep.place() == 0) return false;
    return isLineBreak(run.sweep.gap()) || (run.out.column() == 0 && isAllWhitespace(run.sweep.gap()));
}

void CppExprFormatter::keepLine(Run& run) {
    if (!run.hanging) return run.sweep.writeGap();
    const std::string_view gap = run.sweep.takeGap();
    const auto lineFeeds = static_cast<std::size_t>(std::count(gap.begin(), gap.end(), '\n'));
    IndentScope indent(run.out, indentToColumn(run.out, columnOfKeptLine(run, gap)));
    run.out.write(std::string(lineFeeds, '\n'));
    run.out.startLine();
}

int CppExprFormatter::columnOfKeptLine(Run& run, std::string_view gap) const {
    const int hanging = run.hanging->columnFor(run.sweep.place());
    if (!keptIndent_.isWanted()) return hanging;
    if (!run.sourceHanging) startSourceHanging(run);
    const std::size_t place = run.sweep.place();
    if (run.sourceHanging) run.firstLine.hanging = run.sourceHanging->columnFor(place);
    const std::size_t partner = run.tokens[place].partner;
    const bool closes = partner != kNoToken && partner < place;
    return closes ? keptIndent_.columnForClose(run.firstLine, gap, hanging)
                  : keptIndent_.columnFor(run.firstLine, gap, hanging);
}

// Nothing where the columns of the source are not known.
void CppExprFormatter::startSourceHanging(Run& run) const {
    const std::string_view first = run.text.substr(run.tokens.front().token.offset);
    const int column = sourceColumns().nearColumnOf(first);
    if (column < 0) return;
    run.firstLine.source = sourceColumns().columnOfLine(first);
    const bool isList = run.hangingText == HangingLines::Text::List;
    run.sourceHanging.emplace(run.text, run.tokens, run.hangingText,
                              SourceHanging::Start{isList ? column : run.firstLine.source, column},
                              settings_.hanging, tabSize());
}

// Tells where the current token stands, the gap in front of it written.
void CppExprFormatter::passToken(Run& run) {
    if (!run.hanging) return;
    const std::size_t place = run.sweep.place();
    if (place == 0) run.firstLine.output = textColumnOf(run.out);
    run.hanging->pass(place, columnToIndentFrom(run.out), place > 0 && !run.out.lineHasText());
}

void CppExprFormatter::writeToken(Run& run) {
    passToken(run);
    run.sweep.writeToken();
}

// Whether the current token is a literal that stands in a line below another one, in the rows of an
// initializer. Lines of rows are not joined, and this is how the line wrapper parts literals.
bool CppExprFormatter::isStacked(const Run& run) const {
    const bool isInRows = !run.groups.empty() && run.groups.front().holdsRows;
    return isInRows && wrapsLines() && run.kindAt(run.sweep.place()) == Cpp::StringLiteral &&
           run.previous + 1 == run.sweep.place() && run.previousKind() == Cpp::StringLiteral &&
           isLineBreak(run.sweep.gap());
}

void CppExprFormatter::startLiteralLine(Run& run) {
    const std::string_view gap = run.sweep.gap();
    const auto lineFeeds = static_cast<std::size_t>(std::count(gap.begin(), gap.end(), '\n'));
    IndentScope indent(run.out, indentToColumn(run.out, run.literalColumn));
    run.sweep.writeGapWith(std::string(lineFeeds, '\n'));
    run.out.startLine();
}

// What joins two lines that the line wrapper may have parted, behind a comma or a cast, or in front of an
// operator or a comma that begins its line. Wrapping again would else start from lines that it does not see
// as one. Rows of an initializer are kept, by the wrapper too. Null where the gap is to stay.
const OptionalText* CppExprFormatter::joinedLine(const Run& run) const {
    const std::string_view gap = run.sweep.gap();
    const bool isRow = !run.groups.empty() && run.groups.back().holdsRows;
    if (run.previous == kNoToken || !isAllWhitespace(gap) || isRow) return nullptr;
    const ExprToken& token = run.current();
    if (isLineBreak(gap) && token.token.kind == Cpp::Comma) return &kNothing;
    if (isLineBreak(gap) && token.role == ExprRole::BinaryOperator) return &kBlank;
    const bool followsComment = run.previous + 1 != run.sweep.place();
    if (followsComment && (isLineBreak(gap) || token.role != ExprRole::Trivia)) return nullptr;
    if (!isJoinable(gap)) return nullptr;
    if (run.previousKind() == Cpp::Comma) return &kBlank;
    if (token.role == ExprRole::Trivia && run.previousRole() == ExprRole::BinaryOperator) return &kBlank;
    return followsCast(run) ? &kBlank : nullptr;
}

// Whether the current token is the operand of a cast, as far as the line wrapper knows one.
bool CppExprFormatter::followsCast(const Run& run) const {
    const ExprToken& close = run.tokens[run.previous];
    if (close.role == ExprRole::TemplateClose) return isCastKeyword(run.kindBefore(close.partner));
    if (close.token.kind != Cpp::CloseParen || close.partner == kNoToken) return false;
    const int before = run.kindBefore(close.partner);
    if (before == Cpp::Identifier || before == Cpp::Greater) return false;
    switch (run.kindFrom(run.sweep.place())) {
        case Cpp::Identifier:
        case Cpp::Number:
        case Cpp::CharLiteral:
        case Cpp::StringLiteral:
        case Cpp::OpenParen: return true;
        default: return false;
    }
}

// What the next token that is no comment or directive, which stands at `place`, wants in front of itself;
// null when that is for the token before it to say.
const OptionalText* CppExprFormatter::wantedBefore(const Run& run, std::size_t place) const {
    if (run.previous == kNoToken) return nullptr;
    switch (run.roleAt(place)) {
        case ExprRole::BinaryOperator:
            if (run.previousRole() == ExprRole::BinaryOperator || run.previousRole() == ExprRole::Separator) {
                return nullptr;
            }
            return ifPresent(settings_.beforeOperator);
        case ExprRole::GroupOpen:
            return run.kindAt(place) == Cpp::OpenParen ? wantedBeforeParen(run, place) : nullptr;
        case ExprRole::BraceOpen:
            return settings_.beforeDataBrace.present ? &settings_.beforeDataBrace : &kAsInInput;
        case ExprRole::Name: return ifPresent(run.typeWhitespace);
        default: return nullptr;
    }
}

const OptionalText* CppExprFormatter::wantedBeforeParen(const Run& run, std::size_t place) const {
    if (run.previousRole() == ExprRole::TemplateClose) {
        const std::size_t open = run.tokens[run.previous].partner;
        if (!isCastKeyword(run.kindBefore(open))) return nullptr;
        return ifPresent(settings_.beforeCastParen.present ? settings_.beforeCastParen : settings_.afterOperator);
    }
    switch (run.previousKind()) {
        case Cpp::Identifier: {
            // `T (*f)(int)`: the name in front is a type.
            const bool opensDeclarator = run.mode == ExprMode::Declaration &&
                                         run.kindAt(place + 1) == Cpp::Asterisk &&
                                         run.kindAt(run.tokens[place].partner + 1) == Cpp::OpenParen;
            if (opensDeclarator) return nullptr;
            const bool isShort = isShortName(run.tokens[run.previous].token.text);
            return ifPresent(isShort && settings_.afterShortCallName.present ? settings_.afterShortCallName
                                                                             : settings_.afterCallName);
        }
        case Cpp::KeywordSizeof:
        case Cpp::KeywordThrow: return ifPresent(settings_.afterCallName);
        default: return nullptr;
    }
}

const MarkSettings& CppExprFormatter::markSettings(int kind) const {
    return kind == Cpp::Asterisk ? settings_.asterisk : settings_.ampersand;
}

// A run of marks with the white space on both sides and inside. Behind a comma between declarators the marks
// have no type to go to.
void CppExprFormatter::writeMarks(Run& run) {
    std::size_t end = run.sweep.place();
    while (run.roleAt(end) == ExprRole::Mark) ++end;
    const MarkSettings& marks = markSettings(run.kindAt(end - 1));
    const bool endsText = end >= run.tokens.size();
    const bool isNamed = endsText ? run.nameFollows : isWord(run.kindAt(end));
    const bool isBehindComma = run.mode == ExprMode::Declarators && run.groups.empty();
    const bool isAnchored = marks.anchor == kAnchoredToType || marks.anchor == kAnchoredToName;
    const bool toName = marks.anchor == kAnchoredToName || isBehindComma;
    const OptionalText& fallback = run.typeWhitespace.present ? run.typeWhitespace : kBlank;
    const OptionalText& apart = marks.gap.present ? marks.gap : fallback;

    if (keepsLine(run)) {
        keepLine(run);
    } else if (!isAnchored || isBehindComma) {
        writeGapBefore(run);
    } else if (marks.anchor == kAnchoredToType) {
        run.sweep.writeGapWith("");
    } else if (isNamed || marks.gap.present) {
        run.sweep.writeGapWith(apart.text);
    } else {
        run.sweep.writeGap();
    }
    if (!run.groups.empty()) startElements(run, run.groups.back());
    writeToken(run);
    while (run.sweep.place() < end) {
        if (isAnchored) {
            run.sweep.writeGapWith("");
        } else {
            run.sweep.writeGap();
        }
        writeToken(run);
    }
    run.previous = end - 1;
    run.sawMark = true;
    run.after = nullptr;
    if (isAnchored && isNamed) run.after = toName ? &kNothing : &apart;
}

// The white space between the type and the name that follows the text.
void CppExprFormatter::writeTypeEnd(Run& run) {
    if (run.typeWhitespace.hasLineFeed() || (run.typeWhitespace.present && !run.sawMark)) {
        run.sweep.writeGapWith(run.typeWhitespace.text);
    } else if (run.after && run.previousRole() == ExprRole::Mark) {
        run.sweep.writeGapWith(run.after->text);
    }
}

void CppExprFormatter::openGroup(Run& run) {
    Group group;
    const ExprToken& open = run.tokens[run.previous];
    group.close = open.partner;
    switch (open.role) {
        case ExprRole::TemplateOpen: {
            const bool isCast = isCastKeyword(run.kindBefore(run.previous));
            group.kind = isCast ? Group::Kind::Cast : Group::Kind::Template;
            group.isList = isCast;
            break;
        }
        case ExprRole::BraceOpen:
            group.kind = Group::Kind::Braces;
            break;
        case ExprRole::GroupOpen:
            group.kind = open.token.kind == Cpp::OpenParen ? Group::Kind::Parentheses : Group::Kind::Brackets;
            group.isList = group.kind == Group::Kind::Parentheses;
            break;
        default: group.kind = Group::Kind::InnerBraces;
    }
    if (group.isBraced()) {
        const bool keepsLines =
            !settings_.betweenDataElements.present || settings_.betweenDataElements.hasLineFeed();
        group.holdsRows = keepsLines && (run.groups.empty() || run.groups.back().holdsRows);
        if (indentsContents(run)) {
            group.elements = std::make_unique<Group::ElementScope>(
                run.out, run.out.indent() + settings_.dataIndent.text,
                settings_.dataIndent.present ? false : run.out.keepLeadingSpace());
        }
    }
    group.isOnOneLine = group.kind == Group::Kind::Braces && staysOnOneLine(run, group.close);
    run.after = afterOpen(group);
    run.groups.push_back(std::move(group));
}

// At the "{" written last: whether its initializer, which stands on one line, does so here too.
bool CppExprFormatter::staysOnOneLine(const Run& run, std::size_t close) const {
    const Trn::Token& open = run.tokens[run.previous].token;
    const Trn::Token& end = run.tokens[close].token;
    if (!settings_.keepsOneLineLists || open.start.line != end.end.line) return false;
    const auto width = static_cast<int>(end.offset - open.offset);
    return settings_.wrapMargin == 0 || run.out.column() + width <= settings_.wrapMargin;
}

// At the "{" written last. Rows within an initializer stand as far to the left as the rows around them.
bool CppExprFormatter::indentsContents(const Run& run) {
    const ExprToken& open = run.tokens[run.previous];
    if (open.role == ExprRole::BraceOpen || run.groups.empty() || !run.groups.back().isBraced()) return true;
    return opensBlock(run.tokens, run.previous);
}

// At the first token of a group, the gap in front of it written: the group's elements line up with it when
// commas break lines.
void CppExprFormatter::startElements(Run& run, Group& group) {
    if (group.hasElements) return;
    group.hasElements = true;
    if (!group.isList || !spacingOf(group).breaksLines()) return;
    group.listColumn = columnToIndentFrom(run.out);
    group.elements = std::make_unique<Group::ElementScope>(run.out, indentToColumn(run.out, group.listColumn), false);
}

void CppExprFormatter::closeGroup(Run& run) {
    Group group = std::move(run.groups.back());
    run.groups.pop_back();
    group.elements.reset();
    writeClosingGap(run, group);
    run.previous = run.sweep.place();
    run.after = nullptr;
    writeToken(run);
    // ">>" ends the list around this one too.
    if (!run.groups.empty() && run.groups.back().close == run.previous) run.groups.pop_back();
}

void CppExprFormatter::writeClosingGap(Run& run, const Group& group) {
    const OptionalText* wanted = beforeClose(group);
    if (group.hasElements && keepsLine(run) && !(wanted && wanted->hasLineFeed())) return keepLine(run);
    if (!group.hasElements && (run.after || wanted)) {
        run.sweep.writeGapWith("");
        return;
    }
    if (!wanted) {
        run.sweep.writeGap();
        return;
    }
    const bool closesAngle = group.kind == Group::Kind::Template || group.kind == Group::Kind::Cast;
    const bool wouldShift = closesAngle && wanted->text.empty() && run.previousKind() == Cpp::Greater;
    run.sweep.writeGapWith(wouldShift ? kBlank.text : wanted->text);
}

bool CppExprFormatter::isComma(const Run& run) const {
    if (run.current().token.kind != Cpp::Comma || run.current().role != ExprRole::Separator) return false;
    if (run.groups.empty()) {
        if (run.mode != ExprMode::Declarators) return false;
        const SeparatorSpacing spacing = declaratorSpacing();
        return !spacing.after.hasLineFeed() && !spacing.before.hasLineFeed();
    }
    const SeparatorSpacing spacing = spacingOf(run.groups.back());
    return spacing.before.present || spacing.after.present;
}

void CppExprFormatter::writeComma(Run& run) {
    Group declarators;
    declarators.kind = Group::Kind::Braces;
    Group& group = run.groups.empty() ? declarators : run.groups.back();
    startElements(run, group);
    const SeparatorSpacing spacing = run.groups.empty() ? declaratorSpacing() : spacingOf(group);
    const bool keepsFront = keepsLine(run) && !spacing.before.hasLineFeed();
    const bool keepsBehind =
        settings_.keepsLineBreaks && !spacing.after.hasLineFeed() && isLineBreak(run.sweep.blanksBehind());
    if (keepsFront) keepLine(run);
    passToken(run);
    const OptionalText* joined = wrapsLines() && !spacing.before.present ? joinedLine(run) : nullptr;
    run.previous = run.sweep.place();
    run.after = nullptr;
    const OptionalText& before = joined ? *joined : spacing.before;
    writeSeparator(run.sweep, {keepsFront ? kAsInInput : before, keepsBehind ? kAsInInput : spacing.after},
                   group.isList ? &group.listColumn : nullptr, run.out);
}

CppExprFormatterBase::SeparatorSpacing CppExprFormatter::declaratorSpacing() const {
    const OptionalText& between = settings_.betweenDeclarators;
    return {settings_.beforeDataComma, between.present ? between : settings_.betweenDataElements};
}

CppExprFormatterBase::SeparatorSpacing CppExprFormatter::spacingOf(const Group& group) const {
    switch (group.kind) {
        case Group::Kind::Parentheses:
        case Group::Kind::Cast: return {settings_.beforeCallComma, settings_.betweenCallArguments};
        case Group::Kind::Template: return {kAsInInput, settings_.betweenTemplateArguments};
        case Group::Kind::Braces:
            return {onLine(settings_.beforeDataComma, group.isOnOneLine),
                    onLine(settings_.betweenDataElements, group.isOnOneLine)};
        case Group::Kind::Brackets:
        case Group::Kind::InnerBraces: break;
    }
    return {kAsInInput, kAsInInput};
}

const OptionalText* CppExprFormatter::afterOpen(const Group& group) const {
    switch (group.kind) {
        case Group::Kind::Parentheses: return ifPresent(settings_.afterOpenParen);
        case Group::Kind::Brackets: return ifPresent(settings_.afterOpenBracket);
        case Group::Kind::Braces:
            return ifPresent(onLine(settings_.afterDataBrace, group.isOnOneLine));
        case Group::Kind::InnerBraces: return nullptr;
        default: return ifPresent(settings_.afterOpenAngle);
    }
}

const OptionalText* CppExprFormatter::beforeClose(const Group& group) const {
    switch (group.kind) {
        case Group::Kind::Parentheses: return ifPresent(settings_.beforeCloseParen);
        case Group::Kind::Brackets: return ifPresent(settings_.beforeCloseBracket);
        case Group::Kind::Braces:
            return ifPresent(onLine(settings_.beforeDataCloseBrace, group.isOnOneLine));
        case Group::Kind::InnerBraces: return nullptr;
        default: return ifPresent(settings_.beforeCloseAngle);
    }
}

}  // namespace Tessel
