#include "engine/assignment_lines.h"

#include <algorithm>

#include "cpp/lexer.h"
#include "cpp/token_kind.h"
#include "cpp/token_sets.h"
#include "engine/columns.h"
#include "engine/gap.h"
#include "engine/shown_width.h"

namespace Tessel {

namespace {

int closingKindOf(int kind) {
    switch (kind) {
        case Cpp::OpenParen: return Cpp::CloseParen;
        case Cpp::OpenBracket: return Cpp::CloseBracket;
        case Cpp::OpenBrace: return Cpp::CloseBrace;
        default: return 0;
    }
}

bool closesScope(int kind) {
    return kind == Cpp::CloseParen || kind == Cpp::CloseBracket || kind == Cpp::CloseBrace;
}

// How many angles it opens.
int angleStep(int kind) {
    switch (kind) {
        case Cpp::Less: return 1;
        case Cpp::Greater: return -1;
        case Cpp::ShiftRight: return -2;
        default: return 0;
    }
}

// Of a line that is no assignment by itself.
bool startsOtherLine(int kind) {
    return Cpp::isControlKeyword(kind) || Cpp::isJumpKeyword(kind) || kind == Cpp::KeywordCase ||
           kind == Cpp::KeywordDefault || kind == Cpp::Assign;
}

// What no target of an assignment ends with: [=], f(=).
bool endsNoTarget(int kind) {
    return closingKindOf(kind) != 0 || kind == Cpp::Comma;
}

std::size_t endOfToken(const Trn::Token& token, std::size_t offset, std::string_view text) {
    return offset + trimRight(text.substr(offset, token.length)).size();
}

}  // namespace

AssignmentLines::AssignmentLines(std::string_view text, const KeptRegions& kept, int tabSize, int margin)
    : text_(text), tabSize_(tabSize), margin_(margin > 0 ? margin : std::numeric_limits<int>::max()) {
    scopes_.emplace_back();
    std::size_t place = 0;
    for (const KeptRegion& region : kept) {
        if (region.start > place) readCode(place, region.start);
        readKept(region);
        place = std::max(place, region.end);
    }
    readCode(place, text.size());
    endLine();
    for (Scope& scope : scopes_) endRun(scope);
}

void AssignmentLines::readCode(std::size_t start, std::size_t end) {
    Cpp::Lexer lexer(text_.substr(start, end - start));
    for (Trn::Token token = lexer.nextToken(); !Cpp::endsTokens(token.kind); token = lexer.nextToken()) {
        read(token, start + token.offset);
    }
}

// What is kept ends the runs that it stands in, and moves with nothing.
void AssignmentLines::readKept(const KeptRegion& region) {
    if (isOnNewLine_ || text_.substr(codeEnd_, region.start - codeEnd_).find('\n') != text_.npos) {
        endLine();
        addLine(region.start, false);
    }
    fixLine(lines_.size() - 1);
    endRun(scopes_.back());
    scopes_.back().line = kNoLine;
    isOnNewLine_ = false;
    codeEnd_ = region.end;
    textEnd_ = region.end;
    lastKind_ = Cpp::Unknown;
}

void AssignmentLines::read(const Trn::Token& token, std::size_t offset) {
    const std::string_view gap = text_.substr(codeEnd_, offset - codeEnd_);
    const auto lineFeeds = std::count(gap.begin(), gap.end(), '\n');
    if (lineFeeds > 0 || isOnNewLine_) beginLine(token, offset, lineFeeds);
    isOnNewLine_ = false;
    const std::size_t end = endOfToken(token, offset, text_);
    const bool isLong = text_.substr(offset, end - offset).find('\n') != text_.npos;
    if (isLong) {
        fixLine(lines_.size() - 1);
        scopes_.back().line = kNoLine;
    }
    codeEnd_ = end;
    if (Cpp::isTrivia(token.kind)) return;
    if (token.kind == Cpp::Assign) readSign(token, offset);
    if (const int closing = closingKindOf(token.kind)) open(closing, end);
    if (token.kind == Cpp::Less && lastKind_ == Cpp::KeywordTemplate) open(Cpp::Greater, end);
    if (closesScope(token.kind) || token.kind == Cpp::Greater || token.kind == Cpp::ShiftRight) close(token.kind);
    Scope& scope = scopes_.back();
    if (token.kind == Cpp::Comma && scope.angles <= 0) ++scope.commas;
    scope.angles += angleStep(token.kind);
    if (token.kind == Cpp::Semicolon) {
        scope.isOver = true;
        scope.valueSign = kNoSign;
    }
    const bool nestsAngles = scope.closing == Cpp::Greater && lastKind_ != Cpp::KeywordTemplate;
    if (token.kind == Cpp::Less && nestsAngles) open(Cpp::Greater, end);  // after which the scope stands elsewhere
    textEnd_ = end;
    lastKind_ = token.kind;
}

void AssignmentLines::beginLine(const Trn::Token& token, std::size_t offset, std::ptrdiff_t lineFeeds) {
    endLine();
    Scope& scope = scopes_.back();
    const bool goesOn = token.kind == Cpp::StringLiteral && lastKind_ == Cpp::StringLiteral;
    if (lineFeeds > 1 || (!scope.hasSign && !goesOn)) endRun(scope);
    if (!goesOn) scope.hasSign = false;
    // A bracket that ends its line parts that from those behind the bracket.
    if (closingKindOf(lastKind_) != 0 && scopes_.size() > 1) {
        Scope& outer = scopes_[scopes_.size() - 2];
        if (!outer.hasSign) endRun(outer);
        outer.hasSign = false;
    }
    scope.isOver = false;
    scope.commas = 0;
    scope.angles = 0;
    scope.firstKind = token.kind;
    addLine(offset, token.kind == Cpp::Directive);
    scope.line = lines_.size() - 1;
}

void AssignmentLines::addLine(std::size_t offset, bool isDirective) {
    HangingLine line;
    line.textStart = offset;
    line.column = columnAt(offset);
    if (!isDirective) hang(line, scopes_.back());
    lines_.push_back(line);
}

// Finds what the line moves with.
void AssignmentLines::hang(HangingLine& line, Scope& scope) {
    if (scope.valueSign != kNoSign) {
        const AssignmentSign& sign = signs_[scope.valueSign];
        line.parent = sign.line;
        line.isBehindSign = line.column >= columnAt(sign.valuePlace);
        line.mover = line.isBehindSign ? scope.valueSign : lines_[line.parent].mover;
        return;
    }
    line.parent = scope.bracketLine;
    if (line.parent == kNoLine) return;
    if (scope.isBehindSign && scope.firstPlace != kNoLine) {
        if (scope.firstColumn < 0) scope.firstColumn = columnAt(scope.firstPlace);
        line.isBehindSign = line.column >= scope.firstColumn;
    }
    const HangingLine& parent = lines_[line.parent];
    if (line.isBehindSign) {
        line.mover = parent.sign;
        return;
    }
    // It goes on with what its parent goes on with.
    if (line.column < parent.column && parent.isBehindSign) line.parent = parent.parent;
    line.mover = lines_[line.parent].mover;
}

// Those that move need room behind them.
void AssignmentLines::endLine() {
    if (lines_.empty()) return;
    const HangingLine& line = lines_.back();
    if (line.sign == kNoSign && line.mover == kNoSign) return;
    const int end = columnAt(std::max(textEnd_, line.textStart));
    for (const std::size_t sign : {line.sign, line.mover}) {
        if (sign != kNoSign) signs_[sign].end = std::max(signs_[sign].end, end);
    }
}

void AssignmentLines::fixLine(std::size_t line) {
    for (std::size_t sign = lines_[line].mover; sign != kNoSign && !signs_[sign].isFixed;
         sign = lines_[signs_[sign].line].mover) {
        signs_[sign].isFixed = true;
    }
    // What follows a long token on its line stays with it.
    const std::size_t own = lines_[line].sign;
    if (own != kNoSign) signs_[own].isFixed = true;
}

void AssignmentLines::readSign(const Trn::Token& token, std::size_t offset) {
    Scope& scope = scopes_.back();
    // It is part of a name. The definition behind that stands with those of the lines below.
    if (lastKind_ == Cpp::KeywordOperator) return endRun(scope);
    if (!mayBeSign(scope, offset)) return;
    // a = b = c: the last one does so, too; those of the lines above stand at least in the column of the first one.
    if (scope.hasSign) endRun(scope);
    addSign(scope, offset + token.length);
}

bool AssignmentLines::mayBeSign(const Scope& scope, std::size_t offset) const {
    // virtual void f(int a,
    //                int b) = 0;
    const bool isBehindLines = scope.line != lines_.size() - 1;
    const bool standsOnLine = scope.line != kNoLine && !scope.isOver && !(isBehindLines && scope.valueSign != kNoSign);
    if (!standsOnLine || startsOtherLine(scope.firstKind) || endsNoTarget(lastKind_)) return false;
    const std::size_t behind = kBlanks.skipIn(text_, offset + 1);
    if (behind == text_.size() || text_[behind] == '\n') return false;
    return offset - lines_.back().textStart < static_cast<std::size_t>(kRightmostIndent);
}

// `behind` is the place behind it.
void AssignmentLines::addSign(Scope& scope, std::size_t behind) {
    AssignmentSign sign;
    sign.line = lines_.size() - 1;
    sign.indent = lines_[scope.line].column;
    sign.gapEnd = behind - 1;
    sign.gapStart = trimRight(text_.substr(0, sign.gapEnd)).size();
    sign.valuePlace = kBlanks.skipIn(text_, behind);
    sign.codeEnd = columnAt(sign.gapStart);
    sign.column = columnAt(sign.gapEnd);
    sign.wanted = sign.column;
    sign.commas = scope.commas;
    const auto joins = [&](const AssignmentSign& last) {
        return last.commas == sign.commas && last.indent == sign.indent;
    };
    if (!scope.run.empty() && !joins(signs_[scope.run.back()])) endRun(scope);
    scope.run.push_back(signs_.size());
    scope.valueSign = signs_.size();
    scope.hasSign = true;
    lines_[sign.line].sign = signs_.size();
    signs_.push_back(sign);
}

void AssignmentLines::open(int closing, std::size_t place) {
    const Scope& outer = scopes_.back();
    Scope scope;
    scope.closing = closing;
    scope.bracketLine = lines_.size() - 1;
    scope.firstPlace = nextOnLine(place);
    scope.isBehindSign = lines_.back().sign != kNoSign;
    if (scope.firstPlace == kNoLine && outer.bracketLine == scope.bracketLine) scope.firstPlace = outer.firstPlace;
    // Beyond that, to count the columns would take too long.
    const std::size_t farthest = lines_.back().textStart + static_cast<std::size_t>(kRightmostIndent);
    if (scope.firstPlace != kNoLine && scope.firstPlace > farthest) scope.firstPlace = kNoLine;
    scopes_.push_back(std::move(scope));
}

void AssignmentLines::close(int kind) {
    const auto leave = [this] {
        Scope& scope = scopes_.back();
        endRun(scope);
        const bool isBlock = scope.closing == Cpp::CloseBrace && scope.bracketLine != lines_.size() - 1;
        const bool holdsBlock = scope.holdsBlock || isBlock;
        scopes_.pop_back();
        if (!holdsBlock) return;
        scopes_.back().holdsBlock = true;
        scopes_.back().hasSign = false;
    };
    if (kind == Cpp::Greater || kind == Cpp::ShiftRight) {
        for (int count = kind == Cpp::Greater ? 1 : 2; count > 0 && scopes_.back().closing == Cpp::Greater; --count) {
            leave();
        }
        return;
    }
    while (scopes_.back().closing == Cpp::Greater) leave();
    // Which branch of a conditional group a bracket belongs to is not known.
    if (scopes_.back().closing == kind) leave();
}

// Those of the run that fit in the margin come to stand in one column.
void AssignmentLines::endRun(Scope& scope) {
    std::size_t first = 0;
    int least = 0;
    int most = margin_;
    for (std::size_t i = 0; i < scope.run.size(); ++i) {
        const AssignmentSign& sign = signs_[scope.run[i]];
        const int own = margin_ - (std::max(sign.end, sign.column) - sign.column);
        if (sign.isFixed || sign.leastColumn() > most || own < least) {
            place(scope.run, first, i);
            first = sign.isFixed ? i + 1 : i;
            least = 0;
            most = margin_;
        }
        if (sign.isFixed) continue;
        least = std::max(least, sign.leastColumn());
        most = std::min(most, own);
    }
    place(scope.run, first, scope.run.size());
    scope.run.clear();
}

void AssignmentLines::place(const std::vector<std::size_t>& run, std::size_t first, std::size_t end) {
    int column = 0;
    for (std::size_t i = first; i < end; ++i) column = std::max(column, signs_[run[i]].leastColumn());
    for (std::size_t i = first; i < end; ++i) signs_[run[i]].wanted = column;
}

int AssignmentLines::columnAt(std::size_t place) const {
    const std::size_t lineStart = lineStartOf(text_, place);
    return shownColumnAfter(text_.substr(lineStart, place - lineStart), 0, tabSize_);
}

// What follows on the same line, if anything does.
std::size_t AssignmentLines::nextOnLine(std::size_t place) const {
    const std::size_t next = kBlanks.skipIn(text_, place);
    return next == text_.size() || text_[next] == '\n' ? kNoLine : next;
}

}  // namespace Tessel
