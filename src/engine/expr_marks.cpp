// char*p        char *p        by the anchor of the mark, in declarations and in casts
#include "cpp/token_sets.h"
#include "engine/expr_run.h"
#include "engine/operator_kinds.h"
#include "scheme/extension_keys.h"

namespace Tessel {

namespace {

// A name, or a qualifier in front of one.
bool isWord(int kind) { return kind >= Cpp::KeywordClass && !Cpp::isComment(kind); }

}  // namespace

const MarkSettings& CppExprFormatter::markSettings(int kind) const {
    return kind == Cpp::Asterisk ? settings_.asterisk : settings_.ampersand;
}

// A run of marks with the white space on both sides and inside. Behind a comma between declarators the marks
// have no type to go to.
void CppExprFormatter::writeMarks(Run& run) {
    std::size_t end = run.sweep.place();
    while (run.roleAt(end) == ExprRole::Mark) ++end;
    const std::size_t marksEnd = end;
    const MarkSettings& marks = markSettings(run.kindAt(marksEnd - 1));
    if (isPack(run.tokens, end)) end += kDotsOfPack;  // go with the marks
    const bool endsText = end >= run.tokens.size();
    const bool bindsNames = run.kindAt(end) == Cpp::OpenBracket && run.previousKind() == Cpp::KeywordAuto;
    const bool isAtParen = formatsTypeArguments() && run.kindAt(end) == Cpp::OpenParen;
    const bool isArgument = !run.groups.empty() && run.groups.back().kind == Group::Kind::Template;
    const bool mayBeByPointer = isArgument || run.mode != ExprMode::Expression;
    const bool isByPointer = mayBeByPointer && isAnyMark(run.kindAt(end + 1));
    const bool opensDeclarator = isAtParen && isByPointer;
    const bool endsReturnType = isAtParen && isArgument && !isByPointer;  // function<T &(int)>
    const bool isNamed = endsText ? run.nameFollows : isWord(run.kindAt(end)) || bindsNames || opensDeclarator;
    // In values, `= new T *`, `= []() -> T * {`, types stand in front of marks.
    const bool isInValue =
        formatsTypeArguments() && run.previous != kNoToken && run.previousKind() != Cpp::Comma;
    const bool isBehindComma = run.mode == ExprMode::Declarators && run.groups.empty() && !isInValue;
    const bool isAnchored = marks.anchor == kAnchoredToType || marks.anchor == kAnchoredToName;
    const bool startsLine = settings_.formatsOtherGaps && keepsLine(run);
    const bool areLast = run.nameFollows ? endsText : run.groups.empty();
    const bool joinsName = isAnchored && (startsLine || (run.lastMarks == LastMarks::AgainstName && areLast));
    const bool toName = marks.anchor == kAnchoredToName || isBehindComma || joinsName;
    // int A::*member
    const bool isOfMember = formatsTypeArguments() && isAnchored && run.previous != kNoToken &&
                            run.tokens[run.previous].text().ends_with("::");
    const OptionalText& apart =
        isOfMember ? marks.against : firstPresent(marks.gap, firstPresent(run.typeWhitespace, kBlank));

    measureMarks(run, marks, end);
    if (keepsLine(run)) {
        keepLine(run);
    } else if (!isAnchored || isBehindComma) {
        writeGapBefore(run);
    } else if (marks.anchor == kAnchoredToType && !joinsName) {
        run.sweep.writeGapWith(marks.against);
    } else if (const std::string column = toName && isNamed ? columnOfName(run, end) : std::string(); !column.empty()) {
        run.sweep.writeGapWith(WantedText(column, Keys::KEEP_COLUMNS));
    } else if (isNamed || marks.gap.present) {
        run.sweep.writeGapWith(apart);
    } else {
        run.sweep.writeGap();
    }
    if (!run.groups.empty()) startElements(run, run.groups.back());
    writeToken(run);
    while (run.sweep.place() < end) {
        run.sweep.writeGapWith(isAnchored ? kNothing : kAsInInput);
        writeToken(run);
    }
    run.previous = end - 1;
    run.sawMark = run.sawMark || run.groups.empty();
    run.after = nullptr;
    if (isAnchored && isNamed) run.after = toName ? &marks.against : &apart;
    if (isAnchored && endsReturnType) run.after = &kNothing;
    // char */* key */: the blank that has stood in front of the marks
    const bool meetsComment = run.kindAt(end) == Cpp::BlockComment && run.tokens[end - 1].end() == run.tokens[end].offset;
    if (settings_.formatsOtherGaps && marks.anchor == kAnchoredToType && !joinsName && meetsComment) run.after = &kBlank;
}

// `T *   a`, where the name stands in a column: the blanks in front of marks that come to stand against it. Empty where
// there is none.
std::string CppExprFormatter::columnOfName(const Run& run, std::size_t end) const {
    if (!keepsColumns()) return {};
    const std::size_t start = run.tokens[end - 1].end();
    const std::size_t next = end < run.tokens.size() ? std::size_t{run.tokens[end].offset} : run.text.size();
    const std::string_view behind = run.text.substr(start, next - start);
    const std::string_view ahead = run.sweep.gap();
    const auto areSpaces = [](std::string_view gap) { return gap.find_first_not_of(' ') == gap.npos; };
    if (behind.size() < 2 || !areSpaces(behind) || !areSpaces(ahead)) return {};
    return std::string(ahead.size() + behind.size(), ' ');
}

// The white space between the type and the name that follows the text.
void CppExprFormatter::writeTypeEnd(Run& run) {
    // A name that a literal is joined to is its suffix.
    const bool isJoined = run.previous != kNoToken && run.tokens[run.previous].end() == run.text.size();
    if (isJoined && (run.previousKind() == Cpp::StringLiteral || run.previousKind() == Cpp::CharLiteral)) return;
    // Words may stand behind the marks: `char* API f()`.
    const bool followsWord = !run.sawMark || (settings_.formatsOtherGaps && run.previousRole() != ExprRole::Mark);
    if (run.typeWhitespace.hasLineFeed() || (run.typeWhitespace.present && followsWord)) {
        run.sweep.writeGapWith(run.typeWhitespace);
    } else if (run.previousRole() == ExprRole::Mark) {
        run.sweep.writeGapWith(run.after);
    } else if (!run.sawMark) {
        run.sweep.writeGapWith(run.typeWhitespace);
    }
}

}  // namespace Tessel
